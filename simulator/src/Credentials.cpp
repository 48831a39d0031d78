// Cards, fingerprints, faces, irises and passwords of persons.

#include <algorithm>
#include <map>
#include <random>

#include "src/Base64.h"
#include "src/Register.h"
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

void Put(Handling& handling, Json& object, const char* key, std::string_view text)
{
    SetMember(object, key, MakeText(text, handling.Memory()), handling.Memory());
}

/// Who has the same template already, apart from the person; empty: nobody.
std::string SameTemplate(Handling& handling, const Kind& kind, std::string_view data, std::string_view apartFrom)
{
    const auto holders =
        Register(handling).Holders(std::string(kind.section) + "[" + kind.data, Test::kHasElement, data, apartFrom);
    return holders.empty() ? std::string() : holders.front();
}

/// @param keep  false: only looks whether they could be given.
void AddOf(Handling& handling, const Kind& kind, bool keep, const char* holder)
{
    Allocator& memory = handling.Memory();
    Register persons(handling);
    Json results(rapidjson::kArrayType);
    bool repeated = false;
    for (const Json& element : Elements(Member(*handling.body, kind.from))) {
        const std::string guid(AsText(Member(element, "personnelGuid")));
        const Json* credential = Member(element, kind.member);
        Json result(rapidjson::kObjectType);
        Put(handling, result, "personnelGuid", guid);
        try {
            const std::string_view data =
                credential == nullptr ? std::string_view() : AsText(Member(*credential, kind.data));
            if (data.empty()) {
                throw Refusal(Reason::kMissingField, kind.data);
            }
            const std::string other = &kind == &kFinger ? SameTemplate(handling, kind, data, guid) : std::string();
            if (!other.empty()) {
                repeated = true;
                Put(handling, result, "repeatPersonnelGuid", other);
                Put(handling, result, "repeatPersonName", AsText(Member(persons.Need(other), "personnelName")));
                throw Refusal(Reason::kDuplicate, kind.data);
            }
            if (keep) {
                Json person = persons.Need(guid);
                if (AsBool(Member(element, "replace"))) {
                    SetMember(person, kind.section, Json(rapidjson::kArrayType), memory);
                }
                Json added = Copy(*credential, memory);
                const std::string own = AsText(Member(added, kind.guid)).empty()
                                            ? NewGuid()
                                            : std::string(AsText(Member(added, kind.guid)));
                Put(handling, added, kind.guid, own);
                Json& list = SectionList(person, kind.section, memory);
                if (FindElement(list, kind.guid, own) != nullptr) {
                    throw Refusal(Reason::kDuplicate, "\"" + own + "\"");
                }
                list.PushBack(added, memory);
                persons.Change(guid, person);
                Put(handling, result, kind.guid, own);
            }
            SetMember(result, "resultCode", Json(0), memory);
        } catch (const Refusal& refusal) {
            SetMember(result, "resultCode", Json(static_cast<int>(refusal.Why())), memory);
            Put(handling, result, "resultMsg", refusal.what());
        }
        results.PushBack(result, memory);
    }
    Json data(rapidjson::kObjectType);
    if (&kind == &kFinger) {
        SetMember(data, "repeated", Json(repeated), memory);
    }
    SetMember(data, kind.results, std::move(results), memory);
    if (holder == nullptr) {
        handling.data = std::move(data);
    } else {
        SetMember(handling.data, holder, std::move(data), memory);
    }
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
        const auto holders = persons.Holders("faceList[faceGuid", Test::kHasElement, face, "");
        if (holders.empty()) {
            throw Refusal(Reason::kUnknownGuid, "\"" + face + "\"");
        }
        owner = holders.front();
    }
    Json person = persons.Need(owner);
    Json& list = SectionList(person, "faceList", memory);
    const Json* found = !face.empty() ? FindElement(list, "faceGuid", face) : list.Empty() ? nullptr : &list[0];
    if (found == nullptr) {
        throw Refusal(Reason::kUnknownGuid, "\"" + owner + "\" has no such face");
    }
    const bool model = byPath || AsBool(Member(*handling.body, "needModel"));
    Put(handling, handling.data, "personnelGuid", owner);
    for (const char* const key : {"faceGuid", "faceData", "faceDataLen", "modelData", "modelDataLen"}) {
        const Json* value = Member(*found, key);
        if (value != nullptr && (model || std::string_view(key).substr(0, 5) != "model")) {
            SetMember(handling.data, key, Copy(*value, memory), memory);
        }
    }
}

