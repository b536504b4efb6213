#include <iostream>
#include <unistd.h>

#include "desktop/QtDesktop.h"
#include "host/AslHost.h"

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments == std::vector<std::string>{"--version"}) {
        std::cout << "aslhost " VLM_VERSION "\n";
        return 0;
    }
    int ownArguments = 1;  // the rest is not the toolkit's
    vlm::host::QtDesktop desktop(ownArguments, argv);
    return vlm::host::RunHost(arguments, std::cout, std::cerr, ::isatty(STDOUT_FILENO) != 0, &desktop);
}
