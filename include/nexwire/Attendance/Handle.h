#pragma once

#include "protocol/Attendance/Handle.h"

namespace nexwire {

/// What came out for persons and days, and the records by which it is corrected: leave, forgotten records, approved
/// overtime.
///
/// All functions block until the answer is there and may be called from any thread. They return true when the answer
/// was a readable envelope with the number 0; any other code becomes the last error. A result is untouched on false.
class NEXWIRE_API AttendanceHandleComm {
public:
    /// A month day by day; its totals are the sums of the days.
    static bool getMonthDetail(protocol::MonthDetail& result, const protocol::MonthCondition& condition);
    static bool getPageDetail(protocol::HandleDetail& result, const protocol::DetailCondition& condition);
    /// One result per correction, with its identifier.
    static bool addHandleInfos(protocol::AddHandleResult& result, const protocol::AddHandleInfos& param);
    static bool deleteHandleInfos(const protocol::DeleteHandleInfos& param);
    static bool getHandleInfos(protocol::HandleInfos& result, const protocol::GetHandleCondition& condition);
    static bool getHandleInfo(protocol::HandleData& result, const std::string& handleID);
    static bool updateHandleInfo(const protocol::HandleDataInbound& param, const std::string& handleID);
};

} // namespace nexwire
