#pragma once

#include "nexwire/JSONStruct.h"

// Jobs that the platform runs for a while: synchronisations, imports, refreshes. A start hands out a task identifier,
// progress is asked for until `finished`.

namespace protocol::personnelcommon {

/// An item of a job that could not be done.
struct NEXWIRE_API ProgressFailure : IReturnData {
    std::string item;            ///< What the job works through: number of a row, of a person, GUID of a device.
    std::string name;            ///< Name to show for it, may be empty.
    std::int32_t resultCode = 0; ///< The server's error number.
    std::string resultMsg;       ///< The server's words for it, may be empty.
    NEXWIRE_JSON
};

/// How far a synchronisation or an import of events is. (The name is spelled so.)
struct NEXWIRE_API SynchronouProgressData : IReturnData {
    std::int32_t progress = 0; ///< Items done. 0 to 100 %.
    std::int32_t state = 0;    ///< One of: 0 waiting, 1 running, 2 done, 3 failed, 4 stopped.
    bool finished = false;     ///< No more progress will come, whatever the state.
    std::int32_t totalNum = 0; ///< Items of the job; grows while a device is still being read.
    std::int32_t successNum = 0;
    std::int32_t failedNum = 0;
    std::int32_t addedNum = 0;   ///< Persons that were not in the register before.
    std::int32_t updatedNum = 0; ///< Persons whose data changed.
    std::string beginTime;       ///< ISO 8601, "2026-03-01T08:00:00+00:00".
    std::string endTime;         ///< ISO 8601; empty until finished.
    std::vector<ProgressFailure> failedList;
    NEXWIRE_JSON
};

/// How far an import from a file or another job of the platform is.
struct NEXWIRE_API ProgressData : IReturnData {
    std::int32_t progress = 0; ///< Items done. 0 to 100 %.
    std::int32_t state = 0;    ///< One of: 0 waiting, 1 running, 2 done, 3 failed, 4 stopped.
    bool finished = false;     ///< No more progress will come, whatever the state.
    std::int32_t totalNum = 0;
    std::int32_t successNum = 0;
    std::int32_t failedNum = 0;
    std::vector<ProgressFailure> failedList;
    NEXWIRE_JSON
};

/// What a synchronisation or an import of events is to do.
struct NEXWIRE_API SynchronousQuery : IInboundData {
    std::string taskGuid;                   ///< Task to stop; empty in a start.
    bool stop = false;                      ///< Stops the task. What was done before it stays.
    std::vector<std::string> dataTypeList;  ///< For example: "person", "card", "cardPassword", "face". Empty: all.
    std::string orgGuid;                    ///< Organisation that persons without one go into; empty: the root.
    std::int32_t coverMode = 0;             ///< One of: 0 keep what the register has, 1 replace it.
    std::vector<std::string> personNoList;  ///< Numbers of the persons to read; empty: everybody.
    std::vector<std::string> stationIpList; ///< Enrolment stations; empty: all that are registered.
    std::string beginTime;                  ///< ISO 8601; only what changed from then on. Empty: everything.
    std::string endTime;                    ///< ISO 8601; empty: until now.
    NEXWIRE_JSON
};

/// What becomes of the data that an enrolment station hands over.
struct NEXWIRE_API EnrollmentStationData : IInboundData {
    std::string orgGuid; ///< Organisation that persons without one go into; empty: the root.
    NEXWIRE_JSON
};

} // namespace protocol::personnelcommon
