#pragma once

#include <string>

// Where a message comes from, for builds without log4cxx: the same names, so that the same sources compile.

namespace log4cxx::spi {

/// Source file, function and line of a log call; texts are borrowed and must outlive it. Any thread.
class LocationInfo {
public:
    static constexpr const char* NA = "?";

    static const LocationInfo& getLocationUnavailable()
    {
        static const LocationInfo unavailable;
        return unavailable;
    }

    static const char* calcShortFileName(const char* fileName)
    {
        for (const char* at = fileName; *at != '\0'; ++at) {
            if (*at == '/' || *at == '\\') {
                fileName = at + 1;
            }
        }
        return fileName;
    }

    LocationInfo() = default;
    LocationInfo(const char* file, const char* shortFile, const char* function, int line)
        : file_(file), shortFile_(shortFile), function_(function), line_(line)
    {
    }

    const char* getFileName() const { return file_; }
    const char* getShortFileName() const { return shortFile_; }
    /// Name without result, class and arguments: "f" of "bool A::f(int)".
    const std::string getMethodName() const
    {
        const std::string whole(function_);
        const std::string head = whole.substr(0, whole.find('('));
        const std::size_t begin = head.find_last_of(" :");
        return begin == std::string::npos ? head : head.substr(begin + 1);
    }
    int getLineNumber() const { return line_; }

private:
    const char* file_ = NA;
    const char* shortFile_ = NA;
    const char* function_ = NA;
    int line_ = -1; ///< -1: not known.
};

} // namespace log4cxx::spi

#if defined(_MSC_VER)
#define LOG4CXX_FUNCTION_NAME __FUNCSIG__
#else
#define LOG4CXX_FUNCTION_NAME __PRETTY_FUNCTION__
#endif
#define LOG4CXX_LOCATION                                                                                               \
    ::log4cxx::spi::LocationInfo(__FILE__, ::log4cxx::spi::LocationInfo::calcShortFileName(__FILE__),                  \
                                 LOG4CXX_FUNCTION_NAME, __LINE__)
