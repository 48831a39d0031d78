#include "nexwire/AccessController/AccessGroup.h"

#include "core/Pipeline.h"

namespace nexwire {

#define ROOT "/7730/v1/accessController/"

bool CAccessGroupComm::queryAccessGroups(protocol::AccessGroupQueryResponseListData& result)
{
    return Exchange(Query(ROOT "accessGroups"), result);
}

bool CAccessGroupComm::getAccessGroup(protocol::AccessGroupQueryResponseData& result, const std::string& groupGuid)
{
    return Exchange(Query(Path(ROOT "accessGroups/", groupGuid)), result);
}

bool CAccessGroupComm::addAccessGroup(const protocol::AccessGroupAddParam& param, std::string& groupGuid, int& code)
{
    protocol::AccessGroupModifyResultData created;
    if (!ExchangeForCode(Write(ROOT "accessGroups", param), created, code)) {
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
        return Exchange(Write(ROOT "accessDownload", order));
    });
}

bool CAccessGroupComm::modifyAccessGroupName(const std::string& groupGuid, const std::string& name, int& code)
{
    return core::Guard([&] {
        protocol::AccessGroupModifyParam change;
        change.name = name;
        change.WriteOnly({"name"});
        return ExchangeForCode(Write(Path(ROOT "accessGroups/", groupGuid), change), code);
    });
}

bool CAccessGroupComm::modifyAccessGroupSchedule(const std::string& groupGuid, const std::string& scheduleGuid,
                                                 int& code)
{
    return core::Guard([&] {
        protocol::AccessGroupModifyParam change;
        change.secheduleGuid = scheduleGuid;
        change.WriteOnly({"secheduleGuid"});
        return ExchangeForCode(Write(Path(ROOT "accessGroups/", groupGuid), change), code);
    });
}

bool CAccessGroupComm::modifyAccessGroupDescription(const std::string& groupGuid, const std::string& description)
{
    return core::Guard([&] {
        protocol::AccessGroupModifyParam change;
        change.description = description;
        change.WriteOnly({"description"});
        return ExchangeJudged(Write(Path(ROOT "accessGroups/", groupGuid), change));
    });
}

bool CAccessGroupComm::modifyAccessGroupPersons(const std::vector<protocol::PersonnelAdd>& added,
                                                const std::vector<protocol::PersonnelRemove>& removed,
                                                const std::string& groupGuid, int& code)
{
    return core::Guard([&] {
        protocol::AccessGroupModifyParam change;
        change.personnelAddList = added;
        change.personnelRemoveList = removed;
        change.WriteOnly({"personnelAddList", "personnelRemoveList"});
        return ExchangeForCode(Write(Path(ROOT "accessGroups/", groupGuid), change), code);
    });
}

bool CAccessGroupComm::modifyAccessGroupObjects(const std::vector<protocol::ObjectAdd>& added,
                                                const std::vector<protocol::ObjectRemove>& removed,
                                                const std::string& groupGuid, int& code)
{
    return core::Guard([&] {
        protocol::AccessGroupModifyParam change;
        change.objectAddList = added;
        change.objectRemoveList = removed;
        change.WriteOnly({"objectAddList", "objectRemoveList"});
        return ExchangeForCode(Write(Path(ROOT "accessGroups/", groupGuid), change), code);
    });
}

bool CAccessGroupComm::modifyFaceStatusByDeviceGuid(const std::string& deviceGuid)
{
    return ExchangeUnread(Write(Path(ROOT "modifyfacestatus/", deviceGuid)));
}

bool CAccessGroupComm::modifyIrisStatusByDeviceGuid(const std::string& deviceGuid)
{
    return ExchangeUnread(Write(Path(ROOT "modifyirisstatus/", deviceGuid)));
}

bool CAccessGroupComm::getAccessGroupDownloadProgress(protocol::GroupDownloadProgressData& result,
                                                      const std::string& groupGuid)
{
    return Exchange(Query(Path(ROOT "downloadProgress/", groupGuid)), result);
}

bool CAccessGroupComm::queryDeviceDownloadDetails(protocol::DeviceDownloadDetailsResponseData& result,
                                                  const protocol::DeviceDownloadDetailsCont& condition)
{
    return Exchange(Query(ROOT "downloadDetails", condition), result);
}

bool CAccessGroupComm::queryDownloadPersonStateDetails(protocol::PersonStateDetailResponseData& result,
                                                       const protocol::DeviceDownloadDetailsCont& condition)
{
    return Exchange(Query(ROOT "personStateDetails", condition), result);
}

bool CAccessGroupComm::checkAccessParam(const protocol::AccessParamCheck& param, int& code)
{
    return ExchangeForCode(Query(ROOT "accessParamCheck", param), code);
}

bool CAccessGroupComm::checkAccessParamForCertainGroups(const protocol::AccessParamCheckForCertainGroups& param,
                                                        int& code)
{
    return ExchangeForCode(Query(ROOT "accessParamCheckForCertainAccessGroups", param), code);
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
    return Exchange(Query(Path(ROOT "downloadPersons/", deviceGuid)), result);
}

bool personDownloadedComm::getDownloadedCard(protocol::DownloadedCardListData& result, const std::string& deviceGuid)
{
    return Exchange(Query(Path(ROOT "downloadedCards/", deviceGuid)), result);
}

bool CStopApplyPerGroup::request(const std::string& groupGuid)
{
    return Exchange(Write(Path(ROOT "stopDownload/", groupGuid)));
}

bool CReApplyFailedInfo::request(const std::string& groupGuid)
{
    return Exchange(Write(Path(ROOT "reDownload/", groupGuid)));
}

} // namespace nexwire
