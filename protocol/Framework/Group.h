#pragma once

#include "protocol/Common.h"

// Resource types of groups and elements, wherever a member is called elementType or resourceType: 0 any, 1 device,
// 2 video channel, 3 alarm input, 4 alarm output, 5 door, 6 card reader, 7 audio channel, 8 zone, 9 decoder, 10 wall,
// 11 map, 12 switch port, 13 server.

namespace protocol {

/// Groups asked for; what is empty or 0 does not narrow.
struct NEXWIRE_API QueryGroupCondition : IInboundData {
    std::string parentGroupGuid; ///< Only groups below this one.
    std::string groupName;       ///< Part of the name.
    std::int32_t groupType = 0;  ///< One of: 0 any, 1 devices, 2 video, 3 access control, 4 alarm.
    bool includeSub = true;      ///< Groups below those groups, too.
    NEXWIRE_JSON
};

/// A named group of resources.
struct NEXWIRE_API Group : IReturnData {
    std::string groupGuid;
    std::string groupName;
    std::string parentGroupGuid; ///< Empty: at the top.
    std::int32_t groupType = 0;  ///< One of: 0 mixed, 1 devices, 2 video, 3 access control, 4 alarm.
    std::int32_t orderNo = 0;    ///< Place among its neighbours.
    std::int32_t elementNum = 0; ///< Elements in the group itself.
    std::string description;
    NEXWIRE_JSON
};

struct NEXWIRE_API GroupListData : IReturnData {
    std::vector<Group> groupList;
    NEXWIRE_JSON
};

/// The groups that hold a resource are asked for.
struct NEXWIRE_API QueryGroupByResourceCondition : IInboundData {
    std::string resourceGuid; ///< Required.
    std::int32_t resourceType =
        0; ///< One of: 0 any, 1 device, 2 video channel, 3 alarm input, 4 alarm output, 5 door, 6 card reader, 7 audio
           ///< channel, 8 zone, 9 decoder, 10 wall, 11 map, 12 switch port, 13 server.
    NEXWIRE_JSON
};

/// A group as it is to be.
struct NEXWIRE_API GroupModify : IInboundData {
    std::string groupName; ///< Required. Up to 64 characters.
    std::string parentGroupGuid;
    std::int32_t orderNo = 0;
    std::string description;
    NEXWIRE_JSON
};

struct NEXWIRE_API GroupModifyResult : IReturnData {
    std::string groupGuid;
    std::string groupName;
    NEXWIRE_JSON
};

/// A new group.
struct NEXWIRE_API GroupAdd : IInboundData {
    std::string groupGuid; ///< Empty: the server makes one.
    std::string groupName; ///< Required. Up to 64 characters.
    std::string parentGroupGuid;
    std::int32_t groupType = 0; ///< One of: 0 mixed, 1 devices, 2 video, 3 access control, 4 alarm.
    std::string description;
    NEXWIRE_JSON
};

/// The group as it was added.
struct NEXWIRE_API GroupAddData : IReturnData {
    GroupAdd groupAdd;
    NEXWIRE_JSON
};

struct NEXWIRE_API GroupDelete : IInboundData {
    std::vector<std::string> groupGuidList; ///< Required.
    bool deleteElements = false;            ///< What is in the groups goes, too.
    NEXWIRE_JSON
};

struct NEXWIRE_API GroupDeleteResultListData : IReturnData {
    std::vector<OperationResult> groupDeleteResultList;
    NEXWIRE_JSON
};

/// Devices to take into a group with their channels, doors, inputs and outputs.
struct NEXWIRE_API GroupImport : IInboundData {
    std::string groupGuid;                   ///< Empty: a group of the name below is made.
    std::string groupName;                   ///< Up to 64 characters.
    std::string parentGroupGuid;             ///< For a new group; empty: at the top.
    std::vector<std::string> deviceGuidList; ///< Required.
    NEXWIRE_JSON
};

struct NEXWIRE_API GroupImportResult : IReturnData {
    std::string groupGuid;
    std::string groupName;
    std::int32_t elementNum = 0;                      ///< Elements that were added.
    std::vector<OperationResult> operationResultList; ///< One result per device.
    NEXWIRE_JSON
};

struct NEXWIRE_API GroupImportResultData : IReturnData {
    GroupImportResult groupImportResult;
    NEXWIRE_JSON
};

/// A resource in a group.
struct NEXWIRE_API Element : IReturnData {
    std::string elementGuid;
    std::string elementName;
    std::int32_t elementType =
        0; ///< One of: 0 unknown, 1 device, 2 video channel, 3 alarm input, 4 alarm output, 5 door, 6 card reader, 7
           ///< audio channel, 8 zone, 9 decoder, 10 wall, 11 map, 12 switch port, 13 server.
    std::string groupGuid;
    std::string deviceGuid;               ///< Device that it is a part of; of a device its own.
    std::int32_t elementNo = 0;           ///< Number of the part on its device, from 1; 0 for a device.
    std::int32_t elementStatus = 0;       ///< One of: 0 unknown, 1 online, 2 offline, 3 in alarm, 4 disabled.
    std::int32_t orderNo = 0;             ///< Place in the group.
    std::vector<std::string> abilityList; ///< What it can do. For example: "live", "record", "ptz", "talk", "unlock".
    std::string description;
    NEXWIRE_JSON
};

/// Elements asked for; what is empty or 0 does not narrow.
struct NEXWIRE_API QueryElementsCondition : IInboundData {
    std::string elementName;                   ///< Part of the name.
    std::vector<std::int32_t> elementTypeList; ///< 0 to 13. Types as in `Element`.
    std::int32_t elementStatus = 0;            ///< One of: 0 any, 1 online, 2 offline, 3 in alarm, 4 disabled.
    bool includeSub = false;                   ///< Elements of the groups below, too.
    std::int32_t pageNo = 1;                   ///< From 1.
    std::int32_t pageSize = 100;               ///< 1 to 1000.
    NEXWIRE_JSON
};

/// A page of a group's elements.
struct NEXWIRE_API QueryElementsResult : IReturnData {
    std::int32_t total = 0; ///< On all pages together.
    std::int32_t pageNo = 0;
    std::vector<Element> elementList;
    NEXWIRE_JSON
};

/// The elements of one device of a group.
struct NEXWIRE_API DeviceElements : IReturnData {
    std::string deviceGuid;
    std::string deviceName;
    std::vector<Element> elementList;
    NEXWIRE_JSON
};

/// A page of a group's elements, device by device.
struct NEXWIRE_API QueryElementsByDeviceResult : IReturnData {
    std::int32_t total = 0; ///< Devices on all pages together.
    std::int32_t pageNo = 0;
    std::vector<DeviceElements> deviceElementsList;
    NEXWIRE_JSON
};

/// How one element is asked for; group and element stand in the path.
struct NEXWIRE_API QuerySingleElementCondition : IInboundData {
    std::int32_t elementType =
        0; ///< One of: 0 any, 1 device, 2 video channel, 3 alarm input, 4 alarm output, 5 door, 6 card reader, 7 audio
           ///< channel, 8 zone, 9 decoder, 10 wall, 11 map, 12 switch port, 13 server.
    bool needStatus = true; ///< The state is read anew from the device.
    NEXWIRE_JSON
};

struct NEXWIRE_API ElementData : IReturnData {
    Element element;
    NEXWIRE_JSON
};

/// An element as it is to be; group and element stand in the path.
struct NEXWIRE_API ElementModify : IInboundData {
    std::string elementName; ///< Required. Up to 64 characters.
    std::int32_t orderNo = 0;
    std::string description;
    NEXWIRE_JSON
};

struct NEXWIRE_API ElementModifyResult : IReturnData {
    std::string elementGuid;
    std::string elementName;
    std::string groupGuid;
    NEXWIRE_JSON
};

struct NEXWIRE_API ElementDelete : IInboundData {
    std::vector<std::string> elementGuidList; ///< Required.
    NEXWIRE_JSON
};

struct NEXWIRE_API ElementDeleteResultListData : IReturnData {
    std::vector<OperationResult> elementDeleteResultList;
    NEXWIRE_JSON
};

/// Resources to put into a group.
struct NEXWIRE_API ResourceToGroup : IInboundData {
    std::vector<std::string> resourceGuidList; ///< Required.
    std::int32_t resourceType = 0;             ///< 0 to 13. Types as in `Element`.
    NEXWIRE_JSON
};

struct NEXWIRE_API ResourceToGroupResultListData : IReturnData {
    std::vector<OperationResult> resourceToGroupResultList;
    NEXWIRE_JSON
};

/// The state that the elements of a group are to show.
struct NEXWIRE_API SyncGroupAndElement : IInboundData {
    std::int32_t elementType = 0;   ///< Only elements of this type; 0: all. 0 to 13. Types as in `Element`.
    std::int32_t elementStatus = 0; ///< One of: 0 unknown, 1 online, 2 offline, 3 in alarm, 4 disabled.
    bool includeSub = false;        ///< Elements of the groups below, too.
    NEXWIRE_JSON
};

/// The element that is to be described.
struct NEXWIRE_API QueryElementInfo : IInboundData {
    std::string elementGuid;
    NEXWIRE_JSON
};

} // namespace protocol
