// Persons from files, devices and enrolment stations: work that takes time and tells how far it is.

#include <algorithm>

#include "src/Base64.h"
#include "src/Register.h"
#include "src/Services.h"

namespace nexwire::simulator {
namespace {

constexpr const char* kJobs = "_personJobs";
constexpr double kItemMs = 200.0;

/// A column of a person's file and where it stands in the sections; cards stand in a list.
constexpr std::pair<const char*, const char*> kColumns[] = {
    {"personNo", "basic"}, {"name", "basic"},          {"orgGuid", "basic"}, {"phone", "basic"},
    {"email", "basic"},    {"certificateNo", "basic"}, {"cardNo", ""},
};

void SetText(Handling& handling, Json& info, const char* section, const char* key, std::string_view text)
{
    if (Member(info, section) == nullptr) {
        SetMember(info, section, Json(rapidjson::kObjectType), handling.Memory());
    }
    SetMember(*Member(info, section), key, MakeText(text, handling.Memory()), handling.Memory());
}

// ---- Jobs ----

/// @param keep  the persons go into the register as the job comes to them; otherwise when they are asked for.
void Start(Handling& handling, Json items, bool keep, double timeScale)
{
    Allocator& memory = handling.Memory();
    const std::string guid = NewGuid();
    Json job(rapidjson::kObjectType);
    SetMember(job, "startedMs", Json(handling.nowMs), memory);
    SetMember(job, "itemMs", Json(kItemMs / timeScale), memory);
    SetMember(job, "keep", Json(keep), memory);
    SetMember(job, "cover", Json(handling.body != nullptr && AsInt(Member(*handling.body, "coverMode")) == 1), memory);
    SetMember(job, "orgGuid",
              MakeText(AsText(handling.body == nullptr ? nullptr : Member(*handling.body, "orgGuid")), memory), memory);
    for (const char* const count : {"done", "addedNum", "updatedNum"}) {
        SetMember(job, count, Json(0), memory);
    }
    SetMember(job, "items", std::move(items), memory);
    SetMember(job, "failedList", Json(rapidjson::kArrayType), memory);
    handling.Save(kJobs, guid, job);
    SetMember(handling.data, "taskGuid", MakeText(guid, memory), memory);
}

void Count(Handling& handling, Json& job, const char* member)
{
    SetMember(job, member, Json(AsInt(Member(job, member)) + 1), handling.Memory());
}

void Take(Handling& handling, Json& job, const Json& item)
{
    Allocator& memory = handling.Memory();
    Register persons(handling);
    Json info = Copy(item, memory);
    const std::string number(AsText(AtPath(info, "basic.personNo")));
    try {
        const auto known =
            number.empty() ? std::vector<std::string>() : persons.Holders("personnelNo", Test::kEquals, number, "");
        if (known.empty()) {
            if (AsText(AtPath(info, "basic.orgGuid")).empty()) {
                SetText(handling, info, "basic", "orgGuid", AsText(Member(job, "orgGuid")));
            }
            persons.Add(info);
            Count(handling, job, "addedNum");
        } else if (AsBool(Member(job, "cover"))) {
            persons.Change(known.front(), info);
            Count(handling, job, "updatedNum");
        }
    } catch (const Refusal& refusal) {
        Json failure(rapidjson::kObjectType);
        SetMember(failure, "item", MakeText(number, memory), memory);
        SetMember(failure, "name", MakeText(AsText(AtPath(info, "basic.name")), memory), memory);
        SetMember(failure, "resultCode", Json(static_cast<int>(refusal.Why())), memory);
        SetMember(failure, "resultMsg", MakeText(refusal.what(), memory), memory);
        Member(job, "failedList")->PushBack(failure, memory);
    }
}

Json NeedJob(Handling& handling, const std::string& guid)
{
    Json job = handling.Load(kJobs, guid);
    if (!job.IsObject()) {
        throw Refusal(Reason::kUnknownGuid, "\"" + guid + "\"");
    }
    return job;
}

void Progress(Handling& handling)
{
    constexpr int kRunning = 1;
    constexpr int kDone = 2;
    Allocator& memory = handling.Memory();
    const std::string& guid = handling.identifiers[0];
    Json job = NeedJob(handling, guid);
    const Json& items = *Member(job, "items");
    const auto total = std::int64_t{items.Size()};
    const std::int64_t startedMs = AsInt(Member(job, "startedMs"));
    const double itemMs = Member(job, "itemMs")->GetDouble();
    const auto through =
        std::min(total, static_cast<std::int64_t>(static_cast<double>(handling.nowMs - startedMs) / itemMs));
    for (std::int64_t done = AsInt(Member(job, "done")); done < through; ++done) {
        if (AsBool(Member(job, "keep"))) {
            Take(handling, job, items[static_cast<rapidjson::SizeType>(done)]);
        }
    }
    SetMember(job, "done", Json(through), memory);
    handling.Save(kJobs, guid, job);

    const bool finished = through == total;
    const auto failed = std::int64_t{Member(job, "failedList")->Size()};
    const auto put = [&](const char* key, Json value) { SetMember(handling.data, key, std::move(value), memory); };
    put("progress", Json(total == 0 ? 100 : through * 100 / total));
    put("state", Json(finished ? kDone : kRunning));
    put("finished", Json(finished));
    put("totalNum", Json(total));
    put("successNum", Json(through - failed));
    put("failedNum", Json(failed));
    put("failedList", Copy(*Member(job, "failedList"), memory));
    if (handling.endpoint.result != nullptr && handling.endpoint.result->Find("addedNum") != nullptr) {
        put("addedNum", Copy(*Member(job, "addedNum"), memory));
        put("updatedNum", Copy(*Member(job, "updatedNum"), memory));
        put("beginTime", MakeText(IsoTime(startedMs), memory));
        const auto needed = static_cast<std::int64_t>(static_cast<double>(total) * itemMs);
        put("endTime", MakeText(finished ? IsoTime(startedMs + needed) : std::string(), memory));
    }
}

// ---- Devices and stations ----

void FromDevice(Handling& handling, double timeScale)
{
    const std::string& device = handling.identifiers[0];
    const Json found = handling.Load("devices", device);
    if (!found.IsObject()) {
        throw Refusal(Reason::kUnknownDevice, "\"" + device + "\"");
    }
    if (AsBool(Member(found, "_offline"))) {
        throw Refusal(Reason::kDeviceOffline, "\"" + device + "\"");
    }
    // The same persons as the device hands out page by page.
    const auto& batches = handling.description.Entries("batches");
    const auto pages = batches.find("7001");
    const auto wanted = Elements(Member(*handling.body, "personNoList"));
    Json items(rapidjson::kArrayType);
    for (const Json& person : Elements(pages == batches.end() ? nullptr : Member(*pages->second, "items"))) {
        const std::string_view number = AsText(Member(person, "employeeNo"));
        if (wanted.Empty() ||
            std::any_of(wanted.begin(), wanted.end(), [&](const Json& each) { return AsText(&each) == number; })) {
            Json info(rapidjson::kObjectType);
            SetText(handling, info, "basic", "personNo", number);
            SetText(handling, info, "basic", "name", AsText(Member(person, "name")));
            items.PushBack(info, handling.Memory());
        }
    }
    Start(handling, std::move(items), true, timeScale);
}

void FromStations(Handling& handling, double timeScale)
{
    Json items(rapidjson::kArrayType);
    handling.Each({"stationPersons"}, [&](const std::string&, Json& info) { items.PushBack(info, handling.Memory()); });
    Start(handling, std::move(items), false, timeScale);
}

void TakeFromStations(Handling& handling)
{
    const std::string& guid = handling.identifiers[0];
    Json job = NeedJob(handling, guid);
    SetMember(job, "orgGuid", MakeText(AsText(Member(*handling.body, "orgGuid")), handling.Memory()),
              handling.Memory());
    const Json items = Copy(*Member(job, "items"), handling.Memory());
    for (std::int64_t i = 0; i < AsInt(Member(job, "done")); ++i) {
        Take(handling, job, items[static_cast<rapidjson::SizeType>(i)]);
    }
    handling.Save(kJobs, guid, job);
    SetMember(handling.data, "addedNum", Copy(*Member(job, "addedNum"), handling.Memory()), handling.Memory());
}

// ---- Files ----

std::vector<std::string> Cells(std::string_view line)
{
    std::vector<std::string> cells(1);
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '"') {
            const bool doubled = quoted && i + 1 < line.size() && line[i + 1] == '"';
            if (doubled) {
                cells.back() += line[++i];
            } else {
                quoted = !quoted;
            }
        } else if (line[i] == ',' && !quoted) {
            cells.emplace_back();
        } else if (line[i] != '\r') {
            cells.back() += line[i];
        }
    }
    return cells;
}

