#include "src/Register.h"

#include <algorithm>
#include <random>
#include <set>

#include "src/Base64.h"
#include "src/Rules.h"

namespace nexwire::simulator {
namespace {

constexpr const char* kPersons = "persons";
constexpr const char* kOrganisations = "organizations";
constexpr const char* kState = "_personnel";
constexpr const char* kOwners = "_owners"; ///< What only one person can have, so that nobody looks through all of them.
constexpr const char* kNumber = "personNo";
constexpr std::string_view kRoot = "0A000000000000000000000000000001";
constexpr std::string_view kSeedUnits[] = {"0A000000000000000000000000000002", "0A000000000000000000000000000003",
                                           "0A000000000000000000000000000004"};
constexpr std::string_view kSections[] = {"basic",    "accesscontrol", "resident", "cardList",        "fingerprintList",
                                          "faceList", "irisList",      "addition", "privateDataList", "ext"};

/// A list of credentials, its elements' identifiers, what counts them, and how many a person may have.
struct CredentialKind {
    std::string_view list;
    const char* guid;
    const char* data;
    const char* own; ///< What nobody else can have.
    const char* count;
    std::int64_t most;
};
constexpr CredentialKind kCredentials[] = {
    {"cardList", nullptr, nullptr, "cardNo", "_cardNum", 5},
    {"fingerprintList", "fingerprintGuid", "fingerData", "fingerData", "fingerPrints", 10},
    {"faceList", "faceGuid", "faceData", "faceGuid", "faces", 5},
    {"irisList", "irisGuid", "irisData", nullptr, "irises", 2}};

std::string OwnerKey(std::string_view kind, std::string_view value)
{
    return std::string(kind) + "/" + std::string(value);
}

/// Keys of what belongs to one person alone.
std::vector<std::string> Owned(const Json& person)
{
    std::vector<std::string> keys;
    if (const std::string_view number = AsText(AtPath(person, "basic.personNo")); !number.empty()) {
        keys.push_back(OwnerKey(kNumber, number));
    }
    for (const CredentialKind& kind : kCredentials) {
        for (const Json& each : Elements(kind.own == nullptr ? nullptr : Member(person, kind.list))) {
            if (const std::string_view own = AsText(Member(each, kind.own)); !own.empty()) {
                keys.push_back(OwnerKey(kind.list, own));
            }
        }
    }
    return keys;
}

} // namespace

Json& SectionList(Json& person, std::string_view key, Allocator& memory)
{
    Json* list = Member(person, key);
    if (list == nullptr || !list->IsArray()) {
        SetMember(person, key, Json(rapidjson::kArrayType), memory);
        list = Member(person, key);
    }
    return *list;
}

void ForEach(Handling& handling, std::string_view list, Json& answer, std::string_view member,
             const std::function<void(const Json& element, Json& result)>& each)
{
    Allocator& memory = handling.Memory();
    Json results(rapidjson::kArrayType);
    for (const Json& element : Elements(Member(*handling.body, list))) {
        Json result(rapidjson::kObjectType);
        if (element.IsString()) {
            SetMember(result, "guid", Copy(element, memory), memory);
        } else {
            Fields(result, memory).Same("personnelGuid", element);
        }
        Reason reason = Reason::kNone;
        std::string message;
        try {
            each(element, result);
        } catch (const Refusal& refusal) {
            reason = refusal.Why();
            message = refusal.what();
        }
        Fields(result, memory).Number("resultCode", static_cast<int>(reason)).Text("resultMsg", message);
        results.PushBack(result, memory);
    }
    SetMember(answer, member, std::move(results), memory);
}

Json* FindElement(Json& list, std::string_view member, std::string_view value)
{
    for (Json& element : list.GetArray()) {
        if (AsText(Member(element, member)) == value) {
            return &element;
        }
    }
    return nullptr;
}

// ---- Persons ----

void Register::Unfold()
{
    if (handling_.store.Has(kState, "unfolded")) {
        return;
    }
    std::size_t number = 0;
    handling_.Each({kPersons}, [&](const std::string& guid, Json& person) {
        SetMember(person, "basic",
                  Fields(memory_)
                      .Text("guid", guid)
                      .Text(kNumber, AsText(Member(person, "personnelNo")))
                      .Text("name", AsText(Member(person, "personnelName")))
                      .Text("orgGuid", kSeedUnits[number++ % std::size(kSeedUnits)])
                      .Number("personType", 0)
                      .Take(),
                  memory_);
        for (const CredentialKind& kind : kCredentials) {
            const bool cards = kind.guid == nullptr;
            const auto held = Elements(Member(person, "cards"));
            const std::int64_t count = cards ? std::int64_t{held.Size()} : AsInt(Member(person, kind.count));
            Json& list = SectionList(person, kind.list, memory_);
            for (std::int64_t i = 0; i < count; ++i) {
                Json element(rapidjson::kObjectType);
                if (cards) {
                    SetMember(element, "cardNo", Copy(held[static_cast<rapidjson::SizeType>(i)], memory_), memory_);
                } else {
                    const std::string name = std::string(kind.data) + " " + std::to_string(i + 1) + " of " + guid;
                    Fields(element, memory_)
                        .Text(kind.guid, NewGuid())
                        .Text(kind.data, ToBase64(name))
                        .Number(std::string(kind.data) + "Len", static_cast<std::int64_t>(name.size()));
                }
                list.PushBack(element, memory_);
            }
        }
        Save(guid, person);
    });
    handling_.store.Write(kState, "unfolded", "{}");
}

Json Register::Need(std::string_view guid)
{
    return handling_.Need(*handling_.description.FindCollection(kPersons), guid);
}

std::string Register::Owner(std::string_view kind, std::string_view value)
{
    const Json found = handling_.Load(kOwners, OwnerKey(kind, value));
    return std::string(AsText(Member(found, "guid")));
}

std::vector<std::string> Register::Holders(const std::string& field, std::string_view text, std::string_view apartFrom)
{
    std::vector<std::string> keys;
    handling_.store.Select({kPersons, {HoldsText(field, text)}}, [&](const std::string& key, const std::string&) {
        if (key != apartFrom) {
            keys.push_back(key);
        }
    });
    return keys;
}

void Register::Check(const std::string& guid, const Json& sections)
{
    const auto refuseIfOwned = [&](std::string_view kind, const char* what, std::string_view value) {
        const std::string owner = value.empty() ? std::string() : Owner(kind, value);
        if (!owner.empty() && owner != guid) {
            throw Refusal(Reason::kDuplicate, std::string(what) + " \"" + std::string(value) + "\"");
        }
    };
    if (const Json* basic = Member(sections, "basic")) {
        if (AsText(Member(*basic, "name")).empty()) {
            throw Refusal(Reason::kMissingField, "basic.name");
        }
        if (const std::string_view unit = AsText(Member(*basic, "orgGuid")); !unit.empty()) {
            NeedOrganisation(unit);
        }
        refuseIfOwned(kNumber, kNumber, AsText(Member(*basic, kNumber)));
    }
    for (const CredentialKind& kind : kCredentials) {
        const auto list = Elements(Member(sections, kind.list));
        if (list.Size() > kind.most) {
            throw Refusal(Reason::kOutOfRange,
                          "more than " + std::to_string(kind.most) + " in " + std::string(kind.list));
        }
        std::set<std::string_view> seen;
        for (const Json& each : list) {
            const std::string_view own = kind.own == nullptr ? std::string_view() : AsText(Member(each, kind.own));
            if (own.empty() && kind.guid == nullptr) {
                throw Refusal(Reason::kMissingField, kind.own);
            }
            if (!own.empty() && !seen.insert(own).second) {
                throw Refusal(Reason::kDuplicate, std::string(kind.own) + " \"" + std::string(own) + "\"");
            }
            refuseIfOwned(kind.list, kind.own, own);
        }
    }
    if (const Json* values = Member(sections, "privateDataList")) {
        CheckProperties(*values);
    }
}

void Register::CheckProperties(const Json& values)
{
    handling_.Each({"privateProperties"}, [&](const std::string& guid, Json& property) {
        const auto list = Elements(&values);
        if (AsBool(Member(property, "required")) && std::none_of(list.begin(), list.end(), [&](const Json& each) {
                return AsText(Member(each, "propertyGuid")) == guid && !AsText(Member(each, "value")).empty();
            })) {
            throw Refusal(Reason::kMissingField, AsText(Member(property, "name")));
        }
    });
}

void Register::Save(const std::string& guid, Json& person)
{
    ForgetOwned(guid);
    Json& basic = *Member(person, "basic");
    const std::string now = IsoTime(handling_.nowMs);
    if (AsText(Member(basic, "createTime")).empty()) {
        SetMember(basic, "createTime", MakeText(now, memory_), memory_);
    }
    SetMember(basic, "modifyTime", MakeText(now, memory_), memory_);
    SetMember(person, "personnelGuid", MakeText(guid, memory_), memory_);
    for (const auto& [flat, own] :
         {std::pair("personnelNo", "personNo"), std::pair("personnelName", "name"), std::pair("orgGuid", "orgGuid")}) {
        SetMember(person, flat, MakeText(AsText(Member(basic, own)), memory_), memory_);
    }
    Json cards(rapidjson::kArrayType);
    for (const Json& card : Elements(Member(person, "cardList"))) {
        cards.PushBack(MakeText(AsText(Member(card, "cardNo")), memory_), memory_);
    }
    SetMember(person, "cards", std::move(cards), memory_);
    for (const CredentialKind& kind : kCredentials) {
        Json& list = SectionList(person, kind.list, memory_);
        for (Json& element : list.GetArray()) {
            if (kind.guid != nullptr && AsText(Member(element, kind.guid)).empty()) {
                SetMember(element, kind.guid, MakeText(NewGuid(), memory_), memory_);
            }
        }
        SetMember(person, kind.count, Json(list.Size()), memory_);
    }
    handling_.Save(kPersons, guid, person);
    for (const std::string& key : Owned(person)) {
        handling_.Save(kOwners, key, Fields(memory_).Text("guid", guid).Take());
    }
}

void Register::ForgetOwned(const std::string& guid)
{
    for (const std::string& key : Owned(handling_.Load(kPersons, guid))) {
        handling_.store.Erase(kOwners, key);
    }
}

std::string Register::Add(const Json& info)
{
    Json person = Copy(info, memory_);
    if (Member(person, "basic") == nullptr) {
        throw Refusal(Reason::kMissingField, "basic");
    }
    Json& basic = *Member(person, "basic");
    std::string guid(AsText(Member(basic, "guid")));
    if (guid.empty()) {
        guid = NewGuid();
        SetMember(basic, "guid", MakeText(guid, memory_), memory_);
    } else if (handling_.store.Has(kPersons, guid)) {
        throw Refusal(Reason::kDuplicate, "guid \"" + guid + "\"");
    }
    if (AsText(Member(basic, "orgGuid")).empty()) {
        SetMember(basic, "orgGuid", MakeText(kRoot, memory_), memory_);
    }
    if (Member(person, "privateDataList") == nullptr) {
        CheckProperties(Json(rapidjson::kArrayType));
    }
    Check(guid, person);
    if (AsText(Member(basic, "personNo")).empty()) {
        SetMember(basic, "personNo", MakeText(NextNumber(), memory_), memory_);
    }
    Save(guid, person);
    return guid;
}

void Register::Change(const std::string& guid, const Json& sections)
{
    Json person = Need(guid);
    Check(guid, sections);
    for (const auto& member : sections.GetObject()) {
        if (AsText(&member.name) != "basic") {
            SetMember(person, AsText(&member.name), Copy(member.value, memory_), memory_);
            continue;
        }
        // What a caller leaves empty of a person's identity is not taken from the person.
        Json& basic = *Member(person, "basic");
        for (const auto& own : member.value.GetObject()) {
            const std::string_view key = AsText(&own.name);
            const bool kept = key == "guid" || key == "personNo" || key == "orgGuid" || key == "createTime";
            if (!kept || (key != "guid" && !AsText(&own.value).empty())) {
                SetMember(basic, key, Copy(own.value, memory_), memory_);
            }
        }
    }
    Save(guid, person);
}

void Register::Erase(const std::string& guid)
{
    Need(guid);
    ForgetOwned(guid);
    handling_.store.Erase(kPersons, guid);
}

Json Register::Info(const Json& person, const Json* wanted)
{
    const auto list = Elements(wanted);
    Json info(rapidjson::kObjectType);
    for (const std::string_view section : kSections) {
        const bool asked = list.Empty() || std::any_of(list.begin(), list.end(),
                                                       [&](const Json& each) { return AsText(&each) == section; });
        if (const Json* value = Member(person, section); asked && value != nullptr) {
            SetMember(info, section, Copy(*value, memory_), memory_);
        }
    }
    if (Json* basic = Member(info, "basic")) {
        const Json unit = handling_.Load(kOrganisations, AsText(Member(*basic, "orgGuid")));
        Fields(*basic, memory_).Text("orgName", AsText(Member(unit, "name")));
    }
    if (Json* values = Member(info, "privateDataList")) {
        for (Json& value : values->GetArray()) {
            const Json property = handling_.Load("privateProperties", AsText(Member(value, "propertyGuid")));
            Fields(value, memory_).Same("name", property);
        }
    }
    return info;
}

Json Register::Rule()
{
    Json rule = handling_.Load(kState, "rule");
    if (!rule.IsObject()) {
        rule = Fields(memory_)
                   .Text("prefix", "")
                   .Number("length", 8)
                   .Flag("random", false)
                   .Flag("ruleInited", false)
                   .Take();
    }
    return rule;
}

std::string Register::NextNumber()
{
    const Json rule = Rule();
    const std::string prefix(AsText(Member(rule, "prefix")));
    const auto length = static_cast<std::size_t>(std::max<std::int64_t>(AsInt(Member(rule, "length")), 1));
    const std::size_t digits = std::clamp<std::size_t>(length - std::min(length, prefix.size()), 1, 18);
    std::uint64_t bound = 1;
    for (std::size_t i = 0; i < digits; ++i) {
        bound *= 10;
    }
    thread_local std::mt19937_64 generator{std::random_device()()};
    const Json kept = handling_.Load(kState, "number");
    auto last = static_cast<std::uint64_t>(AsInt(Member(kept, "last")));
    for (int tries = 0; tries < 10000; ++tries) {
        last = AsBool(Member(rule, "random")) ? generator() % bound : last + 1;
        const std::string text = std::to_string(last % bound);
        const std::string number = prefix + std::string(digits - std::min(digits, text.size()), '0') + text;
        if (Owner(kNumber, number).empty()) {
            const std::uint64_t before = AsBool(Member(rule, "random")) ? 0 : last - 1;
            handling_.Save(kState, "number", Fields(memory_).Number("last", static_cast<std::int64_t>(before)).Take());
            return number;
        }
    }
    throw Refusal(Reason::kOutOfRange, "the number rule has no numbers left");
}

Selection Register::Matching(const Json& condition, std::string_view orgGuid)
{
    Selection selection{kPersons};
    const auto put = [&](const char* field, Test test, StoreValue value, const char* element = "") {
        selection.conditions.push_back({field, test, std::move(value), element});
    };
    // A name may be asked for in part, a number by its beginning; an exact search has no pages.
    const bool exact = Member(condition, "pageSize") == nullptr;
    const struct {
        const char* member;
        const char* field;
        Test test;
        const char* element;
    } texts[] = {
        {"name", "personnelName", Test::kContains, ""},
        {"personNo", "personnelNo", exact ? Test::kEquals : Test::kStartsWith, ""},
        {"cardNo", "cards", Test::kHasElement, ""},
        {"phone", "basic.phone", Test::kEquals, ""},
        {"email", "basic.email", Test::kEquals, ""},
        {"certificateNo", "basic.certificateNo", Test::kEquals, ""},
        {"plateNo", "addition.plateNoList", Test::kHasElement, ""},
        {"faceGuid", "faceList", Test::kHasElement, "faceGuid"},
        {"fingerprintGuid", "fingerprintList", Test::kHasElement, "fingerprintGuid"},
        {"beginTime", "basic.modifyTime", Test::kAtLeast, ""},
        {"endTime", "basic.modifyTime", Test::kAtMost, ""},
    };
    for (const auto& row : texts) {
        const Json* value = Member(condition, row.member);
        if (!AsText(value).empty()) {
            put(row.field, row.test,
                row.test == Test::kHasElement ? "[" + PrintJson(*value) + "]" : std::string(AsText(value)),
                row.element);
        }
    }
    for (const auto& [member, field] :
         {std::pair("personType", "basic.personType"), std::pair("gender", "basic.gender")}) {
        if (const std::int64_t value = AsInt(Member(condition, member), -1); value >= 0) {
            put(field, Test::kEquals, value);
        }
    }
    const char* const states[] = {"cardState", "fingerState", "faceState", "irisState"};
    for (std::size_t i = 0; i < std::size(states); ++i) {
        const std::int64_t state = AsInt(Member(condition, states[i]), -1);
        if (state >= 0) {
            put(kCredentials[i].count, state == 0 ? Test::kEquals : Test::kAtLeast, std::int64_t{state == 0 ? 0 : 1});
        }
    }
    if (const Json* guids = Member(condition, "guidList"); guids != nullptr && !guids->Empty()) {
        put("personnelGuid", Test::kOneOf, PrintJson(*guids));
    }
    const std::string_view unit = orgGuid.empty() ? AsText(Member(condition, "orgGuid")) : orgGuid;
    if (!unit.empty()) {
        Json units(rapidjson::kArrayType);
        NeedOrganisation(unit);
        for (const std::string& each : AsBool(Member(condition, "includeSubOrg"), true)
                                           ? Subtree(unit)
                                           : std::vector<std::string>{std::string(unit)}) {
            units.PushBack(MakeText(each, memory_), memory_);
        }
        put("orgGuid", Test::kOneOf, PrintJson(units));
    }
    if (!exact) {
        const std::int64_t size = AsInt(Member(condition, "pageSize"));
        selection.limit = size > 0 ? size : 100;
        selection.offset = (std::max<std::int64_t>(AsInt(Member(condition, "pageNo"), 1), 1) - 1) * selection.limit;
    }
    return selection;
}

// ---- Organisations ----

Json Register::NeedOrganisation(std::string_view guid)
{
    return handling_.Need(*handling_.description.FindCollection(kOrganisations), guid);
}

Json Register::Shown(const Json& organisation)
{
    Json shown = Copy(organisation, memory_);
    const std::string guid(AsText(Member(organisation, "guid")));
    std::string path(AsText(Member(organisation, "name")));
    for (Json above = handling_.Load(kOrganisations, AsText(Member(organisation, "parOrgGuid"))); above.IsObject();
         above = handling_.Load(kOrganisations, AsText(Member(above, "parOrgGuid")))) {
        path = std::string(AsText(Member(above, "name"))) + "/" + path;
    }
    const auto count = [&](const char* collection, const char* field) {
        return handling_.store.Count({collection, {HoldsText(field, guid)}});
    };
    Fields(shown, memory_)
        .Text("fullPath", path)
        .Number("personNum", count(kPersons, "orgGuid"))
        .Number("childNum", count(kOrganisations, "parOrgGuid"));
    return shown;
}

std::vector<std::string> Register::Subtree(std::string_view guid)
{
    std::vector<std::string> guids;
    const auto below = [&](const std::string& parent) {
        handling_.store.Select({kOrganisations, {HoldsText("parOrgGuid", parent)}, "orderNo"},
                               [&](const std::string& key, const std::string&) { guids.push_back(key); });
    };
    if (guid.empty()) {
        below("");
    } else {
        guids.emplace_back(guid);
    }
    for (std::size_t i = 0; i < guids.size(); ++i) {
        below(std::string(guids[i]));
    }
    return guids;
}

} // namespace nexwire::simulator
