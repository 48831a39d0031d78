#include <algorithm>
#include <charconv>
#include <map>
#include <set>

#include "src/Base64.h"
#include "src/Clock.h"
#include "src/Fields.h"
#include "src/Services.h"
#include "src/Shape.h"

namespace nexwire::simulator {
namespace {

constexpr const char* kBatches = "_batches";
constexpr std::int64_t kBatchLifeMs = 10 * 60 * 1000;
constexpr std::int64_t kUsualPage = 20; // Elements of a page when nobody says how many.

enum class Direction { kGet, kSet, kAction };

/// What a code means to a device.
struct Command {
    Direction direction = Direction::kAction;
    std::int64_t code = 0;
    const WireStructure* structure = nullptr; ///< Of the text that goes in or comes out; null takes and gives any.
    std::vector<const WireStructure*> inputs; ///< What it takes, where functions send it different structures.
    std::string name;                         ///< Under which what was set is kept.
    const Json* row = nullptr;                ///< What the resource files say about it, or null.
    const Json* pages = nullptr;              ///< What the batch channel hands out, or null.

    std::string Root() const { return structure == nullptr ? std::string() : structure->root; }
    /// What the resource files say under that name, or null.
    const Json* Row(std::string_view member) const { return row == nullptr ? nullptr : Member(*row, member); }
    /// The same of the batch channel.
    const Json* Pages(std::string_view member) const { return pages == nullptr ? nullptr : Member(*pages, member); }
};

using Commands = std::map<std::int64_t, Command>;

std::int64_t Number(std::string_view text)
{
    std::int64_t number = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
    return parsed.ec == std::errc() && parsed.ptr == text.data() + text.size() ? number : 0;
}

std::int64_t NeedCode(const std::string& text)
{
    const std::int64_t code = Number(text);
    if (code == 0) {
        throw std::runtime_error("\"" + text + "\" is not the code of a device command");
    }
    return code;
}

// The library's commands, and what the resource files add. What is read and what is written under one structure are
// the same thing on the device.
Commands ReadCommands(const Description& description)
{
    Commands commands;
    for (const WireFunction& function : description.Library().Functions()) {
        if (function.command == 0) {
            continue;
        }
        Command& command = commands[function.command];
        if (function.input != nullptr) {
            command.inputs.push_back(function.input);
        }
        if (command.structure == nullptr) {
            command.structure = function.input != nullptr ? function.input : function.output;
        }
        command.direction = function.input != nullptr    ? Direction::kSet
                            : function.output != nullptr ? Direction::kGet
                                                         : Direction::kAction;
        command.name = command.Root();
    }
    for (const auto& [text, row] : description.Entries("commands")) {
        const std::int64_t code = NeedCode(text);
        const auto known = commands.find(code);
        Command& command = commands[code];
        command.row = row;
        command.direction = command.Row("text") != nullptr ? Direction::kGet : command.direction;
        if (known == commands.end()) {
            // A pair that the library hands on untyped.
            const std::int64_t set = AsInt(Member(*row, "set"));
            if (set == 0) {
                throw std::runtime_error("no function sends the device command " + text);
            }
            command.direction = Direction::kGet;
            command.name = text;
            commands[set].direction = Direction::kSet;
            commands[set].name = text;
        }
    }
    for (const auto& [text, row] : description.Entries("batches")) {
        Command& command = commands[NeedCode(text)];
        command.pages = row;
        if (command.Pages("work") != nullptr || command.Pages("progress") != nullptr) {
            continue;
        }
        command.direction = Direction::kGet;
        if (const Json* structure = Member(*row, "structure")) {
            command.structure = description.Library().Find(AsText(structure));
        }
        command.name = command.structure == nullptr ? text : command.Root();
    }
    for (auto& [code, command] : commands) {
        command.code = code;
    }
    return commands;
}

std::string ParameterKey(const Handling& handling, std::string_view name, std::string_view condition)
{
    return std::string(handling.Identifier("1")) + "/" + std::string(name) + "/" + std::string(condition);
}

std::string StatusText()
{
    return R"({"returnRst":{"statusCode":1,"statusString":"OK","subStatusCode":"ok","errorCode":0,"errorMsg":""}})";
}

// What a device holds by now: persons, and credentials of each kind.
Json Held(Handling& handling)
{
    static constexpr std::pair<const char*, const char*> kKinds[] = {
        {"cards", "cardUsers"}, {"faces", "faceUsers"}, {"fingerPrints", "fingerPrintUsers"}, {"irises", "irisUsers"}};
    std::map<std::string, std::int64_t> counts;
    std::set<std::string, std::less<>> persons;
    Json numbers(rapidjson::kArrayType);
    handling.Each({"holdings", {{"deviceGuid", Test::kEquals, StoreValue(std::string(handling.Identifier("1")))}}},
                  [&](const std::string&, Json& holding) {
                      const std::string_view guid = AsText(Member(holding, "personnelGuid"));
                      if (!persons.emplace(guid).second) {
                          return;
                      }
                      const Json person = handling.Load("persons", guid);
                      for (const auto& [kind, users] : kKinds) {
                          const Json* has = Member(person, kind);
                          const std::int64_t number = has == nullptr   ? 0
                                                      : has->IsArray() ? std::int64_t{has->Size()}
                                                                       : AsInt(has);
                          counts[kind] += number;
                          counts[users] += number > 0 ? 1 : 0;
                          if (number > 0 && std::string_view(kind) == "faces") {
                              numbers.PushBack(MakeText(AsText(Member(holding, "personnelNo")), handling.Memory()),
                                               handling.Memory());
                          }
                      }
                  });
    Json held(rapidjson::kObjectType);
    SetMember(held, "users", Json(std::int64_t(persons.size())), handling.Memory());
    for (const auto& [kind, users] : kKinds) {
        SetMember(held, kind, Json(counts[kind]), handling.Memory());
        SetMember(held, users, Json(counts[users]), handling.Memory());
    }
    SetMember(held, "faceNumbers", std::move(numbers), handling.Memory());
    return held;
}

Json Belonging(Handling& handling, const char* collection)
{
    Json list(rapidjson::kArrayType);
    handling.Each({collection, {{"deviceGuid", Test::kEquals, StoreValue(std::string(handling.Identifier("1")))}}},
                  [&](const std::string&, Json& document) { list.PushBack(document, handling.Memory()); });
    return list;
}

/// Whether a document fits a condition: its times bound the member `time`, its other texts have to be equal; empty ones
/// and "all" do not narrow.
bool Fits(const Json& document, const std::string& condition, std::string_view time)
{
    Document parsed;
    std::string error;
    if (!ParseJson(parsed, condition, error) || !parsed.IsObject() || parsed.MemberCount() != 1 ||
        !parsed.MemberBegin()->value.IsObject()) {
        return true;
    }
    const auto at = FromIsoTime(AsText(Member(document, time)));
    for (const auto& member : parsed.MemberBegin()->value.GetObject()) {
        const std::string_view name = AsText(&member.name);
        const std::string_view wanted = AsText(&member.value);
        const Json* own = Member(document, name);
        const auto bound = FromIsoTime(wanted);
        const bool outside = at && bound && (name == "beginTime" ? *at < *bound : name == "endTime" && *at > *bound);
        const bool other = own != nullptr && !wanted.empty() && wanted != "all" && AsText(own) != wanted;
        if (outside || other) {
            return false;
        }
    }
    return true;
}

struct Output {
    std::string out;
    std::string status;
};

/// The devices' side of a command.
class Device {
public:
    Device(Handling& handling, const Commands& commands, const DeviceServices& services)
        : handling_(handling), commands_(commands), services_(services)
    {
        const Json& device = *handling_.Named("device");
        const bool away = AsBool(Member(device, "_offline"));
        if (away || AsBool(Member(device, "_refusing"))) {
            throw Refusal(away ? Reason::kDeviceOffline : Reason::kDeviceRefused,
                          "\"" + std::string(handling_.Identifier("1")) + "\"");
        }
    }