std::string Cell(std::string_view text)
{
    if (text.find_first_of(",\"\n") == std::string_view::npos) {
        return std::string(text);
    }
    std::string cell = "\"";
    for (const char c : text) {
        cell += c == '"' ? std::string("\"\"") : std::string(1, c);
    }
    return cell + "\"";
}

/// The file that came last.
std::string LastUpload(Handling& handling)
{
    std::string last;
    handling.store.Select({"_files"}, [&](const std::string& key, const std::string&) {
        last = key.rfind("persons?", 0) == 0 ? key : last;
    });
    if (last.empty()) {
        throw Refusal(Reason::kUnknownGuid, "nobody has uploaded a file of persons");
    }
    const Json file = handling.Load("_files", last);
    std::string text;
    for (rapidjson::SizeType i = 0; i < Elements(Member(file, "slices")).Size(); ++i) {
        std::string bytes;
        FromBase64(AsText(Member(handling.Load("_slices", last + "#" + std::to_string(i)), "bytes")), bytes);
        text += bytes;
    }
    return text;
}

void Parse(Handling& handling, double timeScale)
{
    const std::string text = LastUpload(handling);
    std::vector<std::string> head;
    Json items(rapidjson::kArrayType);
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        const std::vector<std::string> cells = Cells(std::string_view(text).substr(begin, end - begin));
        begin = end + 1;
        if (head.empty()) {
            head = cells;
            continue;
        }
        if (cells.size() == 1 && cells.front().empty()) {
            continue;
        }
        Json info(rapidjson::kObjectType);
        SetText(handling, info, "basic", "name", "");
        for (std::size_t i = 0; i < std::min(head.size(), cells.size()); ++i) {
            const auto column = std::find_if(std::begin(kColumns), std::end(kColumns),
                                             [&](const auto& each) { return head[i] == each.first; });
            if (column == std::end(kColumns)) {
                throw Refusal(Reason::kUnknownField, "column \"" + head[i] + "\"");
            }
            if (*column->second != '\0') {
                SetText(handling, info, column->second, column->first, cells[i]);
            } else if (!cells[i].empty()) {
                Json card(rapidjson::kObjectType);
                SetMember(card, column->first, MakeText(cells[i], handling.Memory()), handling.Memory());
                SectionList(info, "cardList", handling.Memory()).PushBack(card, handling.Memory());
            }
        }
        items.PushBack(info, handling.Memory());
    }
    Start(handling, std::move(items), true, timeScale);
}

