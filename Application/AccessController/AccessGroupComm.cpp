#include "nexwire/AccessController/AccessGroup.h"

#include "core/Pipeline.h"

namespace nexwire {

namespace {

constexpr const char* kRoot = "/7730/v1/accessController/";

using Change = protocol::AccessGroupModifyParam;

Path GroupPath(const std::string& groupGuid)
{
    return {kRoot, "accessGroups/", groupGuid};
}

} // namespace

bool CAccessGroupComm::queryAccessGroups(protocol::AccessGroupQueryResponseListData& result)
{
    return Exchange(Query(Path(kRoot, "accessGroups")), result);
}

bool CAccessGroupComm::getAccessGroup(protocol::AccessGroupQueryResponseData& result, const std::string& groupGuid)
{
    return Exchange(Query(Path(kRoot, "accessGroups/", groupGuid)), result);
}

bool CAccessGroupComm::addAccessGroup(const protocol::AccessGroupAddParam& param, std::string& groupGuid, int& code)
{
    protocol::AccessGroupModifyResultData created;
    if (!ExchangeForCode(Write(Path(kRoot, "accessGroups"), param), created, code)) {
        return false;
    }
    groupGuid = std::move(created.accessGroupModifyResult.accessGroupGuid);
    return true;
}

bool CAccessGroupComm::downloadAccessGroups(const std::vector<std::string>& groupGuids, bool deleteGroup,
                                            int downloadMode)
{
    return core::Guard([&] {
        protocol::AccessDownload order;
        for (const std::string& guid : groupGuids) {
            protocol::AccessGroupDown& group = order.accessGroupDownList.emplace_back();
            group.accessgroupGuid = guid;
            group.deleteGroup = deleteGroup;
            group.downloadMode = downloadMode;
        }
        return Exchange(Write(Path(kRoot, "accessDownload"), order));
    });
}

bool CAccessGroupComm::modifyAccessGroupName(const std::string& groupGuid, const std::string& name, int& code)
{
    return ExchangeForCode(Write(GroupPath(groupGuid), Only(&Change::name, name)), code);
}

bool CAccessGroupComm::modifyAccessGroupSchedule(const std::string& groupGuid, const std::string& scheduleGuid,
                                                 int& code)
{
    return ExchangeForCode(Write(GroupPath(groupGuid), Only(&Change::secheduleGuid, scheduleGuid)), code);
}

bool CAccessGroupComm::modifyAccessGroupDescription(const std::string& groupGuid, const std::string& description)
{
    return ExchangeJudged(Write(GroupPath(groupGuid), Only(&Change::description, description)));
}

bool CAccessGroupComm::modifyAccessGroupPersons(const std::vector<protocol::PersonnelAdd>& added,
                                                const std::vector<protocol::PersonnelRemove>& removed,
                                                const std::string& groupGuid, int& code)
{
    return ExchangeForCode(
        Write(GroupPath(groupGuid), Only(&Change::personnelAddList, added, &Change::personnelRemoveList, removed)),
        code);
}

bool CAccessGroupComm::modifyAccessGroupObjects(const std::vector<protocol::ObjectAdd>& added,
                                                const std::vector<protocol::ObjectRemove>& removed,
                                                const std::string& groupGuid, int& code)
{
    return ExchangeForCode(
        Write(GroupPath(groupGuid), Only(&Change::objectAddList, added, &Change::objectRemoveList, removed)), code);
}

bool CAccessGroupComm::modifyFaceStatusByDeviceGuid(const std::string& deviceGuid)
{
    return ExchangeUnread(Write(Path(kRoot, "modifyfacestatus/", deviceGuid)));
}

bool CAccessGroupComm::modifyIrisStatusByDeviceGuid(const std::string& deviceGuid)
{
    return ExchangeUnread(Write(Path(kRoot, "modifyirisstatus/", deviceGuid)));
}

bool CAccessGroupComm::getAccessGroupDownloadProgress(protocol::GroupDownloadProgressData& result,
                                                      const std::string& groupGuid)
{
    return Exchange(Query(Path(kRoot, "downloadProgress/", groupGuid)), result);
}

bool CAccessGroupComm::queryDeviceDownloadDetails(protocol::DeviceDownloadDetailsResponseData& result,
                                                  const protocol::DeviceDownloadDetailsCont& condition)
{
    return Exchange(Query(Path(kRoot, "downloadDetails"), condition), result);
}

bool CAccessGroupComm::queryDownloadPersonStateDetails(protocol::PersonStateDetailResponseData& result,
                                                       const protocol::DeviceDownloadDetailsCont& condition)
{
    return Exchange(Query(Path(kRoot, "personStateDetails"), condition), result);
}

bool CAccessGroupComm::checkAccessParam(const protocol::AccessParamCheck& param, int& code)
{
    return ExchangeForCode(Query(Path(kRoot, "accessParamCheck"), param), code);
}

bool CAccessGroupComm::checkAccessParamForCertainGroups(const protocol::AccessParamCheckForCertainGroups& param,
                                                        int& code)
{
    return ExchangeForCode(Query(Path(kRoot, "accessParamCheckForCertainAccessGroups"), param), code);
}

bool AccessGroupStatusChange::request(const protocol::AccessGroupStatusChange& param)
{
    return Exchange(Write("/7730/v1/internal/accessController/accessGroupStatusChange", param));
}

bool AccessGroupStatusDownload::request(const protocol::AccessGroupStatusDownload& param)
{
    return Exchange(Write("/7730/v1/internal/accessController/accessGroupStatusDownload", param));
}

bool personDownloadedComm::getDownloadedPerson(protocol::DownloadedPersonData& result, const std::string& deviceGuid)
{
    return Exchange(Query(Path(kRoot, "downloadPersons/", deviceGuid)), result);
}

bool personDownloadedComm::getDownloadedCard(protocol::DownloadedCardListData& result, const std::string& deviceGuid)
{
    return Exchange(Query(Path(kRoot, "downloadedCards/", deviceGuid)), result);
}

bool CStopApplyPerGroup::request(const std::string& groupGuid)
{
    return Exchange(Write(Path(kRoot, "stopDownload/", groupGuid)));
}

bool CReApplyFailedInfo::request(const std::string& groupGuid)
{
    return Exchange(Write(Path(kRoot, "reDownload/", groupGuid)));
}

} // namespace nexwire
