#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol {

/// Tells the framework that a component of the client has started.
struct NEXWIRE_API ComponentRegisterInfo : IInboundData {
    std::string componentId;        ///< Chosen by the component, stays the same over restarts. Required.
    std::string componentName;      ///< Required.
    std::int32_t componentType = 0; ///< One of: 0 other, 1 framework, 2 video, 3 access control, 4 alarm centre, 5 map,
                                    ///< 6 attendance, 7 visitor, 8 video wall, 9 information release, 10 storage.
    std::string version;            ///< For example: "2.4.1".
    std::string address;            ///< Where it listens for the framework, host and port; empty: it does not.
    std::int32_t processId = 0;
    std::string startTime; ///< "2026-03-01T08:00:00+00:00".
    NEXWIRE_JSON
};

/// Components asked for; what is empty or 0 does not narrow.
struct NEXWIRE_API QueryComponentCondition : IInboundData {
    std::string componentName;      ///< Part of the name.
    std::int32_t componentType = 0; ///< As in `ComponentRegisterInfo`; 0: any.
    bool onlineOnly = false;        ///< Only those that run.
    NEXWIRE_JSON
};

struct NEXWIRE_API ComponentID : IReturnData {
    std::string componentId;
    std::string componentName;
    std::int32_t componentType = 0; ///< As in `ComponentRegisterInfo`.
    std::string version;
    bool online = false;
    NEXWIRE_JSON
};

struct NEXWIRE_API ComponentIDListData : IReturnData {
    std::vector<ComponentID> componentIDList;
    NEXWIRE_JSON
};

/// Kinds of messages that a component wants to receive.
struct NEXWIRE_API Subscribe : IInboundData {
    std::string componentId;                  ///< Required.
    std::vector<std::string> messageTypeList; ///< One of: "alarm", "deviceStatus", "deviceChanged", "groupChanged",
                                              ///< "userChanged", "configChanged", "logout".
    bool isSubscribe = true;                  ///< False: no longer wanted.
    NEXWIRE_JSON
};

/// A thing that users may be permitted to do.
struct NEXWIRE_API PermissionItemInfo : IInboundData {
    std::string permissionCode;      ///< Unique on the platform. Required.
    std::string permissionName;      ///< For people.
    std::string parentCode;          ///< Permission it belongs under; empty: none.
    std::string componentId;         ///< Component that knows it.
    std::int32_t permissionType = 0; ///< One of: 0 page, 1 action, 2 resource.
    std::int32_t orderNo = 0;        ///< Place among its neighbours.
    NEXWIRE_JSON
};

/// Permissions that a component brings along.
struct NEXWIRE_API PermissionItemInfos : IInboundData {
    std::vector<PermissionItemInfo> permissionItemInfoList; ///< Required.
    NEXWIRE_JSON
};

struct NEXWIRE_API PermissionCodeInfo : IInboundData {
    std::string permissionCode; ///< Required.
    std::string permissionName; ///< Filled by the server.
    bool isPermitted = false;   ///< The signed-in user may do it; filled by the server.
    NEXWIRE_JSON
};

/// Permissions asked about; the answer has the same form.
struct NEXWIRE_API PermissionCodeInfos : IInboundData {
    std::vector<PermissionCodeInfo> permissionCodeInfoList; ///< Empty in a question: all that there are.
    NEXWIRE_JSON
};

/// Shows or hides the window of the alarm centre.
struct NEXWIRE_API AlarmUI : IInboundData {
    bool isShow = true;
    std::string alarmGuid;  ///< Alarm to show first; empty: the latest.
    std::string deviceGuid; ///< Only alarms of this device; empty: all.
    bool isTopmost = false; ///< Stays before other windows.
    NEXWIRE_JSON
};

/// Has another component show a page.
struct NEXWIRE_API JumpUiTo : IInboundData {
    std::string componentId;  ///< Component to come to the front. Required.
    std::string viewName;     ///< Page of the component; empty: its first.
    std::string resourceGuid; ///< What the page is to show, may be empty.
    std::string parameter;    ///< Whatever else the page understands, may be empty.
    NEXWIRE_JSON
};

/// Where the frame's window lies on the screen.
struct NEXWIRE_API FrameworkResize : IInboundData {
    std::int32_t left = 0;        ///< In pixels; may be negative on a screen to the left.
    std::int32_t top = 0;         ///< In pixels; may be negative.
    std::int32_t width = 0;       ///< 0 to 32767 pixels.
    std::int32_t height = 0;      ///< 0 to 32767 pixels.
    std::int32_t windowState = 0; ///< One of: 0 normal, 1 maximised, 2 minimised, 3 full screen.
    NEXWIRE_JSON
};

/// Makes an application's window fill the screen, or not.
struct NEXWIRE_API AppIsMaximize : IInboundData {
    std::string componentId;
    bool isMaximize = true;
    NEXWIRE_JSON
};

struct NEXWIRE_API AppMaximizeResult : IReturnData {
    std::string componentId;
    bool isMaximize = false; ///< How the window stands now.
    std::int32_t width = 0;  ///< Room inside the window, pixels.
    std::int32_t height = 0; ///< Room inside the window, pixels.
    NEXWIRE_JSON
};

struct NEXWIRE_API AppMaximizeResultData : IReturnData {
    AppMaximizeResult appMaximizeResult;
    NEXWIRE_JSON
};

/// Size that the alarm centre would like to have; spelled so on the wire.
struct NEXWIRE_API AlarmCenertSize : IInboundData {
    std::int32_t width = 0;   ///< 0 to 32767 pixels.
    std::int32_t height = 0;  ///< 0 to 32767 pixels.
    bool isCollapsed = false; ///< Only its title is to be seen.
    NEXWIRE_JSON
};

struct NEXWIRE_API AlarmCenertSizeResult : IReturnData {
    std::int32_t width = 0;  ///< What it got, pixels.
    std::int32_t height = 0; ///< What it got, pixels.
    bool isCollapsed = false;
    NEXWIRE_JSON
};

struct NEXWIRE_API AlarmCenertSizeResultData : IReturnData {
    AlarmCenertSizeResult alarmCenertSizeResult;
    NEXWIRE_JSON
};

} // namespace protocol
