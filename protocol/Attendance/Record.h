#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol {

// Clock records and where they come from. Times are ISO 8601 with their offset.

/// Takes a device's events into attendance.
struct NEXWIRE_API DeviceSyncEventReq : IInboundData {
    std::string deviceGuid;
    std::string startTime;
    std::string endTime;
    std::vector<std::int32_t> eventTypeList; ///< Event numbers of the device; empty: all that open a door.
    bool calculate = false;                  ///< Calculates the days that change.
    NEXWIRE_JSON
};

/// An uploaded file of clock records: one line each, number, name and time, separated by commas, UTF-8, with a heading.
struct NEXWIRE_API ImportAttendanceFiles : IInboundData {
    std::string uploadGuid; ///< Of the upload.
    std::string fileName;
    std::string encoding = "UTF-8"; ///< One of: "UTF-8", "GBK".
    std::string separator = ",";    ///< Between columns. Up to 4 characters.
    bool skipFirstLine = true;      ///< The first line is a heading.
    bool calculate = false;         ///< Calculates the days that change.
    NEXWIRE_JSON
};

/// A line that was not taken.
struct NEXWIRE_API FileImportFailure : IReturnData {
    std::int32_t lineNo = 0; ///< From 1, the heading included.
    std::string text;        ///< The line as it stands.
    std::string reason;
    NEXWIRE_JSON
};

struct NEXWIRE_API FileImportReturn : IReturnData {
    std::int32_t total = 0;     ///< Lines with a record.
    std::int32_t succeeded = 0; ///< Records taken, those that were there already included.
    std::int32_t failed = 0;
    std::vector<FileImportFailure> fileImportFailureList;
    NEXWIRE_JSON
};

struct NEXWIRE_API FileImportReturnData : IReturnData {
    FileImportReturn fileImportReturn;
    NEXWIRE_JSON
};

/// An event of an access-control device.
struct NEXWIRE_API AcsEventInfo : IInboundData {
    std::int32_t major = 0; ///< Kind of event. One of: 1 alarm, 2 fault, 3 operation, 5 event.
    std::int32_t minor = 0; ///< Event number within the kind; device vocabulary.
    std::string time;
    std::int64_t serialNo = 0;    ///< Counts the device's events.
    std::string employeeNoString; ///< Number of the person; empty when unknown.
    std::string name;
    std::string cardNo;
    std::int32_t cardReaderNo = 0; ///< From 1; 0 none.
    std::int32_t doorNo = 0;       ///< From 1; 0 none.
    std::string attendanceStatus;  ///< As the person chose. One of: "", "checkIn", "checkOut", "breakIn", "breakOut",
                                   ///< "overtimeIn", "overtimeOut".
    std::string currentVerifyMode; ///< How the person was recognised; device vocabulary.
    std::string pictureURL;        ///< Of the snapshot, empty without one.
    NEXWIRE_JSON
};

/// A page of a device's events.
struct NEXWIRE_API AcsEventSearch : IInboundData {
    std::string searchID;
    std::string responseStatusStrg; ///< One of: "OK", "MORE", "NO MATCH". Spelled so.
    std::int32_t numOfMatches = 0;  ///< On this page.
    std::int32_t totalMatches = 0;  ///< On all pages.
    std::vector<AcsEventInfo> infoList;
    NEXWIRE_JSON
};

/// Has the platform go through its statistics without keeping what comes out.
struct NEXWIRE_API StatisticsTestInfo : IInboundData {
    std::string startDate; ///< "YYYY-MM-DD".
    std::string endDate;
    NEXWIRE_JSON
};

} // namespace protocol
