#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <keel/GuidUtil.h>

/// A folder of its own for one test, removed at the end.
class TempFolder {
public:
    TempFolder() : path_(std::filesystem::temp_directory_path() / ("keel-" + Keel::GuidUtil::CreateGuid()))
    {
        std::filesystem::create_directories(path_);
    }
    ~TempFolder() { Remove(); }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    /// UTF-8 path of a file in it.
    std::string File(const std::string& name) const { return (path_ / std::filesystem::u8path(name)).u8string(); }

    std::string Write(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(std::filesystem::u8path(File(name)), std::ios::binary) << bytes;
        return File(name);
    }

    std::string Read(const std::string& name) const
    {
        std::ifstream stream(std::filesystem::u8path(File(name)), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    }

    void Remove() const
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& Path() const { return path_; }

private:
    std::filesystem::path path_;
};
