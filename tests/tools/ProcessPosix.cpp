#include "Process.h"

#include <array>
#include <csignal>
#include <map>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace test {
namespace {

struct Pipe {
    int read = -1;
    int write = -1;

    Pipe()
    {
        std::array<int, 2> ends{};
        // Not passed on to programs that another test starts meanwhile.
        if (pipe2(ends.data(), O_CLOEXEC) != 0) {
            throw std::runtime_error("pipe");
        }
        read = ends[0];
        write = ends[1];
    }
};

std::vector<char*> Pointers(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> Environment(const ProcessOptions& options)
{
    std::map<std::string, std::string> variables;
    for (char** each = environ; *each != nullptr; ++each) {
        const std::string text = *each;
        const std::size_t equals = text.find('=');
        variables[text.substr(0, equals)] = text.substr(equals + 1);
    }
    for (const auto& variable : options.environment) {
        variables[variable.first] = variable.second;
    }
    for (const std::string& name : options.without) {
        variables.erase(name);
    }
    std::vector<std::string> texts;
    texts.reserve(variables.size());
    for (const auto& variable : variables) {
        texts.push_back(variable.first + "=" + variable.second);
    }
    return texts;
}

pid_t Start(std::vector<std::string> command, const ProcessOptions& options, int in, int out, int err)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, out, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, err, STDERR_FILENO);
    std::vector<std::string> environment = Environment(options);
    pid_t pid = -1;
    const int failed = posix_spawnp(&pid, command.front().c_str(), &actions, nullptr, Pointers(command).data(),
                                    Pointers(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    if (failed != 0) {
        throw std::runtime_error("cannot start " + command.front());
    }
    return pid;
}

/// Reads both to their ends; one that is full would stop the program.
void Drain(int out, int err, ProcessResult& result)
{
    std::array<pollfd, 2> ends{{{out, POLLIN, 0}, {err, POLLIN, 0}}};
    while (ends[0].fd >= 0 || ends[1].fd >= 0) {
        if (poll(ends.data(), ends.size(), 60000) <= 0) {
            throw std::runtime_error("nothing for a minute");
        }
        for (std::size_t i = 0; i < ends.size(); ++i) {
            if (ends[i].fd >= 0 && ends[i].revents != 0) {
                std::array<char, 65536> block{};
                const ssize_t got = read(ends[i].fd, block.data(), block.size());
                if (got <= 0) {
                    ends[i].fd = -1;
                } else {
                    (i == 0 ? result.out : result.err).append(block.data(), static_cast<std::size_t>(got));
                }
            }
        }
    }
}

int ExitCode(pid_t pid)
{
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

ProcessResult RunProgram(const std::vector<std::string>& command, const ProcessOptions& options)
{
    const Pipe in;
    const Pipe out;
    const Pipe err;
    const pid_t pid = Start(command, options, in.read, out.write, err.write);
    close(in.read);
    close(out.write);
    close(err.write);
    // Short enough for the pipe's buffer.
    if (!options.input.empty() && write(in.write, options.input.data(), options.input.size()) < 0) {
        throw std::runtime_error("write");
    }
    close(in.write);
    ProcessResult result;
    Drain(out.read, err.read, result);
    close(out.read);
    close(err.read);
    result.code = ExitCode(pid);
    return result;
}

struct Running::Child {
    pid_t pid = -1;
    int out = -1;
    int err = -1;
};

Running::Running(const std::vector<std::string>& command) : child_(std::make_unique<Child>())
{
    const Pipe in;
    const Pipe out;
    const Pipe err;
    child_->pid = Start(command, {}, in.read, out.write, err.write);
    close(in.read);
    close(in.write);
    close(out.write);
    close(err.write);
    child_->out = out.read;
    child_->err = err.read;
}

Running::~Running()
{
    if (child_->pid > 0) {
        Signal(SIGKILL);
        ExitCode(child_->pid);
    }
    close(child_->out);
    close(child_->err);
}

std::string Running::Line()
{
    std::string line;
    char c = 0;
    while (read(child_->out, &c, 1) == 1 && c != '\n') {
        line += c;
    }
    return line;
}

void Running::Signal(int number) const
{
    kill(child_->pid, number);
}

ProcessResult Running::Wait()
{
    ProcessResult result;
    Drain(child_->out, child_->err, result);
    result.code = ExitCode(child_->pid);
    child_->pid = -1;
    return result;
}

} // namespace test
