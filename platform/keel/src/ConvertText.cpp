#ifndef _WIN32

#include "ConvertText.h"

#include <algorithm>
#include <cerrno>

#include <iconv.h>

#include "Utf8.h"

namespace Keel::details {
namespace {

class Converter {
public:
    Converter(const char* from, const char* to) : handle_(iconv_open(to, from)) {}
    ~Converter()
    {
        if (IsOpen()) {
            iconv_close(handle_);
        }
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool IsOpen() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

    /// Converts what it can of the `left` bytes at `in` and appends it; both say what remains. 0, or the error.
    int Append(char*& in, std::size_t& left, std::string& converted)
    {
        for (;;) {
            const int error = AppendOnce(&in, &left, converted);
            if (error != E2BIG) {
                return error;
            }
        }
    }

    /// Appends what brings a set with shift states back to its first one.
    void Finish(std::string& converted) { AppendOnce(nullptr, nullptr, converted); }

private:
    int AppendOnce(char** in, std::size_t* left, std::string& converted)
    {
        char buffer[4096];
        char* out = buffer;
        std::size_t room = sizeof buffer;
        const std::size_t result = iconv(handle_, in, left, &out, &room);
        const int error = result == static_cast<std::size_t>(-1) ? errno : 0;
        converted.append(buffer, sizeof buffer - room);
        return error;
    }

    iconv_t handle_;
};

} // namespace

bool ConvertText(CodeSet from, CodeSet to, const std::string& text, const std::string& unknown, std::string& converted)
{
    Converter converter(from, to);
    if (!converter.IsOpen()) {
        return false;
    }
    const bool fromUtf8 = std::string(from) == kUtf8;
    converted.clear();
    std::string source = text; // iconv's input is not const.
    char* in = &source[0];
    std::size_t left = source.size();
    while (left > 0 && converter.Append(in, left, converted) != 0 && left > 0) {
        // Stopped at something that cannot be converted. A whole character is one `unknown`, a stray byte as well.
        const std::size_t skip = fromUtf8 ? std::max<std::size_t>(Utf8Length(in, left), 1) : 1;
        in += skip;
        left -= skip;
        converter.Finish(converted);
        converted += unknown;
    }
    converter.Finish(converted);
    return true;
}

} // namespace Keel::details

#endif
