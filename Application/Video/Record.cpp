#include "nexwire/Video/Record.h"

#include "core/Pipeline.h"

namespace nexwire {

namespace {

constexpr const char* kRoot = "/7730/v1/video/";
constexpr const char* kInternalRoot = "/7730/v1/internal/video/";

} // namespace

bool CRecordScheduleRequest::getAllPlanTemplate(protocol::TemplateResponseListData& result,
                                                const protocol::TemplateQueryCondition& condition)
{
    return Exchange(Query(Path(kRoot, "templates"), condition), result);
}

bool CRecordScheduleRequest::getPlanTemplate(protocol::TemplateInfoData& result, const std::string& templateGuid)
{
    return Exchange(Query(Path(kRoot, "templates/", templateGuid)), result);
}

bool CRecordScheduleRequest::setTemplate(protocol::TemplateResultListData& result,
                                         const protocol::ModifyTemplates& templates)
{
    return Exchange(Write(Path(kRoot, "templates"), templates), result);
}

bool CLocalFileComm::request(protocol::LocalFileResultData& result, const protocol::LocalFile& condition)
{
    // Spelled so.
    return Exchange(Read(Path(kInternalRoot, "locaFile"), condition), result);
}

bool CPutVideoFileInfo::request(protocol::FileNotifyResultData& result, const protocol::LocalFileNotify& files)
{
    return Exchange(Write(Path(kInternalRoot, "videoFileNotify"), files), result);
}

bool CGetVideoFileInfo::request(protocol::LocalFileQueryResultData& result, const protocol::LocalFileQuery& condition)
{
    return Exchange(Query(Path(kInternalRoot, "localFileQuery"), condition), result);
}

bool CGetSystemVideoParam::request(protocol::VideoSystemConfigDataData& result)
{
    return Exchange(Query(Path(kInternalRoot, "systemConfigs")), result);
}

bool CGetPictureComm::request(std::string& picture, const protocol::PicStorage& param)
{
    return ExchangeForBytes(Query(Path(kRoot, "picStorage"), param), picture);
}

bool COperatorBroadCastComm::request(protocol::BroadCastResultData& result, const protocol::BroadCastNotify& broadcast)
{
    return Exchange(Query(Path(kInternalRoot, "BroadCastOperator"), broadcast), result);
}

} // namespace nexwire
