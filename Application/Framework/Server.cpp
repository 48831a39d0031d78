#include "nexwire/Framework/Server.h"

#include "core/Pipeline.h"

namespace nexwire {

namespace {

constexpr const char* kRoot = "/7730/v1/framework/";
constexpr const char* kInternalRoot = "/7730/v1/internal/framework/";

} // namespace

bool CGetServerPortCommon::request(protocol::ServerPortData& result)
{
    return Exchange(Query(Path(kRoot, "networks/ports")), result);
}

bool CFrameworkServerReboot::request(const protocol::Reboot& param)
{
    return Exchange(Write(Path(kRoot, "reboot"), param));
}

bool CFrameworkServerClose::request()
{
    return Exchange(Write(Path(kRoot, "close")));
}

bool CSetServerLang::request(const protocol::Setserverlang& param)
{
    return Exchange(Write(Path(kRoot, "serverlang"), param));
}

bool CFrameworkServerSkinInfo::request(const protocol::SkinInfo& param)
{
    return Exchange(Write(Path(kRoot, "serverSkinInfo"), param));
}

bool CSendEmail::request(const protocol::Email& mail)
{
    return Exchange(Write(Path(kInternalRoot, "emails"), mail));
}

bool CReportDclogCommon::request(protocol::DclogRspData& result, const std::string& report, bool internal)
{
    return Exchange(Write(Path(internal ? kInternalRoot : kRoot, "dclogs"), Only(&protocol::Dclog::report, report)),
                    result);
}

bool CTemplateComm::request(protocol::TemplateTestRspData& result, const protocol::TemplateTest& param)
{
    return Exchange(Write("/7730/v1/template/tests", param), result);
}

} // namespace nexwire
