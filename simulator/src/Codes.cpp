#include "src/Codes.h"

namespace nexwire::simulator {
namespace {

struct ReasonRow {
    Reason reason;
    std::string_view name;
    std::string_view text;
};

constexpr ReasonRow kReasons[] = {
    {Reason::kUnknownPath, "unknownPath", "There is no service under this path"},
    {Reason::kWrongVerb, "wrongVerb", "This path does not take this verb"},
    {Reason::kMalformedHttp, "malformedHttp", "The request is not HTTP"},
    {Reason::kBodyTooLarge, "bodyTooLarge", "The body is too large"},
    {Reason::kNotJson, "notJson", "The body is not JSON"},
    {Reason::kMissingRoot, "missingRoot", "The body does not hold its root object"},
    {Reason::kMissingField, "missingField", "A required field is missing or empty"},
    {Reason::kWrongType, "wrongType", "A field has the wrong type"},
    {Reason::kUnknownField, "unknownField", "A field is not known here"},
    {Reason::kOutOfRange, "outOfRange", "A field is outside its vocabulary or range"},
    {Reason::kForeignPage, "foreignPage", "Only requests to the platform's own address are answered"},
    {Reason::kNoToken, "noToken", "The platform asks for its token"},
    {Reason::kUnknownGuid, "unknownGuid", "Nothing has this identifier"},
    {Reason::kUnknownDevice, "unknownDevice", "No device has this identifier"},
    {Reason::kDuplicate, "duplicate", "It exists already"},
    {Reason::kInUse, "inUse", "It is in use"},
    {Reason::kDownloadRunning, "downloadRunning", "The access group is being downloaded"},
    {Reason::kNothingToDownload, "nothingToDownload", "The access group has no persons or no objects"},
    {Reason::kNothingFailed, "nothingFailed", "No part of the download failed"},
    {Reason::kNoDownload, "noDownload", "The access group is not being downloaded"},
    {Reason::kScheduleConflict, "scheduleConflict", "A person has another schedule on the same door"},
    {Reason::kDeviceOffline, "deviceOffline", "The device does not answer"},
    {Reason::kUnknownCommand, "unknownCommand", "The device does not know this command"},
    {Reason::kUnknownBatch, "unknownBatch", "There is no such batch transfer"},
    {Reason::kDeviceRefused, "deviceRefused", "The device refused the input"},
    {Reason::kWrongPassword, "wrongPassword", "User name, password or answers are wrong"},
    {Reason::kInternal, "internal", "The platform failed"},
};

struct ModuleRow {
    std::string_view name;
    int category;
};

constexpr ModuleRow kModules[] = {
    {"platform", 1},
    {"framework", 2},
    {"accessController", 3},
    {"deviceManagement", 4},
    {"personnel", 5},
    {"event", 6},
    {"system", 7},
    {"videoWall", 8},
    {"release", 9},
    {"signage", 10},
    {"map", 11},
    {"attendance", 12},
    {"statistics", 13},
    {"log", 14},
    {"topology", 15},
    {"view", 16},
    {"file", 17},
    {"visitor", 18},
    {"alarm", 19},
    {"storage", 20},
    {"video", 21},
    {"electronicMap", 11},
    {"eventService", 6},
};

} // namespace

std::string_view ReasonText(Reason reason)
{
    for (const ReasonRow& row : kReasons) {
        if (row.reason == reason) {
            return row.text;
        }
    }
    return "";
}

Reason ReasonByName(std::string_view name)
{
    for (const ReasonRow& row : kReasons) {
        if (row.name == name) {
            return row.reason;
        }
    }
    return Reason::kNone;
}

int ModuleCategory(std::string_view module)
{
    for (const ModuleRow& row : kModules) {
        if (row.name == module) {
            return row.category;
        }
    }
    return 0;
}

Refusal::Refusal(Reason reason, std::string_view detail)
    : std::runtime_error(std::string(ReasonText(reason)) + (detail.empty() ? "" : ": ") + std::string(detail)),
      reason_(reason)
{
}

} // namespace nexwire::simulator
