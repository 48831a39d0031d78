#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol {

/// A person to put into a group.
struct NEXWIRE_API PersonnelAdd : IInboundData {
    std::string personnelGuid;
    std::string personnelNo; ///< Number the person is known by, for example on a badge.
    std::string personnelName;
    NEXWIRE_JSON
};

/// A person to take out of a group.
struct NEXWIRE_API PersonnelRemove : IInboundData {
    std::string personnelGuid;
    NEXWIRE_JSON
};

/// A door or other controlled point to put into a group.
struct NEXWIRE_API ObjectAdd : IInboundData {
    std::string deviceGuid; ///< Device that the point belongs to.
    std::string objectGuid;
    std::string objectGroupGuid; ///< Group of points it was chosen from, may be empty.
    std::string objectName;
    std::int32_t objectNo = 0;   ///< Number of the point on its device, from 1.
    std::int32_t objectType = 0; ///< Server vocabulary, carried as it is.
    NEXWIRE_JSON
};

/// A controlled point to take out of a group.
struct NEXWIRE_API ObjectRemove : IInboundData {
    std::string deviceGuid;
    std::string objectGuid;
    NEXWIRE_JSON
};

/// A new group: who may pass where, and when.
struct NEXWIRE_API AccessGroupAddParam : IInboundData {
    std::string name;
    std::string secheduleGuid; ///< GUID of the schedule; spelled so on the wire.
    std::string description;
    std::vector<PersonnelAdd> personnelAddList;
    std::vector<ObjectAdd> objectAddList;
    NEXWIRE_JSON
};

/// A change of a group; only what the filter lets through is sent.
struct NEXWIRE_API AccessGroupModifyParam : IInboundData {
    std::string name;
    std::string description;
    std::string secheduleGuid; ///< GUID of the schedule; spelled so on the wire.
    std::vector<PersonnelAdd> personnelAddList;
    std::vector<PersonnelRemove> personnelRemoveList;
    std::vector<ObjectAdd> objectAddList;
    std::vector<ObjectRemove> objectRemoveList;
    NEXWIRE_JSON
};

/// A group after its creation or change.
struct NEXWIRE_API AccessGroupModifyResult : IReturnData {
    std::string name;
    std::string accessGroupGuid;
    std::int32_t accessGroupState = 0; ///< Server vocabulary, carried as it is.
    NEXWIRE_JSON
};

struct NEXWIRE_API AccessGroupModifyResultData : IReturnData {
    AccessGroupModifyResult accessGroupModifyResult;
    NEXWIRE_JSON
};

/// A person of a group.
struct NEXWIRE_API PersonnelRes : IReturnData {
    std::string personnelGuid;
    std::string personnelNo;
    std::string personnelName;
    NEXWIRE_JSON
};

/// A controlled point of a group.
struct NEXWIRE_API ObjectRes : IReturnData {
    std::string deviceGuid;
    std::string objectGuid;
    std::string objectGroupGuid;
    std::string objectName;
    std::int32_t objectNo = 0;   ///< Number of the point on its device, from 1.
    std::int32_t objectType = 0; ///< Server vocabulary, carried as it is.
    NEXWIRE_JSON
};

/// A group as the platform keeps it.
struct NEXWIRE_API AccessGroupQueryResponse : IReturnData {
    std::string accessGroupGuid;
    std::string name;
    std::string secheduleGuid; ///< GUID of the schedule; spelled so on the wire.
    std::string description;
    std::int32_t accessGroupState = 0; ///< Server vocabulary, carried as it is.
    std::vector<PersonnelRes> personnelResList;
    std::vector<ObjectRes> objectResList;
    NEXWIRE_JSON
};

struct NEXWIRE_API AccessGroupQueryResponseData : IReturnData {
    AccessGroupQueryResponse accessGroupQueryResponse;
    NEXWIRE_JSON
};

struct NEXWIRE_API AccessGroupQueryResponseListData : IReturnData {
    std::vector<AccessGroupQueryResponse> accessGroupQueryResponseList;
    NEXWIRE_JSON
};

/// One group in a download order.
struct NEXWIRE_API AccessGroupDown : IInboundData {
    std::string accessgroupGuid;   ///< GUID of the group; spelled so on the wire.
    bool deleteGroup = false;      ///< Remove the group from the devices instead of sending it.
    std::int32_t downloadMode = 0; ///< Server vocabulary, carried as it is.
    NEXWIRE_JSON
};

/// Groups to send to their devices, in this order.
struct NEXWIRE_API AccessDownload : IInboundData {
    std::vector<AccessGroupDown> accessGroupDownList;
    NEXWIRE_JSON
};

/// How far the download to one device has come.
struct NEXWIRE_API GroupDownloadProgress : IReturnData {
    std::string deviceGuid;
    std::int32_t deviceProgress = 0; ///< Per cent, 0 to 100.
    std::int32_t downloadState = 0;  ///< Server vocabulary, carried as it is.
    NEXWIRE_JSON
};

/// How far the download of a group has come.
struct NEXWIRE_API GroupDownloadProgressData : IReturnData {
    std::int32_t groupProgress = 0;    ///< Per cent over all devices, 0 to 100.
    std::int32_t accessGroupState = 0; ///< Server vocabulary, carried as it is.
    std::vector<GroupDownloadProgress> deviceDownloadProgressList;
    NEXWIRE_JSON
};

/// Which download is asked about.
struct NEXWIRE_API DetailsQueryCondition : IInboundData {
    std::string deviceGuid;
    std::string groupGuid;
    NEXWIRE_JSON
};

