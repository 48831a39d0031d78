#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol {

// Dates are "YYYY-MM-DD". Who works when: a person's own arrangement goes before that of the organisation, a temporary
// one before both.

/// Which arrangements are asked for; empty members do not narrow.
struct NEXWIRE_API QueryArrangeCondition : IInboundData {
    std::string startDate; ///< Arrangements that touch the days from here on.
    std::string endDate;
    std::string personnelName;    ///< Any part of the name.
    bool includeChildOrg = false; ///< With the organisations below.
    std::int32_t pageNo = 1;      ///< 1 to 100000.
    std::int32_t pageSize = 0;    ///< 0 to 1000. 0 gives all.
    NEXWIRE_JSON
};

/// Which shift is worked from when until when.
struct NEXWIRE_API Arrange : IInboundData {
    std::string shiftID;
    std::string startDate;
    std::string endDate;                       ///< Last day of it; empty: until further notice.
    bool needClock = true;                     ///< False: present without any record.
    bool autoOvertime = false;                 ///< Overtime counts without approval.
    std::vector<std::string> checkpointIDList; ///< Where records count; empty: at all check points.
    NEXWIRE_JSON
};

/// An organisation's arrangement.
struct NEXWIRE_API DepartArrange : IInboundData {
    bool includeChildOrg = false;  ///< Also for the organisations below.
    bool overridePersonal = false; ///< Takes the persons' own arrangements away.
    Arrange arrange;
    NEXWIRE_JSON
};

struct NEXWIRE_API DepartArrangeResponse : IReturnData {
    std::string orgID;
    std::string orgName;
    bool inherited = false; ///< Comes from the organisation above.
    std::vector<Arrange> arrangeList;
    NEXWIRE_JSON
};

/// What is worked on one day instead.
struct NEXWIRE_API TempShift : IInboundData {
    std::string date;
    std::string shiftID;                   ///< Empty: as the periods say.
    std::vector<std::string> periodIDList; ///< Without a shift; empty as well: a free day.
    NEXWIRE_JSON
};

/// A person's temporary arrangement.
struct NEXWIRE_API TempArrange : IInboundData {
    std::vector<TempShift> tempShiftList; ///< One per day; replaces what was there for these days.
    NEXWIRE_JSON
};

/// An organisation's temporary arrangement.
struct NEXWIRE_API DepartTempArrange : IInboundData {
    bool includeChildOrg = false; ///< Also for the organisations below.
    std::vector<TempShift> tempShiftList;
    NEXWIRE_JSON
};

struct NEXWIRE_API DepartTempArrangeResponse : IReturnData {
    std::string orgID;
    std::string orgName;
    std::vector<TempShift> tempShiftList;
    NEXWIRE_JSON
};

struct NEXWIRE_API PersonnelArrangeResponse : IReturnData {
    std::string personnelID;
    std::string personnelName;
    std::string orgName;
    bool inherited = false; ///< Comes from the organisation.
    std::vector<Arrange> arrangeList;
    NEXWIRE_JSON
};

/// One arrangement for several persons.
struct NEXWIRE_API PersonArrange : IInboundData {
    std::vector<std::string> personnelIDList;
    Arrange arrange;
    NEXWIRE_JSON
};

struct NEXWIRE_API PersonnelTempArrangeResponse : IReturnData {
    std::string personnelID;
    std::string personnelName;
    std::vector<TempShift> tempShiftList;
    NEXWIRE_JSON
};

/// How far an organisation is arranged.
struct NEXWIRE_API ArrangeStatus : IReturnData {
    std::string orgID;
    std::string orgName;
    std::int32_t personTotal = 0;    ///< Persons of the organisation.
    std::int32_t arrangedTotal = 0;  ///< Of these, with a shift on every day asked for.
    std::int32_t temporaryTotal = 0; ///< Of these, with a temporary arrangement.
    NEXWIRE_JSON
};

struct NEXWIRE_API ArrangeStatusResponse : IReturnData {
    std::int32_t total = 0; ///< Of all pages.
    std::vector<ArrangeStatus> arrangeStatusList;
    NEXWIRE_JSON
};

struct NEXWIRE_API ArrangeStatusResponseData : IReturnData {
    ArrangeStatusResponse arrangeStatusResponse;
    NEXWIRE_JSON
};

} // namespace protocol
