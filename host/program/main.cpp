#include <iostream>
#include <unistd.h>

#include "desktop/QtDesktop.h"
#include "host/AslHost.h"

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    int ownArguments = 1;  // the rest is not the toolkit's
    vlm::host::QtDesktop desktop(ownArguments, argv);
    return vlm::host::RunHost(arguments, std::cout, std::cerr, ::isatty(STDOUT_FILENO) != 0, &desktop);
}