void ClearFaces(Handling& handling)
{
    Allocator& memory = handling.Memory();
    Register persons(handling);
    Json results(rapidjson::kArrayType);
    for (const Json& each : Elements(Member(*handling.body, "guidList"))) {
        const std::string guid(AsText(&each));
        Json result(rapidjson::kObjectType);
        Put(handling, result, "guid", guid);
        const bool known = handling.store.Has("persons", guid);
        if (known) {
            Json person = persons.Need(guid);
            SetMember(person, "faceList", Json(rapidjson::kArrayType), memory);
            persons.Save(guid, person);
        }
        SetMember(result, "resultCode", Json(known ? 0 : static_cast<int>(Reason::kUnknownGuid)), memory);
        Put(handling, result, "resultMsg", known ? std::string_view() : ReasonText(Reason::kUnknownGuid));
        results.PushBack(result, memory);
    }
    SetMember(handling.data, "personnelResultList", std::move(results), memory);
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
                Put(handling, face, "modelData", ToBase64(model));
                SetMember(face, "modelDataLen", Json(static_cast<int>(model.size())), memory);
                Put(handling, face, "modelVersion", version);
                changed = true;
            }
            Json result(rapidjson::kObjectType);
            Put(handling, result, "personnelGuid", guid);
            for (const char* const key : {"faceGuid", "modelData", "modelDataLen", "modelVersion"}) {
                SetMember(result, key, Copy(*Member(face, key), memory), memory);
            }
            results.PushBack(result, memory);
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
    handling.Each({"persons", {{"fingerPrints", Test::kAtLeast, StoreValue(std::int64_t{1})}}},
                  [&](const std::string& guid, Json& person) {
                      for (const Json& finger : SectionList(person, "fingerprintList", memory).GetArray()) {
                          if (in("personnelGuidList", guid) ||
                              in("guidList", AsText(Member(finger, "fingerprintGuid")))) {
                              Json entry(rapidjson::kObjectType);
                              Put(handling, entry, "personnelGuid", guid);
                              SetMember(entry, "fingerprint", Copy(finger, memory), memory);
                              found.PushBack(entry, memory);
                          }
                      }
                  });
    SetMember(handling.data, "fingerDataList", std::move(found), memory);
}

void FindIrises(Handling& handling)
{
    Json person = Register(handling).Need(handling.identifiers[0]);
    Put(handling, handling.data, "personnelGuid", handling.identifiers[0]);
    SetMember(handling.data, "irisList", Copy(SectionList(person, "irisList", handling.Memory()), handling.Memory()),
              handling.Memory());
}

// ---- Cards ----

std::string HolderOf(Handling& handling, std::string_view card)
{
    const auto holders = Register(handling).Holders("cards", Test::kHasElement, card, "");
    return holders.empty() ? std::string() : holders.front();
}

void CheckCards(Handling& handling)
{
    Allocator& memory = handling.Memory();
    Json results(rapidjson::kArrayType);
    for (const Json& each : Elements(Member(*handling.body, "cardNoList"))) {
        const std::string holder = HolderOf(handling, AsText(&each));
        Json result(rapidjson::kObjectType);
        Put(handling, result, "cardNo", AsText(&each));
        SetMember(result, "exist", Json(!holder.empty()), memory);
        Put(handling, result, "personnelGuid", holder);
        if (!holder.empty()) {
            Put(handling, result, "personName", AsText(Member(Register(handling).Need(holder), "personnelName")));
        }
        results.PushBack(result, memory);
    }
    SetMember(handling.data, "cardNoResList", std::move(results), memory);
}

