#pragma once

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "catalogue/Types.h"
#include "nexwire/VideoWall/VideoWall.h"

// The plain records of the video wall as JSON, each member under its own name.

namespace nexwire {
namespace catalogue {

#define M(member) visit(#member, record.member)

#define NEXWIRE_RECORD(Type, ...)                                                                                      \
    template <class Visitor>                                                                                           \
    void VisitRecord(Type& record, Visitor&& visit)                                                                    \
    {                                                                                                                  \
        __VA_ARGS__;                                                                                                   \
    }

// clang-format off
NEXWIRE_RECORD(tagTWDeviceLoginParam, M(username), M(password), M(address), M(port), M(alias), M(guid))
NEXWIRE_RECORD(tagTWDeviceInfo, M(loginStatus), M(address), M(guid), M(deviceName), M(deviceSerial), M(username), M(port))
NEXWIRE_RECORD(tagTWDeviceOutputInfo, M(id), M(channelName), M(portType), M(deviceGuid), M(currentResolution), M(bindStatus), M(row), M(col))
NEXWIRE_RECORD(tagTWResolutionCap, M(deviceGuid), M(id), M(currentResolution), M(resolutionCapList), M(resolution))
NEXWIRE_RECORD(tagTWPlayInfo, M(deviceGuid), M(id), M(url), M(streamEncrypt), M(streamPassword), M(subWndNo), M(row), M(col), M(rowNum), M(colNum), M(windowId), M(enable), M(number), M(windowNum))
NEXWIRE_RECORD(tagTWWindowOpenInfo, M(deviceGuid), M(id), M(subWndNo), M(row), M(col), M(rowNum), M(colNum), M(windowId))
NEXWIRE_RECORD(tagTWWallDecodeInfo, M(subWndNo), M(videoFPS), M(audioFPS), M(isDecoding), M(videoType), M(packetType), M(videoTotal), M(imageWidth), M(imageHeight))
NEXWIRE_RECORD(tagTWWallSpec, M(videoWallNum), M(screenRowNum), M(screenColNum))
NEXWIRE_RECORD(tagTWPollingCameraInfo, M(cameraGuid), M(cameraName), M(deviceSerial), M(channelNo), M(url), M(streamKey), M(guid), M(cameraType), M(share), M(isExist), M(taskGuid))
NEXWIRE_RECORD(tagTWPollingWindowInfo, M(deviceGuid), M(windowId), M(subNo), M(guid))
NEXWIRE_RECORD(tagTWWallPollingTaskInfo, M(videoWallGuid), M(accountNo), M(teamNo), M(taskGuid), M(taskName), M(pollingTime), M(streamType), M(isRunning), M(cameraList), M(windowList), M(optType), M(stopMode), M(taskGuidList), M(cameraDeviceSerial), M(cameraChannelNo), M(currentCameraNum), M(totalCameraNum))
NEXWIRE_RECORD(TWErrorInfoByGuid, M(guid), M(code), M(module))
NEXWIRE_RECORD(TWErrorInfo, M(code), M(module), M(message))
// clang-format on
#undef NEXWIRE_RECORD
#undef M

using RecordWriter = rapidjson::Writer<rapidjson::StringBuffer>;

inline void WriteMember(RecordWriter& writer, const std::string& value)
{
    writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
}
inline void WriteMember(RecordWriter& writer, int value)
{
    writer.Int(value);
}
inline void WriteMember(RecordWriter& writer, bool value)
{
    writer.Bool(value);
}
template <class Element>
void WriteMember(RecordWriter& writer, const std::vector<Element>& list);
template <class Record>
void WriteMember(RecordWriter& writer, const Record& record)
{
    writer.StartObject();
    VisitRecord(const_cast<Record&>(record), [&](const char* key, const auto& member) {
        writer.Key(key);
        WriteMember(writer, member);
    });
    writer.EndObject();
}
template <class Element>
void WriteMember(RecordWriter& writer, const std::vector<Element>& list)
{
    writer.StartArray();
    for (const Element& element : list) {
        WriteMember(writer, element);
    }
    writer.EndArray();
}

inline bool ReadMember(const rapidjson::Value& value, std::string& member)
{
    if (!value.IsString()) {
        return false;
    }
    member.assign(value.GetString(), value.GetStringLength());
    return true;
}
inline bool ReadMember(const rapidjson::Value& value, int& member)
{
    if (!value.IsInt()) {
        return false;
    }
    member = value.GetInt();
    return true;
}
inline bool ReadMember(const rapidjson::Value& value, bool& member)
{
    if (!value.IsBool()) {
        return false;
    }
    member = value.GetBool();
    return true;
}
template <class Element>
bool ReadMember(const rapidjson::Value& value, std::vector<Element>& list);
/// False when a key is not a member or its value has another type.
template <class Record>
bool ReadMember(const rapidjson::Value& value, Record& record)
{
    if (!value.IsObject()) {
        return false;
    }
    rapidjson::SizeType known = 0;
    bool fits = true;
    VisitRecord(record, [&](const char* key, auto& member) {
        const auto found = value.FindMember(key);
        if (found != value.MemberEnd()) {
            ++known;
            fits = ReadMember(found->value, member) && fits;
        }
    });
    return fits && known == value.MemberCount();
}
template <class Element>
bool ReadMember(const rapidjson::Value& value, std::vector<Element>& list)
{
    if (!value.IsArray()) {
        return false;
    }
    list.clear();
    for (const rapidjson::Value& element : value.GetArray()) {
        if (!ReadMember(element, list.emplace_back())) {
            return false;
        }
    }
    return true;
}

inline void SampleMember(const char* key, std::string& member)
{
    member = std::string("{") + key + "}";
}
inline void SampleMember(const char*, int&) {}
inline void SampleMember(const char*, bool&) {}
template <class Element>
void SampleMember(const char* key, std::vector<Element>& list);
template <class Record>
void SampleMember(const char*, Record& record)
{
    VisitRecord(record, [](const char* key, auto& member) { SampleMember(key, member); });
}
template <class Element>
void SampleMember(const char* key, std::vector<Element>& list)
{
    SampleMember(key, list.emplace_back());
}

template <class T>
struct RecordTypeOf : TypeOpsBase<T> {
    using Base = TypeOpsBase<T>;
    static bool Read(void* value, const std::string& text)
    {
        rapidjson::Document document;
        return !document.Parse<rapidjson::kParseIterativeFlag>(text.data(), text.size()).HasParseError() &&
               ReadMember(document, Base::As(value));
    }
    static void Sample(void* value) { SampleMember("", Base::As(value)); }
    static std::string Write(const void* value)
    {
        rapidjson::StringBuffer buffer;
        RecordWriter writer(buffer);
        WriteMember(writer, Base::As(value));
        return std::string(buffer.GetString(), buffer.GetSize());
    }
};

#define NEXWIRE_RECORD_TYPE(T)                                                                                         \
    template <>                                                                                                        \
    struct TypeOf<T> : RecordTypeOf<T> {                                                                               \
        static std::string Name() { return #T; }                                                                       \
        static constexpr TypeOps ops = {Shape::Record,                                                                 \
                                        Create,                                                                        \
                                        Destroy,                                                                       \
                                        RecordTypeOf<T>::Read,                                                         \
                                        RecordTypeOf<T>::Write,                                                        \
                                        Name,                                                                          \
                                        TypeOpsBase<T>::NoFields,                                                      \
                                        RecordTypeOf<T>::Sample};                                                      \
    };
NEXWIRE_RECORD_TYPE(tagTWDeviceLoginParam)
NEXWIRE_RECORD_TYPE(tagTWDeviceInfo)
NEXWIRE_RECORD_TYPE(tagTWDeviceOutputInfo)
NEXWIRE_RECORD_TYPE(tagTWResolutionCap)
NEXWIRE_RECORD_TYPE(tagTWPlayInfo)
NEXWIRE_RECORD_TYPE(tagTWWindowOpenInfo)
NEXWIRE_RECORD_TYPE(tagTWWallDecodeInfo)
NEXWIRE_RECORD_TYPE(tagTWWallSpec)
NEXWIRE_RECORD_TYPE(tagTWWallPollingTaskInfo)
NEXWIRE_RECORD_TYPE(TWErrorInfoByGuid)
NEXWIRE_RECORD_TYPE(TWErrorInfo)
#undef NEXWIRE_RECORD_TYPE

} // namespace catalogue
} // namespace nexwire
