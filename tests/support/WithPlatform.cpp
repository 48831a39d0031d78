// with_platform COMMAND [ARGUMENT...]: runs the command with the base address of a fresh local platform as its last
// argument, and ends with its status.
#include <cstdio>
#include <string>
#include <vector>

#include "simulator/Platform.h"
#include "tests/tools/Process.h"

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::fprintf(stderr, "usage: with_platform COMMAND [ARGUMENT...]\n");
        return 2;
    }
    nexwire::simulator::Platform platform;
    std::string error;
    if (!platform.Start(error)) {
        std::fprintf(stderr, "with_platform: %s\n", error.c_str());
        return 1;
    }
    std::vector<std::string> command(argv + 1, argv + argc);
    command.push_back("http://127.0.0.1:" + std::to_string(platform.Port()));
    const test::ProcessResult result = test::RunProgram(command);
    std::fputs(result.out.c_str(), stdout);
    std::fputs(result.err.c_str(), stderr);
    return result.code < 0 ? 1 : result.code;
}
