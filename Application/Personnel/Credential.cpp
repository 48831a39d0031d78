#include "nexwire/Personnel/Credential.h"

#include "Application/Personnel/Roots.h"
#include "core/Pipeline.h"

namespace nexwire {

using namespace protocol::personnelcommon;

bool AddFaceDataComm::request(FaceDataResultListData& result, const FaceDataList& faces)
{
    return Exchange(Write(Path(kPersonnelRoot, "faceData"), faces), result);
}

bool FindFacesComm::request(FaceReturn& result, const Face& face)
{
    return Exchange(Query(Path(kPersonnelRoot, "faceData"), face), result);
}

bool DelFacesComm::request(PersonnelResultListData& result, const DeleteFaceInfo& persons, std::string)
{
    return Exchange(Remove(Path(kPersonnelRoot, "faceClear"), persons), result);
}

bool InternalDelFacesComm::request(PersonnelResultListData& result, const DeleteFaceInfo& persons)
{
    return Exchange(Remove(Path(kInternalPersonnelRoot, "faceClear"), persons), result);
}

bool InternalFindFacesComm::request(FaceReturn& result, const std::string& faceGuid)
{
    return Exchange(Query(Path(kInternalPersonnelRoot, "faceDatas/", faceGuid)), result);
}

bool InternalSyncFacesModelComm::request(SyncFaceModelResultListData& result, const SyncFaceModelData& models)
{
    return Exchange(Query(Path(kInternalPersonnelRoot, "syncModel"), models), result);
}

bool CInternalModifyFaceComm::request(const FaceInfo& face, const std::string& personGuid, const std::string& faceGuid)
{
    return Exchange(Write(Path(kInternalPersonnelRoot, "personnels/", personGuid, "/faces/", faceGuid), face));
}

bool AddFingerDataComm::request(FingerDataResponseData& result, const FingerprintDataList& fingerprints, std::string)
{
    return Exchange(Write(Path(kPersonnelRoot, "fingerData"), fingerprints), result);
}

bool CheckFingerDataComm::request(FingerDataResponseData& result, const FingerprintDataList& fingerprints, std::string)
{
    return Exchange(Write(Path(kPersonnelRoot, "checkFingerData"), fingerprints), result);
}

bool FindFingerDataComm::request(FingerDataListData& result, const FingerGuidLists& condition, std::string)
{
    return Exchange(Query(Path(kPersonnelRoot, "fingerData"), condition), result);
}

bool InternalFindFingersComm::request(FingerDataListData& result, const FingerGuidLists& condition)
{
    return Exchange(Query(Path(kInternalPersonnelRoot, "fingerDatas"), condition), result);
}

bool CInternalModifyFingerprintComm::request(const FingerprintInfo& fingerprint, const std::string& personGuid,
                                             const std::string& fingerprintGuid)
{
    return Exchange(
        Write(Path(kInternalPersonnelRoot, "personnels/", personGuid, "/fingerprints/", fingerprintGuid), fingerprint));
}

bool AddIrisDataComm::request(IrisDataResponseData& result, const IrisDataList& irises, std::string)
{
    return Exchange(Write(Path(kPersonnelRoot, "irisData"), irises), result);
}

bool InternalFindIrisesComm::request(IrisReturn& result, const std::string& personGuid, const std::string&)
{
    return Exchange(Query(Path(kInternalPersonnelRoot, "irisData/", personGuid)), result);
}

bool CInternalModifyIrisComm::request(const IrisInfo&, const std::string&, const std::string&)
{
    return false;
}

bool CardNoCheckComm::request(CardNoResListData& result, const CardNoList& cards)
{
    return Exchange(Write(Path(kPersonnelRoot, "cards"), cards), result);
}

bool FindPersonbyCardNoComm::request(CardInfowithPguidData& result, const CardQueryCondition& condition,
                                     const std::string& cardNo)
{
    return Exchange(Query(Path(kPersonnelRoot, "cards/", cardNo), condition), result);
}

bool InternalFindPersonbyCardNoComm::request(CardInfowithPguidData& result, const CardQueryCondition& condition)
{
    return Exchange(Query(Path(kInternalPersonnelRoot, "cards"), condition), result);
}

bool CInternalModifyCardComm::request(const CardInfo& card, const std::string& personGuid)
{
    return Exchange(Write(Path(kInternalPersonnelRoot, "personnels/", personGuid, "/cards/", card.cardNo), card));
}

bool CAutoGenPersonPwd::getPersonPasswordRepeat(PersonPasswordRepeatListData& result)
{
    return Exchange(Query(Path(kPersonnelRoot, "personnels/autoGenPersonPwd")), result);
}

bool CAutoGenPersonPwd::genPensonPassword(PersonPwdResultListData& result, const AutoGenPersonList& persons)
{
    return Exchange(Write(Path(kPersonnelRoot, "personnels/autoGenPersonPwd"), persons), result);
}

bool PersonPwdCheckComm::request(PersonPwdRes& result, const PersonPwd& password)
{
    return Exchange(Write(Path(kPersonnelRoot, "personpassword"), password), result);
}

bool PersonPwdStatusChange::request(PersonPasswordStatusChange& change)
{
    return ExchangeBothWays(Write(Path(kInternalPersonnelRoot, "personpasswordStatusChange"), change), change);
}

} // namespace nexwire
