#pragma once

#include <abacus/Abacus.h>

#include "protocol/DeviceManagement/Device.h"
#include "protocol/InformationRelease/ReleaseDevice.h"
#include "protocol/PassThrough/PassThrough.h"

namespace nexwire {

/// Release servers: the devices that have screens show programs. Registering them with the platform, reading what they
/// are able to do, working on them, and moving files to and from them.
///
/// All functions block until the answer is there and may be called from any thread. Unless a line says otherwise they
/// return true when the answer was a readable envelope, whatever its code; outputs are untouched on false.
class NEXWIRE_API CInformationReleaseDeviceComm {
public:
    /// Whether the platform has a server of this address or serial number already.
    ///
    /// @param exists       receives it.
    /// @param existedType  receives what they have in common: 0 nothing, 1 address and port, 2 serial number.
    /// @return the server's device GUID, or the platform's own words when there is none; empty on failure.
    static std::string ServerExisted(const std::string& address, int port, const std::string& userName,
                                     const std::string& password, bool& exists, int& existedType);
    /// Registers a server. The credentials are encrypted on the way; nothing is sent when they cannot be.
    ///
    /// @return its device GUID; empty on failure. When the platform refuses the server, its number and words are the
    ///         last error.
    static std::string addServer(const std::string& address, int port, const std::string& userName,
                                 const std::string& password);
    static bool deleteServer(const std::string& deviceGuid);
    /// Changes where a server is and how the platform logs on to it. The password is sent as it is given. Spelled so.
    static bool mosifyServerParam(const std::string& deviceGuid, const std::string& address, int port,
                                  const std::string& userName, const std::string& password);
    /// Serial number and software version of a server. Spelled so.
    static bool getServerBasicInfomation(protocol::DeviceResponseData& result, const std::string& deviceGuid);

    /// What a server is able to do, as it says itself; `capability` is replaced as a whole.
    ///
    /// Also false when the server answers something else than the document asked for. When that is its status, the
    /// status is the last error, with category `kDeviceStatusCategory`.
    static bool getMaterialCapability(const std::string& deviceGuid, Abacus::MaterialAbility& capability);
    static bool getMaterialSearchCapability(const std::string& deviceGuid, Abacus::MaterialSearchAbility& capability);
    static bool getProgramCapability(const std::string& deviceGuid, Abacus::Program& capability);
    static bool getProgramSearchCapability(const std::string& deviceGuid, Abacus::ProgramSearchAbility& capability);
    static bool getDynamicProgramCapability(const std::string& deviceGuid, Abacus::ProgramDynamicCap& capability);
    static bool getProgramPageCapability(const std::string& deviceGuid, Abacus::Page& capability);
    static bool getPlayScheduleCapability(const std::string& deviceGuid, Abacus::PlaySchedule& capability);
    static bool getTerminalControlCapability(const std::string& deviceGuid, Abacus::ControlParam& capability);
    static bool getTerminalGroupCapability(const std::string& deviceGuid, Abacus::TerminalGroupAbility& capability);
    static bool getPublishServerCapability(const std::string& deviceGuid, Abacus::PublishServerCap& capability);
    static bool getWinDynamicCapability(const std::string& deviceGuid, Abacus::WinDynamicCap& capability);
    static bool getTemplateCapability(const std::string& deviceGuid, Abacus::TemplateCap& capability);
    static bool getTemplateSearchCapability(const std::string& deviceGuid, Abacus::TemplateSearchCap& capability);
    static bool getUserConfigCapability(const std::string& deviceGuid, Abacus::User& capability);
    static bool getUserPermissionCapability(const std::string& deviceGuid, Abacus::PublishServerUser& capability);
    static bool getUserRoleCapability(const std::string& deviceGuid, Abacus::UserRoleCap& capability);
    /// Spelled so.
    static bool getOrgnizationCapability(const std::string& deviceGuid, Abacus::Organization& capability);
    static bool getTouchWinMaterialCapability(const std::string& deviceGuid, Abacus::TouchWndMaterial& capability);
    static bool getAudioWinMaterialCapability(const std::string& deviceGuid,
                                              Abacus::AudioWidMatarialAbility& capability);
    static bool getCharConfigCapability(const std::string& deviceGuid, Abacus::InsertCharacterCfgAbility& capability);
    static bool getADBDebugCapability(const std::string& deviceGuid, Abacus::AdbDebugAbility& capability);
    static bool getTerminalManagerCapability(const std::string& deviceGuid,
                                             Abacus::TerminalManagerCapability& capability);
    static bool getIPCLinkAbility(const std::string& deviceGuid, Abacus::ipclinkcap::BindIPC& capability);
    static bool getTerminalLinkIPCAbility(const std::string& deviceGuid,
                                          Abacus::ipclinkcap::TerminalOthers& capability);
    static bool getBatchSetParaAbility(const std::string& deviceGuid,
                                       Abacus::batchterminalset::BatchTerminalAbilitys& capability);
    /// @param terminalNo  number of the terminal on its server, from 1.
    static bool getTerminalCapability(const std::string& deviceGuid, Abacus::TerminalAbility& capability,
                                      int terminalNo);
    /// Over the command channel. Spelled so.
    static bool getBasicCapabililty(const std::string& deviceGuid, Abacus::BasicCapability& capability);
    /// Over the command channel.
    static bool getIRSSecurityCapability(const std::string& deviceGuid, Abacus::SecurityAbility& capability);
    /// Always false, and nothing is sent: servers have no such document.
    static bool getPlayScheduleReleaseCapability(const std::string& deviceGuid);

