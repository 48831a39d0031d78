// Persons and organisations: what requests do to the register.

#include <algorithm>

#include "src/Register.h"
#include "src/Rules.h"
#include "src/Services.h"

namespace nexwire::simulator {
namespace {

void TellPerson(Handling& handling, Json& result, const Json& person)
{
    Fields(result, handling.Memory())
        .Text("guid", AsText(Member(person, "personnelGuid")))
        .Text("personNo", AsText(Member(person, "personnelNo")))
        .Text("name", AsText(Member(person, "personnelName")));
}

// ---- Persons ----

void AddPersons(Handling& handling)
{
    Register persons(handling);
    ForEach(handling, "personnelInfoList", handling.data, "personnelResultList",
            [&](const Json& info, Json& result) { TellPerson(handling, result, persons.Need(persons.Add(info))); });
}

void RemovePersons(Handling& handling)
{
    Register persons(handling);
    ForEach(handling, "guidList", handling.data, "personnelResultList", [&](const Json& guid, Json& result) {
        TellPerson(handling, result, persons.Need(AsText(&guid)));
        persons.Erase(std::string(AsText(&guid)));
    });
}

// With an organisation in the path only its persons.
void FindPersons(Handling& handling)
{
    Allocator& memory = handling.Memory();
    Register persons(handling);
    const Selection selection = persons.Matching(
        *handling.body, handling.identifiers.empty() ? std::string_view() : std::string_view(handling.identifiers[0]));
    const Json* wanted = Member(*handling.body, "sectionList");
    Json list(rapidjson::kArrayType);
    handling.Each(selection,
                  [&](const std::string&, Json& person) { list.PushBack(persons.Info(person, wanted), memory); });
    Fields(handling.data, memory)
        .Number("totalNum", handling.store.Count(selection))
        .Number("pageNo", std::max<std::int64_t>(AsInt(Member(*handling.body, "pageNo"), 1), 1))
        .Value("personnelInfoList", std::move(list));
}

void CountPersons(Handling& handling)
{
    Fields(handling.data, handling.Memory()).Number("numberPersonnel", handling.store.Count({"persons"}));
}

void GetPerson(Handling& handling)
{
    Allocator& memory = handling.Memory();
    Register persons(handling);
    const std::string& guid = handling.identifiers[0];
    const Json person = persons.Need(guid);
    const Json unit = persons.Shown(persons.NeedOrganisation(AsText(Member(person, "orgGuid"))));
    Json groups(rapidjson::kArrayType);
    handling.store.Select(
        {"accessGroups", {HoldsText("personnelResList[].personnelGuid", guid)}},
        [&](const std::string& key, const std::string&) { groups.PushBack(MakeText(key, memory), memory); });
    Fields(handling.data, memory)
        .Value("personnelInfo", persons.Info(person, Member(*handling.body, "sectionList")))
        .Text("orgFullPath", AsText(Member(unit, "fullPath")))
        .Value("accessGroupGuidList", std::move(groups));
}

void ChangePerson(Handling& handling)
{
    Register(handling).Change(handling.identifiers[0], *handling.body);
}

void NextNumber(Handling& handling)
{
    Fields(handling.data, handling.Memory()).Text("defaultSn", Register(handling).NextNumber());
}

void SetRule(Handling& handling)
{
    const std::string_view prefix = AsText(Member(*handling.body, "prefix"));
    if (static_cast<std::int64_t>(prefix.size()) >= AsInt(Member(*handling.body, "length"))) {
        throw Refusal(Reason::kOutOfRange, "the prefix leaves no room for digits");
    }
    Json rule = Copy(*handling.body, handling.Memory());
    SetMember(rule, "ruleInited", Json(true), handling.Memory());
    handling.Save("_personnel", "rule", rule);
}

void GetRule(Handling& handling)
{
    handling.data = Register(handling).Rule();
}

// Values of a property go with it.
void RemoveProperties(Handling& handling)
{
    Register persons(handling);
    const Collection& properties = *handling.description.FindCollection("privateProperties");
    ForEach(handling, "guidList", handling.data, "privatePropertyResultList", [&](const Json& element, Json&) {
        const std::string guid(AsText(&element));
        handling.Need(properties, guid);
        handling.store.Erase(properties.name, guid);
        for (const std::string& key : persons.Holders("privateDataList[].propertyGuid", guid)) {
            Json person = persons.Need(key);
            Json& values = SectionList(person, "privateDataList", handling.Memory());
            values.Erase(FindElement(values, "propertyGuid", guid));
            persons.Save(key, person);
        }
    });
}

// ---- Organisations ----

constexpr const char* kOrganisations = "organizations";

void CheckName(Handling& handling, const std::string& guid, const Json& organisation)
{
    const std::string name(AsText(Member(organisation, "name")));
    if (name.empty()) {
        throw Refusal(Reason::kMissingField, "name");
    }
    handling.store.Select(
        {kOrganisations,
         {HoldsText("parOrgGuid", AsText(Member(organisation, "parOrgGuid"))), HoldsText("name", name)}},
        [&](const std::string& key, const std::string&) {
            if (key != guid) {
                throw Refusal(Reason::kDuplicate, "name \"" + name + "\"");
            }
        });
}

void SaveOrganisation(Handling& handling, const std::string& guid, Json& organisation)
{
    Fields fields(organisation, handling.Memory());
    const std::string now = IsoTime(handling.nowMs);
    if (Member(organisation, "createTime") == nullptr) {
        fields.Text("createTime", now);
    }
    fields.Text("modifyTime", now).Text("guid", guid);
    handling.Save(kOrganisations, guid, organisation);
}

void AddOrganisations(Handling& handling)
{
    Register persons(handling);
    ForEach(handling, "organizationList", handling.data, "organizationInfoList",
            [&](const Json& element, Json& result) {
                Json organisation = Copy(element, handling.Memory());
                std::string guid(AsText(Member(organisation, "guid")));
                guid = guid.empty() ? NewGuid() : guid;
                if (handling.store.Has(kOrganisations, guid)) {
                    throw Refusal(Reason::kDuplicate, "guid \"" + guid + "\"");
                }
                if (AsText(Member(organisation, "parOrgGuid")).empty()) {
                    Fields(organisation, handling.Memory()).Text("parOrgGuid", persons.Subtree("").front());
                }
                persons.NeedOrganisation(AsText(Member(organisation, "parOrgGuid")));
                CheckName(handling, guid, organisation);
                SaveOrganisation(handling, guid, organisation);
                result = persons.Shown(organisation);
            });
}

void RemoveOrganisations(Handling& handling)
{
    Register persons(handling);
    ForEach(handling, "guidList", handling.data, "organizationInfoList", [&](const Json& element, Json& result) {
        const std::string guid(AsText(&element));
        result = persons.Shown(persons.NeedOrganisation(guid));
        if (AsInt(Member(result, "personNum")) + AsInt(Member(result, "childNum")) > 0 ||
            AsText(Member(result, "parOrgGuid")).empty()) {
            throw Refusal(Reason::kInUse, "\"" + guid + "\"");
        }
        handling.store.Erase(kOrganisations, guid);
    });
}

void ChangeOrganisation(Handling& handling)
{
    Register persons(handling);
    const std::string& guid = handling.identifiers[0];
    Json organisation = persons.NeedOrganisation(guid);
    for (const auto& member : handling.body->GetObject()) {
        const std::string_view key = AsText(&member.name);
        if (key != "guid" && !(key == "parOrgGuid" && AsText(&member.value).empty())) {
            SetMember(organisation, key, Copy(member.value, handling.Memory()), handling.Memory());
        }
    }
    const std::string_view parent = AsText(Member(organisation, "parOrgGuid"));
    const std::vector<std::string> below = persons.Subtree(guid);
    if (std::find(below.begin(), below.end(), parent) != below.end()) {
        throw Refusal(Reason::kInUse, "an organisation cannot go below itself");
    }
    if (!parent.empty()) {
        persons.NeedOrganisation(parent);
    }
    CheckName(handling, guid, organisation);
    SaveOrganisation(handling, guid, organisation);
}

// With an organisation in the path itself and what is below it.
void FindOrganisations(Handling& handling)
{
    Register persons(handling);
    const std::string top = handling.identifiers.empty() ? std::string(AsText(Member(*handling.body, "parOrgGuid")))
                                                         : handling.identifiers[0];
    if (!top.empty()) {
        persons.NeedOrganisation(top);
    }
    const std::int64_t type = AsInt(Member(*handling.body, "orgType"));
    const std::string name(AsText(Member(*handling.body, "name")));
    const bool direct = AsInt(Member(*handling.body, "queryType")) == 1;
    Json list(rapidjson::kArrayType);
    for (const std::string& guid : persons.Subtree(top)) {
        const Json organisation = persons.NeedOrganisation(guid);
        const bool fits = (type == 0 || AsInt(Member(organisation, "orgType")) == type) &&
                          (!direct || AsText(Member(organisation, "parOrgGuid")) == top) &&
                          AsText(Member(organisation, "name")).find(name) != std::string_view::npos;
        if (fits) {
            list.PushBack(persons.Shown(organisation), handling.Memory());
        }
    }
    SetMember(handling.data, "organizationInfoList", std::move(list), handling.Memory());
}

void GetOrganisation(Handling& handling)
{
    Register persons(handling);
    handling.data = persons.Shown(persons.NeedOrganisation(handling.identifiers[0]));
}

void OrganisationOfPerson(Handling& handling)
{
    Register persons(handling);
    const Json person = persons.Need(handling.identifiers[0]);
    handling.data = persons.Shown(persons.NeedOrganisation(AsText(Member(person, "orgGuid"))));
}

void MovePersons(Handling& handling)
{
    Register persons(handling);
    const std::string& guid = handling.identifiers[0];
    const Json organisation = persons.NeedOrganisation(guid);
    const std::string_view old = AsText(Member(*handling.body, "oldOrgGuid"));
    for (const Json& each : Elements(Member(*handling.body, "personnelGuidList"))) {
        Json person = persons.Need(AsText(&each));
        if (old.empty() || AsText(Member(person, "orgGuid")) == old) {
            Fields(*Member(person, "basic"), handling.Memory()).Text("orgGuid", guid);
            persons.Save(std::string(AsText(&each)), person);
        }
    }
    handling.data = persons.Shown(organisation);
}

} // namespace

void AddPersonnel(Services& services)
{
    services["personnel.unfold"] = [](Handling& handling) { Register(handling).Unfold(); };
    services["persons.add"] = AddPersons;
    services["persons.remove"] = RemovePersons;
    services["persons.find"] = FindPersons;
    services["persons.count"] = CountPersons;
    services["persons.get"] = GetPerson;
    services["persons.change"] = ChangePerson;
    services["persons.nextNumber"] = NextNumber;
    services["persons.setRule"] = SetRule;
    services["persons.getRule"] = GetRule;
    services["persons.organisation"] = OrganisationOfPerson;
    services["persons.move"] = MovePersons;
    services["properties.remove"] = RemoveProperties;
    services["organisations.add"] = AddOrganisations;
    services["organisations.remove"] = RemoveOrganisations;
    services["organisations.change"] = ChangeOrganisation;
    services["organisations.find"] = FindOrganisations;
    services["organisations.get"] = GetOrganisation;
}

} // namespace nexwire::simulator
