#include "nexwire/Framework/System.h"

#include "core/Pipeline.h"

namespace nexwire {

namespace {

constexpr const char* kRoot = "/7730/v1/internal/framework/system/";
constexpr const char* kConfigs = "/7730/v1/framework/system/general/configs";

} // namespace

bool CGetSystemConfigFile::request(protocol::ConfigFilePathData& result)
{
    return Exchange(Query(Path(kRoot, "configFilePath")), result);
}

bool CGetSystemSaveFilePath::request(protocol::FilePathData& result)
{
    return Exchange(Query(Path(kRoot, "filepath")), result);
}

bool CGetSystemCloudP2PRegion::request(protocol::CloudP2PRegionData& result)
{
    return Exchange(Query(Path(kRoot, "cloudP2PRegion")), result);
}

bool CSystemServerConfig::request(protocol::SystemServerConfigData& result)
{
    return Exchange(Query(kConfigs), result);
}

bool CSystemServerConfig::request(const protocol::SystemConfigAdd& config)
{
    return Exchange(Write(kConfigs, config));
}

bool CGetDateTimeFormat::request(protocol::DateTimeFormatData& result)
{
    return Exchange(Read(Path(kRoot, "datetimeformat")), result);
}

bool CGetSystemEnableGDPR::request(protocol::EnableGDPRData& result)
{
    return Exchange(Read(Path(kRoot, "EnableGDPR")), result);
}

bool CGetSystemEnableExportPersonInfor::request(protocol::ExportPersonInforCfgData& result)
{
    return Exchange(Read(Path(kRoot, "EnableExportPersonInfor")), result);
}

} // namespace nexwire
