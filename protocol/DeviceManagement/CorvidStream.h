#pragma once

#include "nexwire/JSONStruct.h"

// Devices that register themselves with the platform: their live pictures, voice, recordings and pictures. Times are
// ISO 8601 texts.

namespace protocol {

/// Where streams of such devices are received.
struct NEXWIRE_API CorvidSMSPort : IReturnData {
    std::string address;      ///< IP address or host name of the platform's receiver.
    std::int32_t port = 0;    ///< 1 to 65535.
    std::int32_t tlsPort = 0; ///< 1 to 65535; 0: none.
    NEXWIRE_JSON
};

/// Asks a device for live pictures.
struct NEXWIRE_API CorvidPreview : IInboundData {
    std::int32_t channelNo = 1;  ///< From 1.
    std::int32_t streamType = 0; ///< One of: 0 main, 1 sub, 2 third.
    std::int32_t transport = 0;  ///< One of: 0 TCP, 1 UDP.
    std::string serverAddress;   ///< Where the device sends the stream.
    std::int32_t serverPort = 0; ///< 1 to 65535.
    NEXWIRE_JSON
};

/// Asks a device for two-way sound.
struct NEXWIRE_API CorvidVoice : IInboundData {
    std::int32_t audioNo = 1;    ///< Sound channel, from 1.
    std::string codec;           ///< For example: "G.711A", "G.711U", "AAC".
    std::int32_t transport = 0;  ///< One of: 0 TCP, 1 UDP.
    std::string serverAddress;   ///< Where the device sends the stream.
    std::int32_t serverPort = 0; ///< 1 to 65535.
    NEXWIRE_JSON
};

/// A stream of a device.
struct NEXWIRE_API SessionID : IReturnData {
    std::string sessionID;
    NEXWIRE_JSON
};

struct NEXWIRE_API SessionIDData : IReturnData {
    SessionID sessionID;
    NEXWIRE_JSON
};

/// Which stream of a device is started or stopped.
struct NEXWIRE_API PushStream : IInboundData {
    std::string sessionID;
    std::int32_t channelNo = 1;  ///< From 1.
    std::int32_t streamKind = 0; ///< One of: 0 live pictures, 1 voice, 2 recording.
    NEXWIRE_JSON
};

/// Which recordings are looked for.
struct NEXWIRE_API CorvidFindRecFileParam : IInboundData {
    std::int32_t channelNo = 1; ///< From 1.
    std::string recordType;     ///< One of: "" any, "schedule", "alarm", "motion", "manual".
    std::string beginTime;
    std::string endTime;
    std::int32_t position = 0;   ///< Hits to pass over.
    std::int32_t maxResults = 0; ///< 1 to 400; 0: as many as the device gives.
    NEXWIRE_JSON
};

/// A recording on a device.
struct NEXWIRE_API CorvidRecFile : IReturnData {
    std::string fileName;
    std::int32_t channelNo = 0; ///< From 1.
    std::string recordType;     ///< One of: "schedule", "alarm", "motion", "manual".
    std::string beginTime;
    std::string endTime;
    std::int64_t fileSize = 0; ///< Bytes.
    bool locked = false;       ///< Is not overwritten.
    NEXWIRE_JSON
};

struct NEXWIRE_API CorvidRecFindResult : IReturnData {
    std::int32_t total = 0; ///< Recordings that the search selects.
    bool isFinish = false;  ///< No more after these.
    std::vector<CorvidRecFile> corvidRecFileList;
    NEXWIRE_JSON
};

/// Asks a device for a recording.
struct NEXWIRE_API CorvidPlayBackParam : IInboundData {
    std::int32_t channelNo = 1; ///< From 1.
    std::string fileName;       ///< Empty: by time.
    std::string beginTime;
    std::string endTime;
    std::int32_t streamType = 0; ///< One of: 0 main, 1 sub, 2 third.
    std::string serverAddress;   ///< Where the device sends the stream.
    std::int32_t serverPort = 0; ///< 1 to 65535.
    NEXWIRE_JSON
};

/// What a playback is to do.
struct NEXWIRE_API CorvidPlayBackOperateParam : IInboundData {
    std::string sessionID;
    std::string operate;  ///< One of: "pause", "resume", "speed", "seek", "stop".
    double speed = 1;     ///< How many times as fast; negative backwards.
    std::string seekTime; ///< Where "seek" goes.
    NEXWIRE_JSON
};

/// What a device can search in its recordings and pictures.
struct NEXWIRE_API CMSearchProfile : IInboundData {
    std::int32_t maxResults = 0;              ///< Most hits in an answer.
    std::int32_t maxTimeSpan = 0;             ///< Longest span of a search, d; 0 no limit.
    std::vector<std::int32_t> channelNoList;  ///< Channels with recordings, from 1.
    std::vector<std::string> recordTypeList;  ///< Kinds of recordings.
    std::vector<std::string> pictureTypeList; ///< Kinds of pictures.
    NEXWIRE_JSON
};

/// Which recordings or pictures of a device are looked for.
struct NEXWIRE_API SearchRecPicFileParam : IInboundData {
    std::string searchID;                    ///< The caller's; the same for all pages of a search.
    std::int32_t searchKind = 0;             ///< One of: 0 recordings, 1 pictures.
    std::vector<std::int32_t> channelNoList; ///< From 1; empty: all.
    std::vector<std::string> typeList;       ///< Kinds as the profile lists them; empty: all.
    std::string beginTime;
    std::string endTime;
    std::int32_t position = 0;   ///< Hits to pass over.
    std::int32_t maxResults = 0; ///< 1 to 400; 0: as many as the device gives.
    NEXWIRE_JSON
};

/// A recording or a picture.
struct NEXWIRE_API CMSearchItem : IInboundData {
    std::string fileName;
    std::int32_t channelNo = 0; ///< From 1.
    std::string type;           ///< Kind as the profile lists them.
    std::string beginTime;
    std::string endTime;       ///< The same as the begin for a picture.
    std::int64_t fileSize = 0; ///< Bytes.
    std::string uri;           ///< Where the device has it.
    NEXWIRE_JSON
};

struct NEXWIRE_API CMSearchResult : IInboundData {
    std::string searchID;
    std::string responseStatus; ///< One of: "ok", "more", "noMatches".
    std::int32_t total = 0;     ///< Hits of the search.
    std::vector<CMSearchItem> searchItemList;
    NEXWIRE_JSON
};

struct NEXWIRE_API ChanStatus : IInboundData {
    std::int32_t channelNo = 0; ///< From 1.
    std::string name;
    std::int32_t onlineState = 0; ///< One of: 0 offline, 1 online, 2 not asked yet.
    std::int32_t recordState = 0; ///< One of: 0 not recording, 1 recording, 2 failed.
    bool videoLoss = false;
    std::string address; ///< Of a network camera behind a recorder; empty otherwise.
    NEXWIRE_JSON
};

/// How the channels of a device are.
struct NEXWIRE_API ChanStatusList : IInboundData {
    std::vector<ChanStatus> chanStatusList;
    NEXWIRE_JSON
};

} // namespace protocol
