#pragma once

#include <string>
#include <string_view>

#include "src/Engine.h"

// Devices as the platform shows them, and what they have: channels, inputs, outputs, zones, ... Each kind of part is a
// collection whose documents name their device.

namespace nexwire::simulator {

/// Every device of the local network takes these.
constexpr std::string_view kDeviceUser = "admin";
constexpr std::string_view kDevicePassword = "Device-1234";

constexpr const char* kFirstVersion = "V1.4.2";

struct Part {
    const char* collection;
    const char* prefix; ///< First two characters of identifiers.
    const char* key;
    const char* number;
    const char* root; ///< Of one of them in an answer.
};

/// All kinds of parts.
const std::vector<Part>& Parts();
const Part& PartOf(std::string_view collection);
/// The prefix, 26 digits of the device, 4 of the number.
std::string PartGuid(const Part& part, std::string_view device, std::int64_t number);

/// Gives a device the parts that its type comes with, as far as there are none.
void Equip(Store::Transaction& store, const Json& device);

Json ShownDevice(Handling& handling, const std::string& guid);
/// A part as an answer tells it.
Json ShownPart(Handling& handling, const Part& part, Json document);
/// The part of a device that an identifier or a number names; refuses when there is none.
Json NeedPart(Handling& handling, const Part& part, const std::string& device, const std::string& named);
/// Calls `each` with the parts of a device in order of their numbers.
void EachPart(Handling& handling, const Part& part, const std::string& device,
              const std::function<void(const std::string& key, Json& document)>& each);
/// Refuses when the device is away.
void NeedReach(Handling& handling, std::string_view device);

/// Something that happens at a part of a device.
struct Event {
    const char* type;       ///< As in the log: "motion", "alarmInput", "zone", "doorForced".
    const char* sourceType; ///< "channel", "alarmInput", "zone", "door".
    std::string device;
    std::string source;
    std::string sourceName;
    std::int64_t atMs = 0;
};
/// Logs an alarm with a picture where a channel sees it, unless its link or its device's guard says no.
void Raise(Handling& handling, const Event& event);
/// Calls `each` with what may happen at a device, a kind of event per part of it.
void EachAlarmSource(Handling& handling, const std::string& device,
                     const std::function<void(const Event& event)>& each);
/// Notes the end of the alarms of a source that last.
void EndAlarms(Handling& handling, std::string_view source);

/// A PNG picture of its own for each text.
std::string Picture(std::string_view about, bool small);

} // namespace nexwire::simulator
