#pragma once

#include "nexwire/JSONStruct.h"

// What a person is recognised by: cards, fingerprints, faces, irises and a password. Their common habits:
// - Pictures are JPEG, templates are in the maker's format of the device that took them; both travel as Base64, and a
//   length beside one counts its bytes before the encoding.
// - Times are ISO 8601 with offset, "2026-03-01T08:00:00+00:00"; an empty one sets no limit.
// - `ext` is free text of the caller, kept and handed back as it is.

namespace protocol::personnelcommon {

// ---- As a person's sections hold them ----

/// A card of a person.
struct NEXWIRE_API CardInfo : IInboundData {
    std::string cardNo;         ///< Decimal text without leading zeros. Up to 20 digits.
    std::int32_t cardType = 0;  ///< One of: 0 normal, 1 block list, 2 patrol, 3 duress, 4 super, 5 visitor.
    std::int32_t cardState = 0; ///< One of: 0 in use, 1 lost, 2 returned, 3 locked.
    std::string cardPassword;   ///< Asked for together with the card. 4 to 8 digits; empty: none.
    std::string issueTime;
    std::string validBegin;
    std::string validEnd;
    std::string ext;
    NEXWIRE_JSON
};

/// A fingerprint of a person.
struct NEXWIRE_API FingerprintInfo : IInboundData {
    std::string fingerprintGuid; ///< Given by the platform; empty in a new one.
    std::string fingerprintName; ///< For example: "Right index".
    std::int32_t fingerNo = 1;   ///< Thumb of the left hand 1 to little finger of the right hand 10. 1 to 10.
    std::int32_t fingerType = 0; ///< One of: 0 normal, 1 duress, 2 patrol, 3 super, 4 dismissing.
    std::string fingerData;      ///< Template, Base64.
    std::int32_t fingerDataLen = 0;
    std::int32_t quality = 0;      ///< As the reader judged it. 0 to 100 %.
    std::string dataFormat;        ///< Format of the template. For example: "private", "ISO19794-2".
    std::string collectDeviceGuid; ///< Device or station that took it; empty: imported.
    std::string collectTime;
    std::string ext;
    NEXWIRE_JSON
};

/// A face of a person.
struct NEXWIRE_API FaceInfo : IInboundData {
    std::string faceGuid; ///< Given by the platform; empty in a new one.
    std::string faceName;
    std::string faceData; ///< Picture, JPEG in Base64, up to 200 KiB before the encoding.
    std::int32_t faceDataLen = 0;
    std::string faceUrl;   ///< Where the platform keeps the picture; filled in answers.
    std::string modelData; ///< Model, Base64; empty until one was made.
    std::int32_t modelDataLen = 0;
    std::string modelVersion;      ///< Version of the algorithm that made the model.
    std::int32_t quality = 0;      ///< As the platform judged the picture. 0 to 100 %.
    std::string collectDeviceGuid; ///< Device that took it; empty: imported.
    std::string collectTime;
    std::string ext;
    NEXWIRE_JSON
};

/// An iris of a person.
struct NEXWIRE_API IrisInfo : IInboundData {
    std::string irisGuid;    ///< Given by the platform; empty in a new one.
    std::int32_t irisNo = 1; ///< One of: 1 left eye, 2 right eye.
    std::string irisData;    ///< Template, Base64.
    std::int32_t irisDataLen = 0;
    std::int32_t quality = 0; ///< As the device judged it. 0 to 100 %.
    std::string collectDeviceGuid;
    std::string collectTime;
    std::string ext;
    NEXWIRE_JSON
};

// ---- Faces ----

/// A face to give to a person.
struct NEXWIRE_API FaceData : IInboundData {
    std::string personnelGuid;
    FaceInfo face;
    bool replace = false; ///< Takes the place of the faces that the person has.
    NEXWIRE_JSON
};

struct NEXWIRE_API FaceDataList : IInboundData {
    std::vector<FaceData> faceDataList;
    NEXWIRE_JSON
};

/// What became of a face.
struct NEXWIRE_API FaceDataResult : IReturnData {
    std::string personnelGuid;
    std::string faceGuid;        ///< Of the new face; empty when it was refused.
    std::int32_t quality = 0;    ///< 0 to 100 %.
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API FaceDataResultListData : IReturnData {
    std::vector<FaceDataResult> faceDataResultList;
    NEXWIRE_JSON
};

/// Which face is asked for.
struct NEXWIRE_API Face : IInboundData {
    std::string personnelGuid;
    std::string faceGuid;   ///< Empty: the person's first.
    bool needModel = false; ///< The model, too.
    NEXWIRE_JSON
};

/// A face as the platform keeps it or as a device has just taken it; a device gives picture and model alone.
struct NEXWIRE_API FaceReturn : IInboundData {
    std::string personnelGuid;
    std::string faceGuid;
    std::string faceData; ///< Picture, JPEG in Base64.
    std::int32_t faceDataLen = 0;
    std::string modelData; ///< Model, Base64; may be empty.
    std::int32_t modelDataLen = 0;
    NEXWIRE_JSON
};

/// Persons whose faces go.
struct NEXWIRE_API DeleteFaceInfo : IInboundData {
    std::vector<std::string> guidList; ///< GUIDs of the persons.
    NEXWIRE_JSON
};

/// Faces whose models are to be made or taken over.
struct NEXWIRE_API SyncFaceModelData : IInboundData {
    std::string modelVersion;          ///< Version of the algorithm whose models are wanted.
    bool force = false;                ///< Also where a model of that version exists.
    std::vector<std::string> guidList; ///< GUIDs of the faces; empty: all.
    NEXWIRE_JSON
};

/// The model of one face.
struct NEXWIRE_API SyncFaceModelResult : IReturnData {
    std::string personnelGuid;
    std::string faceGuid;
    std::string modelData; ///< Base64.
    std::int32_t modelDataLen = 0;
    std::string modelVersion;
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API SyncFaceModelResultListData : IReturnData {
    std::vector<SyncFaceModelResult> syncFaceModelResultList;
    NEXWIRE_JSON
};

/// A device's judgement of a face picture.
struct NEXWIRE_API FaceCheckResult : IInboundData {
    std::int32_t faceId = 0; ///< Number that the caller gave the picture.
    std::string checkResult; ///< Device vocabulary. For example: "success", "noFace", "lowQuality", "eyesClosed".
    NEXWIRE_JSON
};

// ---- Fingerprints ----

/// A fingerprint and whose it is; a device that has just taken it gives no person.
struct NEXWIRE_API FingerprintData : IInboundData {
    std::string personnelGuid;
    FingerprintInfo fingerprint;
    NEXWIRE_JSON
};

struct NEXWIRE_API FingerprintDataList : IInboundData {
    std::vector<FingerprintData> fingerprintDataList;
    NEXWIRE_JSON
};

/// What became of one fingerprint.
struct NEXWIRE_API FingerDataResult : IReturnData {
    std::string personnelGuid;
    std::string fingerprintGuid;     ///< Of the new fingerprint; empty when it was refused or only checked.
    std::string repeatPersonnelGuid; ///< Person who has the same finger already; empty: nobody.
    std::string repeatPersonName;
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API FingerDataResponse : IReturnData {
    bool repeated = false; ///< At least one belongs to somebody else.
    std::vector<FingerDataResult> fingerDataResultList;
    NEXWIRE_JSON
};

struct NEXWIRE_API FingerDataResponseData : IReturnData {
    FingerDataResponse fingerDataResponse;
    NEXWIRE_JSON
};

/// Which fingerprints are asked for.
struct NEXWIRE_API FingerGuidLists : IInboundData {
    std::vector<std::string> guidList;          ///< GUIDs of fingerprints.
    std::vector<std::string> personnelGuidList; ///< Persons of whom all are wanted.
    NEXWIRE_JSON
};

struct NEXWIRE_API FingerDataListData : IReturnData {
    std::vector<FingerprintData> fingerDataList;
    NEXWIRE_JSON
};

// ---- Irises ----

/// An iris to give to a person.
struct NEXWIRE_API IrisData : IInboundData {
    std::string personnelGuid;
    IrisInfo iris;
    NEXWIRE_JSON
};

struct NEXWIRE_API IrisDataList : IInboundData {
    std::vector<IrisData> irisDataList;
    NEXWIRE_JSON
};

/// What became of one iris.
struct NEXWIRE_API IrisDataResult : IReturnData {
    std::string personnelGuid;
    std::string irisGuid;        ///< Of the new iris; empty when it was refused.
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API IrisDataResponse : IReturnData {
    std::vector<IrisDataResult> irisDataResultList;
    NEXWIRE_JSON
};

struct NEXWIRE_API IrisDataResponseData : IReturnData {
    IrisDataResponse irisDataResponse;
    NEXWIRE_JSON
};

/// The irises of a person.
struct NEXWIRE_API IrisReturn : IReturnData {
    std::string personnelGuid;
    std::vector<IrisInfo> irisList;
    NEXWIRE_JSON
};

/// Both eyes as a device has just taken them.
struct NEXWIRE_API IrisReturnData : IInboundData {
    std::string leftIrisData; ///< Template, Base64; empty: not taken.
    std::int32_t leftIrisDataLen = 0;
    std::string rightIrisData; ///< Template, Base64; empty: not taken.
    std::int32_t rightIrisDataLen = 0;
    std::int32_t leftQuality = 0;  ///< 0 to 100 %.
    std::int32_t rightQuality = 0; ///< 0 to 100 %.
    NEXWIRE_JSON
};

struct NEXWIRE_API IrisReturnDataData : IInboundData {
    IrisReturnData irisReturnData;
    NEXWIRE_JSON
};

// ---- Cards ----

/// Card numbers to look at before they are given out.
struct NEXWIRE_API CardNoList : IInboundData {
    std::vector<std::string> cardNoList; ///< Decimal texts. Up to 1000 elements.
    NEXWIRE_JSON
};

/// Whether a card number is free.
struct NEXWIRE_API CardNoRes : IReturnData {
    std::string cardNo;
    bool exist = false;        ///< Somebody has it.
    std::string personnelGuid; ///< Who, empty: nobody.
    std::string personName;
    NEXWIRE_JSON
};

struct NEXWIRE_API CardNoResListData : IReturnData {
    std::vector<CardNoRes> cardNoResList;
    NEXWIRE_JSON
};

/// How a card is looked for.
struct NEXWIRE_API CardQueryCondition : IInboundData {
    std::string cardNo;
    std::int32_t cardState = -1; ///< One of: -1 any, 0 in use, 1 lost, 2 returned, 3 locked.
    NEXWIRE_JSON
};

/// A card and who has it.
struct NEXWIRE_API CardInfowithPguid : IReturnData {
    std::string personnelGuid;
    std::string personNo;
    std::string personName;
    std::string orgGuid;
    CardInfo cardInfo;
    NEXWIRE_JSON
};

struct NEXWIRE_API CardInfowithPguidData : IReturnData {
    CardInfowithPguid cardInfowithPguid;
    NEXWIRE_JSON
};

// ---- Passwords ----

/// A password that more than one person has.
struct NEXWIRE_API PersonPasswordRepeat : IReturnData {
    std::string personnelGuid;
    std::string personNo;
    std::string personName;
    std::string orgName;
    std::int32_t groupNo = 0; ///< Persons with the same number share a password. From 1.
    NEXWIRE_JSON
};

struct NEXWIRE_API PersonPasswordRepeatListData : IReturnData {
    std::vector<PersonPasswordRepeat> personPasswordRepeatList;
    NEXWIRE_JSON
};

/// A person who is to get a password.
struct NEXWIRE_API PersonPwdInfo : IInboundData {
    std::string personnelGuid;
    std::int32_t length = 6; ///< Digits of the password. 4 to 8.
    NEXWIRE_JSON
};

struct NEXWIRE_API AutoGenPersonList : IInboundData {
    std::vector<PersonPwdInfo> personPwdInfoList;
    NEXWIRE_JSON
};

/// The new password of a person.
struct NEXWIRE_API PersonPwdResult : IReturnData {
    std::string personnelGuid;
    std::string personPassword;  ///< Empty when none could be made.
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API PersonPwdResultListData : IReturnData {
    std::vector<PersonPwdResult> personPwdResultList;
    NEXWIRE_JSON
};

/// A password to look at before a person gets it.
struct NEXWIRE_API PersonPwd : IInboundData {
    std::string personnelGuid;  ///< Who is to get it; empty: a new person.
    std::string personPassword; ///< 4 to 8 digits.
    NEXWIRE_JSON
};

struct NEXWIRE_API PersonPwdRes : IReturnData {
    bool repeated = false;           ///< Somebody else has it.
    bool tooSimple = false;          ///< One digit throughout, or digits in a row.
    std::string repeatPersonnelGuid; ///< Who has it; empty: nobody.
    NEXWIRE_JSON
};

/// Tells the platform that persons' passwords changed; the answer tells whose devices have to be written anew.
struct NEXWIRE_API PersonPasswordStatusChange : IInboundData {
    std::vector<std::string> personnelGuidList;
    std::int32_t status = 1;                 ///< One of: 0 removed, 1 set, 2 locked, 3 unlocked.
    std::vector<std::string> deviceGuidList; ///< Devices that the persons may pass; filled by the answer.
    NEXWIRE_JSON
};

} // namespace protocol::personnelcommon
