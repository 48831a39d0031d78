#pragma once

#include "protocol/InformationRelease/Marquee.h"
#include "protocol/PassThrough/PassThrough.h"

namespace nexwire {

/// Signage: materials, publishing, upgrades and screenshots of terminals, ports and the shared access key.
///
/// All functions block until the answer is there and may be called from any thread. They return true when the answer
/// was an envelope whose number is 0. Any other code becomes the last error; a result is untouched on false.
class NEXWIRE_API CMarqueeComm {
public:
    /// @param materialGuid  receives the identifier of the new material.
    static bool addMaterialResources(std::string& materialGuid, const protocol::MatrialResource& material);
    static bool deleteMaterialResources(const std::string& materialGuid);
    static bool modifyMaterialResource(const protocol::MatrialResource& material, const std::string& materialGuid);
    /// A page of materials.
    static bool queryMaterialResource(protocol::MatrialResourceRespone& result,
                                      const protocol::MatrialResourceQueryCondition& condition);

    /// First step of a release: hands its content to the platform.
    static bool cachePublishData(protocol::CachePublishDataResult& result, const protocol::CachePublishData& data);
    /// Second step: has the platform send it to a server's terminals. The call does not wait for it; follow it with
    /// `publishProgress`.
    static bool doPublishCommand(const std::string& deviceGuid);
    static bool publishProgress(protocol::PublicReleaseProgress& result, const std::string& deviceGuid);
    static bool cancelpublish(const std::string& deviceGuid);

    /// Has a server's terminals take new firmware. The call does not wait for it; follow it with
    /// `terminalUpgradeProgress`.
    static bool terminalUpgrade(const std::string& deviceGuid, const protocol::TerminalUpgrade& upgrade);
    static bool terminalUpgradeProgress(protocol::TerminalUpgradeProgress& result, const std::string& deviceGuid);
    /// Spelled so.
    static bool cancleTerminalUpgrade(const std::string& deviceGuid);

    /// @param screenShot  receives the picture, Base64.
    static bool getTerminalScreenShot(std::string& screenShot, const std::string& deviceGuid,
                                      const protocol::TerminalScreenShot& terminal);

    /// Ports on which the platform speaks to devices.
    static bool getPortInfo(protocol::PortConfig& result);
    static bool setPortInfo(const protocol::PortConfig& ports);
    /// Ports of the framework server.
    static bool modifyFrameWorkServerPort(const protocol::PortConfig& ports);

    /// True only when the status is "success" as well; otherwise it is the text of the last error.
    static bool setGeneralCorvidKey(protocol::ModifyGeneralCorvidKeyResult& result,
                                    const protocol::GeneralCorvidKey& key);
    static bool getGeneralCorvidKey(protocol::GeneralCorvidKey& result);

    /// Sends a request to a device's HTTP interface. False when the device says nothing.
    ///
    /// @param output     receives what the device answers: its document, or its status where there is no document.
    /// @param errorText  receives on failure why there is none.
    static bool dataThrough(std::string& output, std::string& errorText, const std::string& deviceGuid,
                            const protocol::KestrelPassThroughReq& request);
    /// Sends a command of the caller's choice to a device. False when the device says nothing.
    ///
    /// @param output  receives what the device answers.
    /// @param input   goes to the device as it is.
    static bool deviceBinaryParams(std::string& output, const std::string& deviceGuid, int command,
                                   const std::string& input);
};

} // namespace nexwire
