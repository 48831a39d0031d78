// with_platform COMMAND [ARGUMENT...]: runs the command with the base address of a fresh local platform as its last
// argument, and ends with its status.
#include <cstdio>
#include <string>
#include <vector>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "simulator/Platform.h"

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
    std::string address = "http://127.0.0.1:" + std::to_string(platform.Port());

    std::vector<char*> command(argv + 1, argv + argc);
    command.push_back(address.data());
    command.push_back(nullptr);
    pid_t child = 0;
    int status = 0;
    if (posix_spawnp(&child, command[0], nullptr, nullptr, command.data(), environ) != 0 ||
        waitpid(child, &status, 0) != child) {
        std::fprintf(stderr, "with_platform: cannot run %s\n", command[0]);
        return 1;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}