    const Command& Find(std::int64_t code) const
    {
        const auto found = commands_.find(code);
        if (found == commands_.end()) {
            throw Refusal(Reason::kUnknownCommand, std::to_string(code));
        }
        return found->second;
    }

    Output Run(const Command& command, const std::string& condition, const std::string& input)
    {
        CheckNumber(command, condition);
        const Json* service = command.Row("service");
        if (command.direction == Direction::kGet) {
            return {service == nullptr ? Read(command, condition) : Serve(*service, command, condition, input), {}};
        }
        CheckInput(command, input);
        if (service != nullptr) {
            Serve(*service, command, condition, input);
            return {{}, StatusText()};
        }
        if (command.direction == Direction::kSet) {
            handling_.store.Write(kParameters, ParameterKey(handling_, command.name, condition),
                                  Record(command, condition, input));
        } else if (const Json* cleared = command.Row("clears")) {
            handling_.store.Erase(kParameters, ParameterKey(handling_, Find(AsInt(cleared)).name, condition));
        }
        return {{}, StatusText()};
    }

    /// Everything kept for a command: condition and text; what a fresh device has when nothing was set.
    std::vector<std::pair<std::string, std::string>> ReadAll(const Command& command, const std::string& condition)
    {
        std::vector<std::pair<std::string, std::string>> records;
        if (command.pages != nullptr) {
            return Pages(command, condition);
        }
        handling_.Each({kParameters,
                        {{"device", Test::kEquals, StoreValue(std::string(handling_.Identifier("1")))},
                         {"name", Test::kEquals, StoreValue(command.name)}}},
                       [&](const std::string&, Json& record) {
                           records.emplace_back(AsText(Member(record, "condition")), AsText(Member(record, "text")));
                       });
        if (records.empty()) {
            records.emplace_back(condition, Read(command, condition));
        }
        return records;
    }

private:
    std::string Serve(const Json& name, const Command& command, const std::string& condition, const std::string& input)
    {
        const auto found = services_.find(AsText(&name));
        if (found == services_.end()) {
            throw std::runtime_error("no device service \"" + std::string(AsText(&name)) + "\"");
        }
        return found->second(handling_, command.code, condition, input);
    }

