#include "protocol/DeviceParameters/CardReaderAuth.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(CardReaderVerifyTypePlan, "cardReaderVerifyTypePlan", F(verifyMode), F(cardReaderNo), F(planTemplateNo), F(templateName), F(weekPlanNo), F(holidayGroupNo), F(holidayGroupNoList), F(timeSegmentList), F(sleepMode))
NEXWIRE_INBOUND_FIELDS(CardReaderVerifyPlan, "cardReaderVerifyPlan", F(cardReaderNo), F(planTemplateNo))
NEXWIRE_INBOUND_FIELDS(CardReaderVerifyPlanTemplateNo, "cardReaderVerifyPlanTemplateNo", F(cardReaderVerifyPlanList))
NEXWIRE_INBOUND_FIELDS(VerifyPlanTemplate, "verifyPlanTemplate", F(planTemplateNo), F(enable), F(templateName), F(weekPlanNo), F(holidayGroupNoList))
NEXWIRE_INBOUND_FIELDS(VerifyPlanTemplateParam, "verifyPlanTemplateParam", F(verifyPlanTemplateList))
NEXWIRE_INBOUND_FIELDS(VerifyTimeSegment, "verifyTimeSegment", F(timeSegment), F(verifyMode))
NEXWIRE_INBOUND_FIELDS(VerifyDayPlan, "verifyDayPlan", F(week), F(timeSegmentList))
NEXWIRE_INBOUND_FIELDS(VerifyWeekPlan, "verifyWeekPlan", F(weekPlanNo), F(enable), F(dayPlanList))
NEXWIRE_INBOUND_FIELDS(VerifyWeekPlanCfg, "verifyWeekPlanCfg", F(verifyWeekPlanList))
NEXWIRE_INBOUND_FIELDS(VerifyWeekPlanCfgData, "verifyWeekPlanCfgData", F(verifyWeekPlanCfg))
// clang-format on

} // namespace protocol
