#include "HostFailure.h"

#include <exception>

#include <keel/Error.h>
#include <keel/StringUtil.h>

namespace nexwire::host {

namespace {

bool SetError(std::int32_t category, std::int32_t number, const std::string& text)
{
    Keel::Error::ErrorCode code;
    code.category = category;
    code.number = number;
    code.text = text;
    Keel::Error::SetLastError(code);
    return false;
}

} // namespace

bool Fail(HostError error, const std::string& text)
{
    return SetError(kHostErrorCategory, static_cast<std::int32_t>(error), text);
}

bool FailStatus(long status, const std::string& text)
{
    return SetError(kHttpStatusCategory, static_cast<std::int32_t>(status), text);
}

bool FailWithoutMemory(RspInfos& response) noexcept
{
    try {
        response = RspInfos();
        return Fail(HostError::OutOfMemory, "out of memory");
    } catch (const std::exception&) {
        return false;
    }
}

std::string Printable(const std::string& text, std::size_t limit)
{
    const bool cut = text.size() > limit;
    std::size_t end = cut ? limit : text.size();
    while (cut && end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
        --end;
    }
    std::string line = Keel::StringUtil::SingleLine(text.substr(0, end));
    if (cut) {
        line += "...";
    }
    return line;
}

} // namespace nexwire::host
