#include "nexwire/Framework/Group.h"

#include "core/Pipeline.h"

namespace nexwire {

namespace {

constexpr const char* kRoot = "/7730/v1/framework/groups";
constexpr const char* kInternalRoot = "/7730/v1/internal/framework/";

} // namespace

bool CGetAllGroupsComm::request(protocol::GroupListData& result, const protocol::QueryGroupCondition& condition)
{
    return Exchange(Query(kRoot, condition), result);
}

bool CGetSingleGroupComm::request(protocol::Group& result, const std::string& groupGuid,
                                  const protocol::QueryGroupCondition& condition)
{
    return Exchange(Query(Path(kRoot, "/", groupGuid), condition), result);
}

bool CAddGroupComm::request(protocol::GroupAddData&, const protocol::GroupAdd&)
{
    return false;
}

bool CModifyGroupComm::request(protocol::GroupModifyResult&, const std::string&, const protocol::GroupModify&)
{
    return false;
}

bool CDeleteGroupsComm::request(protocol::GroupDeleteResultListData&, protocol::GroupDelete&)
{
    return false;
}

bool CResourceToGroupComm::request(protocol::ResourceToGroupResultListData&, const std::string&,
                                   protocol::ResourceToGroup&)
{
    return false;
}

bool CResourceMoveToNewGroupComm::request(protocol::ResourceToGroupResultListData&, const std::string&,
                                          const protocol::ResourceToGroup&)
{
    return false;
}

bool CGetGroupElementsComm::request(protocol::QueryElementsResult& result, const std::string& groupGuid,
                                    const protocol::QueryElementsCondition& condition)
{
    return Exchange(Query(Path(kRoot, "/", groupGuid, "/elements"), condition), result);
}

bool CGetGroupElementsByDeviceComm::request(protocol::QueryElementsByDeviceResult&, const std::string&,
                                            const protocol::QueryElementsCondition&)
{
    return false;
}

bool CDeleteGroupElementsComm::request(protocol::ElementDeleteResultListData&, const std::string&,
                                       protocol::ElementDelete&)
{
    return false;
}

bool CGetGroupSingleElementComm::request(protocol::ElementData& result, const std::string& groupGuid,
                                         const std::string& elementGuid,
                                         const protocol::QuerySingleElementCondition& condition)
{
    return Exchange(Query(Path(kRoot, "/", groupGuid, "/elements/", elementGuid), condition), result);
}

bool CGetGroupSingleElementCommBySlowThread::request(protocol::ElementData& result, const std::string& groupGuid,
                                                     const std::string& elementGuid,
                                                     const protocol::QuerySingleElementCondition& condition)
{
    return Exchange(Query(Path(kRoot, "/", groupGuid, "/elements/", elementGuid), condition).OnSlowThread(), result);
}

bool CModifyGroupSingleElementComm::request(protocol::ElementModifyResult& result, const std::string& groupGuid,
                                            const std::string& elementGuid, const protocol::ElementModify& element)
{
    return Exchange(Write(Path(kRoot, "/", groupGuid, "/elements/", elementGuid), element), result);
}

bool CSyncGroupAndElement::request(const std::string& groupGuid, int elementType, int elementStatus, bool includeSub)
{
    using Sync = protocol::SyncGroupAndElement;
    return Exchange(Write(
        Path(kRoot, "/", groupGuid, "/elements/status"),
        Only(&Sync::elementType, elementType, &Sync::elementStatus, elementStatus, &Sync::includeSub, includeSub)));
}

bool CDevice2GroupComm::request(protocol::GroupImportResultData& result, const protocol::GroupImport& devices)
{
    return Exchange(Write(Path(kInternalRoot, "groups"), devices), result);
}

bool CGetGroupInfo::request(protocol::GroupListData& result, const protocol::QueryGroupByResourceCondition& condition)
{
    return Exchange(Query(Path(kInternalRoot, "groups"), condition), result);
}

bool CQueryElementInfoInternal::request(protocol::Element& result, const std::string& elementGuid)
{
    return Exchange(Query(Path(kInternalRoot, "elements/", elementGuid),
                          Only(&protocol::QueryElementInfo::elementGuid, elementGuid)),
                    result);
}

bool CQueryElementInfoInternal::request(protocol::Element& result, const std::string& groupGuid,
                                        const std::string& elementGuid)
{
    return Exchange(
        Query(Path(kInternalRoot, "groups/", groupGuid), Only(&protocol::QueryElementInfo::elementGuid, elementGuid)),
        result);
}

} // namespace nexwire
