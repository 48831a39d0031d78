#pragma once

#include "protocol/Video/View.h"

// Views: which channels stand in which windows. All functions block until the answer is there and may be called from
// any thread. Those with a result return true when the answer was a readable envelope, whatever its code, and leave the
// result untouched otherwise; those without one return true when an answer came, whatever it says.

namespace nexwire {

class NEXWIRE_API CMainViewRequest {
public:
    /// The views of the signed-in user.
    static bool getAllView(protocol::ViewResoponseListData& result);
    /// The views that a team shares.
    static bool getAllViewWithTeamNo(protocol::ViewResoponseListData& result, const std::string& teamNo);
    static bool getViewByGUID(protocol::ViewResoponse& result, const std::string& viewGuid);
    /// Adds a view; the result has its identifier.
    static bool addView(protocol::ViewResultData& result, const protocol::ViewParam& view);
    /// Replaces a view.
    static bool modifyView(protocol::ViewResultData& result, const protocol::ViewParam& view,
                           const std::string& viewGuid);
    /// One result per view.
    static bool deleteView(protocol::ViewResultWithCodeListData& result, const protocol::RemoveView& views);
};

/// All groups of views.
class NEXWIRE_API CGetAllViewGroupsComm {
public:
    static bool request(protocol::ViewgroupListData& result);
};

/// Adds a group of views; the result has its identifier.
class NEXWIRE_API CAddViewGroupComm {
public:
    static bool request(protocol::ViewgroupAddRspData& result, const protocol::ViewgroupAdd& group);
};

/// Removes groups of views; their views stay.
class NEXWIRE_API CDeleteViewGroupsComm {
public:
    static bool request(const protocol::ViewgroupDelete& groups);
};

/// Replaces a group of views.
class NEXWIRE_API ViewgroupModify {
public:
    static bool request(const protocol::ViewgroupModify& group, const std::string& viewgroupGuid);
};

} // namespace nexwire
