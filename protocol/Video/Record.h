#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol {

/// A part of a day in which something is recorded.
struct NEXWIRE_API RecordSegment : IInboundData {
    std::string beginTime;             ///< "HH:MM:SS".
    std::string endTime;               ///< "HH:MM:SS", not before beginTime; "24:00:00" is the end of the day.
    std::string recordType = "timing"; ///< One of: "timing" always, "motion", "alarm", "motionOrAlarm".
    NEXWIRE_JSON
};

struct NEXWIRE_API RecordDay : IInboundData {
    std::int32_t weekday = 1; ///< One of: 1 Monday, 2 Tuesday, 3 Wednesday, 4 Thursday, 5 Friday, 6 Saturday, 7 Sunday.
    std::vector<RecordSegment> recordSegmentList; ///< In order of time, without overlap. Up to 8 elements.
    NEXWIRE_JSON
};

/// Templates asked for; what is empty or 0 does not narrow.
struct NEXWIRE_API TemplateQueryCondition : IInboundData {
    std::string templateName;      ///< Part of the name.
    std::int32_t templateType = 0; ///< One of: 0 any, 1 all day, 2 working days, 3 of a user.
    NEXWIRE_JSON
};

/// A template without its days.
struct NEXWIRE_API TemplateResponse : IReturnData {
    std::string templateGuid;
    std::string templateName;
    std::int32_t templateType = 0; ///< One of: 1 all day, 2 working days, 3 of a user.
    bool isUsed = false;           ///< A channel records by it.
    std::string description;
    NEXWIRE_JSON
};

struct NEXWIRE_API TemplateResponseListData : IReturnData {
    std::vector<TemplateResponse> templateResponseList;
    NEXWIRE_JSON
};

/// When to record, week by week.
struct NEXWIRE_API TemplateInfo : IReturnData {
    std::string templateGuid;
    std::string templateName;
    std::int32_t templateType = 0;        ///< One of: 1 all day, 2 working days, 3 of a user.
    std::vector<RecordDay> recordDayList; ///< At most one per day of the week; on a missing day nothing is recorded.
    std::string description;
    std::string modifyTime; ///< Last change, "2026-03-01T08:00:00+00:00".
    NEXWIRE_JSON
};

struct NEXWIRE_API TemplateInfoData : IReturnData {
    TemplateInfo templateInfo;
    NEXWIRE_JSON
};

/// What becomes of one template.
struct NEXWIRE_API ModifyTemplate : IInboundData {
    std::int32_t operateType = 0;         ///< One of: 0 add, 1 change, 2 remove.
    std::string templateGuid;             ///< Empty for a new one.
    std::string templateName;             ///< Up to 64 characters.
    std::int32_t templateType = 3;        ///< One of: 1 all day, 2 working days, 3 of a user.
    std::vector<RecordDay> recordDayList; ///< Up to 7 elements.
    std::string description;
    NEXWIRE_JSON
};

struct NEXWIRE_API ModifyTemplates : IInboundData {
    std::vector<ModifyTemplate> modifyTemplateList; ///< Required.
    NEXWIRE_JSON
};