    std::vector<std::pair<std::string, std::string>> Pages(const Command& command, const std::string& condition)
    {
        std::vector<std::pair<std::string, std::string>> records;
        const auto put = [&](Json element) {
            Json text(rapidjson::kObjectType);
            const std::string root = command.Root();
            const bool wrapped = root.empty() || Member(element, root) != nullptr;
            SetMember(text, root, std::move(element), handling_.Memory());
            records.emplace_back(std::to_string(records.size() + 1), PrintJson(wrapped ? *Member(text, root) : text));
        };
        Describe();
        if (const Json* of = command.Pages("of")) {
            const Json documents = Belonging(handling_, std::string(AsText(of)).c_str());
            for (const Json& document : documents.GetArray()) {
                if (Fits(document, condition, AsText(command.Pages("time")))) {
                    Json shown = Copy(document, handling_.Memory());
                    DropInternals(shown);
                    put(std::move(shown));
                }
            }
        }
        if (const Json* items = Member(*command.pages, "items")) {
            const Json filled = handling_.Fill(*items);
            for (const Json& item : Elements(&filled)) {
                put(Copy(item, handling_.Memory()));
            }
        }
        for (std::int64_t i = 0; i < AsInt(Member(*command.pages, "sample")) && command.structure != nullptr; ++i) {
            put(Sample(handling_, *command.structure));
        }
        return records;
    }

    // A condition that counts something on the device ends where the device does.
    void CheckNumber(const Command& command, const std::string& condition)
    {
        const Json* limit = nullptr;
        for (const auto& [code, each] : commands_) {
            if (each.name == command.name && each.row != nullptr && limit == nullptr) {
                limit = Member(*each.row, "upTo");
            }
        }
        if (limit == nullptr) {
            return;
        }
        const std::int64_t number = Number(condition);
        if (number < 1 || number > AsInt(Member(*handling_.Named("device"), AsText(limit)))) {
            throw Refusal(Reason::kDeviceRefused, "there is no number \"" + condition + "\"");
        }
    }

    void CheckInput(const Command& command, const std::string& input)
    {
        if (input.empty() && command.structure == nullptr) {
            return;
        }
        Document parsed;
        std::string error;
        if (!ParseJson(parsed, input, error)) {
            throw Refusal(Reason::kDeviceRefused, "inBuffer is not JSON: " + error);
        }
        const bool object = parsed.IsObject() && parsed.MemberCount() == 1 && parsed.MemberBegin()->value.IsObject();
        const WireStructure* structure = command.structure;
        for (const WireStructure* each : command.inputs) {
            structure = object && Member(parsed, each->root) != nullptr ? each : structure;
        }
        const std::string root = structure == nullptr ? std::string() : structure->root;
        if (!object || (!root.empty() && Member(parsed, root) == nullptr)) {
            throw Refusal(Reason::kDeviceRefused, "inBuffer does not hold the object \"" + root + "\"");
        }
        if (structure != nullptr) {
            try {
                CheckShape(*structure, parsed.MemberBegin()->value, root, Strictness::kPart);
            } catch (const Refusal& refusal) {
                throw Refusal(Reason::kDeviceRefused, refusal.what());
            }
        }
    }