/// Which of its persons are wanted; empty texts do not narrow.
struct NEXWIRE_API DetailsFilterCondition : IInboundData {
    std::string personName; ///< Part of the name.
    std::string personGuid;
    std::string sessionID;           ///< Download session; empty for the latest.
    std::int32_t downloadState = -1; ///< Server vocabulary; -1 for any state.
    NEXWIRE_JSON
};

/// Question for the details of a download.
struct NEXWIRE_API DeviceDownloadDetailsCont : IInboundData {
    DetailsQueryCondition detailsQueryCondition;   ///< Its key begins with a capital.
    bool isQuery = false;                          ///< True: narrow by the filter below.
    DetailsFilterCondition detailsFilterCondition; ///< Its key begins with a capital.
    NEXWIRE_JSON
};

/// One person's part in the download to a device.
struct NEXWIRE_API DeviceDownloadDetail : IReturnData {
    std::string personGuid;
    std::string personNo;
    std::string personName;
    std::string objectGuid;         ///< Controlled point it was for, empty when for the whole device.
    std::int32_t downloadState = 0; ///< Server vocabulary, carried as it is.
    std::int32_t errorCode = 0;     ///< 0, or why it failed.
    std::string errorMsg;
    NEXWIRE_JSON
};

struct NEXWIRE_API DeviceDownloadDetailsResponse : IReturnData {
    std::string deviceGuid;
    std::string groupGuid;
    std::string sessionID; ///< Download session the details belong to.
    std::int32_t totalNum = 0;
    std::int32_t successNum = 0;
    std::int32_t failedNum = 0;
    std::vector<DeviceDownloadDetail> deviceDownloadDetailList;
    NEXWIRE_JSON
};

struct NEXWIRE_API DeviceDownloadDetailsResponseData : IReturnData {
    DeviceDownloadDetailsResponse deviceDownloadDetailsResponse;
    NEXWIRE_JSON
};

/// What became of one person's credentials on a device. States are server vocabulary, carried as they are.
struct NEXWIRE_API PersonStateDetail : IReturnData {
    std::string personGuid;
    std::string personNo;
    std::string personName;
    std::int32_t downloadState = 0; ///< The person as a whole.
    std::int32_t cardState = 0;
    std::int32_t fingerPrintState = 0;
    std::int32_t faceState = 0;
    std::int32_t irisState = 0;
    std::int32_t errorCode = 0; ///< 0, or why it failed.
    std::string errorMsg;
    NEXWIRE_JSON
};

struct NEXWIRE_API PersonStateDetailResponse : IReturnData {
    std::string deviceGuid;
    std::string groupGuid;
    std::string sessionID; ///< Download session the details belong to.
    std::vector<PersonStateDetail> personStateDetailList;
    NEXWIRE_JSON
};

struct NEXWIRE_API PersonStateDetailResponseData : IReturnData {
    PersonStateDetailResponse personStateDetailResponse;
    NEXWIRE_JSON
};

/// A planned group to check for conflicts before it is created or changed.
struct NEXWIRE_API AccessParamCheck : IInboundData {
    std::string accessGroupGuid; ///< Empty for a group that does not exist yet.
    std::string scheduleGuid;
    std::vector<std::string> doorGuidList;
    std::vector<std::string> personGuidList;
    NEXWIRE_JSON
};

/// The same check against a given list of groups only.
struct NEXWIRE_API AccessParamCheckForCertainGroups : IInboundData {
    std::vector<std::string> accessGroupGuidList;
    std::string scheduleGuid;
    std::vector<std::string> doorGuidList;
    std::vector<std::string> personGuidList;
    NEXWIRE_JSON
};

/// Tells the platform that groups have changed state.
struct NEXWIRE_API AccessGroupStatusChange : IInboundData {
    std::vector<std::string> accessGroupGuidList;
    std::int32_t accessGroupState = 0; ///< Server vocabulary, carried as it is.
    NEXWIRE_JSON
};

/// Tells the platform how the download of a group to a device went.
struct NEXWIRE_API AccessGroupStatusDownload : IInboundData {
    std::string accessGroupGuid;
    std::string deviceGuid;
    std::int32_t deviceProgress = 0; ///< Per cent, 0 to 100.
    std::int32_t downloadState = 0;  ///< Server vocabulary, carried as it is.
    NEXWIRE_JSON
};

/// A person that a device holds.
struct NEXWIRE_API DownloadedPersonInfo : IReturnData {
    std::string personGuid;
    std::string personNo;
    std::string personName;
    std::int64_t downloadTime = 0; ///< Milliseconds since 1970-01-01 UTC.
    NEXWIRE_JSON
};

struct NEXWIRE_API DownloadedPerson : IReturnData {
    std::string deviceGuid;
    std::vector<DownloadedPersonInfo> personList;
    NEXWIRE_JSON
};

struct NEXWIRE_API DownloadedPersonData : IReturnData {
    DownloadedPerson downloadedPerson;
    NEXWIRE_JSON
};

/// A card that a device holds.
struct NEXWIRE_API DownloadedCard : IReturnData {
    std::string cardNo; ///< Decimal text.
    std::string personGuid;
    std::string personNo;
    std::string personName;
    std::int64_t downloadTime = 0; ///< Milliseconds since 1970-01-01 UTC.
    NEXWIRE_JSON
};

struct NEXWIRE_API DownloadedCardListData : IReturnData {
    std::vector<DownloadedCard> downloadedCardList;
    NEXWIRE_JSON
};

} // namespace protocol
