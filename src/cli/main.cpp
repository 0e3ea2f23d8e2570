#include "cli/Cli.h"

#include <iostream>

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    return glyphmoor::RunCli(args, std::cout, std::cerr);
}