    std::string Record(const Command& command, const std::string& condition, const std::string& input)
    {
        Allocator& memory = handling_.Memory();
        Json record(rapidjson::kObjectType);
        SetMember(record, "device", MakeText(handling_.Identifier("1"), memory), memory);
        SetMember(record, "name", MakeText(command.name, memory), memory);
        SetMember(record, "condition", MakeText(condition, memory), memory);
        SetMember(record, "text", MakeText(input, memory), memory);
        return PrintJson(record);
    }

    // Names that templates of a fresh device know.
    void Describe()
    {
        if (!described_) {
            described_ = true;
            handling_.Define("held", Held(handling_));
            handling_.Define("doors", Belonging(handling_, "controlPoints"));
            handling_.Define("readers", Belonging(handling_, "cardReaders"));
        }
    }

    // What was set for this condition, else for the device as a whole, else what a fresh device has.
    std::string Read(const Command& command, const std::string& condition)
    {
        for (const std::string& key : {condition, std::string()}) {
            const Json record = handling_.Load(kParameters, ParameterKey(handling_, command.name, key));
            if (record.IsObject()) {
                return std::string(AsText(Member(record, "text")));
            }
        }
        if (const Json* text = command.Row("text")) {
            return std::string(AsText(text));
        }
        if (command.structure == nullptr) {
            return "{}";
        }
        handling_.Define("number", Json(Number(condition)));
        Json fresh = Fresh(handling_, *command.structure);
        if (const Json* changes = command.Row("default")) {
            Describe();
            for (const auto& member : changes->GetObject()) {
                SetAtPath(handling_, fresh, AsText(&member.name), handling_.Fill(member.value));
            }
        }
        Json document(rapidjson::kObjectType);
        SetMember(document, command.Root(), std::move(fresh), handling_.Memory());
        return PrintJson(document);
    }