    /// Sends a request to a server's HTTP interface. False when the server says nothing.
    ///
    /// @param output     receives what the server answers: its document, or its status where there is no document.
    /// @param errorText  receives on failure why there is none.
    static bool dataThrough(const std::string& deviceGuid, const protocol::KestrelPassThroughReq& request,
                            std::string& output, std::string& errorText);

    static bool rebootDevice(const std::string& deviceGuid);
    /// Back to how it left the factory.
    static bool restoreDevice2Default(const std::string& deviceGuid);
    /// Writes a setting with a command of the caller's choice.
    ///
    /// @param data  a structure derived from `protocol::IInboundData`; null sends no input.
    static bool setDeviceParams(const std::string& deviceGuid, int command, void* data);
    /// Reads one. False unless the server's answer holds the structure under its root name.
    ///
    /// @param data  a structure derived from `protocol::IInboundData`, into which the answer is read; null is false.
    /// @param size  its size in bytes. Less than any structure has is false, and nothing is sent.
    static bool getDeviceParams(const std::string& deviceGuid, int command, void* data, int size);

    /// Starts an upgrade. @param batchGuid  receives its identifier; follow it with `getProgress`.
    static bool deviceUpgrade(std::string& batchGuid, const std::string& deviceGuid,
                              const protocol::DeviceUpgradeCon& upgrade);
    /// A page of log entries, appended to `list`; what was appended before an unreadable entry stays.
    ///
    /// @param batchGuid  the search: empty for the first page, then as the page before left it.
    /// @param finished   receives whether it was the last page.
    static bool findDeviceLogs(const protocol::DeviceLogQueryCondition& condition, const std::string& deviceGuid,
                               std::string& batchGuid, bool& finished,
                               std::vector<protocol::DeviceLogQueryResult>& list);

    /// Starts moving a file to a server, or goes on with it.
    ///
    /// @param transferGuid  receives the identifier of the transfer; follow it with `getProgress`.
    /// @param batchGuid     the transfer to go on with; empty for a new one.
    /// @param flagGuid      the caller's mark, carried as it is.
    /// @param finished      receives whether that was all.
    static bool uploadFile(std::string& transferGuid, const std::string& deviceGuid, const protocol::FileUpload& file,
                           const std::string& batchGuid, const std::string& flagGuid, bool& finished);
    /// Starts moving a file from a server; outputs as above.
    static bool downloadFile(std::string& transferGuid, const std::string& deviceGuid,
                             const protocol::FileDownload& file, bool& finished);
    /// How far a transfer or an upgrade has come. False when the server says nothing of it.
    ///
    /// @param batchGuid  the transfer.
    /// @param progress   receives whole per cent.
    /// @param flagGuid   the caller's mark, carried as it is.
    /// @param finished   receives whether it is over.
    static bool getProgress(const std::string& deviceGuid, const std::string& batchGuid, int& progress,
                            const std::string& flagGuid, bool& finished);
    /// The same with all that the server says, as a host hands it to whoever asked to be told.
    static bool getProgressByCallback(const std::string& deviceGuid, const std::string& batchGuid,
                                      protocol::BatchProgressValueData& progress, bool& finished);

    /// Opens a way to a server or one of its terminals from afar.
    ///
    /// @param connectionGuid  receives its identifier, for `disconnectInstance`.
    /// @param type            kind of connection; server vocabulary, carried as it is.
    /// @param data            a `protocol::RemoteConnectParam`, or another structure derived from
    ///                        `protocol::IInboundData`; null sends none.
    /// @param finished        receives whether the connection stands already.
    static bool remoteConnectStart(std::string& connectionGuid, const std::string& deviceGuid, int type, void* data,
                                   bool& finished);
    static bool disconnectInstance(const std::string& deviceGuid, const std::string& connectionGuid);
};

} // namespace nexwire