void PersonByCard(Handling& handling)
{
    Allocator& memory = handling.Memory();
    const std::string number =
        handling.identifiers.empty() ? std::string(AsText(Member(*handling.body, "cardNo"))) : handling.identifiers[0];
    const std::string holder = HolderOf(handling, number);
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
    Put(handling, answer, "personnelGuid", holder);
    Put(handling, answer, "personNo", AsText(Member(person, "personnelNo")));
    Put(handling, answer, "personName", AsText(Member(person, "personnelName")));
    Put(handling, answer, "orgGuid", AsText(Member(person, "orgGuid")));
    SetMember(answer, "cardInfo", Copy(card, memory), memory);
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
            const Json person = Register(handling).Need(guid);
            Json entry(rapidjson::kObjectType);
            Put(handling, entry, "personnelGuid", guid);
            Put(handling, entry, "personNo", AsText(Member(person, "personnelNo")));
            Put(handling, entry, "personName", AsText(Member(person, "personnelName")));
            SetMember(entry, "groupNo", Json(group), memory);
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
    Json results(rapidjson::kArrayType);
    for (const Json& each : Elements(Member(*handling.body, "personPwdInfoList"))) {
        const std::string guid(AsText(Member(each, "personnelGuid")));
        Json result(rapidjson::kObjectType);
        Put(handling, result, "personnelGuid", guid);
        const bool known = handling.store.Has("persons", guid);
        SetMember(result, "resultCode", Json(known ? 0 : static_cast<int>(Reason::kUnknownGuid)), memory);
        if (known) {
            std::string digits;
            do {
                digits.clear();
                while (static_cast<std::int64_t>(digits.size()) <
                       std::max<std::int64_t>(AsInt(Member(each, "length"), 6), 4)) {
                    digits += static_cast<char>('0' + generator() % 10);
                }
            } while (TooSimple(digits) || !persons.Holders(kPassword, Test::kEquals, digits, guid).empty());
            Json person = persons.Need(guid);
            if (Member(person, "accesscontrol") == nullptr) {
                SetMember(person, "accesscontrol", Json(rapidjson::kObjectType), memory);
            }
            Put(handling, *Member(person, "accesscontrol"), "personPassword", digits);
            persons.Save(guid, person);
            Put(handling, result, "personPassword", digits);
        }
        results.PushBack(result, memory);
    }
    SetMember(handling.data, "personPwdResultList", std::move(results), memory);
}

void CheckPassword(Handling& handling)
{
    const std::string_view password = AsText(Member(*handling.body, "personPassword"));
    const auto holders =
        Register(handling).Holders(kPassword, Test::kEquals, password, AsText(Member(*handling.body, "personnelGuid")));
    SetMember(handling.data, "repeated", Json(!holders.empty()), handling.Memory());
    SetMember(handling.data, "tooSimple", Json(TooSimple(password)), handling.Memory());
    Put(handling, handling.data, "repeatPersonnelGuid", holders.empty() ? std::string() : holders.front());
}

// The devices that hold the persons have to be written anew.
void PasswordsChanged(Handling& handling)
{
    Allocator& memory = handling.Memory();
    handling.data = Copy(*handling.body, memory);
    Json devices(rapidjson::kArrayType);
    for (const Json& each : Elements(Member(*handling.body, "personnelGuidList"))) {
        handling.Each(
            {"holdings", {{"personnelGuid", Test::kEquals, StoreValue(std::string(AsText(&each)))}}},
            [&](const std::string&, Json& holding) {
                const std::string_view device = AsText(Member(holding, "deviceGuid"));
                const auto known = devices.GetArray();
                if (std::none_of(known.begin(), known.end(), [&](const Json& e) { return AsText(&e) == device; })) {
                    devices.PushBack(MakeText(device, memory), memory);
                }
            });
    }
    SetMember(handling.data, "deviceGuidList", std::move(devices), memory);
}

} // namespace

void AddCredentials(Services& services)
{
    services["faces.add"] = [](Handling& handling) { AddOf(handling, kFace, true, nullptr); };
    services["faces.find"] = FindFace;
    services["faces.clear"] = ClearFaces;
    services["faces.models"] = SyncModels;
    services["faces.replace"] = [](Handling& handling) { Replace(handling, kFace); };
    services["fingers.add"] = [](Handling& handling) { AddOf(handling, kFinger, true, "fingerDataResponse"); };
    services["fingers.check"] = [](Handling& handling) { AddOf(handling, kFinger, false, "fingerDataResponse"); };
    services["fingers.find"] = FindFingers;
    services["fingers.replace"] = [](Handling& handling) { Replace(handling, kFinger); };
    services["irises.add"] = [](Handling& handling) { AddOf(handling, kIris, true, "irisDataResponse"); };
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
