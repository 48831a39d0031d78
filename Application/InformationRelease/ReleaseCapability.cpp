#include <keel/Error.h>

#include "Application/InformationRelease/ReleaseCommands.h"
#include "Application/PassThrough/PassThrough.h"
#include "nexwire/InformationRelease/ReleaseDevice.h"
#include "nexwire/LibraryErrors.h"

namespace nexwire {
namespace {

/// Reads a document from what a device answered. Where that is its status, the status becomes the last error.
template <class Capability>
bool ReadDocument(const std::string& document, const std::string& statusDocument, Capability& capability)
{
    if (capability.Parse(document)) {
        return true;
    }
    Abacus::ResponseStatus status;
    if (status.Parse(document) || status.Parse(statusDocument)) {
        Keel::Error::ErrorCode refused;
        refused.category = kDeviceStatusCategory;
        refused.number = status.statusCode;
        refused.text = status.statusString;
        if (!status.subStatusCode.empty()) {
            refused.text += " (" + status.subStatusCode + ")";
        }
        Keel::Error::SetLastError(refused);
    }
    return false;
}

template <class Capability>
bool GetByLine(const std::string& deviceGuid, std::string_view requestLine, Capability& capability)
{
    return core::Guard([&] {
        protocol::KestrelPassThroughReq request;
        request.url = requestLine;
        protocol::KestrelPassThroughRspData answer;
        return KestrelExchange(Route::External, deviceGuid, request, answer) &&
               ReadDocument(answer.kestrelPassThroughRsp.outBuffer, answer.kestrelPassThroughRsp.statusBuffer,
                            capability);
    });
}

template <class Capability>
bool GetByCommand(const std::string& deviceGuid, ReleaseCommand command, Capability& capability)
{
    return core::Guard([&] {
        protocol::DagPassThroughRsp answer;
        return DeviceExchange(Route::External, command, deviceGuid, {}, nullptr, answer) &&
               ReadDocument(answer.outBuffer, answer.statusBuffer, capability);
    });
}

} // namespace

#define CAPABILITY(function, Structure, line)                                                                          \
    bool CInformationReleaseDeviceComm::function(const std::string& deviceGuid, Abacus::Structure& capability)         \
    {                                                                                                                  \
        return GetByLine(deviceGuid, "GET /KESTREL/" line, capability);                                                \
    }

// clang-format off
CAPABILITY(getMaterialCapability, MaterialAbility, "Publish/material/1/capabilities\r\n")
CAPABILITY(getMaterialSearchCapability, MaterialSearchAbility, "Publish/MaterialMgr/materialSearch/profile\r\n")
CAPABILITY(getProgramCapability, Program, "Publish/ProgramMgr/program/1/capabilities\r\n")
CAPABILITY(getProgramSearchCapability, ProgramSearchAbility, "Publish/ProgramMgr/programSearch/profile\r\n")
CAPABILITY(getDynamicProgramCapability, ProgramDynamicCap, "Publish/ProgramMgr/program/dynamicCap\r\n")
CAPABILITY(getProgramPageCapability, Page, "Publish/ProgramMgr/program/1/page/1/capabilities\r\n")
CAPABILITY(getPlayScheduleCapability, PlaySchedule, "Publish/ScheduleMgr/playSchedule/1/capabilities\r\n")
CAPABILITY(getTerminalControlCapability, ControlParam, "Publish/TerminalMgr/terminals/control/capabilities\r\n")
CAPABILITY(getTerminalGroupCapability, TerminalGroupAbility, "Publish/TerminalMgr/terminalGroups/1/capabilities\r\n")
CAPABILITY(getPublishServerCapability, PublishServerCap, "Publish/capabilities\r\n")
CAPABILITY(getWinDynamicCapability, WinDynamicCap, "Publish/ProgramMgr/program/page/windows/dynamicCap\r\n")
CAPABILITY(getTemplateCapability, TemplateCap, "Publish/TemplateMgr/template/1/capabilities\r\n")
CAPABILITY(getTemplateSearchCapability, TemplateSearchCap, "Publish/TemplateMgr/templateSearch/profile\r\n")
CAPABILITY(getUserConfigCapability, User, "Security/users/1/capabilities\r\n")
CAPABILITY(getUserPermissionCapability, PublishServerUser, "Security/UserPermission/1/remotePermission/capabilities\r\n")
CAPABILITY(getUserRoleCapability, UserRoleCap, "Publish/userRole/capabilities\r\n")
CAPABILITY(getOrgnizationCapability, Organization, "Publish/orgMgr/organization/1/capabilities\r\n")
CAPABILITY(getTouchWinMaterialCapability, TouchWndMaterial, "Publish/ProgramMgr/program/page/windows/touch/capabilities\r\n")
CAPABILITY(getAudioWinMaterialCapability, AudioWidMatarialAbility, "Publish/ProgramMgr/program/page/windows/audio/capabilities\r\n")
// The one line that does not end.
CAPABILITY(getCharConfigCapability, InsertCharacterCfgAbility, "Publish/TerminalMgr/insertCharacterCfg/capabilities")
CAPABILITY(getADBDebugCapability, AdbDebugAbility, "Publish/TerminalMgr/terminals/adbDebug/1/capabilities\r\n")
CAPABILITY(getTerminalManagerCapability, TerminalManagerCapability, "Publish/TerminalMgr/capabilities?format=json\r\n")
CAPABILITY(getIPCLinkAbility, ipclinkcap::BindIPC, "Publish/TerminalMgr/bindIPC/1/capabilities\r\n")
CAPABILITY(getTerminalLinkIPCAbility, ipclinkcap::TerminalOthers, "Publish/TerminalMgr/terminals/others/1/capabilities\r\n")
CAPABILITY(getBatchSetParaAbility, batchterminalset::BatchTerminalAbilitys, "Publish/TerminalMgr/terminals/batchconfig/capabilities\r\n")
// clang-format on

#undef CAPABILITY

bool CInformationReleaseDeviceComm::getTerminalCapability(const std::string& deviceGuid,
                                                          Abacus::TerminalAbility& capability, int terminalNo)
{
    return core::Guard([&] {
        // Assumed after the lines of the other numbered things.
        const std::string line =
            "GET /KESTREL/Publish/TerminalMgr/terminals/" + std::to_string(terminalNo) + "/capabilities\r\n";
        return GetByLine(deviceGuid, line, capability);
    });
}

bool CInformationReleaseDeviceComm::getBasicCapabililty(const std::string& deviceGuid,
                                                        Abacus::BasicCapability& capability)
{
    return GetByCommand(deviceGuid, kBasicCapability, capability);
}

bool CInformationReleaseDeviceComm::getIRSSecurityCapability(const std::string& deviceGuid,
                                                             Abacus::SecurityAbility& capability)
{
    return GetByCommand(deviceGuid, kSecurityCapability, capability);
}

bool CInformationReleaseDeviceComm::getPlayScheduleReleaseCapability(const std::string&)
{
    return false;
}

} // namespace nexwire
