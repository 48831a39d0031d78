// Person groups and their numbers on devices.

#include <algorithm>

#include "src/Engine.h"
#include "src/Fields.h"
#include "src/Services.h"

namespace nexwire::simulator {
namespace {

constexpr const char* kOnDevices = "deviceGroups";

Json GroupsOf(Handling& handling, const std::string& device)
{
    const Json kept = handling.Load(kOnDevices, device);
    const Json* list = Member(kept, "perGroupMemberInfoList");
    return list == nullptr ? Json(rapidjson::kArrayType) : Copy(*list, handling.Memory());
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
    Json answer = Fields(memory)
                      .Text("deviceGuid", handling.identifiers[0])
                      .Value("perGroupMemberInfoList", GroupsOf(handling, handling.identifiers[0]))
                      .Take();
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
        const Json known = handling.Load("persons", guid);
        Fields(person, memory)
            .Value("groupNoList", std::move(numbers))
            .Text("personNo", AsText(Member(known, "personnelNo")));
    }
}

} // namespace

void AddPersonGroups(Services& services)
{
    services["perGroups.setOnDevice"] = SetOnDevice;
    services["perGroups.onDevice"] = OnDevice;
    services["perGroups.ofPersons"] = OfPersons;
}

} // namespace nexwire::simulator
