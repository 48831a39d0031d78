#pragma once

#include "protocol/AccessController/AccessGroup.h"

namespace nexwire {

/// Access groups: which persons pass which doors under which schedule, and their download to the devices.
///
/// All functions of this file block until the answer is there and may be called from any thread. Unless a line says
/// otherwise they return true when the answer was a readable envelope, whatever its code; a result is untouched on
/// false.
class NEXWIRE_API CAccessGroupComm {
public:
    /// All groups with their persons and objects.
    static bool queryAccessGroups(protocol::AccessGroupQueryResponseListData& result);
    /// One group.
    static bool getAccessGroup(protocol::AccessGroupQueryResponseData& result, const std::string& groupGuid);

    /// Creates a group. `groupGuid` receives its GUID on success only; `code` the server's number whenever the
    /// envelope parsed. False for any number but 0, which then is the last error.
    static bool addAccessGroup(const protocol::AccessGroupAddParam& param, std::string& groupGuid, int& code);

    /// Orders the download of groups; the call does not wait for it. Follow it with
    /// `getAccessGroupDownloadProgress`.
    ///
    /// @param deleteGroup   remove the groups from the devices instead.
    /// @param downloadMode  server vocabulary, carried as it is.
    static bool downloadAccessGroups(const std::vector<std::string>& groupGuids, bool deleteGroup, int downloadMode);

    /// The four changes with a `code`: it receives the server's number whenever the envelope parsed; false for any
    /// number but 0, which then is the last error. Only what the function names is sent.
    static bool modifyAccessGroupName(const std::string& groupGuid, const std::string& name, int& code);
    static bool modifyAccessGroupSchedule(const std::string& groupGuid, const std::string& scheduleGuid, int& code);
    static bool modifyAccessGroupPersons(const std::vector<protocol::PersonnelAdd>& added,
                                         const std::vector<protocol::PersonnelRemove>& removed,
                                         const std::string& groupGuid, int& code);
    static bool modifyAccessGroupObjects(const std::vector<protocol::ObjectAdd>& added,
                                         const std::vector<protocol::ObjectRemove>& removed,
                                         const std::string& groupGuid, int& code);
    /// The same without handing out the number.
    static bool modifyAccessGroupDescription(const std::string& groupGuid, const std::string& description);

    /// Has a device take over changed faces or irises. True when an answer came, whatever it says.
    static bool modifyFaceStatusByDeviceGuid(const std::string& deviceGuid);
    static bool modifyIrisStatusByDeviceGuid(const std::string& deviceGuid);

    /// How far a download has come; poll it as often as the display needs.
    static bool getAccessGroupDownloadProgress(protocol::GroupDownloadProgressData& result,
                                               const std::string& groupGuid);
    /// What was sent to a device, person by person.
    static bool queryDeviceDownloadDetails(protocol::DeviceDownloadDetailsResponseData& result,
                                           const protocol::DeviceDownloadDetailsCont& condition);
    /// What became of each person's credentials.
    static bool queryDownloadPersonStateDetails(protocol::PersonStateDetailResponseData& result,
                                                const protocol::DeviceDownloadDetailsCont& condition);

    /// Whether a planned group conflicts with others. `code` and the result as in the changes above.
    static bool checkAccessParam(const protocol::AccessParamCheck& param, int& code);
    static bool checkAccessParamForCertainGroups(const protocol::AccessParamCheckForCertainGroups& param, int& code);
};

/// Reports changed states of groups.
class NEXWIRE_API AccessGroupStatusChange {
public:
    static bool request(const protocol::AccessGroupStatusChange& param);
};

/// Reports how downloads went.
class NEXWIRE_API AccessGroupStatusDownload {
public:
    static bool request(const protocol::AccessGroupStatusDownload& param);
};

/// What a device holds after downloads.
class NEXWIRE_API personDownloadedComm {
public:
    static bool getDownloadedPerson(protocol::DownloadedPersonData& result, const std::string& deviceGuid);
    static bool getDownloadedCard(protocol::DownloadedCardListData& result, const std::string& deviceGuid);
};

/// Stops the running download of a group.
class NEXWIRE_API CStopApplyPerGroup {
public:
    static bool request(const std::string& groupGuid);
};

/// Downloads again what failed of a group.
class NEXWIRE_API CReApplyFailedInfo {
public:
    static bool request(const std::string& groupGuid);
};

} // namespace nexwire
