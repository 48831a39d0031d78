#include "nexwire/Attendance/Handle.h"

#include "core/Pipeline.h"

namespace nexwire {

namespace {

constexpr const char* kRoot = "/7730/v1/attendance/handle/";

} // namespace

bool AttendanceHandleComm::getMonthDetail(protocol::MonthDetail& result, const protocol::MonthCondition& condition)
{
    return ExchangeJudged(Query(Path(kRoot, "monthdetail"), condition), result);
}

bool AttendanceHandleComm::getPageDetail(protocol::HandleDetail& result, const protocol::DetailCondition& condition)
{
    return ExchangeJudged(Query(Path(kRoot, "detail"), condition), result);
}

bool AttendanceHandleComm::addHandleInfos(protocol::AddHandleResult& result, const protocol::AddHandleInfos& param)
{
    return ExchangeJudged(Write(Path(kRoot, "handleinfos"), param), result);
}

bool AttendanceHandleComm::deleteHandleInfos(const protocol::DeleteHandleInfos& param)
{
    return ExchangeJudged(Remove(Path(kRoot, "handleinfos"), param));
}

bool AttendanceHandleComm::getHandleInfos(protocol::HandleInfos& result, const protocol::GetHandleCondition& condition)
{
    return ExchangeJudged(Query(Path(kRoot, "handleinfos"), condition), result);
}

bool AttendanceHandleComm::getHandleInfo(protocol::HandleData& result, const std::string& handleID)
{
    return ExchangeJudged(Query(Path(kRoot, "handleinfos/", handleID)), result);
}

bool AttendanceHandleComm::updateHandleInfo(const protocol::HandleDataInbound& param, const std::string& handleID)
{
    return ExchangeJudged(Write(Path(kRoot, "handleinfos/", handleID), param));
}

} // namespace nexwire
