#include "protocol/Personnel/Person.h"

#include "core/FieldTable.h"

namespace protocol::personnelcommon {

// clang-format off
NEXWIRE_INBOUND_FIELDS(PersonBasic, "personBasic", F(guid), F(personNo), F(name), F(orgGuid), F(orgName), F(personType), F(gender), F(birthday), F(certificateType), F(certificateNo), F(phone), F(email), F(validBegin), F(validEnd), F(createTime), F(modifyTime))
NEXWIRE_INBOUND_FIELDS(PersonAccessControl, "personAccessControl", F(superAuthority), F(extendedOpen), F(dutyCard), F(deviceOperator), F(personPassword), F(verifyMode), F(maxOpenTimes), F(floorNo))
NEXWIRE_INBOUND_FIELDS(PersonResident, "personResident", F(periodNo), F(buildingNo), F(unitNo), F(floorNo), F(roomNo), F(relation), F(moveInDate), F(phone))
NEXWIRE_INBOUND_FIELDS(PersonAddition, "personAddition", F(position), F(employeeNo), F(hireDate), F(leaveDate), F(nationality), F(address), F(plateNoList), F(remark))
NEXWIRE_INBOUND_FIELDS(PrivateData, "privateData", F(propertyGuid), F(name), F(value))
NEXWIRE_INBOUND_FIELDS(PersonnelInfo, "personnelInfo", F(basic), F(accesscontrol), F(resident), F(cardList), F(fingerprintList), F(faceList), F(irisList), F(addition), F(privateDataList), F(ext))
NEXWIRE_INBOUND_FIELDS(AddPersonnel, "addPersonnel", F(personnelInfoList))
NEXWIRE_INBOUND_FIELDS(DeletePersonnelInfo, "deletePersonnelInfo", F(guidList), F(deleteFromDevice))
NEXWIRE_RETURN_FIELDS(PersonnelResult, F(guid), F(personNo), F(name), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(PersonnelResultListData, F(personnelResultList))
NEXWIRE_INBOUND_FIELDS(QueryMultiPersons, "queryMultiPersons", F(pageNo), F(pageSize), F(orgGuid), F(includeSubOrg), F(name), F(personNo), F(cardNo), F(phone), F(certificateNo), F(plateNo), F(personType), F(gender), F(cardState), F(fingerState), F(faceState), F(irisState), F(beginTime), F(endTime), F(guidList), F(sectionList))
NEXWIRE_RETURN_FIELDS(TotalData, F(totalNum), F(pageNo), F(personnelInfoList))
NEXWIRE_RETURN_FIELDS(NumberPersonnelData, F(numberPersonnel))
NEXWIRE_INBOUND_FIELDS(QueryPerson, "queryPerson", F(personNo), F(name), F(cardNo), F(phone), F(email), F(certificateNo), F(plateNo), F(faceGuid), F(fingerprintGuid), F(sectionList))
NEXWIRE_RETURN_FIELDS(PersonnelResp, F(personnelInfo), F(orgFullPath), F(accessGroupGuidList))
NEXWIRE_RETURN_FIELDS(DefaultSnData, F(defaultSn))
NEXWIRE_INBOUND_FIELDS(PersonnelSNRule, "personnelSNRule", F(prefix), F(length), F(random), F(ruleInited))
NEXWIRE_INBOUND_FIELDS(PrivateProperty, "privateProperty", F(guid), F(name), F(type), F(optionList), F(required), F(orderNo))
NEXWIRE_INBOUND_FIELDS(PrivatePropertyList, "privatePropertyList", F(privatePropertyList))
NEXWIRE_INBOUND_FIELDS(PrivatePropertyDeleteList, "privatePropertyDeleteList", F(guidList))
NEXWIRE_INBOUND_FIELDS(PrivatePropertyModification, "privatePropertyModification", F(name))
NEXWIRE_RETURN_FIELDS(PrivatePropertyResult, F(guid), F(name), F(type), F(optionList), F(required), F(orderNo), F(resultCode), F(resultMsg))
NEXWIRE_RETURN_FIELDS(PrivatePropertyResultListData, F(privatePropertyResultList))
NEXWIRE_INBOUND_FIELDS(PersonnelDataFile, "personnelDataFile", F(fileName), F(fileType), F(password), F(orgGuid), F(includeSubOrg), F(includePicture), F(columnList))
// clang-format on

} // namespace protocol::personnelcommon
