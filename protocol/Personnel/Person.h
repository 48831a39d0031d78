#pragma once

#include "protocol/Personnel/Credential.h"

namespace protocol::personnelcommon {

/// Who a person is.
struct NEXWIRE_API PersonBasic : IInboundData {
    std::string guid;     ///< Given by the platform when empty.
    std::string personNo; ///< Unique number, as on a badge; given by the number rule when empty. Up to 32 characters.
    std::string name;     ///< Up to 64 characters.
    std::string orgGuid;  ///< Organisation; empty: the root.
    std::string orgName;  ///< Filled in answers.
    std::int32_t personType = 0;      ///< One of: 0 staff, 1 visitor, 2 resident, 3 block list.
    std::int32_t gender = 0;          ///< One of: 0 unknown, 1 male, 2 female.
    std::string birthday;             ///< "YYYY-MM-DD"; empty: unknown.
    std::int32_t certificateType = 0; ///< One of: 0 none, 1 identity card, 2 passport, 3 driving licence, 4 other.
    std::string certificateNo;
    std::string phone;
    std::string email;
    std::string validBegin; ///< First moment the person may pass, ISO 8601; empty: at once.
    std::string validEnd;   ///< Last one, ISO 8601; empty: for ever.
    std::string createTime; ///< ISO 8601, filled in answers.
    std::string modifyTime; ///< ISO 8601, filled in answers.
    NEXWIRE_JSON
};

/// How a person passes doors.
struct NEXWIRE_API PersonAccessControl : IInboundData {
    bool superAuthority = false; ///< Passes doors that are locked down.
    bool extendedOpen = false;   ///< Doors stay open longer, for people who need it.
    bool dutyCard = false;       ///< May open a door for good and close it again.
    bool deviceOperator = false; ///< May use the menus of devices.
    std::string personPassword;  ///< Opens doors without a card. 4 to 8 digits; empty: none.
    std::string
        verifyMode; ///< Own way of identification. For example: "card", "cardAndPw", "face"; empty: the reader's.
    std::int32_t maxOpenTimes = 0; ///< Times a visitor may pass; 0: without limit.
    std::int32_t floorNo = 0;      ///< Floor that a lift takes the person to; 0: any.
    NEXWIRE_JSON
};

/// Where a person lives; intercoms call by it.
struct NEXWIRE_API PersonResident : IInboundData {
    std::int32_t periodNo = 0;   ///< Part of the estate. From 1; 0: none.
    std::int32_t buildingNo = 0; ///< From 1; 0: none.
    std::int32_t unitNo = 0;     ///< From 1; 0: none.
    std::int32_t floorNo = 0;    ///< Below 0 under ground.
    std::int32_t roomNo = 0;     ///< From 1; 0: none.
    std::int32_t relation = 0;   ///< One of: 0 owner, 1 family, 2 tenant, 3 other.
    std::string moveInDate;      ///< "YYYY-MM-DD"; empty: unknown.
    std::string phone;           ///< Called when nobody answers the intercom.
    NEXWIRE_JSON
};

/// What else is known of a person.
struct NEXWIRE_API PersonAddition : IInboundData {
    std::string position;
    std::string employeeNo; ///< Of the staff office, beside the person's number.
    std::string hireDate;   ///< "YYYY-MM-DD"; empty: unknown.
    std::string leaveDate;  ///< "YYYY-MM-DD"; empty: still here.
    std::string nationality;
    std::string address;
    std::vector<std::string> plateNoList; ///< Number plates of the person's vehicles.
    std::string remark;
    NEXWIRE_JSON
};

/// A property that the site defined for its persons, with its value.
struct NEXWIRE_API PrivateData : IInboundData {
    std::string propertyGuid;
    std::string name; ///< Filled in answers.
    std::string value;
    NEXWIRE_JSON
};

/// One person, section by section. A query fills the sections it was asked for; a change writes those that the filter
/// lets through.
struct NEXWIRE_API PersonnelInfo : IInboundData {
    PersonBasic basic;
    PersonAccessControl accesscontrol; ///< (The key is spelled so, without a capital.)
    PersonResident resident;
    std::vector<CardInfo> cardList;               ///< Usually at most 5.
    std::vector<FingerprintInfo> fingerprintList; ///< At most 10.
    std::vector<FaceInfo> faceList;               ///< Usually at most 1.
    std::vector<IrisInfo> irisList;               ///< At most 2.
    PersonAddition addition;
    std::vector<PrivateData> privateDataList;
    std::string ext; ///< Free text of the caller, kept and handed back as it is.
    NEXWIRE_JSON
};

struct NEXWIRE_API AddPersonnel : IInboundData {
    std::vector<PersonnelInfo> personnelInfoList; ///< Usually at most 1000 in one request.
    NEXWIRE_JSON
};

struct NEXWIRE_API DeletePersonnelInfo : IInboundData {
    std::vector<std::string> guidList; ///< Required.
    bool deleteFromDevice = true;      ///< Takes them off the devices, too.
    NEXWIRE_JSON
};

/// What became of one person.
struct NEXWIRE_API PersonnelResult : IReturnData {
    std::string guid; ///< Of the person; empty when a new one was refused.
    std::string personNo;
    std::string name;
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API PersonnelResultListData : IReturnData {
    std::vector<PersonnelResult> personnelResultList;
    NEXWIRE_JSON
};

/// Which persons are asked for. What is empty, 0 or -1 does not narrow.
struct NEXWIRE_API QueryMultiPersons : IInboundData {
    std::int32_t pageNo = 1;     ///< From 1.
    std::int32_t pageSize = 100; ///< 1 to 5000; 0: the server's own size.
    std::string orgGuid;         ///< Organisation; of no use where it stands in the path.
    bool includeSubOrg = true;   ///< Organisations below it, too.
    std::string name;            ///< Part of a name.
    std::string personNo;        ///< Beginning of a number.
    std::string cardNo;
    std::string phone;
    std::string certificateNo;
    std::string plateNo;
    std::int32_t personType = -1;         ///< One of: -1 any, 0 staff, 1 visitor, 2 resident, 3 block list.
    std::int32_t gender = -1;             ///< One of: -1 any, 0 unknown, 1 male, 2 female.
    std::int32_t cardState = -1;          ///< One of: -1 any, 0 without cards, 1 with cards.
    std::int32_t fingerState = -1;        ///< One of: -1 any, 0 without fingerprints, 1 with fingerprints.
    std::int32_t faceState = -1;          ///< One of: -1 any, 0 without faces, 1 with faces.
    std::int32_t irisState = -1;          ///< One of: -1 any, 0 without irises, 1 with irises.
    std::string beginTime;                ///< Changed from then on, ISO 8601.
    std::string endTime;                  ///< Changed until then, ISO 8601.
    std::vector<std::string> guidList;    ///< These persons only.
    std::vector<std::string> sectionList; ///< Sections to fill, by their keys, as "cardList"; empty: all.
    NEXWIRE_JSON
};

/// A page of persons.
struct NEXWIRE_API TotalData : IReturnData {
    std::int32_t totalNum = 0; ///< Persons that fit the condition, on all pages.
    std::int32_t pageNo = 0;   ///< From 1.
    std::vector<PersonnelInfo> personnelInfoList;
    NEXWIRE_JSON
};

/// How many persons the register has.
struct NEXWIRE_API NumberPersonnelData : IReturnData {
    std::int32_t numberPersonnel = 0;
    NEXWIRE_JSON
};

/// How one person is asked for, or persons are looked for by something else than their GUID. What is empty does not
/// narrow; all that is given must fit.
struct NEXWIRE_API QueryPerson : IInboundData {
    std::string personNo;
    std::string name;
    std::string cardNo;
    std::string phone;
    std::string email;
    std::string certificateNo;
    std::string plateNo;
    std::string faceGuid;
    std::string fingerprintGuid;
    std::vector<std::string> sectionList; ///< Sections to fill, by their keys, as "cardList"; empty: all.
    NEXWIRE_JSON
};

/// One person and the way to it.
struct NEXWIRE_API PersonnelResp : IReturnData {
    PersonnelInfo personnelInfo;
    std::string orgFullPath;                      ///< Names of the organisations from the root, separated by "/".
    std::vector<std::string> accessGroupGuidList; ///< Groups that let the person pass somewhere.
    NEXWIRE_JSON
};

/// The next number that the rule gives.
struct NEXWIRE_API DefaultSnData : IReturnData {
    std::string defaultSn;
    NEXWIRE_JSON
};

/// How numbers of new persons are made: a prefix and digits.
struct NEXWIRE_API PersonnelSNRule : IInboundData {
    std::string prefix;      ///< Up to 16 characters.
    std::int32_t length = 8; ///< Characters of the whole number. 1 to 32.
    bool random = false;     ///< Digits at random instead of counting on.
    bool ruleInited = false; ///< Somebody has set the rule; a new register counts 8 digits without prefix.
    NEXWIRE_JSON
};

// ---- Properties that a site defines for its persons ----

/// A property.
struct NEXWIRE_API PrivateProperty : IInboundData {
    std::string guid;                    ///< Given by the platform when empty.
    std::string name;                    ///< Unique. 1 to 32 characters.
    std::int32_t type = 0;               ///< One of: 0 text, 1 number, 2 date, 3 one of its options.
    std::vector<std::string> optionList; ///< For type 3.
    bool required = false;               ///< A person needs a value of it.
    std::int32_t orderNo = 0;            ///< Place in forms, smallest first.
    NEXWIRE_JSON
};

struct NEXWIRE_API PrivatePropertyList : IInboundData {
    std::vector<PrivateProperty> privatePropertyList;
    NEXWIRE_JSON
};

/// A property that loses its values with all persons.
struct NEXWIRE_API PrivatePropertyDeleteList : IInboundData {
    std::vector<std::string> guidList; ///< Required.
    NEXWIRE_JSON
};

/// The new name of a property; its GUID stands in the path.
struct NEXWIRE_API PrivatePropertyModification : IInboundData {
    std::string name; ///< 1 to 32 characters.
    NEXWIRE_JSON
};

/// A property as the platform keeps it, or what became of one.
struct NEXWIRE_API PrivatePropertyResult : IReturnData {
    std::string guid;
    std::string name;
    std::int32_t type = 0; ///< One of: 0 text, 1 number, 2 date, 3 one of its options.
    std::vector<std::string> optionList;
    bool required = false;
    std::int32_t orderNo = 0;
    std::int32_t resultCode = 0; ///< 0 done, otherwise the server's error number.
    std::string resultMsg;       ///< The server's words for the error, may be empty.
    NEXWIRE_JSON
};

struct NEXWIRE_API PrivatePropertyResultListData : IReturnData {
    std::vector<PrivatePropertyResult> privatePropertyResultList;
    NEXWIRE_JSON
};

/// What a file of persons looks like.
struct NEXWIRE_API PersonnelDataFile : IInboundData {
    std::string fileName;                ///< Without folder.
    std::string fileType;                ///< One of: "csv", "xlsx", "zip" with pictures.
    std::string password;                ///< Closes a "zip"; empty: open.
    std::string orgGuid;                 ///< Organisation whose persons go in; empty: all.
    bool includeSubOrg = true;           ///< Organisations below it, too.
    bool includePicture = false;         ///< Only in a "zip".
    std::vector<std::string> columnList; ///< Members of the sections to write, as "basic.name"; empty: all.
    NEXWIRE_JSON
};

} // namespace protocol::personnelcommon
