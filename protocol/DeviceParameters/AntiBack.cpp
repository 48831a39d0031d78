#include "protocol/DeviceParameters/AntiBack.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(AcsAntiSneakParamCfg, "acsAntiSneakParamCfg", F(enable), F(antiSneakMode), F(violationMode), F(startCardReaderNo), F(firstPassFree), F(superCardFree), F(crossDevice))
NEXWIRE_INBOUND_FIELDS(CardReaderAntiSneak, "cardReaderAntiSneak", F(cardReaderNo), F(enable), F(direction), F(followUpCardReaderNoList))
NEXWIRE_INBOUND_FIELDS(AcsCardReaderAntiSneakParamCfg, "acsCardReaderAntiSneakParamCfg", F(cardReaderAntiSneakList))
NEXWIRE_INBOUND_FIELDS(AcsClearAntiSneakParamCfg, "acsClearAntiSneakParamCfg", F(antiSneakParam), F(cardReaderNoList), F(resetRule), F(ntSchedule))
NEXWIRE_INBOUND_FIELDS(AcsClearAntiSneakRecord, "acsClearAntiSneakRecord", F(clearMode), F(employeeNoList), F(cardNoList))
NEXWIRE_INBOUND_FIELDS(ClearAntiSneak, "clearAntiSneak", F(clearMode), F(employeeNo), F(employeeNoList), F(cardNo), F(cardNoList))
NEXWIRE_INBOUND_FIELDS(AntiBackResetRuleConfig, "antiBackResetRuleConfig", F(enable), F(resetMode), F(resetTimeList), F(weekList), F(resetInterval))
NEXWIRE_INBOUND_FIELDS(AntiPassbackrestRulesCapability, "antiPassbackrestRulesCapability", F(enable), F(resetMode), F(resetTimeList), F(weekList), F(resetInterval))
NEXWIRE_INBOUND_FIELDS(AntiBackNTHoliday, "antiBackNTHoliday", F(holidayName), F(enable), F(dateRange), F(timeSegmentList))
NEXWIRE_INBOUND_FIELDS(AntiBackNTScheduleConfig, "antiBackNTScheduleConfig", F(enable), F(resetAtEnd), F(dayPlanList), F(holidayList))
NEXWIRE_INBOUND_FIELDS(AntiBackNTScheduleCap, "antiBackNTScheduleCap", F(enable), F(resetAtEnd), F(week), F(timeSegmentList), F(holidayList), F(holidayName))
NEXWIRE_INBOUND_FIELDS(MultiDoorInterLockGroup, "multiDoorInterLockGroup", F(groupNo), F(enable), F(doorNoList))
NEXWIRE_INBOUND_FIELDS(MultiDoorInterLockParam, "multiDoorInterLockParam", F(enable), F(lockMode), F(releaseOnFire), F(superCardFree), F(openTimeout), F(groupList))
// clang-format on

} // namespace protocol
