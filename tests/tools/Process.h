#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace test {

struct ProcessOptions {
    std::string input; ///< Standard input.
    /// Variables to set; one without a value is taken away.
    std::vector<std::pair<std::string, std::string>> environment;
    std::vector<std::string> without;
};

struct ProcessResult {
    int code = -1; ///< Exit code; -1 when it did not end by itself.
    std::string out;
    std::string err;
};

/// Nexwire with arguments.
std::vector<std::string> NexwireCommand(const std::vector<std::string>& arguments);

/// Runs nexwire to its end.
ProcessResult Nexwire(const std::vector<std::string>& arguments, const ProcessOptions& options = {});

/// Runs another program to its end.
ProcessResult RunProgram(const std::vector<std::string>& command, const ProcessOptions& options = {});

/// A program that runs on; killed at the end of its life, when it still does.
class Running {
public:
    explicit Running(const std::vector<std::string>& command);
    ~Running();
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

    /// The next line of standard output without its end; empty when there is none.
    std::string Line();
    /// On Windows: ends it with Ctrl+Break, whatever the number.
    void Signal(int number) const;
    /// Waits for the end; the output is what no `Line` took.
    ProcessResult Wait();

private:
    struct Child;
    std::unique_ptr<Child> child_;
};

/// A folder that goes with its object.
class Folder {
public:
    Folder();
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::string Path(const std::string& name) const { return path_ + "/" + name; }
    std::string Write(const std::string& name, const std::string& content) const;
    std::string Read(const std::string& name) const;

private:
    std::string path_;
};

} // namespace test
