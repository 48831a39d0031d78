#include "protocol/Personnel/DevicePerson.h"

#include "core/FieldTable.h"

namespace protocol {

// clang-format off
NEXWIRE_INBOUND_FIELDS(DeviceValidity, "deviceValidity", F(enable), F(beginTime), F(endTime))
NEXWIRE_INBOUND_FIELDS(DeviceDoorRight, "deviceDoorRight", F(doorNo), F(planTemplateNoList))
NEXWIRE_INBOUND_FIELDS(DeviceUserInfo, "userInfo", F(employeeNo), F(name), F(userType), F(gender), F(closeDelayEnabled), F(localUIRight), F(valid), F(password), F(doorRightList), F(maxOpenDoorTime), F(openDoorTime), F(roomNumber), F(floorNumber), F(userVerifyMode), F(belongGroup), F(numOfCard), F(numOfFP), F(numOfFace))
NEXWIRE_INBOUND_FIELDS(UserInfoSearch, "userInfoSearch", F(searchID), F(totalMatches), F(userInfoList))
NEXWIRE_INBOUND_FIELDS(CardConfigParam, "cardConfigParam", F(cardNo), F(cardValid), F(cardType), F(leaderCard), F(valid), F(doorRightList), F(cardPassword), F(maxSwipeTime), F(swipeTime), F(roomNumber), F(floorNumber), F(employeeNo), F(name), F(belongGroup))
NEXWIRE_INBOUND_FIELDS(CardInfoCfg, "cardInfoCfg", F(employeeNo), F(cardNo), F(cardType), F(leaderCard), F(deleteCard))
NEXWIRE_INBOUND_FIELDS(CardPasswdInfo, "cardPasswdInfo", F(cardNo), F(cardPassword))
NEXWIRE_INBOUND_FIELDS(FingerPrintConfigForDag, "fingerPrintConfigForDag", F(employeeNo), F(cardNo), F(fingerPrintID), F(fingerType), F(fingerData), F(fingerDataLen), F(enableCardReader), F(leaderFP))
NEXWIRE_INBOUND_FIELDS(Irisinfo, "irisinfo", F(employeeNo), F(irisID), F(irisData), F(irisDataLen))
NEXWIRE_INBOUND_FIELDS(FaceConfigForPer, "faceConfigForPer", F(employeeNo), F(faceLibType), F(faceLibId), F(name), F(picture), F(pictureLen), F(modelData), F(modelDataLen))
NEXWIRE_INBOUND_FIELDS(FaceConfigForCard, "faceConfigForCard", F(cardNo), F(faceId), F(faceData), F(faceDataLen), F(faceDataType), F(enableCardReader))
// clang-format on

} // namespace protocol
