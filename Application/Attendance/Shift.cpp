#include "nexwire/Attendance/Shift.h"

#include "core/Pipeline.h"

namespace nexwire {

namespace {

constexpr const char* kPeriods = "/7730/v1/attendance/periods/period";
constexpr const char* kRestPeriods = "/7730/v1/attendance/periods/restPeriod";
constexpr const char* kShifts = "/7730/v1/attendance/shifts";

} // namespace

bool PeriodConfigComm::getPeriodInfo(protocol::PeriodConfigResponeListData& result)
{
    return ExchangeJudged(Query(kPeriods), result);
}

bool PeriodConfigComm::getPeriodInfoByID(protocol::GetPeriodData& result, const std::string& periodID)
{
    return ExchangeJudged(Query(Path(kPeriods, "/", periodID)), result);
}

bool PeriodConfigComm::addPeriodInfo(protocol::PeriodConfigResultData& result, const protocol::AddPeriod& param)
{
    return ExchangeJudged(Write(kPeriods, param), result);
}

bool PeriodConfigComm::modifyPeriodInfo(protocol::ReturnData& result, const protocol::AddPeriod& param,
                                        const std::string& periodID)
{
    return ExchangeForEnvelope(Write(Path(kPeriods, "/", periodID), param), result);
}

bool PeriodConfigComm::deletePeriodInfo(protocol::PeriodConfigDeleteResultData& result,
                                        const protocol::PeriodConfigDelete& param)
{
    return ExchangeJudged(Remove(kPeriods, param), result);
}

bool PeriodConfigComm::getRestPeriodInfo(protocol::RestPeriodListData& result)
{
    return ExchangeJudged(Query(kRestPeriods), result);
}

bool PeriodConfigComm::getRestPeriodInfoByID(protocol::GetRestPeriodIDData& result, const std::string& restPeriodID)
{
    return ExchangeJudged(Query(Path(kRestPeriods, "/", restPeriodID)), result);
}

bool PeriodConfigComm::addRestPeriodInfo(protocol::RestPeriodConfigResultData& result,
                                         const protocol::AddRestPeriod& param)
{
    return ExchangeJudged(Write(kRestPeriods, param), result);
}

bool PeriodConfigComm::modifyRestPeriodInfo(protocol::ReturnData& result, const protocol::AddRestPeriod& param,
                                            const std::string& restPeriodID)
{
    return ExchangeForEnvelope(Write(Path(kRestPeriods, "/", restPeriodID), param), result);
}

bool PeriodConfigComm::deleteRestPeriodInfo(protocol::RestPeriodConfigDeleteResultData& result,
                                            const protocol::RestPeriodConfigDelete& param)
{
    return ExchangeJudged(Remove(kRestPeriods, param), result);
}

bool PeriodConfigComm::judgeResultSuccess(bool outcome, const protocol::ReturnData& result)
{
    return outcome && result.code.category == 0 && result.code.number == 0 && result.code.text.empty() &&
           result.msg.empty();
}

bool ShiftComm::getAllShiftsRequest(protocol::ShiftResponseListData& result,
                                    const protocol::ShiftQueryCondition& condition)
{
    return ExchangeJudged(Query(kShifts, condition), result);
}

bool ShiftComm::addShiftRequest(protocol::ShiftResult& result, const protocol::ShiftInfo& param)
{
    return ExchangeJudged(Write(kShifts, param), result);
}

bool ShiftComm::removeByIdRequest(protocol::ShiftResultListData& result, const protocol::ShiftList& param)
{
    return ExchangeJudged(Remove(kShifts, param), result);
}

bool ShiftComm::modifyShift(const protocol::ShiftInfo& param, const std::string& shiftID)
{
    return ExchangeJudged(Write(Path(kShifts, "/", shiftID), param));
}

bool ShiftComm::getShiftById(protocol::ShiftResponse& result, const protocol::ShiftQueryCondition& condition,
                             const std::string& shiftID)
{
    return ExchangeJudged(Query(Path(kShifts, "/", shiftID), condition), result);
}

} // namespace nexwire
