#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "nexwire/JSONStruct.h"

// The data of the measurements: a list of persons of 17 members, some 440 bytes of JSON each, once declared as the
// library's own structures are, and once as the plain structure one would write for another JSON library.

namespace bench {

struct Person : protocol::IInboundData {
    std::string personGuid;
    std::string personName;
    std::string personNo;
    std::string orgGuid;
    std::string orgName;
    std::string certificateNo;
    std::string phoneNo;
    std::string beginTime;
    std::string endTime;
    std::string remark;
    std::int32_t gender = 0;
    std::int32_t personType = 0;
    std::int32_t cardCount = 0;
    std::int32_t faceCount = 0;
    std::int32_t fingerprintCount = 0;
    bool enabled = false;
    bool visitor = false;
    NEXWIRE_JSON
};

/// What a query returns.
struct PersonListData : protocol::IReturnData {
    std::vector<Person> personList;
    NEXWIRE_JSON
};

/// What a request sends.
struct PersonAddParam : protocol::IInboundData {
    std::vector<Person> personList;
    NEXWIRE_JSON
};

struct PlainPerson {
    std::string personGuid;
    std::string personName;
    std::string personNo;
    std::string orgGuid;
    std::string orgName;
    std::string certificateNo;
    std::string phoneNo;
    std::string beginTime;
    std::string endTime;
    std::string remark;
    std::int32_t gender = 0;
    std::int32_t personType = 0;
    std::int32_t cardCount = 0;
    std::int32_t faceCount = 0;
    std::int32_t fingerprintCount = 0;
    bool enabled = false;
    bool visitor = false;
};

/// Calls `visit(key, member)` for every member in wire order.
template <class AnyPerson, class Visitor>
void ForEachMember(AnyPerson& person, Visitor&& visit)
{
    visit("personGuid", person.personGuid);
    visit("personName", person.personName);
    visit("personNo", person.personNo);
    visit("orgGuid", person.orgGuid);
    visit("orgName", person.orgName);
    visit("certificateNo", person.certificateNo);
    visit("phoneNo", person.phoneNo);
    visit("beginTime", person.beginTime);
    visit("endTime", person.endTime);
    visit("remark", person.remark);
    visit("gender", person.gender);
    visit("personType", person.personType);
    visit("cardCount", person.cardCount);
    visit("faceCount", person.faceCount);
    visit("fingerprintCount", person.fingerprintCount);
    visit("enabled", person.enabled);
    visit("visitor", person.visitor);
}

/// Number `index` of a list, the same for both forms.
template <class AnyPerson>
AnyPerson MakePerson(std::size_t index);

/// The same persons as the platform answers them: an envelope around {"personList":[...]}, without white space.
std::string AnswerWith(std::size_t count);

} // namespace bench
