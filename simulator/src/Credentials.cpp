// Cards, fingerprints, faces, irises and passwords of persons.

#include <algorithm>
#include <map>
#include <random>
#include <set>

#include "src/Base64.h"
#include "src/Register.h"
#include "src/Rules.h"
#include "src/Services.h"

namespace nexwire::simulator {
namespace {

/// Where a kind of credential stands in bodies, in a person's document and in results.
struct Kind {
    const char* from;    ///< List of the body; each element holds a person and a credential.
    const char* member;  ///< The credential in such an element.
    const char* section; ///< List of the person's document.
    const char* guid;    ///< Of a credential.
    const char* data;
    const char* results;
};
constexpr Kind kFace = {"faceDataList", "face", "faceList", "faceGuid", "faceData", "faceDataResultList"};
constexpr Kind kFinger = {"fingerprintDataList", "fingerprint", "fingerprintList",
                          "fingerprintGuid",     "fingerData",  "fingerDataResultList"};
constexpr Kind kIris = {"irisDataList", "iris", "irisList", "irisGuid", "irisData", "irisDataResultList"};
constexpr Kind kCard = {nullptr, nullptr, "cardList", "cardNo", nullptr, nullptr};

/// @param keep    false: only looks whether they could be given.
/// @param answer  where the results go.
void AddOf(Handling& handling, const Kind& kind, bool keep, Json& answer)
{
    Allocator& memory = handling.Memory();
    Register persons(handling);
    bool repeated = false;
    ForEach(handling, kind.from, answer, kind.results, [&](const Json& element, Json& result) {
        const std::string guid(AsText(Member(element, "personnelGuid")));
        const Json* credential = Member(element, kind.member);
        const std::string_view data = AsText(credential == nullptr ? nullptr : Member(*credential, kind.data));
        if (data.empty()) {
            throw Refusal(Reason::kMissingField, kind.data);
        }
        const std::string other = &kind == &kFinger ? persons.Owner(kind.section, data) : std::string();
        if (!other.empty() && other != guid) {
            repeated = true;
            Fields(result, memory)
                .Text("repeatPersonnelGuid", other)
                .Text("repeatPersonName", AsText(Member(persons.Need(other), "personnelName")));
            throw Refusal(Reason::kDuplicate, kind.data);
        }
        if (!keep) {
            return;
        }
        Json person = persons.Need(guid);
        if (AsBool(Member(element, "replace"))) {
            SetMember(person, kind.section, Json(rapidjson::kArrayType), memory);
        }
        Json added = Copy(*credential, memory);
        const std::string_view sent = AsText(Member(added, kind.guid));
        const std::string own = sent.empty() ? NewGuid() : std::string(sent);
        Fields(added, memory).Text(kind.guid, own);
        Json& list = SectionList(person, kind.section, memory);
        if (FindElement(list, kind.guid, own) != nullptr) {
            throw Refusal(Reason::kDuplicate, "\"" + own + "\"");
        }
        list.PushBack(added, memory);
        persons.Change(guid, person);
        Fields(result, memory).Text(kind.guid, own);
    });
    if (&kind == &kFinger) {
        Fields(answer, memory).Flag("repeated", repeated);
    }
}

/// The same, the results inside an object of the answer.
void AddInside(Handling& handling, const Kind& kind, bool keep, const char* holder)
{
    Json answer(rapidjson::kObjectType);
    AddOf(handling, kind, keep, answer);
    SetMember(handling.data, holder, std::move(answer), handling.Memory());
}

/// Replaces the credential of a person that the path names.
void Replace(Handling& handling, const Kind& kind)
{
    Register persons(handling);
    Json person = persons.Need(handling.identifiers[0]);
    Json* old = FindElement(SectionList(person, kind.section, handling.Memory()), kind.guid, handling.identifiers[1]);
    if (old == nullptr) {
        throw Refusal(Reason::kUnknownGuid, "\"" + handling.identifiers[1] + "\"");
    }
    for (const auto& member : handling.body->GetObject()) {
        if (AsText(&member.name) != kind.guid) {
            SetMember(*old, AsText(&member.name), Copy(member.value, handling.Memory()), handling.Memory());
        }
    }
    persons.Change(handling.identifiers[0], person);
}

// ---- Faces ----

/// A face by its own GUID, or a person's first.
void FindFace(Handling& handling)
{
    Allocator& memory = handling.Memory();
    Register persons(handling);
    const bool byPath = !handling.identifiers.empty();
    const std::string face = byPath ? handling.identifiers[0] : std::string(AsText(Member(*handling.body, "faceGuid")));
    std::string owner = byPath ? std::string() : std::string(AsText(Member(*handling.body, "personnelGuid")));
    if (owner.empty()) {
        owner = persons.Owner("faceList", face);
    }
    if (owner.empty()) {
        throw Refusal(Reason::kUnknownGuid, "\"" + face + "\"");
    }
    Json person = persons.Need(owner);
    Json& list = SectionList(person, "faceList", memory);
    const Json* found = !face.empty() ? FindElement(list, "faceGuid", face) : list.Empty() ? nullptr : &list[0];
    if (found == nullptr) {
        throw Refusal(Reason::kUnknownGuid, "\"" + owner + "\" has no such face");
    }
    const bool model = byPath || AsBool(Member(*handling.body, "needModel"));
    Fields answer(handling.data, memory);
    answer.Text("personnelGuid", owner).Same("faceGuid", *found).Same("faceData", *found).Same("faceDataLen", *found);
    if (model) {
        answer.Same("modelData", *found).Same("modelDataLen", *found);
    }
}

void ClearFaces(Handling& handling)
{
    Register persons(handling);
    ForEach(handling, "guidList", handling.data, "personnelResultList", [&](const Json& guid, Json&) {
        Json person = persons.Need(AsText(&guid));
        SetMember(person, "faceList", Json(rapidjson::kArrayType), handling.Memory());
        persons.Save(std::string(AsText(&guid)), person);
    });
}

void SyncModels(Handling& handling)
{
    Allocator& memory = handling.Memory();
    Register persons(handling);
    const std::string version(AsText(Member(*handling.body, "modelVersion")));
    const auto asked = Elements(Member(*handling.body, "guidList"));
    Json results(rapidjson::kArrayType);
    handling.Each({"persons", {{"faces", Test::kAtLeast, StoreValue(std::int64_t{1})}}}, [&](const std::string& guid,
                                                                                             Json& person) {
        bool changed = false;
        for (Json& face : SectionList(person, "faceList", memory).GetArray()) {
            const std::string_view own = AsText(Member(face, "faceGuid"));
            if (!asked.Empty() &&
                std::none_of(asked.begin(), asked.end(), [&](const Json& each) { return AsText(&each) == own; })) {
                continue;
            }
            if (AsBool(Member(*handling.body, "force")) || AsText(Member(face, "modelVersion")) != version ||
                AsText(Member(face, "modelData")).empty()) {
                const std::string model = "model " + version + " of " + std::string(own);
                Fields(face, memory)
                    .Text("modelData", ToBase64(model))
                    .Number("modelDataLen", static_cast<std::int64_t>(model.size()))
                    .Text("modelVersion", version);
                changed = true;
            }
            results.PushBack(Fields(memory)
                                 .Text("personnelGuid", guid)
                                 .Same("faceGuid", face)
                                 .Same("modelData", face)
                                 .Same("modelDataLen", face)
                                 .Same("modelVersion", face)
                                 .Take(),
                             memory);
        }
        if (changed) {
            persons.Save(guid, person);
        }
    });
    SetMember(handling.data, "syncFaceModelResultList", std::move(results), memory);
}

// ---- Fingerprints and irises ----

void FindFingers(Handling& handling)
{
    Allocator& memory = handling.Memory();
    const auto in = [&](const char* list, std::string_view guid) {
        const auto asked = Elements(Member(*handling.body, list));
        return std::any_of(asked.begin(), asked.end(), [&](const Json& each) { return AsText(&each) == guid; });
    };
    Json found(rapidjson::kArrayType);
    handling.Each(
        {"persons", {{"fingerPrints", Test::kAtLeast, StoreValue(std::int64_t{1})}}},
        [&](const std::string& guid, Json& person) {
            for (const Json& finger : SectionList(person, "fingerprintList", memory).GetArray()) {
                if (in("personnelGuidList", guid) || in("guidList", AsText(Member(finger, "fingerprintGuid")))) {
                    found.PushBack(
                        Fields(memory).Text("personnelGuid", guid).Value("fingerprint", Copy(finger, memory)).Take(),
                        memory);
                }
            }
        });
    SetMember(handling.data, "fingerDataList", std::move(found), memory);
}

void FindIrises(Handling& handling)
{
    Json person = Register(handling).Need(handling.identifiers[0]);
    SectionList(person, "irisList", handling.Memory());
    Fields(handling.data, handling.Memory()).Text("personnelGuid", handling.identifiers[0]).Same("irisList", person);
}

// ---- Cards ----

void TellPerson(Json& result, Allocator& memory, const Json& person)
{
    Fields(result, memory)
        .Text("personnelGuid", AsText(Member(person, "personnelGuid")))
        .Text("personNo", AsText(Member(person, "personnelNo")))
        .Text("personName", AsText(Member(person, "personnelName")));
}

void CheckCards(Handling& handling)
{
    Allocator& memory = handling.Memory();
    Json results(rapidjson::kArrayType);
    for (const Json& each : Elements(Member(*handling.body, "cardNoList"))) {
        const std::string holder = Register(handling).Owner("cardList", AsText(&each));
        results.PushBack(Fields(memory)
                             .Text("cardNo", AsText(&each))
                             .Flag("exist", !holder.empty())
                             .Text("personnelGuid", holder)
                             .Text("personName", AsText(Member(handling.Load("persons", holder), "personnelName")))
                             .Take(),
                         memory);
    }
    SetMember(handling.data, "cardNoResList", std::move(results), memory);
}

void PersonByCard(Handling& handling)
{
    Allocator& memory = handling.Memory();
    const std::string number =
        handling.identifiers.empty() ? std::string(AsText(Member(*handling.body, "cardNo"))) : handling.identifiers[0];
    const std::string holder = Register(handling).Owner("cardList", number);
    if (holder.empty()) {
        throw Refusal(Reason::kUnknownGuid, "nobody has the card \"" + number + "\"");
    }
    Json person = Register(handling).Need(holder);
    const Json& card = *FindElement(SectionList(person, "cardList", memory), "cardNo", number);
    const std::int64_t state = AsInt(Member(*handling.body, "cardState"), -1);
    if (state >= 0 && AsInt(Member(card, "cardState")) != state) {
        throw Refusal(Reason::kUnknownGuid, "the card \"" + number + "\" is in another state");
    }
    Json answer(rapidjson::kObjectType);
    TellPerson(answer, memory, person);
    Fields(answer, memory).Same("orgGuid", person).Value("cardInfo", Copy(card, memory));
    SetMember(handling.data, "cardInfowithPguid", std::move(answer), memory);
}

// ---- Passwords ----

constexpr const char* kPassword = "accesscontrol.personPassword";

void RepeatedPasswords(Handling& handling)
{
    Allocator& memory = handling.Memory();
    std::map<std::string, std::vector<std::string>> holders;
    handling.Each({"persons"}, [&](const std::string& guid, Json& person) {
        if (const std::string_view password = AsText(AtPath(person, kPassword)); !password.empty()) {
            holders[std::string(password)].push_back(guid);
        }
    });
    Json list(rapidjson::kArrayType);
    int group = 0;
    for (const auto& [password, guids] : holders) {
        group += guids.size() > 1 ? 1 : 0;
        for (const std::string& guid : guids.size() > 1 ? guids : std::vector<std::string>()) {
            Json entry(rapidjson::kObjectType);
            TellPerson(entry, memory, Register(handling).Need(guid));
            Fields(entry, memory).Number("groupNo", group);
            list.PushBack(entry, memory);
        }
    }
    SetMember(handling.data, "personPasswordRepeatList", std::move(list), memory);
}

bool TooSimple(std::string_view digits)
{
    bool same = true;
    bool rising = true;
    for (std::size_t i = 1; i < digits.size(); ++i) {
        same = same && digits[i] == digits[i - 1];
        rising = rising && digits[i] == digits[i - 1] + 1;
    }
    return same || rising;
}

void GeneratePasswords(Handling& handling)
{
    Allocator& memory = handling.Memory();
    Register persons(handling);
    thread_local std::mt19937 generator{std::random_device()()};
    ForEach(handling, "personPwdInfoList", handling.data, "personPwdResultList", [&](const Json& each, Json& result) {
        const std::string guid(AsText(Member(each, "personnelGuid")));
        Json person = persons.Need(guid);
        const auto length = static_cast<std::size_t>(std::max<std::int64_t>(AsInt(Member(each, "length"), 6), 4));
        std::string digits;
        do {
            digits.clear();
            while (digits.size() < length) {
                digits += static_cast<char>('0' + generator() % 10);
            }
        } while (TooSimple(digits) || !persons.Holders(kPassword, digits, guid).empty());
        SetAtPath(handling, person, kPassword, MakeText(digits, memory));
        persons.Save(guid, person);
        Fields(result, memory).Text("personPassword", digits);
    });
}

void CheckPassword(Handling& handling)
{
    const std::string_view password = AsText(Member(*handling.body, "personPassword"));
    const auto holders =
        Register(handling).Holders(kPassword, password, AsText(Member(*handling.body, "personnelGuid")));
    Fields(handling.data, handling.Memory())
        .Flag("repeated", !holders.empty())
        .Flag("tooSimple", TooSimple(password))
        .Text("repeatPersonnelGuid", holders.empty() ? std::string() : holders.front());
}

// The devices that hold the persons have to be written anew.
void PasswordsChanged(Handling& handling)
{
    Allocator& memory = handling.Memory();
    handling.data = Copy(*handling.body, memory);
    std::set<std::string> guids;
    for (const Json& each : Elements(Member(*handling.body, "personnelGuidList"))) {
        handling.Each({"holdings", {HoldsText("personnelGuid", AsText(&each))}},
                      [&](const std::string&, Json& holding) { guids.emplace(AsText(Member(holding, "deviceGuid"))); });
    }
    Json devices(rapidjson::kArrayType);
    for (const std::string& guid : guids) {
        devices.PushBack(MakeText(guid, memory), memory);
    }
    SetMember(handling.data, "deviceGuidList", std::move(devices), memory);
}

} // namespace

void AddCredentials(Services& services)
{
    services["faces.add"] = [](Handling& handling) { AddOf(handling, kFace, true, handling.data); };
    services["faces.find"] = FindFace;
    services["faces.clear"] = ClearFaces;
    services["faces.models"] = SyncModels;
    services["faces.replace"] = [](Handling& handling) { Replace(handling, kFace); };
    services["fingers.add"] = [](Handling& handling) { AddInside(handling, kFinger, true, "fingerDataResponse"); };
    services["fingers.check"] = [](Handling& handling) { AddInside(handling, kFinger, false, "fingerDataResponse"); };
    services["fingers.find"] = FindFingers;
    services["fingers.replace"] = [](Handling& handling) { Replace(handling, kFinger); };
    services["irises.add"] = [](Handling& handling) { AddInside(handling, kIris, true, "irisDataResponse"); };
    services["irises.find"] = FindIrises;
    services["cards.check"] = CheckCards;
    services["cards.find"] = PersonByCard;
    services["cards.replace"] = [](Handling& handling) { Replace(handling, kCard); };
    services["passwords.repeated"] = RepeatedPasswords;
    services["passwords.generate"] = GeneratePasswords;
    services["passwords.check"] = CheckPassword;
    services["passwords.changed"] = PasswordsChanged;
}

} // namespace nexwire::simulator
