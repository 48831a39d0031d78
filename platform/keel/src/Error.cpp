#include "keel/Error.h"

#include <cstdio>
#include <cstdlib>

#include "Utf8.h"

namespace Keel::Error {
namespace {

struct LastError {
    LastError() = default;
    LastError(const LastError&) = delete;
    LastError& operator=(const LastError&) = delete;
    ~LastError();

    ErrorCode code;
    bool stored = false;
};

// A thread's last error is gone before its last destructors have run; those may still ask. No destructor of its own.
thread_local bool t_gone = false;

LastError::~LastError()
{
    t_gone = true;
}

LastError* OfThisThread()
{
    if (t_gone) {
        return nullptr;
    }
    thread_local bool t_prepared = false;
    if (!t_prepared) {
        // Registering the destructor aborts the process when there is no room for it. Better no last error, then.
        void* const room = std::malloc(256);
        if (room == nullptr) {
            return nullptr;
        }
        std::free(room);
        t_prepared = true;
    }
    thread_local LastError t_last;
    return &t_last;
}

void Store(std::int32_t category, std::int32_t number, const std::string& text)
{
    if (LastError* const last = OfThisThread()) {
        last->code.text = text; // Keeps its memory.
        last->code.category = category;
        last->code.number = number;
        last->stored = true;
    }
}

void AppendEscaped(std::string& json, const std::string& text)
{
    std::size_t i = 0;
    while (i < text.size()) {
        const std::size_t length = details::Utf8Length(text.data() + i, text.size() - i);
        const char c = text[i];
        if (length == 0) {
            json += "\xEF\xBF\xBD";
            ++i;
            continue;
        }
        if (c == '"' || c == '\\') {
            json += '\\';
            json += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(c));
            json += escape;
        } else {
            json.append(text, i, length);
        }
        i += length;
    }
}

} // namespace

void SetLastError(const ErrorCode& code)
{
    Store(code.category, code.number, code.text);
}

ErrorCode GetLastError()
{
    const LastError* const last = OfThisThread();
    return last ? last->code : ErrorCode();
}

void SetLastErrorJson(const std::string& message, std::int32_t module, std::int32_t code)
{
    Store(module, code, message);
}

std::string GetLastErrorJson()
{
    const LastError* const last = OfThisThread();
    std::string json;
    if (last && last->stored) {
        json = "{\"code\":" + std::to_string(last->code.number) + ",\"module\":" + std::to_string(last->code.category) +
               ",\"msg\":\"";
        AppendEscaped(json, last->code.text);
        json += "\"}";
    }
    return json;
}

} // namespace Keel::Error
