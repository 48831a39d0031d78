#pragma once

#include "protocol/Attendance/Arrange.h"

namespace nexwire {

/// Who works which shift when, for organisations and persons, until further notice and for single days.
///
/// All functions block until the answer is there and may be called from any thread. They return true when the answer
/// was a readable envelope with the number 0; any other code becomes the last error. A result is untouched on false.
class NEXWIRE_API ArrangeComm {
public:
    static bool getOrgArrange(protocol::DepartArrangeResponse& result, const protocol::QueryArrangeCondition& condition,
                              const std::string& orgID);
    static bool setOrgArrange(const protocol::DepartArrange& param, const std::string& orgID);
    /// Single days of an organisation.
    static bool getOrgTmpArrange(protocol::DepartTempArrangeResponse& result,
                                 const protocol::QueryArrangeCondition& condition, const std::string& orgID);
    static bool setOrgTmpArrange(const protocol::DepartTempArrange& param, const std::string& orgID);
    static bool getPersonnelArrange(protocol::PersonnelArrangeResponse& result,
                                    const protocol::QueryArrangeCondition& condition, const std::string& personnelID);
    static bool setPersonnelArrange(const protocol::Arrange& param, const std::string& personnelID);
    /// The same arrangement for several persons.
    static bool setPersonnelArrange(const protocol::PersonArrange& param);
    /// Single days of a person.
    static bool getPersonnelTmpArrange(protocol::PersonnelTempArrangeResponse& result,
                                       const protocol::QueryArrangeCondition& condition,
                                       const std::string& personnelID);
    static bool setPersonnelTmpArrange(const protocol::TempArrange& param, const std::string& personnelID);
    /// How many persons of each organisation are arranged.
    static bool getArrangeStatus(protocol::ArrangeStatusResponseData& result,
                                 const protocol::QueryArrangeCondition& condition);
};

} // namespace nexwire
