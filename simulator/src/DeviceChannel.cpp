#include <algorithm>
#include <charconv>
#include <map>
#include <set>

#include "src/Base64.h"
#include "src/Services.h"

namespace nexwire::simulator {
namespace {

constexpr const char* kParameters = "deviceParameters"; // What was set: per device, command and condition.
constexpr const char* kBatches = "batches";
constexpr std::int64_t kBatchLifeMs = 10 * 60 * 1000;

enum class Direction { kGet, kSet, kAction };

/// A row of "deviceCommands" as seen from one of its codes.
struct Command {
    const Json* row = nullptr;
    Direction direction = Direction::kGet;
    std::int64_t code = 0; ///< Under which what was set is kept: the one that reads it.
};

using Commands = std::map<std::int64_t, Command>;

Commands ReadCommands(const Description& description)
{
    Commands commands;
    const Json* rows = description.Data("deviceCommands");
    if (rows == nullptr) {
        return commands;
    }
    const auto add = [&](const Json& row, const char* member, Direction direction, std::int64_t keptUnder) {
        const Json* code = Member(row, member);
        if (code != nullptr && !commands.emplace(code->GetInt64(), Command{&row, direction, keptUnder}).second) {
            throw std::runtime_error("device command " + PrintJson(*code) + " is there twice");
        }
    };
    for (const Json& row : rows->GetArray()) {
        const std::int64_t get = AsInt(Member(row, "get"));
        add(row, "get", Direction::kGet, get);
        add(row, "set", Direction::kSet, get);
        add(row, "ability", Direction::kGet, AsInt(Member(row, "ability")));
        add(row, "do", Direction::kAction, 0);
    }
    return commands;
}

std::string ParameterKey(const Call& call, std::int64_t code, std::string_view condition)
{
    return call.placeholders.at("device") + "/" + std::to_string(code) + "/" + std::string(condition);
}

std::string StatusText()
{
    return R"({"returnRst":{"statusCode":1,"statusString":"OK","subStatusCode":"ok","errorCode":0,"errorMsg":""}})";
}

std::int64_t Number(std::string_view text)
{
    std::int64_t number = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
    return parsed.ec == std::errc() && parsed.ptr == text.data() + text.size() ? number : 0;
}

// What a device holds by now: persons, and credentials of each kind.
Json Held(Call& call)
{
    static constexpr std::pair<const char*, const char*> kKinds[] = {
        {"cards", "cardUsers"}, {"faces", "faceUsers"}, {"fingerPrints", "fingerPrintUsers"}, {"irises", "irisUsers"}};
    std::map<std::string, std::int64_t> counts;
    std::set<std::string, std::less<>> persons;
    Json numbers(rapidjson::kArrayType);
    call.Each({"holdings", {{"deviceGuid", Test::kEquals, StoreValue(call.placeholders["device"])}}},
              [&](const std::string&, Json& holding) {
                  const std::string_view guid = AsText(Member(holding, "personnelGuid"));
                  if (!persons.emplace(guid).second) {
                      return;
                  }
                  const Json person = call.Load("persons", guid);
                  for (const auto& [kind, users] : kKinds) {
                      const Json* has = Member(person, kind);
                      const std::int64_t number = has == nullptr   ? 0
                                                  : has->IsArray() ? std::int64_t{has->Size()}
                                                                   : AsInt(has);
                      counts[kind] += number;
                      counts[users] += number > 0 ? 1 : 0;
                      if (number > 0 && std::string_view(kind) == "faces") {
                          numbers.PushBack(MakeText(AsText(Member(holding, "personnelNo")), call.Memory()),
                                           call.Memory());
                      }
                  }
              });
    Json held(rapidjson::kObjectType);
    SetMember(held, "users", Json(std::int64_t(persons.size())), call.Memory());
    for (const auto& [kind, users] : kKinds) {
        SetMember(held, kind, Json(counts[kind]), call.Memory());
        SetMember(held, users, Json(counts[users]), call.Memory());
    }
    SetMember(held, "faceNumbers", std::move(numbers), call.Memory());
    return held;
}

Json Belonging(Call& call, const char* collection)
{
    Json list(rapidjson::kArrayType);
    call.Each({collection, {{"deviceGuid", Test::kEquals, StoreValue(call.placeholders["device"])}}},
              [&](const std::string&, Json& document) { list.PushBack(document, call.Memory()); });
    return list;
}

struct Output {
    std::string out;
    std::string status;
};

/// The devices' side of a command.
class Device {
public:
    Device(Call& call, const Commands& commands) : call_(call), commands_(commands)
    {
        const Json device = call_.Load("devices", call_.placeholders["device"]);
        if (AsBool(Member(device, "_offline"))) {
            throw Refusal(Reason::kDeviceOffline, "\"" + call_.placeholders["device"] + "\"");
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
        CheckNumber(*command.row, condition);
        if (command.direction == Direction::kGet) {
            return {Read(command, condition), {}};
        }
        CheckInput(*command.row, input);
        if (command.direction == Direction::kSet) {
            call_.store.Write(kParameters, ParameterKey(call_, command.code, condition),
                              Record(command, condition, input));
        } else if (const Json* cleared = Member(*command.row, "clears")) {
            call_.store.Erase(kParameters, ParameterKey(call_, cleared->GetInt64(), condition));
        }
        return {{}, StatusText()};
    }

    /// Everything kept for a command: condition and text; what a fresh device has when nothing was set.
    std::vector<std::pair<std::string, std::string>> ReadAll(const Command& command, const std::string& condition)
    {
        std::vector<std::pair<std::string, std::string>> records;
        call_.Each({kParameters,
                    {{"device", Test::kEquals, StoreValue(call_.placeholders["device"])},
                     {"code", Test::kEquals, StoreValue(command.code)}}},
                   [&](const std::string&, Json& record) {
                       records.emplace_back(AsText(Member(record, "condition")), AsText(Member(record, "text")));
                   });
        if (records.empty()) {
            records.emplace_back(condition, Read(command, condition));
        }
        return records;
    }

private:
    // A condition that counts something on the device ends where the device does.
    void CheckNumber(const Json& row, const std::string& condition)
    {
        const std::string_view limit = AsText(Member(row, "upTo"));
        if (limit.empty()) {
            return;
        }
        const Json device = call_.Load("devices", call_.placeholders["device"]);
        const std::int64_t number = Number(condition);
        if (number < 1 || number > AsInt(Member(device, limit))) {
            throw Refusal(Reason::kDeviceRefused, "there is no number \"" + condition + "\"");
        }
    }

    void CheckInput(const Json& row, const std::string& input)
    {
        const std::string_view root = AsText(Member(row, "root"));
        if (input.empty() && root.empty()) {
            return;
        }
        Document parsed;
        std::string error;
        if (!ParseJson(parsed, input, error)) {
            throw Refusal(Reason::kDeviceRefused, "inBuffer is not JSON: " + error);
        }
        const bool fits = parsed.IsObject() && parsed.MemberCount() == 1 && parsed.MemberBegin()->value.IsObject() &&
                          (root.empty() || Member(parsed, root) != nullptr);
        if (!fits) {
            throw Refusal(Reason::kDeviceRefused, "inBuffer does not hold the object \"" + std::string(root) + "\"");
        }
    }

    std::string Record(const Command& command, const std::string& condition, const std::string& input)
    {
        Allocator& memory = call_.Memory();
        Json record(rapidjson::kObjectType);
        SetMember(record, "device", MakeText(call_.placeholders["device"], memory), memory);
        SetMember(record, "code", Json(command.code), memory);
        SetMember(record, "condition", MakeText(condition, memory), memory);
        SetMember(record, "text", MakeText(input, memory), memory);
        return PrintJson(record);
    }

    // What was set for this condition, else for the device as a whole, else what a fresh device has.
    std::string Read(const Command& command, const std::string& condition)
    {
        for (const std::string& key : {condition, std::string()}) {
            const Json record = call_.Load(kParameters, ParameterKey(call_, command.code, key));
            if (record.IsObject()) {
                return std::string(AsText(Member(record, "text")));
            }
        }
        const Json* fresh = Member(*command.row, "default");
        const std::string_view root = AsText(Member(*command.row, "root"));
        if (root.empty()) {
            return "{}";
        }
        Allocator& memory = call_.Memory();
        call_.Define("number", Json(Number(condition)));
        if (!described_) {
            described_ = true;
            call_.Define("held", Held(call_));
            call_.Define("doors", Belonging(call_, "controlPoints"));
            call_.Define("readers", Belonging(call_, "cardReaders"));
        }
        Json document(rapidjson::kObjectType);
        SetMember(document, root, fresh == nullptr ? Json(rapidjson::kObjectType) : call_.Fill(*fresh), memory);
        return PrintJson(document);
    }

    Call& call_;
    const Commands& commands_;
    bool described_ = false;
};

std::string BodyText(const Call& call, const char* member)
{
    return std::string(AsText(Member(*call.body, member)));
}

void Single(Call& call, const Commands& commands)
{
    Device device(call, commands);
    const Command& command = device.Find(AsInt(Member(*call.body, "command")));
    const Output output = device.Run(command, BodyText(call, "condBuffer"), BodyText(call, "inBuffer"));
    Allocator& memory = call.Memory();
    Json answer(rapidjson::kObjectType);
    SetMember(answer, "outBuffer", MakeText(output.out, memory), memory);
    SetMember(answer, "statusBuffer", MakeText(output.status, memory), memory);
    SetMember(call.data, "dagPassThroughRsp", std::move(answer), memory);
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

Json BatchResult(Call& call, std::string_view id, Reason reason, const Output& output)
{
    Allocator& memory = call.Memory();
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
Json RunItem(Call& call, Device& device, const Command& command, const std::string& condition, const Json& item)
{
    const std::string id(AsText(Member(item, "id")));
    try {
        const std::string input =
            Decoded(std::string(AsText(Member(item, "inBuffer"))), AsText(Member(item, "inBufferEncoding")));
        const bool isGet = command.direction == Direction::kGet;
        const std::string own = isGet && !input.empty() ? input : condition.empty() && !isGet ? id : condition;
        return BatchResult(call, id, Reason::kNone, device.Run(command, own, isGet ? std::string() : input));
    } catch (const Refusal& refusal) {
        return BatchResult(call, id, refusal.Why(), {{}, refusal.what()});
    }
}

void ForgetOldBatches(Call& call)
{
    call.store.Select({kBatches, {{"touchedMs", Test::kAtMost, StoreValue(call.nowMs - kBatchLifeMs)}}},
                      [&](const std::string& key, const std::string&) { call.store.Erase(kBatches, key); });
}

// Pages of a batch transfer: whoever sends items, or asks for all there is, gets results `maxResultNum` at a time and
// comes back with the transfer's GUID until it is finished.
void Batch(Call& call, const Commands& commands)
{
    Allocator& memory = call.Memory();
    Device device(call, commands);
    std::string guid = BodyText(call, "guid");
    const std::string owner = call.placeholders["device"];
    Json batch;
    const bool fresh = guid.empty();
    if (fresh) {
        ForgetOldBatches(call);
        guid = NewGuid();
        batch.SetObject();
        SetMember(batch, "device", MakeText(owner, memory), memory);
        SetMember(batch, "command", Json(AsInt(Member(*call.body, "command"))), memory);
        SetMember(batch, "condition",
                  MakeText(Decoded(BodyText(call, "condBuffer"), BodyText(call, "condBufferEncoding")), memory),
                  memory);
        SetMember(batch, "results", Json(rapidjson::kArrayType), memory);
        SetMember(batch, "pageBegin", Json(0), memory);
        SetMember(batch, "next", Json(0), memory);
        SetMember(batch, "open", Json(true), memory);
    } else {
        batch = call.Load(kBatches, guid);
        if (!batch.IsObject() || AsText(Member(batch, "device")) != owner) {
            throw Refusal(Reason::kUnknownBatch, "\"" + guid + "\"");
        }
    }
    Json answer(rapidjson::kObjectType);
    SetMember(answer, "guid", MakeText(guid, memory), memory);
    if (AsBool(Member(*call.body, "cancel"))) {
        call.store.Erase(kBatches, guid);
        SetMember(answer, "isFinish", Json(true), memory);
        SetMember(answer, "batchReturnDataList", Json(rapidjson::kArrayType), memory);
        SetMember(call.data, "batchPassThroughRsp", std::move(answer), memory);
        return;
    }
    const Command& command = device.Find(AsInt(Member(batch, "command")));
    const std::string condition(AsText(Member(batch, "condition")));
    Json& results = *Member(batch, "results");
    const bool again = AsBool(Member(*call.body, "getPreviousData"));
    if (!again) {
        const Json* items = Member(*call.body, "batchSendDataList");
        const bool sent = items != nullptr && !items->Empty();
        if (sent) {
            if (!AsBool(Member(batch, "open"))) {
                throw Refusal(Reason::kUnknownBatch, "the last item of \"" + guid + "\" has been sent");
            }
            for (const Json& item : items->GetArray()) {
                results.PushBack(RunItem(call, device, command, condition, item), memory);
            }
        } else if (fresh && command.direction == Direction::kGet) {
            for (const auto& [id, text] : device.ReadAll(command, condition)) {
                results.PushBack(BatchResult(call, id, Reason::kNone, {text, {}}), memory);
            }
        }
        if (AsBool(Member(batch, "open"))) {
            SetMember(batch, "open", Json(AsBool(Member(*call.body, "hasNext"))), memory);
        }
    }
    const std::int64_t total = results.Size();
    const std::int64_t most = AsInt(Member(*call.body, "maxResultNum"));
    const std::int64_t begin = AsInt(Member(batch, again ? "pageBegin" : "next"));
    const std::int64_t end = again      ? AsInt(Member(batch, "next"))
                             : most > 0 ? std::min(total, begin + std::min(most, total))
                                        : total;
    Json page(rapidjson::kArrayType);
    for (std::int64_t i = begin; i < end; ++i) {
        page.PushBack(Copy(results[static_cast<rapidjson::SizeType>(i)], memory), memory);
    }
    SetMember(batch, "pageBegin", Json(begin), memory);
    SetMember(batch, "next", Json(end), memory);
    SetMember(batch, "touchedMs", Json(call.nowMs), memory);
    call.Save(kBatches, guid, batch);
    SetMember(answer, "isFinish", Json(end == total && !AsBool(Member(batch, "open"))), memory);
    SetMember(answer, "batchReturnDataList", std::move(page), memory);
    SetMember(call.data, "batchPassThroughRsp", std::move(answer), memory);
}

} // namespace

void AddDeviceChannel(Services& services, const Description& description)
{
    const auto commands = std::make_shared<const Commands>(ReadCommands(description));
    services["deviceCommand"] = [commands](Call& call) { Single(call, *commands); };
    services["deviceBatch"] = [commands](Call& call) { Batch(call, *commands); };
}

} // namespace nexwire::simulator
