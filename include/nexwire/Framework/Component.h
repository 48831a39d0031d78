#pragma once

#include "protocol/Framework/Component.h"

// Components of a client among each other: who there is, what they want to know, whose window stands where. Threads,
// truth and errors: see Server.h.

namespace nexwire {

/// Tells the framework that a component has started.
class NEXWIRE_API CComponentRegisterComm {
public:
    static bool request(const protocol::ComponentRegisterInfo& component);
};

/// The components that have registered.
class NEXWIRE_API CGetComponentIDComm {
public:
    static bool request(protocol::ComponentIDListData& result, const protocol::QueryComponentCondition& condition);
};

/// Says which messages a component wants, or no longer wants.
class NEXWIRE_API CMessagesComm {
public:
    static bool request(const protocol::Subscribe& param);
};

/// Registers the permissions that a component brings along; those that the framework has are replaced.
class NEXWIRE_API CPermissionRegisterComm {
public:
    static bool request(const protocol::PermissionItemInfos& items);
};

/// What the signed-in user may do.
class NEXWIRE_API CPermissionComm {
public:
    /// @param codes  permissions asked about; none for all that there are.
    static bool requestSpecified(protocol::PermissionCodeInfos& result, const protocol::PermissionCodeInfos& codes);
};

/// Shows or hides the window of the alarm centre.
class NEXWIRE_API CAlarmCenterAlarmUI {
public:
    static bool request(const protocol::AlarmUI& param);
};

/// Has another component come to the front with a page.
class NEXWIRE_API CJumpUiToComm {
public:
    static bool request(const protocol::JumpUiTo& param);
};

/// Moves the frame's window.
class NEXWIRE_API CFrameworkResize {
public:
    static bool request(const protocol::FrameworkResize& param);
};

/// Makes an application's window fill the screen, or not, and says what room it has then.
class NEXWIRE_API CAppMaximize {
public:
    static bool request(protocol::AppMaximizeResultData& result, const protocol::AppIsMaximize& param);
};

/// Asks for room for the alarm centre; it may get less. Spelled so.
class NEXWIRE_API CAlarmCenertSize {
public:
    static bool request(protocol::AlarmCenertSizeResultData& result, const protocol::AlarmCenertSize& param);
};

} // namespace nexwire
