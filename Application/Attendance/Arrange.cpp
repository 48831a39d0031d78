#include "nexwire/Attendance/Arrange.h"

#include "core/Pipeline.h"

namespace nexwire {

namespace {

constexpr const char* kRoot = "/7730/v1/attendance/arrangements/";

} // namespace

bool ArrangeComm::getOrgArrange(protocol::DepartArrangeResponse& result,
                                const protocol::QueryArrangeCondition& condition, const std::string& orgID)
{
    return ExchangeJudged(Query(Path(kRoot, "organizations/", orgID), condition), result);
}

bool ArrangeComm::setOrgArrange(const protocol::DepartArrange& param, const std::string& orgID)
{
    return ExchangeJudged(Write(Path(kRoot, "organizations/", orgID), param));
}

bool ArrangeComm::getOrgTmpArrange(protocol::DepartTempArrangeResponse& result,
                                   const protocol::QueryArrangeCondition& condition, const std::string& orgID)
{
    return ExchangeJudged(Query(Path(kRoot, "organizationstmp/", orgID), condition), result);
}

bool ArrangeComm::setOrgTmpArrange(const protocol::DepartTempArrange& param, const std::string& orgID)
{
    return ExchangeJudged(Write(Path(kRoot, "organizationstmp/", orgID), param));
}

bool ArrangeComm::getPersonnelArrange(protocol::PersonnelArrangeResponse& result,
                                      const protocol::QueryArrangeCondition& condition, const std::string& personnelID)
{
    return ExchangeJudged(Query(Path(kRoot, "personnels/", personnelID), condition), result);
}

bool ArrangeComm::setPersonnelArrange(const protocol::Arrange& param, const std::string& personnelID)
{
    return ExchangeJudged(Write(Path(kRoot, "personnels/", personnelID), param));
}

bool ArrangeComm::setPersonnelArrange(const protocol::PersonArrange& param)
{
    return ExchangeJudged(Write(Path(kRoot, "personnels"), param));
}

bool ArrangeComm::getPersonnelTmpArrange(protocol::PersonnelTempArrangeResponse& result,
                                         const protocol::QueryArrangeCondition& condition,
                                         const std::string& personnelID)
{
    return ExchangeJudged(Query(Path(kRoot, "personnelstmp/", personnelID), condition), result);
}

bool ArrangeComm::setPersonnelTmpArrange(const protocol::TempArrange& param, const std::string& personnelID)
{
    return ExchangeJudged(Write(Path(kRoot, "personnelstmp/", personnelID), param));
}

bool ArrangeComm::getArrangeStatus(protocol::ArrangeStatusResponseData& result,
                                   const protocol::QueryArrangeCondition& condition)
{
    return ExchangeJudged(Query(Path(kRoot, "arrangeStatus"), condition), result);
}

} // namespace nexwire
