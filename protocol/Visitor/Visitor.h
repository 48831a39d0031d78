#pragma once

#include "protocol/Common.h"

// Visitors: persons admitted for a limited time by appointment. An appointment names the visitor, the host and the
// groups of access points; its permission is downloaded to devices; what the visitor does is kept as records. Times are
// ISO 8601 with offset, "2026-03-01T08:00:00+00:00".

namespace protocol {

// ---- Appointments ----

/// Who comes.
struct NEXWIRE_API VisitorInfo : IInboundData {
    std::string visitorGuid; ///< Of somebody who was here before; given by the platform when empty.
    std::string visitorName; ///< 1 to 64 characters.
    std::int32_t gender = 0; ///< One of: 0 unknown, 1 male, 2 female.
    std::string phone;
    std::int32_t certificateType = 0; ///< One of: 0 none, 1 identity card, 2 passport, 3 driving licence, 4 other.
    std::string certificateNo;
    std::string company;
    std::string plateNo;     ///< Number plate of the vehicle, may be empty.
    std::string cardNo;      ///< Card for the visit; empty: none.
    std::string pictureData; ///< Face, JPEG in Base64; empty: none.
    NEXWIRE_JSON
};

/// An appointment as it is to be.
struct NEXWIRE_API AppointmentInfo : IInboundData {
    VisitorInfo visitor;
    std::string receptionistGuid; ///< Person of the register who receives the visitor.
    std::string receptionistName;
    std::string visitBeginTime; ///< First moment at which the visitor may pass.
    std::string visitEndTime;   ///< Last one.
    std::string visitReason;
    std::int32_t companionNum = 0;                ///< People who come along. 0 to 99.
    std::vector<std::string> accessGroupGuidList; ///< Groups of access points; empty: those of the basic settings.
    NEXWIRE_JSON
};

struct NEXWIRE_API AddAppointment : IInboundData {
    std::vector<AppointmentInfo> appointmentList;
    NEXWIRE_JSON
};

struct NEXWIRE_API AddAppointmentResult : IReturnData {
    std::string appointmentGuid; ///< Empty when it was refused.
    std::string visitorGuid;
    std::string visitorName;
    std::string visitCode;       ///< Code that the visitor identifies with at the entrance.
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API AddAppointmentResultListData : IReturnData {
    std::vector<AddAppointmentResult> addAppointmentResultList;
    NEXWIRE_JSON
};

/// Which appointments are asked for. What is empty or -1 does not narrow.
struct NEXWIRE_API QueryAppointmentResultCondition : IInboundData {
    std::int32_t pageNo = 1;     ///< From 1.
    std::int32_t pageSize = 100; ///< 1 to 1000.
    std::string visitorName;     ///< Part of a name.
    std::string phone;
    std::string certificateNo;
    std::string receptionistName;       ///< Part of a name.
    std::int32_t appointmentState = -1; ///< One of: -1 any, 0 waiting, 1 arrived, 2 left, 3 expired, 4 cancelled.
    std::string beginTime;              ///< Visits that begin from then on.
    std::string endTime;                ///< Visits that begin until then.
    NEXWIRE_JSON
};

/// An appointment as the platform keeps it.
struct NEXWIRE_API QueryAppointmentResult : IReturnData {
    std::string appointmentGuid;
    VisitorInfo visitor;
    std::string receptionistGuid;
    std::string receptionistName;
    std::string visitBeginTime;
    std::string visitEndTime;
    std::string visitReason;
    std::int32_t companionNum = 0; ///< 0 to 99.
    std::vector<std::string> accessGroupGuidList;
    std::string visitCode;             ///< Code that the visitor identifies with at the entrance.
    std::int32_t appointmentState = 0; ///< One of: 0 waiting, 1 arrived, 2 left, 3 expired, 4 cancelled.
    std::int32_t downloadState = 0; ///< Permission. One of: 0 nothing to send, 1 waiting, 2 sending, 3 sent, 4 failed.
    std::string createTime;
    std::string arriveTime; ///< Empty: not yet.
    std::string leaveTime;  ///< Empty: not yet.
    NEXWIRE_JSON
};

struct NEXWIRE_API QueryAppointmentResultList : IReturnData {
    std::int32_t totalNum = 0; ///< Appointments that fit the condition, on all pages.
    std::vector<QueryAppointmentResult> queryAppointmentResultList;
    NEXWIRE_JSON
};

/// An appointment as it is to be; its GUID stands in the path.
struct NEXWIRE_API ModifyAppointment : IInboundData {
    VisitorInfo visitor;
    std::string receptionistGuid;
    std::string receptionistName;
    std::string visitBeginTime;
    std::string visitEndTime;
    std::string visitReason;
    std::int32_t companionNum = 0; ///< 0 to 99.
    std::vector<std::string> accessGroupGuidList;
    std::int32_t appointmentState = 0; ///< One of: 0 waiting, 1 arrived, 2 left, 3 expired, 4 cancelled.
    NEXWIRE_JSON
};

struct NEXWIRE_API DeleteAppointment : IInboundData {
    std::vector<std::string> appointmentGuidList; ///< Required.
    NEXWIRE_JSON
};

// ---- Settings ----

/// How visits work on this site.
struct NEXWIRE_API BasicSetting : IInboundData {
    bool autoLeave = true;             ///< Visitors who forget to sign out leave at the end of their visit.
    bool autoDownload = true;          ///< Permissions go to the devices without being asked for.
    bool needCertificate = false;      ///< No visit without one.
    bool needPicture = false;          ///< No visit without a face.
    std::int32_t visitDuration = 8;    ///< Of a visit without an end. 1 to 720 h.
    std::int32_t advanceTime = 30;     ///< Admitted before the visit begins. 0 to 1440 min.
    std::int32_t delayTime = 30;       ///< Admitted after it has ended. 0 to 1440 min.
    std::int32_t maxOpenTimes = 0;     ///< Times that a visitor may pass a door. 0 to 255; 0: no limit.
    std::int32_t recordKeepDays = 180; ///< Records older than this go. 1 to 3650 d.
    std::int32_t codeLength = 6;       ///< Digits of the code for the entrance. 4 to 8.
    std::vector<std::string> defaultAccessGroupGuidList; ///< For appointments that name no group.
    std::vector<std::string> visitReasonList;            ///< To choose from.
    NEXWIRE_JSON
};

struct NEXWIRE_API QueryBasicSettingResult : IReturnData {
    BasicSetting basicSetting;
    NEXWIRE_JSON
};

/// What visitors may do at one device.
struct NEXWIRE_API VisitorRightConfig : IInboundData {
    std::string deviceGuid;
    std::vector<std::int32_t> doorNoList;         ///< Of the device. From 1.
    std::vector<std::int32_t> planTemplateNoList; ///< From 1. Up to 4 elements.
    std::string verifyMode;                       ///< As a card reader's; empty: the reader's own.
    std::int32_t maxOpenTimes = 0;                ///< 0 to 255; 0: no limit.
    bool remoteConfirm = false;                   ///< An operator has to agree.
    NEXWIRE_JSON
};

struct NEXWIRE_API VisitorRightConfigResult : IReturnData {
    std::string deviceGuid;
    std::int32_t visitorNum = 0; ///< Visitors whose permissions have to be sent anew.
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API VisitorRightConfigResultData : IReturnData {
    VisitorRightConfigResult visitorRightConfigResult;
    NEXWIRE_JSON
};

// ---- Groups of access points ----

/// A door or gate that visitors may pass.
struct NEXWIRE_API VisitAccessPoint : IInboundData {
    std::string deviceGuid;
    std::string accessPointGuid;
    std::string accessPointName;
    std::int32_t accessPointNo = 1; ///< On its device. From 1.
    NEXWIRE_JSON
};

/// A new group. (The name is spelled so, with a double a.)
struct NEXWIRE_API VisitAaccessGroupAddParam : IInboundData {
    std::string accessGroupName; ///< Unique. 1 to 64 characters.
    std::string planInfoGuid;    ///< When its points may be passed; empty: always.
    std::string description;
    std::vector<VisitAccessPoint> accessPointList;
    NEXWIRE_JSON
};

struct NEXWIRE_API VisitAccessGroupAddedResult : IReturnData {
    std::string accessGroupGuid;
    std::string accessGroupName;
    NEXWIRE_JSON
};

/// A group as it is to be; its GUID stands in the path.
struct NEXWIRE_API VisitAccessGroupModifyParam : IInboundData {
    std::string accessGroupName; ///< 1 to 64 characters.
    std::string planInfoGuid;    ///< When its points may be passed; empty: always.
    std::string description;
    std::vector<VisitAccessPoint> accessPointList; ///< All points as they are to be.
    NEXWIRE_JSON
};

struct NEXWIRE_API VisitAccessGroupModifyResult : IReturnData {
    std::string accessGroupGuid;
    std::string accessGroupName;
    std::vector<std::string> appointmentGuidList; ///< Appointments whose permissions have to be sent anew.
    NEXWIRE_JSON
};

struct NEXWIRE_API VisitAccessGroupModifyResultData : IReturnData {
    VisitAccessGroupModifyResult visitAccessGroupModifyResult;
    NEXWIRE_JSON
};

/// A group as the platform keeps it.
struct NEXWIRE_API VisitAccessGroupQueryResp : IReturnData {
    std::string accessGroupGuid;
    std::string accessGroupName;
    std::string planInfoGuid; ///< When its points may be passed; empty: always.
    std::string description;
    std::vector<VisitAccessPoint> accessPointList;
    bool isUsed = false; ///< At least one appointment names it.
    NEXWIRE_JSON
};

struct NEXWIRE_API VisitAccessGroupQueryResponse : IReturnData {
    std::vector<VisitAccessGroupQueryResp> accessGroupList;
    NEXWIRE_JSON
};

struct NEXWIRE_API VisitAccessGroupQueryResponseData : IReturnData {
    VisitAccessGroupQueryResponse visitAccessGroupQueryResponse;
    NEXWIRE_JSON
};

/// Groups to remove.
struct NEXWIRE_API DeleteAccessPointGroupCondition : IInboundData {
    std::vector<std::string> accessGroupGuidList; ///< Required.
    NEXWIRE_JSON
};

/// One result per group; a group that an appointment names is refused.
struct NEXWIRE_API DeleteAccessPointGroupResult : IReturnData {
    std::vector<OperationResult> accessGroupResultList;
    NEXWIRE_JSON
};

struct NEXWIRE_API DeleteAccessPointGroupResultData : IReturnData {
    DeleteAccessPointGroupResult deleteAccessPointGroupResult;
    NEXWIRE_JSON
};

// ---- Records ----

/// Which records are asked for. What is empty or -1 does not narrow.
struct NEXWIRE_API QueryVisitorRecordCondition : IInboundData {
    std::int32_t pageNo = 1;     ///< From 1.
    std::int32_t pageSize = 100; ///< 1 to 1000.
    std::string visitorName;     ///< Part of a name.
    std::string phone;
    std::string certificateNo;
    std::string plateNo;
    std::string receptionistName; ///< Part of a name.
    std::int32_t visitState = -1; ///< One of: -1 any, 0 expected, 1 inside, 2 left, 3 overdue.
    std::string beginTime;        ///< Visits that begin from then on.
    std::string endTime;          ///< Visits that begin until then.
    NEXWIRE_JSON
};

/// One visit.
struct NEXWIRE_API QueryVisitorRecordResult : IReturnData {
    std::string recordGuid;
    std::string appointmentGuid;
    VisitorInfo visitor;
    std::string receptionistGuid;
    std::string receptionistName;
    std::string beginTime;          ///< When the visitor came, or is expected.
    std::string endTime;            ///< When the visitor left, or is to leave.
    std::int32_t visitState = 0;    ///< One of: 0 expected, 1 inside, 2 left, 3 overdue.
    std::int32_t downloadState = 0; ///< Permission. One of: 0 nothing to send, 1 waiting, 2 sending, 3 sent, 4 failed.
    std::vector<std::string> accessGroupGuidList;
    NEXWIRE_JSON
};

struct NEXWIRE_API QueryVisitorRecordResultListData : IReturnData {
    std::int32_t totalNum = 0; ///< Visits that fit the condition, on all pages.
    std::vector<QueryVisitorRecordResult> queryVisitorRecordResultList;
    NEXWIRE_JSON
};

/// A permission that a device did not take.
struct NEXWIRE_API VisitorErrorRecord : IReturnData {
    std::string deviceGuid;
    std::string deviceName;
    std::string accessPointName;
    std::int32_t credentialType = 0; ///< One of: 0 person, 1 card, 2 face, 3 code.
    std::int32_t errorCode = 0;      ///< The device's error number.
    std::string errorMsg;            ///< Words for it, may be empty.
    std::string errorTime;
    NEXWIRE_JSON
};

struct NEXWIRE_API VisitorErrorRecordResponse : IReturnData {
    std::string recordGuid;
    std::string visitorName;
    std::vector<VisitorErrorRecord> errorRecordList;
    NEXWIRE_JSON
};

struct NEXWIRE_API VisitorErrorRecordResponseData : IReturnData {
    VisitorErrorRecordResponse visitorErrorRecordResponse;
    NEXWIRE_JSON
};

/// Permissions to send to devices or to take off them.
struct NEXWIRE_API DownloadPermissionInfo : IInboundData {
    std::vector<std::string> appointmentGuidList; ///< Required.
    std::vector<std::string> deviceGuidList;      ///< Empty: all devices of the appointments' groups.
    std::int32_t operateType = 0;                 ///< One of: 0 send, 1 take off.
    NEXWIRE_JSON
};

} // namespace protocol
