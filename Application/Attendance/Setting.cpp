#include "nexwire/Attendance/Setting.h"

#include "core/Pipeline.h"

namespace nexwire {

namespace {

constexpr const char* kRoot = "/7730/v1/attendance/setting/";

} // namespace

bool BasicConfigComm::getInfo(protocol::BasicRuleResult& result)
{
    return ExchangeJudged(Query(Path(kRoot, "basic")), result);
}

bool BasicConfigComm::setInfo(const protocol::BasicRule& param)
{
    return ExchangeJudged(Write(Path(kRoot, "basic"), param));
}

bool CheckpointConfigComm::addInfo(protocol::CheckpointResultData& result, const protocol::checkpoint& param)
{
    return ExchangeJudged(Write(Path(kRoot, "checkpoint"), param), result);
}

bool CheckpointConfigComm::getInfo(protocol::CheckPointQueryResult& result,
                                   const protocol::CheckPointCondition& condition)
{
    return ExchangeJudged(Query(Path(kRoot, "checkpoint"), condition), result);
}

bool CheckpointConfigComm::removeInfo(protocol::CheckpointDeleteResultData& result,
                                      const protocol::CheckPointDeleteCondition& param)
{
    return ExchangeJudged(Remove(Path(kRoot, "checkpoint"), param), result);
}

bool HolidayConfigComm::addInfo(protocol::HolidayResult& result, const protocol::Holiday& param)
{
    return ExchangeJudged(Write(Path(kRoot, "holidays"), param), result);
}

bool HolidayConfigComm::getInfo(protocol::HolidayQueryResult& result, const protocol::HolidayCondition& condition)
{
    return ExchangeJudged(Query(Path(kRoot, "holidays"), condition), result);
}

bool HolidayConfigComm::getInfo(protocol::HolidayInfoReslultData& result, const std::string& suffix)
{
    return ExchangeJudged(Query(Path(kRoot, "holidays", suffix)), result);
}

bool HolidayConfigComm::removeInfo(protocol::HolidayDeleteResultData& result,
                                   const protocol::HolidayDeleteCondition& param)
{
    return ExchangeJudged(Remove(Path(kRoot, "holidays"), param), result);
}

bool OvertimeConfigComm::getInfo(protocol::OvertimeConfigResult& result)
{
    return ExchangeJudged(Query(Path(kRoot, "overtime")), result);
}

bool OvertimeConfigComm::setInfo(const protocol::OvertimeConfig& param)
{
    return ExchangeJudged(Write(Path(kRoot, "overtime"), param));
}

bool ReportConfigComm::getInfo(protocol::ReportConfigResultData& result)
{
    return ExchangeJudged(Query(Path(kRoot, "report")), result);
}

bool ReportConfigComm::setInfo(const protocol::ReportConfig& param)
{
    return ExchangeJudged(Write(Path(kRoot, "report"), param));
}

bool VacateConfigComm::addMainInfo(protocol::VacateMainType& type)
{
    return ExchangeBothWays(Write(Path(kRoot, "vacates/maintype"), type), type, core::Verdict::Judge);
}

bool VacateConfigComm::getMainInfos(protocol::VacateMainInfoData& result)
{
    return ExchangeJudged(Query(Path(kRoot, "vacates/maintype")), result);
}

bool VacateConfigComm::removeMain(const protocol::VacateMainTypeIDInfo& param)
{
    return ExchangeJudged(Remove(Path(kRoot, "vacates/maintype"), param));
}

bool VacateConfigComm::addSubInfo(const protocol::VacateSubTypeInfo& param)
{
    return ExchangeJudged(Write(Path(kRoot, "vacates/subtype"), param));
}

bool VacateConfigComm::getSubInfo(protocol::VacateMainContainsVacateSubInfoData& result,
                                  const protocol::VacateSubCondition& condition)
{
    return ExchangeJudged(Query(Path(kRoot, "vacates/subtype"), condition), result);
}

bool VacateConfigComm::removeSub(const std::string& subTypeID)
{
    return ExchangeJudged(
        Remove(Path(kRoot, "vacates/subtype"), Only(&protocol::VacateSubTypeIDInfo::subTypeID, subTypeID)));
}

bool PrecisionConfigComm::getInfo(protocol::PrecisionResultData& result)
{
    return ExchangeJudged(Query(Path(kRoot, "precision")), result);
}

bool PrecisionConfigComm::setInfo(const protocol::PrecisionList& param)
{
    return ExchangeJudged(Write(Path(kRoot, "precision"), param));
}

namespace {

constexpr const char* kExport = "/7730/v1/attendance/orirecord/customconfig";

} // namespace

bool CustomExportConfigComm::getCustomExportConfig(protocol::CustomExportConfigData& result)
{
    return ExchangeJudged(Query(kExport), result);
}

bool CustomExportConfigComm::setCustomExportConfig(const protocol::CustomExportConfig& param)
{
    return ExchangeJudged(Write(kExport, param));
}

} // namespace nexwire
