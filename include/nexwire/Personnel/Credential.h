#pragma once

#include "protocol/Personnel/Credential.h"
#include "protocol/Personnel/Person.h"

namespace nexwire {

// Faces, fingerprints, irises, cards and passwords of persons, as the platform keeps them.
//
// All functions of this file block until the answer is there and may be called from any thread. They return true when
// the answer was a readable envelope, whatever its code; a result is untouched on false. Members that begin with
// "Internal" or "CInternal" are for components of the platform; the others are for clients.

// ---- Faces ----

class NEXWIRE_API AddFaceDataComm {
public:
    /// Gives faces to persons: one result each.
    static bool request(protocol::personnelcommon::FaceDataResultListData& result,
                        const protocol::personnelcommon::FaceDataList& faces);
};

class NEXWIRE_API FindFacesComm {
public:
    /// A face of a person.
    static bool request(protocol::personnelcommon::FaceReturn& result, const protocol::personnelcommon::Face& face);
};

class NEXWIRE_API DelFacesComm {
public:
    /// Removes all faces of persons: one result for each person.
    static bool request(protocol::personnelcommon::PersonnelResultListData& result,
                        const protocol::personnelcommon::DeleteFaceInfo& persons, std::string unusedSid);
};

class NEXWIRE_API InternalDelFacesComm {
public:
    /// Removes all faces of persons: one result for each person.
    static bool request(protocol::personnelcommon::PersonnelResultListData& result,
                        const protocol::personnelcommon::DeleteFaceInfo& persons);
};

class NEXWIRE_API InternalFindFacesComm {
public:
    /// A face by its own GUID.
    static bool request(protocol::personnelcommon::FaceReturn& result, const std::string& faceGuid);
};

class NEXWIRE_API InternalSyncFacesModelComm {
public:
    /// The models of faces, made anew where there is none of the version asked for.
    static bool request(protocol::personnelcommon::SyncFaceModelResultListData& result,
                        const protocol::personnelcommon::SyncFaceModelData& models);
};

class NEXWIRE_API CInternalModifyFaceComm {
public:
    /// Replaces a face of a person.
    static bool request(const protocol::personnelcommon::FaceInfo& face, const std::string& personGuid,
                        const std::string& faceGuid);
};

// ---- Fingerprints ----

class NEXWIRE_API AddFingerDataComm {
public:
    /// Gives fingerprints to persons: one result each. A finger that somebody else has is refused.
    static bool request(protocol::personnelcommon::FingerDataResponseData& result,
                        const protocol::personnelcommon::FingerprintDataList& fingerprints, std::string unusedSid);
};

class NEXWIRE_API CheckFingerDataComm {
public:
    /// Whether somebody has these fingers already: one result each. Keeps nothing.
    static bool request(protocol::personnelcommon::FingerDataResponseData& result,
                        const protocol::personnelcommon::FingerprintDataList& fingerprints, std::string unusedSid);
};

class NEXWIRE_API FindFingerDataComm {
public:
    /// Fingerprints by their own GUIDs or by their persons'.
    static bool request(protocol::personnelcommon::FingerDataListData& result,
                        const protocol::personnelcommon::FingerGuidLists& condition, std::string unusedSid);
};

class NEXWIRE_API InternalFindFingersComm {
public:
    /// Fingerprints by their own GUIDs or by their persons'.
    static bool request(protocol::personnelcommon::FingerDataListData& result,
                        const protocol::personnelcommon::FingerGuidLists& condition);
};

class NEXWIRE_API CInternalModifyFingerprintComm {
public:
    /// Replaces a fingerprint of a person.
    static bool request(const protocol::personnelcommon::FingerprintInfo& fingerprint, const std::string& personGuid,
                        const std::string& fingerprintGuid);
};

// ---- Irises ----

class NEXWIRE_API AddIrisDataComm {
public:
    /// Gives irises to persons: one result each.
    static bool request(protocol::personnelcommon::IrisDataResponseData& result,
                        const protocol::personnelcommon::IrisDataList& irises, std::string unusedSid);
};

class NEXWIRE_API InternalFindIrisesComm {
public:
    /// The irises of a person.
    static bool request(protocol::personnelcommon::IrisReturn& result, const std::string& personGuid,
                        const std::string& unusedSid);
};

class NEXWIRE_API CInternalModifyIrisComm {
public:
    /// Sends nothing and returns false: the platform cannot replace a single iris.
    static bool request(const protocol::personnelcommon::IrisInfo& iris, const std::string& unusedPersonGuid,
                        const std::string& unusedIrisGuid);
};

// ---- Cards ----

class NEXWIRE_API CardNoCheckComm {
public:
    /// Which of these card numbers somebody has already.
    static bool request(protocol::personnelcommon::CardNoResListData& result,
                        const protocol::personnelcommon::CardNoList& cards);
};

class NEXWIRE_API FindPersonbyCardNoComm {
public:
    /// Who has a card. The number goes into the path as it stands, so it must not hold a slash.
    static bool request(protocol::personnelcommon::CardInfowithPguidData& result,
                        const protocol::personnelcommon::CardQueryCondition& condition, const std::string& cardNo);
};

class NEXWIRE_API InternalFindPersonbyCardNoComm {
public:
    /// Who has the card that the condition names.
    static bool request(protocol::personnelcommon::CardInfowithPguidData& result,
                        const protocol::personnelcommon::CardQueryCondition& condition);
};

class NEXWIRE_API CInternalModifyCardComm {
public:
    /// Replaces the card of a person that `card.cardNo` names, which also goes into the path as it stands.
    static bool request(const protocol::personnelcommon::CardInfo& card, const std::string& personGuid);
};

// ---- Passwords ----

class NEXWIRE_API CAutoGenPersonPwd {
public:
    /// Persons who share a password.
    static bool getPersonPasswordRepeat(protocol::personnelcommon::PersonPasswordRepeatListData& result);
    /// Gives persons passwords that nobody else has. (The name is spelled so.)
    static bool genPensonPassword(protocol::personnelcommon::PersonPwdResultListData& result,
                                  const protocol::personnelcommon::AutoGenPersonList& persons);
};

class NEXWIRE_API PersonPwdCheckComm {
public:
    /// Whether a person may have a password.
    static bool request(protocol::personnelcommon::PersonPwdRes& result,
                        const protocol::personnelcommon::PersonPwd& password);
};

class NEXWIRE_API PersonPwdStatusChange {
public:
    /// Tells the platform that passwords changed. Where the answer carries the affected devices, `change` receives
    /// them.
    static bool request(protocol::personnelcommon::PersonPasswordStatusChange& change);
};

} // namespace nexwire
