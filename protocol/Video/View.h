#pragma once

#include "nexwire/JSONStruct.h"

namespace protocol {

/// A window of a view.
struct NEXWIRE_API ViewWindow : IInboundData {
    std::int32_t windowNo = 1;   ///< From 1, row by row.
    std::int32_t row = 0;        ///< Its upper left cell in the grid. From 0.
    std::int32_t column = 0;     ///< From 0.
    std::int32_t rowSpan = 1;    ///< Cells it covers. 1 to 16.
    std::int32_t columnSpan = 1; ///< 1 to 16.
    std::string channelGuid;     ///< What it shows; empty: nothing.
    std::string channelName;
    std::int32_t streamType = 0; ///< One of: 0 main, 1 sub, 2 third.
    bool isSoundOn = false;
    NEXWIRE_JSON
};

/// A view to add, or as it is to be.
struct NEXWIRE_API ViewParam : IInboundData {
    std::string viewName;      ///< Required. Up to 64 characters.
    std::string viewgroupGuid; ///< Group it belongs to; empty: none.
    std::string teamNo;        ///< Team that may see it; empty: only the user.
    std::int32_t rows = 1;     ///< Of the grid. 1 to 16.
    std::int32_t columns = 1;  ///< Of the grid. 1 to 16.
    std::vector<ViewWindow> viewWindowList;
    std::int32_t pollingInterval = 0; ///< Until the next channels come. 5 to 3600 s; 0: they stay.
    bool isDefault = false;           ///< Opened when the user signs in.
    std::string description;
    NEXWIRE_JSON
};

/// A view as the platform keeps it; spelled so on the wire.
struct NEXWIRE_API ViewResoponse : IReturnData {
    std::string viewGuid;
    std::string viewName;
    std::string viewgroupGuid;
    std::string teamNo;
    std::int32_t rows = 0;
    std::int32_t columns = 0;
    std::vector<ViewWindow> viewWindowList;
    std::int32_t pollingInterval = 0; ///< Until the next channels come; 0: they stay, s.
    bool isDefault = false;
    std::string description;
    std::string createUser;
    std::string modifyTime; ///< Last change, "2026-03-01T08:00:00+00:00".
    NEXWIRE_JSON
};

struct NEXWIRE_API ViewResoponseListData : IReturnData {
    std::vector<ViewResoponse> viewResoponseList;
    NEXWIRE_JSON
};

struct NEXWIRE_API ViewResult : IReturnData {
    std::string viewGuid;
    std::string viewName;
    std::string modifyTime; ///< "2026-03-01T08:00:00+00:00".
    NEXWIRE_JSON
};

struct NEXWIRE_API ViewResultData : IReturnData {
    ViewResult viewResult;
    NEXWIRE_JSON
};

/// Views to remove.
struct NEXWIRE_API RemoveView : IInboundData {
    std::vector<std::string> viewGuidList; ///< Required.
    NEXWIRE_JSON
};

struct NEXWIRE_API ViewResultWithCode : IReturnData {
    std::string viewGuid;
    std::string viewName;
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API ViewResultWithCodeListData : IReturnData {
    std::vector<ViewResultWithCode> viewResultWithCodeList;
    NEXWIRE_JSON
};

/// A group of views.
struct NEXWIRE_API Viewgroup : IReturnData {
    std::string viewgroupGuid;
    std::string viewgroupName;
    std::string parentGuid;   ///< Group it belongs to; empty: at the top.
    std::int32_t orderNo = 0; ///< Place among its neighbours.
    std::vector<std::string> viewGuidList;
    NEXWIRE_JSON
};

struct NEXWIRE_API ViewgroupListData : IReturnData {
    std::vector<Viewgroup> viewgroupList;
    NEXWIRE_JSON
};

struct NEXWIRE_API ViewgroupAdd : IInboundData {
    std::string viewgroupName; ///< Required. Up to 64 characters.
    std::string parentGuid;    ///< Empty: at the top.
    std::int32_t orderNo = 0;  ///< Place among its neighbours.
    std::vector<std::string> viewGuidList;
    NEXWIRE_JSON
};

struct NEXWIRE_API ViewgroupAddRsp : IReturnData {
    std::string viewgroupGuid;
    std::string viewgroupName;
    NEXWIRE_JSON
};

struct NEXWIRE_API ViewgroupAddRspData : IReturnData {
    ViewgroupAddRsp viewgroupAddRsp;
    NEXWIRE_JSON
};

/// Groups to remove; their views stay.
struct NEXWIRE_API ViewgroupDelete : IInboundData {
    std::vector<std::string> viewgroupGuidList; ///< Required.
    NEXWIRE_JSON
};

/// A group as it is to be.
struct NEXWIRE_API ViewgroupModify : IInboundData {
    std::string viewgroupName; ///< Required. Up to 64 characters.
    std::string parentGuid;    ///< Empty: at the top.
    std::int32_t orderNo = 0;  ///< Place among its neighbours.
    std::vector<std::string> viewGuidList;
    NEXWIRE_JSON
};

} // namespace protocol
