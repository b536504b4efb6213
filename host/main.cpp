#include <iostream>
#include <unistd.h>

#include "host/AslHost.h"

int main(int argc, char** argv) {
    return vlm::host::RunHost({argv + 1, argv + argc}, std::cout, std::cerr, ::isatty(STDOUT_FILENO) != 0);
}
