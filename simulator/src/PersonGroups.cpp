// Person groups and their numbers on devices.

#include <algorithm>

#include "src/Engine.h"
#include "src/Services.h"

namespace nexwire::simulator {
namespace {

constexpr const char* kOnDevices = "deviceGroups";

Json GroupsOf(Handling& handling, const std::string& device)
{
    const Json kept = handling.Load(kOnDevices, device);
    return kept.IsObject() ? Copy(*Member(kept, "perGroupMemberInfoList"), handling.Memory())
                           : Json(rapidjson::kArrayType);
}

void RemoveGroups(Handling& handling)
{
    Allocator& memory = handling.Memory();
    Json results(rapidjson::kArrayType);
    for (const Json& each : Elements(Member(*handling.body, "perGroupGuidList"))) {
        const bool known = handling.store.Has("perGroups", AsText(&each));
        const Condition needed = {"authGroupMemberList", Test::kHasElement, StoreValue("[" + PrintJson(each) + "]"),
                                  "perGroupGuid"};
        const bool used = handling.store.Count({"authGroups", {needed}}) > 0;
        const Reason reason = !known ? Reason::kUnknownGuid : used ? Reason::kInUse : Reason::kNone;
        if (reason == Reason::kNone) {
            handling.store.Erase("perGroups", AsText(&each));
        }
        Json result(rapidjson::kObjectType);
        SetMember(result, "perGroupGuid", Copy(each, memory), memory);
        SetMember(result, "resultCode", Json(static_cast<int>(reason)), memory);
        SetMember(result, "resultMsg", MakeText(ReasonText(reason), memory), memory);
        results.PushBack(result, memory);
    }
    SetMember(handling.data, "perGroupDelRspList", std::move(results), memory);
}

// Groups that are new on the device get the least number that is free there.
void SetOnDevice(Handling& handling)
{
    Allocator& memory = handling.Memory();
    Json groups = Copy(*handling.body, memory);
    SetMember(groups, "deviceGuid", MakeText(handling.identifiers[0], memory), memory);
    const auto taken = [&](std::int64_t number) {
        const auto list = Elements(Member(groups, "perGroupMemberInfoList"));
        return std::any_of(list.begin(), list.end(),
                           [&](const Json& each) { return AsInt(Member(each, "groupNo")) == number; });
    };
    if (Json* list = Member(groups, "perGroupMemberInfoList")) {
        for (Json& group : list->GetArray()) {
            if (AsInt(Member(group, "groupNo")) == 0) {
                std::int64_t number = 1;
                while (taken(number)) {
                    ++number;
                }
                SetMember(group, "groupNo", Json(number), memory);
            }
        }
    }
    handling.Save(kOnDevices, handling.identifiers[0], groups);
    handling.data = std::move(groups);
}

void OnDevice(Handling& handling)
{
    Allocator& memory = handling.Memory();
    Json answer(rapidjson::kObjectType);
    SetMember(answer, "deviceGuid", MakeText(handling.identifiers[0], memory), memory);
    SetMember(answer, "perGroupMemberInfoList", GroupsOf(handling, handling.identifiers[0]), memory);
    SetMember(handling.data, "perGroupMemberInfoDataRsp", std::move(answer), memory);
}

void OfPersons(Handling& handling)
{
    Allocator& memory = handling.Memory();
    const Json groups = GroupsOf(handling, handling.identifiers[0]);
    handling.data = Copy(*handling.body, memory);
    for (Json& person : Member(handling.data, "userBelongGroupNumList")->GetArray()) {
        const std::string_view guid = AsText(Member(person, "personnelGuid"));
        Json numbers(rapidjson::kArrayType);
        for (const Json& group : groups.GetArray()) {
            const auto members = Elements(Member(group, "perGroupMemberList"));
            if (std::any_of(members.begin(), members.end(),
                            [&](const Json& each) { return AsText(Member(each, "personnelGuid")) == guid; })) {
                numbers.PushBack(Json(AsInt(Member(group, "groupNo"))), memory);
            }
        }
        SetMember(person, "groupNoList", std::move(numbers), memory);
        const Json known = handling.Load("persons", guid);
        if (known.IsObject()) {
            SetMember(person, "personNo", MakeText(AsText(Member(known, "personnelNo")), memory), memory);
        }
    }
}

} // namespace

void AddPersonGroups(Services& services)
{
    services["perGroups.remove"] = RemoveGroups;
    services["perGroups.setOnDevice"] = SetOnDevice;
    services["perGroups.onDevice"] = OnDevice;
    services["perGroups.ofPersons"] = OfPersons;
}

} // namespace nexwire::simulator
