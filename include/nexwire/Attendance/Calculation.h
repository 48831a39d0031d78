#pragma once

#include "protocol/Attendance/Calculation.h"

namespace nexwire {

/// Results of attendance: calculating them anew and reading them.
///
/// All functions block until the answer is there and may be called from any thread. They return true when the answer
/// was a readable envelope with the number 0; any other code becomes the last error. A result is untouched on false.
class NEXWIRE_API CalculateComm {
public:
    /// Orders a calculation; the call does not wait for it. Follow it with `queryCalculateStatus`.
    static bool manualCalculate(protocol::ManualResultData& result, const protocol::ManualCalcCondition& condition);
    /// One page, up to 100,000 rows. False as well when the page has no list, or a row lacks a member or has one of
    /// another type.
    static bool queryCalculate(protocol::StatisticsCalcDataData& result,
                               const protocol::StatisticsCalcCondition& condition);
    static bool queryCalculateStatus(protocol::CalculateStatusData& result);

private:
    static bool ParseRapidJson(protocol::StatisticsCalcDataData& result, const std::string& body);
};

} // namespace nexwire
