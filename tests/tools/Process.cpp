#include "Process.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include <keel/GuidUtil.h>

namespace test {

std::vector<std::string> NexwireCommand(const std::vector<std::string>& arguments)
{
    std::vector<std::string> command = {NEXWIRE_EXECUTABLE};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return command;
}

ProcessResult Nexwire(const std::vector<std::string>& arguments, const ProcessOptions& options)
{
    return RunProgram(NexwireCommand(arguments), options);
}

Folder::Folder()
{
    path_ = (std::filesystem::temp_directory_path() / ("nexwire-" + Keel::GuidUtil::CreateGuid())).string();
    std::filesystem::create_directory(path_);
}

Folder::~Folder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string Folder::Write(const std::string& name, const std::string& content) const
{
    std::ofstream(Path(name), std::ios::binary) << content;
    return Path(name);
}

std::string Folder::Read(const std::string& name) const
{
    std::ostringstream text;
    text << std::ifstream(Path(name), std::ios::binary).rdbuf();
    return text.str();
}

} // namespace test
