#include "Person.h"

#include <cstdio>

#include "core/FieldTable.h"

namespace bench {

NEXWIRE_INBOUND_FIELDS(Person, "person", F(personGuid), F(personName), F(personNo), F(orgGuid), F(orgName),
                       F(certificateNo), F(phoneNo), F(beginTime), F(endTime), F(remark), F(gender), F(personType),
                       F(cardCount), F(faceCount), F(fingerprintCount), F(enabled), F(visitor))
NEXWIRE_RETURN_FIELDS(PersonListData, F(personList))
NEXWIRE_INBOUND_FIELDS(PersonAddParam, "personAddParam", F(personList))

namespace {

std::string Numbered(const char* format, std::size_t number)
{
    char text[64];
    const int length = std::snprintf(text, sizeof(text), format, static_cast<unsigned>(number));
    return std::string(text, static_cast<std::size_t>(length));
}

/// Appends a member as compact JSON.
class Text {
public:
    explicit Text(std::string& out) : out_(out) {}
    void operator()(const char* key, const std::string& value)
    {
        Key(key);
        out_ += '"';
        for (const char c : value) {
            if (c == '"' || c == '\\') {
                out_ += '\\';
            }
            out_ += c;
        }
        out_ += '"';
    }
    void operator()(const char* key, std::int32_t value)
    {
        Key(key);
        out_ += std::to_string(value);
    }
    void operator()(const char* key, bool value)
    {
        Key(key);
        out_ += value ? "true" : "false";
    }

private:
    void Key(const char* key)
    {
        out_ += first_ ? "{\"" : ",\"";
        first_ = false;
        out_ += key;
        out_ += "\":";
    }

    std::string& out_;
    bool first_ = true;
};

} // namespace

template <class AnyPerson>
AnyPerson MakePerson(std::size_t index)
{
    AnyPerson person;
    person.personGuid = Numbered("7f3c9a52b1e84d06a4c7%012x", index);
    person.personName = Numbered(index % 3 == 0 ? "王小明%05u" : "Alexandra Lindqvist %u", index);
    person.personNo = Numbered("P%07u", index);
    person.orgGuid = Numbered("0b64e1d97c3548f2%016x", index % 97);
    person.orgName = Numbered(index % 2 == 0 ? "研发部 %u" : "Production %u", index % 97);
    person.certificateNo = Numbered("3301061990%08u", index);
    person.phoneNo = Numbered("13%09u", index * 7 % 1000000000);
    person.beginTime = "2024-03-01T00:00:00+08:00";
    person.endTime = "2034-02-28T23:59:59+08:00";
    person.remark = index % 10 == 0 ? "badge \"old\" returned" : "";
    person.gender = static_cast<std::int32_t>(index % 3);
    person.personType = static_cast<std::int32_t>(index % 5);
    person.cardCount = static_cast<std::int32_t>(index % 6);
    person.faceCount = static_cast<std::int32_t>(index % 2);
    person.fingerprintCount = static_cast<std::int32_t>(index % 11);
    person.enabled = index % 7 != 0;
    person.visitor = index % 13 == 0;
    return person;
}

template Person MakePerson<Person>(std::size_t index);
template PlainPerson MakePerson<PlainPerson>(std::size_t index);

std::string AnswerWith(std::size_t count)
{
    std::string answer = R"({"code":"0-0","msg":"","data":{"personList":[)";
    answer.reserve(count * 480 + 64);
    for (std::size_t i = 0; i < count; ++i) {
        if (i != 0) {
            answer += ',';
        }
        ForEachMember(static_cast<const PlainPerson&>(MakePerson<PlainPerson>(i)), Text(answer));
        answer += '}';
    }
    answer += "]}}";
    return answer;
}

} // namespace bench