// What is exported can be filled up and imported again.
void Export(Handling& handling)
{
    std::string text;
    for (const auto& [column, section] : kColumns) {
        text += (text.empty() ? "" : ",") + std::string(column);
    }
    text += "\n";
    handling.Each({"persons"}, [&](const std::string&, Json& person) {
        std::string line;
        for (const auto& [column, section] : kColumns) {
            const auto cards = Elements(Member(person, "cards"));
            const std::string_view value = *section != '\0'
                                               ? AsText(AtPath(person, std::string(section) + "." + column))
                                           : cards.Empty() ? std::string_view()
                                                           : AsText(&cards[0]);
            line += (line.empty() && column == kColumns[0].first ? "" : ",") + Cell(value);
        }
        text += line + "\n";
    });
    SetMember(handling.data, "fileName", MakeText("persons.csv", handling.Memory()), handling.Memory());
    SetMember(handling.data, "fileData", MakeText(ToBase64(text), handling.Memory()), handling.Memory());
}

} // namespace

void AddPersonJobs(Services& services, double timeScale)
{
    services["persons.export"] = Export;
    services["persons.parseFile"] = [timeScale](Handling& handling) { Parse(handling, timeScale); };
    services["persons.fromDevice"] = [timeScale](Handling& handling) { FromDevice(handling, timeScale); };
    services["persons.fromStations"] = [timeScale](Handling& handling) { FromStations(handling, timeScale); };
    services["persons.takeFromStations"] = TakeFromStations;
    services["persons.jobProgress"] = Progress;
}

} // namespace nexwire::simulator
