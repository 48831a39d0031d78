#include "Process.h"

#include <array>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <thread>

#include <windows.h>

namespace test {
namespace {

std::wstring Wide(const std::string& text)
{
    return std::filesystem::u8path(text).wstring();
}

/// One end stays here, the other is handed on.
struct Pipe {
    HANDLE read = nullptr;
    HANDLE write = nullptr;

    explicit Pipe(bool handsOnRead)
    {
        SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
        if (!CreatePipe(&read, &write, &inherited, 1 << 20)) {
            throw std::runtime_error("pipe");
        }
        SetHandleInformation(handsOnRead ? write : read, HANDLE_FLAG_INHERIT, 0);
    }
};

/// As the run-time library of the program takes it apart again.
std::wstring CommandLine(const std::vector<std::string>& command)
{
    std::wstring line;
    for (const std::string& word : command) {
        line += line.empty() ? L"\"" : L" \"";
        std::size_t slashes = 0;
        for (const wchar_t c : Wide(word)) {
            if (c == L'"') {
                line.append(slashes + 1, L'\\');
            }
            slashes = c == L'\\' ? slashes + 1 : 0;
            line += c;
        }
        line.append(slashes, L'\\') += L'"';
    }
    return line;
}

std::wstring Environment(const ProcessOptions& options)
{
    std::map<std::wstring, std::wstring> variables;
    wchar_t* const all = GetEnvironmentStringsW();
    for (const wchar_t* each = all; *each != L'\0'; each += std::wcslen(each) + 1) {
        const std::wstring text = each;
        const std::size_t equals = text.find(L'=', 1); // A drive's folder begins with one.
        variables[text.substr(0, equals)] = text.substr(equals + 1);
    }
    FreeEnvironmentStringsW(all);
    for (const auto& variable : options.environment) {
        variables[Wide(variable.first)] = Wide(variable.second);
    }
    for (const std::string& name : options.without) {
        variables.erase(Wide(name));
    }
    std::wstring block;
    for (const auto& variable : variables) {
        block += variable.first + L"=" + variable.second + L'\0';
    }
    return block + L'\0';
}

PROCESS_INFORMATION Start(const std::vector<std::string>& command, const ProcessOptions& options, HANDLE in, HANDLE out,
                          HANDLE err)
{
    STARTUPINFOW how = {};
    how.cb = sizeof how;
    how.dwFlags = STARTF_USESTDHANDLES;
    how.hStdInput = in;
    how.hStdOutput = out;
    how.hStdError = err;
    PROCESS_INFORMATION process = {};
    std::wstring line = CommandLine(command);
    std::wstring environment = Environment(options);
    const DWORD flags = CREATE_UNICODE_ENVIRONMENT | CREATE_NEW_PROCESS_GROUP;
    if (!CreateProcessW(nullptr, &line[0], nullptr, nullptr, TRUE, flags, &environment[0], nullptr, &how, &process)) {
        throw std::runtime_error("cannot start " + command.front());
    }
    CloseHandle(process.hThread);
    for (const HANDLE each : {in, out, err}) {
        CloseHandle(each);
    }
    return process;
}

std::string ReadAll(HANDLE pipe)
{
    std::string text;
    std::array<char, 65536> block{};
    DWORD got = 0;
    while (ReadFile(pipe, block.data(), static_cast<DWORD>(block.size()), &got, nullptr) && got > 0) {
        text.append(block.data(), got);
    }
    return text;
}

/// Reads both to their ends; one that is full would stop the program.
ProcessResult Finish(HANDLE process, HANDLE out, HANDLE err)
{
    ProcessResult result;
    bool ended = true;
    // As long as it runs, its ends do not come.
    std::thread guard([&] {
        ended = WaitForSingleObject(process, 60000) == WAIT_OBJECT_0;
        if (!ended) {
            TerminateProcess(process, 1);
        }
    });
    std::thread other([&] { result.err = ReadAll(err); });
    result.out = ReadAll(out);
    other.join();
    guard.join();
    if (!ended) {
        throw std::runtime_error("nothing for a minute");
    }
    DWORD code = 0;
    GetExitCodeProcess(process, &code);
    result.code = static_cast<int>(code);
    return result;
}

} // namespace

ProcessResult RunProgram(const std::vector<std::string>& command, const ProcessOptions& options)
{
    const Pipe in(true);
    const Pipe out(false);
    const Pipe err(false);
    const PROCESS_INFORMATION process = Start(command, options, in.read, out.write, err.write);
    DWORD written = 0;
    // Short enough for the pipe's buffer.
    WriteFile(in.write, options.input.data(), static_cast<DWORD>(options.input.size()), &written, nullptr);
    CloseHandle(in.write);
    const ProcessResult result = Finish(process.hProcess, out.read, err.read);
    for (const HANDLE each : {process.hProcess, out.read, err.read}) {
        CloseHandle(each);
    }
    return result;
}

struct Running::Child {
    PROCESS_INFORMATION process = {};
    HANDLE out = nullptr;
    HANDLE err = nullptr;
};

Running::Running(const std::vector<std::string>& command) : child_(std::make_unique<Child>())
{
    const Pipe in(true);
    const Pipe out(false);
    const Pipe err(false);
    child_->process = Start(command, {}, in.read, out.write, err.write);
    CloseHandle(in.write);
    child_->out = out.read;
    child_->err = err.read;
}

Running::~Running()
{
    TerminateProcess(child_->process.hProcess, 1);
    WaitForSingleObject(child_->process.hProcess, 10000);
    for (const HANDLE each : {child_->process.hProcess, child_->out, child_->err}) {
        CloseHandle(each);
    }
}

std::string Running::Line()
{
    std::string line;
    char c = 0;
    DWORD got = 0;
    while (ReadFile(child_->out, &c, 1, &got, nullptr) && got == 1 && c != '\n') {
        line += c;
    }
    return line;
}

void Running::Signal(int) const
{
    GenerateConsoleCtrlEvent(CTRL_BREAK_EVENT, child_->process.dwProcessId);
}

ProcessResult Running::Wait()
{
    return Finish(child_->process.hProcess, child_->out, child_->err);
}

} // namespace test
