// Persons from files, devices and enrolment stations: work that takes time and tells how far it is.

#include <algorithm>

#include "src/Base64.h"
#include "src/Register.h"
#include "src/Rules.h"
#include "src/Services.h"

namespace nexwire::simulator {
namespace {

constexpr const char* kJobs = "_personJobs";
constexpr const char* kUploads = "persons"; ///< The plan of their files.
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
    Fields(*Member(info, section), handling.Memory()).Text(key, text);
}

// ---- Jobs ----

/// @param keep  the persons go into the register as the job comes to them; otherwise when they are asked for.
void Start(Handling& handling, Json items, bool keep, double timeScale)
{
    Allocator& memory = handling.Memory();
    const std::string guid = NewGuid();
    const Json nothing;
    const Json& body = handling.body == nullptr ? nothing : *handling.body;
    handling.Save(kJobs, guid,
                  Fields(memory)
                      .Number("startedMs", handling.nowMs)
                      .Value("itemMs", Json(kItemMs / timeScale))
                      .Flag("keep", keep)
                      .Flag("cover", AsInt(Member(body, "coverMode")) == 1)
                      .Text("orgGuid", AsText(Member(body, "orgGuid")))
                      .Number("done", 0)
                      .Number("addedNum", 0)
                      .Number("updatedNum", 0)
                      .Value("items", std::move(items))
                      .Value("failedList", Json(rapidjson::kArrayType))
                      .Take());
    Fields(handling.data, memory).Text("taskGuid", guid);
}

void Count(Handling& handling, Json& job, const char* member)
{
    Fields(job, handling.Memory()).Number(member, AsInt(Member(job, member)) + 1);
}

void Take(Handling& handling, Json& job, const Json& item)
{
    Allocator& memory = handling.Memory();
    Register persons(handling);
    Json info = Copy(item, memory);
    const std::string number(AsText(AtPath(info, "basic.personNo")));
    try {
        const std::string known = number.empty() ? std::string() : persons.Owner("personNo", number);
        if (known.empty()) {
            if (AsText(AtPath(info, "basic.orgGuid")).empty()) {
                SetText(handling, info, "basic", "orgGuid", AsText(Member(job, "orgGuid")));
            }
            persons.Add(info);
            Count(handling, job, "addedNum");
        } else if (AsBool(Member(job, "cover"))) {
            persons.Change(known, info);
            Count(handling, job, "updatedNum");
        }
    } catch (const Refusal& refusal) {
        Json failure = Fields(memory)
                           .Text("item", number)
                           .Text("name", AsText(AtPath(info, "basic.name")))
                           .Number("resultCode", static_cast<int>(refusal.Why()))
                           .Text("resultMsg", refusal.what())
                           .Take();
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

/// How many of its elements a job is through with.
std::int64_t Through(const Json& job, std::int64_t nowMs)
{
    const Json* stopped = Member(job, "stoppedMs");
    const std::int64_t until = stopped == nullptr ? nowMs : AsInt(stopped);
    const double elapsed = static_cast<double>(until - AsInt(Member(job, "startedMs")));
    return std::min(std::int64_t{Member(job, "items")->Size()},
                    static_cast<std::int64_t>(elapsed / Member(job, "itemMs")->GetDouble()));
}

/// Takes what the job has come to since somebody looked last.
void Advance(Handling& handling, const std::string& guid, Json& job)
{
    const Json& items = *Member(job, "items");
    const std::int64_t through = Through(job, handling.nowMs);
    for (std::int64_t done = AsInt(Member(job, "done")); done < through; ++done) {
        if (AsBool(Member(job, "keep"))) {
            Take(handling, job, items[static_cast<rapidjson::SizeType>(done)]);
        }
    }
    Fields(job, handling.Memory()).Number("done", through);
    handling.Save(kJobs, guid, job);
}

void Progress(Handling& handling)
{
    constexpr int kRunning = 1;
    constexpr int kDone = 2;
    constexpr int kStopped = 4;
    const std::string& guid = handling.identifiers[0];
    Json job = NeedJob(handling, guid);
    Advance(handling, guid, job);
    const auto total = std::int64_t{Member(job, "items")->Size()};
    const std::int64_t done = AsInt(Member(job, "done"));
    const auto failed = std::int64_t{Member(job, "failedList")->Size()};
    const bool stopped = done < total && Member(job, "stoppedMs") != nullptr;
    const bool finished = done == total || stopped;
    Fields answer(handling.data, handling.Memory());
    answer.Number("progress", total == 0 ? 100 : done * 100 / total)
        .Number("state", stopped    ? kStopped
                         : finished ? kDone
                                    : kRunning)
        .Flag("finished", finished)
        .Number("totalNum", total)
        .Number("successNum", done - failed)
        .Number("failedNum", failed)
        .Same("failedList", job);
    if (handling.endpoint.result != nullptr && handling.endpoint.result->Find("addedNum") != nullptr) {
        const std::int64_t begin = AsInt(Member(job, "startedMs"));
        const auto needed = static_cast<std::int64_t>(static_cast<double>(total) * Member(job, "itemMs")->GetDouble());
        answer.Same("addedNum", job)
            .Same("updatedNum", job)
            .Text("beginTime", IsoTime(begin))
            .Text("endTime", !finished ? std::string()
                             : stopped ? IsoTime(AsInt(Member(job, "stoppedMs")))
                                       : IsoTime(begin + needed));
    }
}

/// Whether the request stops a task instead of starting one.
bool Stopped(Handling& handling)
{
    if (!AsBool(Member(*handling.body, "stop"))) {
        return false;
    }
    const std::string guid(AsText(Member(*handling.body, "taskGuid")));
    Json job = NeedJob(handling, guid);
    Advance(handling, guid, job);
    if (Member(job, "stoppedMs") == nullptr) {
        Fields(job, handling.Memory()).Number("stoppedMs", handling.nowMs);
        handling.Save(kJobs, guid, job);
    }
    Fields(handling.data, handling.Memory()).Text("taskGuid", guid);
    return true;
}

// ---- Devices and stations ----

void FromDevice(Handling& handling, double timeScale)
{
    if (Stopped(handling)) {
        return;
    }
    const std::string& device = handling.identifiers[0];
    if (const Reason reason = OutOfReach(handling, device); reason != Reason::kNone) {
        throw Refusal(reason, "\"" + device + "\"");
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
    if (Stopped(handling)) {
        return;
    }
    Json items(rapidjson::kArrayType);
    handling.Each({"stationPersons"}, [&](const std::string&, Json& info) { items.PushBack(info, handling.Memory()); });
    Start(handling, std::move(items), false, timeScale);
}

void TakeFromStations(Handling& handling)
{
    const std::string& guid = handling.identifiers[0];
    Json job = NeedJob(handling, guid);
    Advance(handling, guid, job);
    Fields(job, handling.Memory()).Text("orgGuid", AsText(Member(*handling.body, "orgGuid")));
    const Json items = Copy(*Member(job, "items"), handling.Memory());
    for (std::int64_t i = 0; i < AsInt(Member(job, "done")); ++i) {
        Take(handling, job, items[static_cast<rapidjson::SizeType>(i)]);
    }
    handling.Save(kJobs, guid, job);
    Fields(handling.data, handling.Memory()).Same("addedNum", job);
}

// ---- Files ----

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

void Parse(Handling& handling, double timeScale)
{
    std::vector<std::string> head;
    Json items(rapidjson::kArrayType);
    for (const std::vector<std::string>& cells : LastTable(handling, kUploads)) {
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
                SectionList(info, "cardList", handling.Memory())
                    .PushBack(Fields(handling.Memory()).Text(column->first, cells[i]).Take(), handling.Memory());
            }
        }
        items.PushBack(info, handling.Memory());
    }
    Start(handling, std::move(items), true, timeScale);
}

// What is exported can be filled up and imported again; how far it is tells the task.
void Export(Handling& handling, double timeScale)
{
    std::string text;
    Json items(rapidjson::kArrayType);
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
        items.PushBack(Json(), handling.Memory());
    });
    Start(handling, std::move(items), false, timeScale);
    Fields(handling.data, handling.Memory()).Text("fileName", "persons.csv").Text("fileData", ToBase64(text));
}

} // namespace

void EachPersonJob(Handling& handling, const WorkSink& each)
{
    handling.Each({kJobs}, [&](const std::string& guid, Json& job) {
        const Json* stopped = Member(job, "stoppedMs");
        const std::int64_t total = Elements(Member(job, "items")).Size();
        const std::int64_t done = Through(job, handling.nowMs);
        each({guid, "persons", "",
              done == total        ? "done"
              : stopped != nullptr ? "stopped"
                                   : "running",
              done, total, total == 0 ? 100 : done * 100 / total});
    });
}

void AddPersonJobs(Services& services, double timeScale)
{
    services["persons.export"] = [timeScale](Handling& handling) { Export(handling, timeScale); };
    services["persons.parseFile"] = [timeScale](Handling& handling) { Parse(handling, timeScale); };
    services["persons.fromDevice"] = [timeScale](Handling& handling) { FromDevice(handling, timeScale); };
    services["persons.fromStations"] = [timeScale](Handling& handling) { FromStations(handling, timeScale); };
    services["persons.takeFromStations"] = TakeFromStations;
    services["persons.jobProgress"] = Progress;
}

} // namespace nexwire::simulator
