#pragma once

#include "protocol/Video/Record.h"

// Recording by templates, files by time and channel, pictures, broadcasts of operators. All functions block until the
// answer is there and may be called from any thread. Unless a line says otherwise they return true when the answer was
// a readable envelope, whatever its code; a result is untouched on false.

namespace nexwire {

/// Templates that say when to record.
class NEXWIRE_API CRecordScheduleRequest {
public:
    static bool getAllPlanTemplate(protocol::TemplateResponseListData& result,
                                   const protocol::TemplateQueryCondition& condition);
    static bool getPlanTemplate(protocol::TemplateInfoData& result, const std::string& templateGuid);
    /// Adds, changes and removes templates; one result per template.
    static bool setTemplate(protocol::TemplateResultListData& result, const protocol::ModifyTemplates& templates);
};

/// Files on a client's machine.
class NEXWIRE_API CLocalFileComm {
public:
    static bool request(protocol::LocalFileResultData& result, const protocol::LocalFile& condition);
};

/// Tells the platform of files that came, changed or went.
class NEXWIRE_API CPutVideoFileInfo {
public:
    static bool request(protocol::FileNotifyResultData& result, const protocol::LocalFileNotify& files);
};

/// A page of the files that the platform was told of.
class NEXWIRE_API CGetVideoFileInfo {
public:
    static bool request(protocol::LocalFileQueryResultData& result, const protocol::LocalFileQuery& condition);
};

/// Settings of video that all clients share.
class NEXWIRE_API CGetSystemVideoParam {
public:
    static bool request(protocol::VideoSystemConfigDataData& result);
};

/// Stored pictures.
class NEXWIRE_API CGetPictureComm {
public:
    /// @param picture  receives the answer's body as it is, zero bytes included: the picture, or what the platform says
    ///                 in its place. Untouched when no answer came.
    static bool request(std::string& picture, const protocol::PicStorage& param);
};

/// Speaks or writes to all operators.
class NEXWIRE_API COperatorBroadCastComm {
public:
    static bool request(protocol::BroadCastResultData& result, const protocol::BroadCastNotify& broadcast);
};

} // namespace nexwire