struct NEXWIRE_API TemplateResult : IReturnData {
    std::string templateGuid;
    std::string templateName;
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API TemplateResultListData : IReturnData {
    std::vector<TemplateResult> templateResultList;
    NEXWIRE_JSON
};

/// Files on the client's machine that are asked for; what is empty or 0 does not narrow.
struct NEXWIRE_API LocalFile : IInboundData {
    std::string channelGuid;
    std::int32_t fileType = 0; ///< One of: 0 any, 1 recording, 2 picture, 3 sound.
    std::string beginTime;     ///< "2026-03-01T08:00:00+00:00".
    std::string endTime;       ///< Not before beginTime.
    NEXWIRE_JSON
};

/// A file by channel and time.
struct NEXWIRE_API LocalFileInfo : IInboundData {
    std::string fileGuid;
    std::string fileName;
    std::string filePath;
    std::string channelGuid;
    std::string channelName;
    std::int32_t fileType = 0; ///< One of: 0 unknown, 1 recording, 2 picture, 3 sound.
    std::string beginTime;     ///< "2026-03-01T08:00:00+00:00".
    std::string endTime;       ///< Of a picture as beginTime.
    std::int64_t fileSize = 0; ///< Bytes.
    bool isLocked = false;     ///< Kept when room is made for others.
    NEXWIRE_JSON
};

struct NEXWIRE_API LocalFileResult : IReturnData {
    std::int32_t total = 0;
    std::vector<LocalFileInfo> localFileInfoList;
    NEXWIRE_JSON
};

struct NEXWIRE_API LocalFileResultData : IReturnData {
    LocalFileResult localFileResult;
    NEXWIRE_JSON
};

/// Tells the platform of files that came, changed or went.
struct NEXWIRE_API LocalFileNotify : IInboundData {
    std::int32_t notifyType = 0;                  ///< One of: 0 added, 1 changed, 2 removed.
    std::vector<LocalFileInfo> localFileInfoList; ///< Required.
    NEXWIRE_JSON
};

struct NEXWIRE_API FileNotifyResult : IReturnData {
    std::int32_t successNum = 0;
    std::int32_t failedNum = 0;
    std::vector<std::string> fileGuidList; ///< Identifiers of the files, in the order of the request.
    NEXWIRE_JSON
};

struct NEXWIRE_API FileNotifyResultData : IReturnData {
    FileNotifyResult fileNotifyResult;
    NEXWIRE_JSON
};

/// Files that the platform was told of; what is empty or 0 does not narrow.
struct NEXWIRE_API LocalFileQuery : IInboundData {
    std::vector<std::string> channelGuidList;
    std::int32_t fileType = 0;   ///< One of: 0 any, 1 recording, 2 picture, 3 sound.
    std::string fileName;        ///< Part of the name.
    std::string beginTime;       ///< "2026-03-01T08:00:00+00:00".
    std::string endTime;         ///< Not before beginTime.
    std::int32_t pageNo = 1;     ///< From 1.
    std::int32_t pageSize = 100; ///< 1 to 1000.
    NEXWIRE_JSON
};

struct NEXWIRE_API LocalFileQueryResult : IReturnData {
    std::int32_t total = 0; ///< On all pages together.
    std::int32_t pageNo = 0;
    std::vector<LocalFileInfo> localFileInfoList;
    NEXWIRE_JSON
};

struct NEXWIRE_API LocalFileQueryResultData : IReturnData {
    LocalFileQueryResult localFileQueryResult;
    NEXWIRE_JSON
};

/// Settings of video that all clients share.
struct NEXWIRE_API VideoSystemConfigData : IReturnData {
    std::string picturePath;        ///< Where snapshots are saved.
    std::string recordPath;         ///< Where recordings are saved.
    std::int32_t pictureFormat = 0; ///< One of: 0 JPEG, 1 PNG, 2 BMP.
    std::int32_t snapshotNum = 1;   ///< Pictures a snapshot takes. 1 to 10.
    std::int32_t packTime = 30;     ///< Length of a recording's file. 1 to 120 min.
    std::int32_t prePlayTime = 10;  ///< How much before an alarm playback begins. 0 to 300 s.
    std::int32_t decodeMode = 0;    ///< One of: 0 by the processor, 1 by the graphics card.
    std::int32_t streamType = 0;    ///< Of many windows. One of: 0 main, 1 sub, 2 by the window's size.
    bool overwrite = true;          ///< Oldest files go when there is no room.
    NEXWIRE_JSON
};

struct NEXWIRE_API VideoSystemConfigDataData : IReturnData {
    VideoSystemConfigData videoSystemConfigData;
    NEXWIRE_JSON
};

/// A stored picture.
struct NEXWIRE_API PicStorage : IInboundData {
    std::string picUrl;            ///< As events and persons name it. Required.
    std::string storageServerGuid; ///< Empty: the server that the platform chooses.
    std::int32_t width = 0;        ///< To scale it to; 0: as it is. 0 to 16384 pixels.
    std::int32_t height = 0;       ///< 0 to 16384 pixels.
    NEXWIRE_JSON
};

/// Something that all operators are to hear or see.
struct NEXWIRE_API BroadCastNotify : IInboundData {
    std::int32_t broadCastType = 0;           ///< One of: 0 text, 1 sound begins, 2 sound ends.
    std::string content;                      ///< The text; of a sound what it is about.
    std::vector<std::string> userGuidList;    ///< Empty: everybody who is signed in.
    std::vector<std::string> channelGuidList; ///< Loudspeakers that take part.
    std::int32_t volume = 50;                 ///< 0 to 100 %.
    NEXWIRE_JSON
};

struct NEXWIRE_API BroadCastResult : IReturnData {
    std::string broadCastGuid;
    std::int32_t successNum = 0;
    std::int32_t failedNum = 0;
    std::vector<std::string> failedGuidList; ///< Users and loudspeakers that were not reached.
    NEXWIRE_JSON
};

struct NEXWIRE_API BroadCastResultData : IReturnData {
    BroadCastResult broadCastResult;
    NEXWIRE_JSON
};

} // namespace protocol
