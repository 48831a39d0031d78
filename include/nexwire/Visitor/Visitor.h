#pragma once

#include "protocol/PassThrough/PassThrough.h"
#include "protocol/Visitor/Visitor.h"

namespace nexwire {

// Visitors: appointments, settings, the access points they may pass, and what they did.
//
// All functions of this file block until the answer is there and may be called from any thread. They return true when
// the answer was a readable envelope, whatever its code; a result is untouched on false.

/// Appointments of visitors.
class NEXWIRE_API AppointmentComm {
public:
    /// One result per appointment.
    static bool addAppointment(protocol::AddAppointmentResultListData& result,
                               const protocol::AddAppointment& appointments);
    static bool getAllAppointment(protocol::QueryAppointmentResultList& result);
    /// A page of the appointments that fit a condition.
    static bool getAppointmentByCondition(protocol::QueryAppointmentResultList& result,
                                          const protocol::QueryAppointmentResultCondition& condition);
    static bool updateAppointment(const protocol::ModifyAppointment& appointment, const std::string& appointmentGuid);
    /// Removes appointments; permissions that are on devices already are taken off them.
    static bool deleteAppointment(const protocol::DeleteAppointment& appointments);
};

/// How visits work on a site.
class NEXWIRE_API BasicSettingComm {
public:
    static bool getConfig(protocol::QueryBasicSettingResult& result);
    static bool setConfig(const protocol::BasicSetting& setting);
};

/// Groups of access points that visitors may pass.
class NEXWIRE_API AccessGroupPointComm {
public:
    static bool getAccessGroups(protocol::VisitAccessGroupQueryResponseData& result);
    static bool getAccessGroup(protocol::VisitAccessGroupQueryResp& result, const std::string& groupGuid);
    /// A name that exists is refused.
    static bool createAccessGroup(protocol::VisitAccessGroupAddedResult& result,
                                  const protocol::VisitAaccessGroupAddParam& group);
    /// Replaces a group. The result names the appointments whose permissions have to be sent anew.
    static bool modifyAccessGroup(protocol::VisitAccessGroupModifyResultData& result,
                                  const protocol::VisitAccessGroupModifyParam& group, const std::string& groupGuid);
    /// One result per group; a group that an appointment names is refused.
    static bool removeAccessGroup(protocol::DeleteAccessPointGroupResultData& result,
                                  const protocol::DeleteAccessPointGroupCondition& groups);
};

/// Visits as they were.
class NEXWIRE_API RecordComm {
public:
    /// A page of the visits that fit a condition.
    static bool getRecord(protocol::QueryVisitorRecordResultListData& result,
                          const protocol::QueryVisitorRecordCondition& condition);
    /// What went wrong with the permission of one visit.
    static bool getVisitorErrorRecord(protocol::VisitorErrorRecordResponseData& result, const std::string& recordGuid);
    /// The visits whose permission a device did not take.
    static bool getDownloadFailRecord(protocol::QueryVisitorRecordResultListData& result);
};

class NEXWIRE_API VisitorConfigComm {
public:
    /// What visitors may do at a device.
    static bool setConfig(protocol::VisitorRightConfigResultData& result, const protocol::VisitorRightConfig& config);
};

class NEXWIRE_API DownloadPermissionComm {
public:
    /// Orders permissions onto devices or off them; the call does not wait for it. See `RecordComm` for what failed.
    static bool downloadPermission(const protocol::DownloadPermissionInfo& permission);
};

class NEXWIRE_API VisitorDagComm {
public:
    /// As `accessParamComm::dagThroughRequest`: one command for a device, on the internal route.
    ///
    /// @param timeoutMs  milliseconds for the exchange; 0 keeps the default of 40000.
    static bool dagThroughRequest(const protocol::DagPassThroughReq& request, const std::string& deviceGuid,
                                  protocol::DagPassThroughRspData& response, int timeoutMs);
};

} // namespace nexwire
