#pragma once

#include "nexwire/HTTPCommonJSONStruct.h"
#include "protocol/Attendance/Shift.h"

namespace nexwire {

/// Periods of work and the rests in them.
///
/// All functions block until the answer is there and may be called from any thread. They return true when the answer
/// was a readable envelope with the number 0; any other code becomes the last error. A result is untouched on false.
class NEXWIRE_API PeriodConfigComm {
public:
    static bool getPeriodInfo(protocol::PeriodConfigResponeListData& result);
    static bool getRestPeriodInfo(protocol::RestPeriodListData& result);
    static bool getPeriodInfoByID(protocol::GetPeriodData& result, const std::string& periodID);
    static bool getRestPeriodInfoByID(protocol::GetRestPeriodIDData& result, const std::string& restPeriodID);
    static bool addPeriodInfo(protocol::PeriodConfigResultData& result, const protocol::AddPeriod& param);
    static bool addRestPeriodInfo(protocol::RestPeriodConfigResultData& result, const protocol::AddRestPeriod& param);

    /// Changes a period. True whenever the envelope parsed: `result` is that envelope, judge it with
    /// `judgeResultSuccess`.
    static bool modifyPeriodInfo(protocol::ReturnData& result, const protocol::AddPeriod& param,
                                 const std::string& periodID);
    /// The same for a rest.
    static bool modifyRestPeriodInfo(protocol::ReturnData& result, const protocol::AddRestPeriod& param,
                                     const std::string& restPeriodID);

    /// One result per period; one that a shift holds is refused.
    static bool deletePeriodInfo(protocol::PeriodConfigDeleteResultData& result,
                                 const protocol::PeriodConfigDelete& param);
    static bool deleteRestPeriodInfo(protocol::RestPeriodConfigDeleteResultData& result,
                                     const protocol::RestPeriodConfigDelete& param);

    /// Whether a call did what it should: its outcome is true, and the envelope's code is {0, 0} and says nothing,
    /// neither as the code's text nor as message. Sends nothing.
    static bool judgeResultSuccess(bool outcome, const protocol::ReturnData& result);
};

/// Shifts: which periods are worked on which days. Returns as above.
class NEXWIRE_API ShiftComm {
public:
    static bool getAllShiftsRequest(protocol::ShiftResponseListData& result,
                                    const protocol::ShiftQueryCondition& condition);
    static bool addShiftRequest(protocol::ShiftResult& result, const protocol::ShiftInfo& param);
    /// One result per shift; one that is arranged is refused.
    static bool removeByIdRequest(protocol::ShiftResultListData& result, const protocol::ShiftList& param);
    static bool modifyShift(const protocol::ShiftInfo& param, const std::string& shiftID);
    static bool getShiftById(protocol::ShiftResponse& result, const protocol::ShiftQueryCondition& condition,
                             const std::string& shiftID);
};

} // namespace nexwire
