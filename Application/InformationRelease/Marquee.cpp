#include "nexwire/InformationRelease/Marquee.h"

#include <keel/Error.h>

#include "Application/InformationRelease/RawDocument.h"

namespace nexwire {
namespace {

constexpr const char* kMaterials = "/7730/v1/irsLite/materialResource";
constexpr const char* kDevices = "/7730/v1/deviceManagement/devices/";

Path ReleasePath(const std::string& deviceGuid)
{
    return DevicePath(Route::External, deviceGuid, "/publicRelease");
}

Path UpgradePath(const std::string& deviceGuid)
{
    return DevicePath(Route::External, deviceGuid, "/terminalUpgrade");
}

} // namespace

bool CMarqueeComm::addMaterialResources(std::string& materialGuid, const protocol::MatrialResource& material)
{
    protocol::MatrialResourceAdded added;
    if (!ExchangeJudged(Write(kMaterials, material), added)) {
        return false;
    }
    materialGuid = std::move(added.materialGuid);
    return true;
}

bool CMarqueeComm::deleteMaterialResources(const std::string& materialGuid)
{
    return ExchangeJudged(Remove(Path(kMaterials, "/", materialGuid)));
}

bool CMarqueeComm::modifyMaterialResource(const protocol::MatrialResource& material, const std::string& materialGuid)
{
    return ExchangeJudged(Write(Path(kMaterials, "/", materialGuid), material));
}

bool CMarqueeComm::queryMaterialResource(protocol::MatrialResourceRespone& result,
                                         const protocol::MatrialResourceQueryCondition& condition)
{
    return ExchangeJudged(Query(kMaterials, condition), result);
}

bool CMarqueeComm::cachePublishData(protocol::CachePublishDataResult& result, const protocol::CachePublishData& data)
{
    return ExchangeJudged(Write(Path(kDevices, "publicRelease"), data), result);
}

bool CMarqueeComm::doPublishCommand(const std::string& deviceGuid)
{
    return ExchangeJudged(Write(ReleasePath(deviceGuid)));
}

bool CMarqueeComm::publishProgress(protocol::PublicReleaseProgress& result, const std::string& deviceGuid)
{
    return ExchangeJudged(Query(ReleasePath(deviceGuid)), result);
}

bool CMarqueeComm::cancelpublish(const std::string& deviceGuid)
{
    return ExchangeJudged(Remove(ReleasePath(deviceGuid)));
}

bool CMarqueeComm::terminalUpgrade(const std::string& deviceGuid, const protocol::TerminalUpgrade& upgrade)
{
    return ExchangeJudged(Write(UpgradePath(deviceGuid), upgrade));
}

bool CMarqueeComm::terminalUpgradeProgress(protocol::TerminalUpgradeProgress& result, const std::string& deviceGuid)
{
    return ExchangeJudged(Query(UpgradePath(deviceGuid)), result);
}

bool CMarqueeComm::cancleTerminalUpgrade(const std::string& deviceGuid)
{
    return ExchangeJudged(Remove(UpgradePath(deviceGuid)));
}

bool CMarqueeComm::getTerminalScreenShot(std::string& screenShot, const std::string& deviceGuid,
                                         const protocol::TerminalScreenShot& terminal)
{
    protocol::TerminalScreenShotReply reply;
    if (!ExchangeJudged(Query(DevicePath(Route::External, deviceGuid, "/terminalScreenShot"), terminal), reply)) {
        return false;
    }
    screenShot = std::move(reply.screenShot);
    return true;
}

bool CMarqueeComm::getPortInfo(protocol::PortConfig& result)
{
    return ExchangeJudged(Query(Path(kDevices, "portConfig")), result);
}

bool CMarqueeComm::setPortInfo(const protocol::PortConfig& ports)
{
    return ExchangeJudged(Write(Path(kDevices, "portConfig"), ports));
}

bool CMarqueeComm::modifyFrameWorkServerPort(const protocol::PortConfig& ports)
{
    return ExchangeJudged(Write("/7730/v1/framework/portConfig", ports));
}

bool CMarqueeComm::setGeneralCorvidKey(protocol::ModifyGeneralCorvidKeyResult& result,
                                       const protocol::GeneralCorvidKey& key)
{
    return core::Guard([&] {
        protocol::ModifyGeneralCorvidKeyResult fresh;
        if (!ExchangeJudged(Write(Path(kDevices, "generalCorvidKey"), key), fresh)) {
            return false;
        }
        if (fresh.status != "success") {
            Keel::Error::ErrorCode refused;
            refused.category = LastExchange().category;
            refused.text = fresh.status;
            Keel::Error::SetLastError(refused);
            return false;
        }
        result = std::move(fresh);
        return true;
    });
}

bool CMarqueeComm::getGeneralCorvidKey(protocol::GeneralCorvidKey& result)
{
    return ExchangeJudged(Query(Path(kDevices, "generalCorvidKey")), result);
}

bool CMarqueeComm::dataThrough(std::string& output, std::string& errorText, const std::string& deviceGuid,
                               const protocol::KestrelPassThroughReq& request)
{
    return RawDocument(deviceGuid, request, core::Verdict::Judge, output, errorText);
}

bool CMarqueeComm::deviceBinaryParams(std::string& output, const std::string& deviceGuid, int command,
                                      const std::string& input)
{
    return core::Guard([&] {
        protocol::DagPassThroughReq request;
        request.command = command;
        request.inBuffer = input;
        protocol::DagPassThroughRspData answer;
        if (!ExchangeJudged(Query(DevicePath(Route::External, deviceGuid, "/dagPassThrough"), request), answer) ||
            answer.dagPassThroughRsp.outBuffer.empty()) {
            return false;
        }
        output = std::move(answer.dagPassThroughRsp.outBuffer);
        return true;
    });
}

} // namespace nexwire