    Handling& handling_;
    const Commands& commands_;
    const DeviceServices& services_;
    bool described_ = false;
};

std::string BodyText(const Handling& handling, const char* member)
{
    return std::string(AsText(Member(*handling.body, member)));
}

void Single(Handling& handling, const Commands& commands, const DeviceServices& deviceServices)
{
    Device device(handling, commands, deviceServices);
    const Command& command = device.Find(AsInt(Member(*handling.body, "command")));
    const Output output = device.Run(command, BodyText(handling, "condBuffer"), BodyText(handling, "inBuffer"));
    Allocator& memory = handling.Memory();
    Json answer(rapidjson::kObjectType);
    SetMember(answer, "outBuffer", MakeText(output.out, memory), memory);
    SetMember(answer, "statusBuffer", MakeText(output.status, memory), memory);
    SetMember(handling.data, "dagPassThroughRsp", std::move(answer), memory);
}

// Texts of a batch travel as they are or, marked "base64", encoded.
std::string Decoded(std::string text, std::string_view encoding)
{
    if (encoding != "base64") {
        return text;
    }
    std::string bytes;
    if (!text.empty() && !FromBase64(text, bytes)) {
        throw Refusal(Reason::kWrongType, "a text is not Base64");
    }
    return bytes;
}

Json BatchResult(Handling& handling, std::string_view id, Reason reason, const Output& output)
{
    Allocator& memory = handling.Memory();
    Json result(rapidjson::kObjectType);
    SetMember(result, "id", MakeText(id, memory), memory);
    SetMember(result, "code", Json(static_cast<int>(reason)), memory);
    SetMember(result, "outBuffer", MakeText(output.out, memory), memory);
    SetMember(result, "outBufferEncoding", MakeText("", memory), memory);
    SetMember(result, "statusBuffer", MakeText(output.status, memory), memory);
    SetMember(result, "statusBufferEncoding", MakeText("", memory), memory);
    return result;
}

// One item of a batch. For a get its input is its condition; a set without a condition of its own is kept under the
// item's id, so that the items of a batch do not overwrite each other.
Json RunItem(Handling& handling, Device& device, const Command& command, const std::string& condition, const Json& item)
{
    const std::string id(AsText(Member(item, "id")));
    try {
        const std::string input =
            Decoded(std::string(AsText(Member(item, "inBuffer"))), AsText(Member(item, "inBufferEncoding")));
        const bool isGet = command.direction == Direction::kGet;
        const std::string own = isGet && !input.empty() ? input : condition.empty() && !isGet ? id : condition;
        return BatchResult(handling, id, Reason::kNone, device.Run(command, own, isGet ? std::string() : input));
    } catch (const Refusal& refusal) {
        return BatchResult(handling, id, refusal.Why(), {{}, refusal.what()});
    }
}

void ForgetOldBatches(Handling& handling)
{
    handling.store.Select({kBatches, {{"touchedMs", Test::kAtMost, StoreValue(handling.nowMs - kBatchLifeMs)}}},
                          [&](const std::string& key, const std::string&) { handling.store.Erase(kBatches, key); });
}

// How far the work of a batch has come. What the device refused fails half way.
Json Progress(Handling& handling, const Command& asked, const Json& batch, bool& finished)
{
    Allocator& memory = handling.Memory();
    const double passed = static_cast<double>(handling.nowMs - AsInt(Member(batch, "startedMs")));
    const double whole = AsDouble(Member(batch, "workMs"));
    const std::int64_t code = AsInt(Member(batch, "code"));
    const bool failed = code != 0 && passed * 2.0 >= whole;
    finished = failed || passed >= whole;
    Json value(rapidjson::kObjectType);
    Fields(value, memory)
        .Number("progress", failed ? 50 : PercentOf(passed, whole))
        .Text("state", failed     ? "failed"
                       : finished ? "done"
                                  : "running")
        .Number("errorCode", failed ? code : 0)
        .Text("detail", failed ? ReasonText(static_cast<Reason>(code)) : "");
    Json document(rapidjson::kObjectType);
    SetMember(document, asked.Root(), Json(rapidjson::kObjectType), memory);
    SetMember(*Member(document, asked.Root()), asked.structure->members.front().key, std::move(value), memory);
    return BatchResult(handling, "", Reason::kNone, {PrintJson(document), {}});
}

// Pages of a batch transfer: whoever sends items, or asks for all there is, gets results `maxResultNum` at a time and
// comes back with the transfer's GUID until it is finished.
void Batch(Handling& handling, const Commands& commands, const DeviceServices& deviceServices, double timeScale)
{
    Allocator& memory = handling.Memory();
    Device device(handling, commands, deviceServices);
    std::string guid = BodyText(handling, "guid");
    const std::string owner = std::string(handling.Identifier("1"));
    Json batch;
    const bool fresh = guid.empty();
    if (fresh) {
        ForgetOldBatches(handling);
        guid = NewGuid();
        batch.SetObject();
        SetMember(batch, "device", MakeText(owner, memory), memory);
        SetMember(batch, "command", Json(AsInt(Member(*handling.body, "command"))), memory);
        SetMember(batch, "condition",
                  MakeText(Decoded(BodyText(handling, "condBuffer"), BodyText(handling, "condBufferEncoding")), memory),
                  memory);
        SetMember(batch, "results", Json(rapidjson::kArrayType), memory);
        SetMember(batch, "pageBegin", Json(0), memory);
        SetMember(batch, "next", Json(0), memory);
        SetMember(batch, "open", Json(true), memory);
        const Command& ordered = device.Find(AsInt(Member(*handling.body, "command")));
        SetMember(batch, "later", Json(AsInt(ordered.Pages("later"))), memory);
        if (ordered.Pages("progress") != nullptr) {
            throw Refusal(Reason::kUnknownBatch, "\"\"");
        }
    } else {
        batch = handling.Load(kBatches, guid);
        if (!batch.IsObject() || AsText(Member(batch, "device")) != owner) {
            throw Refusal(Reason::kUnknownBatch, "\"" + guid + "\"");
        }
    }
    Json answer(rapidjson::kObjectType);
    SetMember(answer, "guid", MakeText(guid, memory), memory);
    if (AsBool(Member(*handling.body, "cancel"))) {
        handling.store.Erase(kBatches, guid);
        SetMember(answer, "isFinish", Json(true), memory);
        SetMember(answer, "batchReturnDataList", Json(rapidjson::kArrayType), memory);
        SetMember(handling.data, "batchPassThroughRsp", std::move(answer), memory);
        return;
    }
    const Command& command = device.Find(AsInt(Member(batch, "command")));
    const Json* work = command.Pages("work");
    if (const Command& asked = device.Find(AsInt(Member(*handling.body, "command")));
        asked.Pages("progress") != nullptr && work != nullptr) {
        bool finished = false;
        Json page(rapidjson::kArrayType);
        page.PushBack(Progress(handling, asked, batch, finished), memory);
        SetMember(answer, "isFinish", Json(finished), memory);
        SetMember(answer, "batchReturnDataList", std::move(page), memory);
        SetMember(handling.data, "batchPassThroughRsp", std::move(answer), memory);
        return;
    }
    const std::string condition(AsText(Member(batch, "condition")));
    Json& results = *Member(batch, "results");
    const bool again = AsBool(Member(*handling.body, "getPreviousData"));
    if (!again) {
        const Json* items = Member(*handling.body, "batchSendDataList");
        const bool sent = items != nullptr && !items->Empty();
        if (sent && (command.pages == nullptr || work != nullptr)) {
            if (!AsBool(Member(batch, "open"))) {
                throw Refusal(Reason::kUnknownBatch, "the last item of \"" + guid + "\" has been sent");
            }
            for (const Json& item : items->GetArray()) {
                results.PushBack(RunItem(handling, device, command, condition, item), memory);
            }
        } else if (fresh && command.direction == Direction::kGet) {
            for (const auto& [id, text] : device.ReadAll(command, condition)) {
                results.PushBack(BatchResult(handling, id, Reason::kNone, {text, {}}), memory);
            }
        }
        if (AsBool(Member(batch, "open"))) {
            SetMember(batch, "open", Json(work != nullptr || AsBool(Member(*handling.body, "hasNext"))), memory);
        }
    }
    if (work != nullptr) {
        const std::int64_t last = results.Empty() ? 0 : AsInt(Member(results[results.Size() - 1], "code"));
        SetMember(batch, "code", Json(last), memory);
        if (fresh) {
            SetMember(batch, "startedMs", Json(handling.nowMs), memory);
            SetMember(batch, "workMs", Json(std::max(AsDouble(work) / timeScale, 1.0)), memory);
        }
    }
    const std::int64_t total = results.Size();
    std::int64_t most = AsInt(Member(*handling.body, "maxResultNum"));
    most = most == 0 && command.pages != nullptr ? kUsualPage : most;
    const std::int64_t later = AsInt(Member(batch, "later"));
    SetMember(batch, "later", Json(std::max<std::int64_t>(later - 1, 0)), memory);
    const std::int64_t begin = AsInt(Member(batch, again ? "pageBegin" : "next"));
    const std::int64_t end = again       ? AsInt(Member(batch, "next"))
                             : later > 0 ? begin
                             : most > 0  ? std::min(total, begin + std::min(most, total))
                                         : total;
    Json page(rapidjson::kArrayType);
    for (std::int64_t i = begin; i < end; ++i) {
        page.PushBack(Copy(results[static_cast<rapidjson::SizeType>(i)], memory), memory);
    }
    SetMember(batch, "pageBegin", Json(begin), memory);
    SetMember(batch, "next", Json(end), memory);
    SetMember(batch, "touchedMs", Json(handling.nowMs), memory);
    handling.Save(kBatches, guid, batch);
    SetMember(answer, "isFinish", Json(end == total && later == 0 && !AsBool(Member(batch, "open"))), memory);
    SetMember(answer, "batchReturnDataList", std::move(page), memory);
    SetMember(handling.data, "batchPassThroughRsp", std::move(answer), memory);
}

} // namespace

void AddDeviceChannel(Services& services, const Description& description, const DeviceServices& deviceServices,
                      double timeScale)
{
    const auto commands = std::make_shared<const Commands>(ReadCommands(description));
    services["deviceCommand"] = [commands, deviceServices](Handling& handling) {
        Single(handling, *commands, deviceServices);
    };
    services["deviceBatch"] = [commands, deviceServices, timeScale](Handling& handling) {
        Batch(handling, *commands, deviceServices, timeScale);
    };
}

} // namespace nexwire::simulator
