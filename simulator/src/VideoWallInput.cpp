#include "src/VideoWallInput.h"

namespace nexwire::simulator {

std::string_view WallText(WallCode code)
{
    switch (code) {
    case WallCode::kNotJson:
        return "The body is not a JSON object";
    case WallCode::kMissingKey:
        return "A key is missing or has the wrong type";
    case WallCode::kUnknownPath:
        return "There is no service under this path";
    case WallCode::kWrongVerb:
        return "Requests come as POST";
    case WallCode::kInternal:
        return "The service failed";
    case WallCode::kUnknownDevice:
        return "No decoder has this GUID";
    case WallCode::kDuplicateDevice:
        return "There is a decoder with this address and port";
    case WallCode::kBadCredentials:
        return "The decoder does not accept the account";
    case WallCode::kUnreachable:
        return "The decoder does not answer";
    case WallCode::kDeviceBusy:
        return "A running polling task uses the decoder";
    case WallCode::kBadAddress:
        return "The address is empty or the port is not between 1 and 65535";
    case WallCode::kUnknownOutput:
        return "The decoder has no such output";
    case WallCode::kNoSuchCell:
        return "The wall has no such cell";
    case WallCode::kCellTaken:
        return "Another output is bound to the cell";
    case WallCode::kNotBound:
        return "The output is not bound";
    case WallCode::kUnknownResolution:
        return "The output cannot show this resolution";
    case WallCode::kUnknownWindow:
        return "The decoder has no such window";
    case WallCode::kOutsideWall:
        return "The window covers cells that are not bound to the decoder";
    case WallCode::kTooManyWindows:
        return "The decoder opens no more windows";
    case WallCode::kUnknownSubWindow:
        return "The window has no such sub-window";
    case WallCode::kBadScreenNumber:
        return "A window is divided into 1, 4, 9 or 16";
    case WallCode::kNothingPlays:
        return "Nothing plays there";
    case WallCode::kNoStream:
        return "The stream has no address, or no key though it is encrypted";
    case WallCode::kUnknownTask:
        return "No polling task has this GUID";
    case WallCode::kDuplicateTask:
        return "There is a polling task of this name";
    case WallCode::kEmptyTask:
        return "A polling task needs a name, cameras and windows";
    case WallCode::kUnknownCamera:
        return "The polling task has no such camera";
    case WallCode::kNotRunning:
        return "The polling task does not run";
    case WallCode::kWindowBusy:
        return "Another running polling task uses the window";
    case WallCode::kBadPollingTime:
        return "The polling time is not between 1 and 86400 seconds";
    case WallCode::kUnknownSwitch:
        return "Cameras are switched to the one before (1) or behind (2)";
    }
    return "";
}

WallRefusal::WallRefusal(WallCode code, std::string_view detail)
    : std::runtime_error(std::string(WallText(code)) + (detail.empty() ? "" : ": ") + std::string(detail)), code_(code)
{
}

const Json& WallInput::Need(std::string_view key, bool (Json::*is)() const, const char* type) const
{
    const Json* const value = Member(*object_, key);
    if (value == nullptr || !(value->*is)()) {
        throw WallRefusal(WallCode::kMissingKey, std::string(key) + " (" + type + ")");
    }
    return *value;
}

std::string WallInput::Text(std::string_view key) const
{
    const Json& value = Need(key, &Json::IsString, "text");
    return {value.GetString(), value.GetStringLength()};
}

int WallInput::Int(std::string_view key) const
{
    return Need(key, &Json::IsInt, "integer").GetInt();
}

bool WallInput::Bool(std::string_view key) const
{
    return Need(key, &Json::IsBool, "boolean").GetBool();
}

WallInput WallInput::Object(std::string_view key) const
{
    return WallInput(Need(key, &Json::IsObject, "object"));
}

std::vector<WallInput> WallInput::List(std::string_view key) const
{
    std::vector<WallInput> list;
    for (const Json& element : Need(key, &Json::IsArray, "list").GetArray()) {
        if (!element.IsObject()) {
            throw WallRefusal(WallCode::kMissingKey, std::string(key) + " (list of objects)");
        }
        list.emplace_back(element);
    }
    return list;
}

} // namespace nexwire::simulator
