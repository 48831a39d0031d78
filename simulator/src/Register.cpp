#include "src/Register.h"

#include <algorithm>
#include <random>
#include <set>

#include "src/Base64.h"

namespace nexwire::simulator {
namespace {

constexpr const char* kPersons = "persons";
constexpr const char* kOrganisations = "organizations";
constexpr const char* kState = "_personnel";
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
    const char* count;
    std::int64_t most;
};
constexpr CredentialKind kCredentials[] = {{"cardList", nullptr, nullptr, "_cardNum", 5},
                                           {"fingerprintList", "fingerprintGuid", "fingerData", "fingerPrints", 10},
                                           {"faceList", "faceGuid", "faceData", "faces", 5},
                                           {"irisList", "irisGuid", "irisData", "irises", 2}};

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
        Json basic(rapidjson::kObjectType);
        const auto text = [&](const char* key, std::string_view value) {
            SetMember(basic, key, MakeText(value, memory_), memory_);
        };
        text("guid", guid);
        text("personNo", AsText(Member(person, "personnelNo")));
        text("name", AsText(Member(person, "personnelName")));
        text("orgGuid", kSeedUnits[number++ % std::size(kSeedUnits)]);
        SetMember(basic, "personType", Json(0), memory_);
        SetMember(person, "basic", std::move(basic), memory_);
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
                    SetMember(element, kind.guid, MakeText(NewGuid(), memory_), memory_);
                    SetMember(element, kind.data, MakeText(ToBase64(name), memory_), memory_);
                    SetMember(element, std::string(kind.data) + "Len", Json(static_cast<int>(name.size())), memory_);
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

std::vector<std::string> Register::Holders(const std::string& field, Test test, std::string_view value,
                                           std::string_view apartFrom)
{
    Selection same{kPersons};
    const std::string compared =
        test == Test::kHasElement ? "[" + PrintJson(MakeText(value, memory_)) + "]" : std::string(value);
    const std::size_t bracket = field.find('[');
    same.conditions.push_back({field.substr(0, bracket), test, StoreValue(compared),
                               bracket == std::string::npos ? "" : field.substr(bracket + 1)});
    std::vector<std::string> keys;
    handling_.store.Select(same, [&](const std::string& key, const std::string&) {
        if (key != apartFrom) {
            keys.push_back(key);
        }
    });
    return keys;
}

void Register::Check(const std::string& guid, const Json& sections)
{
    const auto refuseIfHeld = [&](const std::string& field, Test test, std::string_view value) {
        if (!value.empty() && !Holders(field, test, value, guid).empty()) {
            throw Refusal(Reason::kDuplicate, field + " \"" + std::string(value) + "\"");
        }
    };
    if (const Json* basic = Member(sections, "basic")) {
        if (AsText(Member(*basic, "name")).empty()) {
            throw Refusal(Reason::kMissingField, "basic.name");
        }
        if (const std::string_view unit = AsText(Member(*basic, "orgGuid")); !unit.empty()) {
            NeedOrganisation(unit);
        }
        refuseIfHeld("personnelNo", Test::kEquals, AsText(Member(*basic, "personNo")));
    }
    refuseIfHeld("accesscontrol.personPassword", Test::kEquals,
                 AsText(AtPath(sections, "accesscontrol.personPassword")));
    std::set<std::string_view> own;
    for (const Json& card : Elements(Member(sections, "cardList"))) {
        const std::string_view number = AsText(Member(card, "cardNo"));
        if (number.empty()) {
            throw Refusal(Reason::kMissingField, "cardNo");
        }
        if (!own.insert(number).second) {
            throw Refusal(Reason::kDuplicate, "cardNo \"" + std::string(number) + "\"");
        }
        refuseIfHeld("cards", Test::kHasElement, number);
    }
    for (const CredentialKind& kind : kCredentials) {
        if (Elements(Member(sections, kind.list)).Size() > kind.most) {
            throw Refusal(Reason::kOutOfRange,
                          "more than " + std::to_string(kind.most) + " in " + std::string(kind.list));
        }
    }
}

void Register::Save(const std::string& guid, Json& person)
{
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
        SetMember(*basic, "orgName", MakeText(AsText(unit.IsObject() ? Member(unit, "name") : nullptr), memory_),
                  memory_);
    }
    return info;
}

Json Register::Rule()
{
    Json rule = handling_.Load(kState, "rule");
    if (!rule.IsObject()) {
        rule.SetObject();
        SetMember(rule, "prefix", MakeText("", memory_), memory_);
        SetMember(rule, "length", Json(8), memory_);
        SetMember(rule, "random", Json(false), memory_);
        SetMember(rule, "ruleInited", Json(false), memory_);
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
    auto last = static_cast<std::uint64_t>(AsInt(kept.IsObject() ? Member(kept, "last") : nullptr));
    for (int tries = 0; tries < 10000; ++tries) {
        last = AsBool(Member(rule, "random")) ? generator() % bound : last + 1;
        const std::string text = std::to_string(last % bound);
        const std::string number = prefix + std::string(digits - std::min(digits, text.size()), '0') + text;
        if (Holders("personnelNo", Test::kEquals, number, "").empty()) {
            Json state(rapidjson::kObjectType);
            SetMember(state, "last", Json(AsBool(Member(rule, "random")) ? std::uint64_t{0} : last - 1), memory_);
            handling_.Save(kState, "number", state);
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
    SetMember(shown, "fullPath", MakeText(path, memory_), memory_);
    const auto count = [&](const char* collection, const char* field) {
        return Json(handling_.store.Count({collection, {{field, Test::kEquals, StoreValue(guid)}}}));
    };
    SetMember(shown, "personNum", count(kPersons, "orgGuid"), memory_);
    SetMember(shown, "childNum", count(kOrganisations, "parOrgGuid"), memory_);
    return shown;
}

std::vector<std::string> Register::Subtree(std::string_view guid)
{
    std::vector<std::string> guids;
    const auto below = [&](const std::string& parent) {
        handling_.store.Select({kOrganisations, {{"parOrgGuid", Test::kEquals, StoreValue(parent)}}, "orderNo"},
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
