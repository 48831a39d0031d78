#pragma once

#include "protocol/DeviceManagement/CorvidStream.h"

namespace nexwire {

/// Devices that register themselves with the platform: streams, recordings, pictures.
///
/// All functions block until the answer is there and may be called from any thread. They return true when the answer
/// was a readable envelope, whatever its code; those that ask the device itself (profile, search, channel states) need
/// a readable text of it, too. A result is untouched on false.
class NEXWIRE_API CCorvidCMSComm {
public:
    /// Where the platform receives streams. The path has two blanks, before and behind "deviceManagement".
    static bool request(protocol::CorvidSMSPort& result);
    /// Starts live pictures.
    static bool request(const protocol::CorvidPreview& preview, protocol::SessionIDData& result,
                        const std::string& deviceGuid);
    /// Starts two-way sound.
    static bool request(const protocol::CorvidVoice& voice, protocol::SessionIDData& result,
                        const std::string& deviceGuid);
    /// Stops a stream.
    static bool request(const protocol::PushStream& stream, const std::string& deviceGuid);
    /// Has the device send a stream.
    static bool requestPushStream(const protocol::PushStream& stream, const std::string& deviceGuid);
    /// Searches recordings. The path joins "devices" and the identifier without a slash.
    static bool request(const protocol::CorvidFindRecFileParam& search, protocol::CorvidRecFindResult& result,
                        const std::string& deviceGuid);
    /// Starts a playback; the path spells "startPalyback" so.
    static bool request(const protocol::CorvidPlayBackParam& playback, protocol::SessionIDData& result,
                        const std::string& deviceGuid);
    /// Pauses, resumes, speeds up, seeks, stops; the path spells "operatePalyback" so.
    static bool request(const protocol::CorvidPlayBackOperateParam& operation, const std::string& deviceGuid);
    /// What the device can search.
    static bool request(protocol::CMSearchProfile& result, const std::string& deviceGuid);
    /// Searches recordings and pictures on the device.
    static bool request(const protocol::SearchRecPicFileParam& search, protocol::CMSearchResult& result,
                        const std::string& deviceGuid);
    /// How the channels of the device are.
    static bool request(protocol::ChanStatusList& result, const std::string& deviceGuid);
};

} // namespace nexwire
