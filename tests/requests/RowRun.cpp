#include "requests/RowRun.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "catalogue/Structures.h"
#include "nexwire/VideoWall/VideoWall.h"
#include "support/LogCapture.h"

namespace requests {

using Keel::Error::ErrorCode;
using nexwire::RequestParams;

namespace {

constexpr int kMostFailures = 3;
constexpr int kUsualWallMs = 5000;
constexpr int kSeriesGiven = 1;
constexpr int kSeriesBefore = 2;
constexpr int kSeriesAnswered = 3;

const std::string kPlain = "8c1f0f6e2b8a4f0f9f7c0a9b1d2e3f40";
const std::vector<std::string> kIds = {
    kPlain, "a b", "a/b", "a\"b\\", "\xF0\x9F\x94\x91", "50%25", std::string(300, 'x'), ""};

const ErrorCode kEarlier = {5, 55, "an earlier error"};
const ErrorCode kTransport = {7, 28, "stub transport failure"};

std::string Shown(const ErrorCode& error)
{
    return std::to_string(error.category) + "-" + std::to_string(error.number) + " " + error.text;
}

std::string Json(const ErrorCode& error)
{
    return "{\"category\":" + std::to_string(error.category) + ",\"number\":" + std::to_string(error.number) +
           ",\"text\":" + Quoted(error.text) + "}";
}

std::string Shown(const std::map<std::string, std::string>& map)
{
    std::string text;
    for (const auto& entry : map) {
        text += (text.empty() ? "" : ", ") + entry.first + "=" + entry.second;
    }
    return "{" + text + "}";
}

std::string RootOf(const Form& form)
{
    if (form.kind == Form::Kind::Keys) {
        return form.root;
    }
    const Document literal = Parsed(form.text);
    return form.kind == Form::Kind::Literal && literal.IsObject() && literal.MemberCount() == 1
               ? literal.MemberBegin()->name.GetString()
               : "";
}

bool IsStructure(const Argument& argument)
{
    return argument.type->shape == Shape::Structure;
}

const char* RootName(const Argument& argument)
{
    const char* const root = IsStructure(argument) ? argument.type->fields()->rootName : nullptr;
    return root != nullptr ? root : "";
}

/// Every body is printed with one member a line.
bool IsFormatted(const std::string& json)
{
    return json.compare(0, 4, "{\n\t\"") == 0;
}

} // namespace

WallServer::WallServer()
{
    nexwire::CTWDeviceCommon::init("127.0.0.1", Port());
}

void WallServer::Start(const nexwire::loopback::Reply& reply)
{
    seen_ = server_.Requests().size();
    server_.SetDefault(reply);
}

std::vector<RequestParams> WallServer::Requests()
{
    std::vector<RequestParams> requests;
    const std::vector<nexwire::loopback::RawRequest> all = server_.Requests();
    for (std::size_t i = seen_; i < all.size(); ++i) {
        requests.emplace_back(all[i].target, all[i].method == "POST" ? 2 : -1, all[i].body);
    }
    return requests;
}

RowRun::RowRun(const Row& row, const Function& function, WallServer& wall)
    : row_(row), function_(function), wall_(wall), result_(function.Arguments().size()), code_(result_),
      error_(result_), whole_(result_)
{
    const auto place = [&](const std::string& name) {
        const std::size_t found = PlaceOf(function_, name);
        if (found == function_.Arguments().size()) {
            Fail("no argument '" + name + "' in " + function_.Signature());
        }
        return found;
    };
    for (const auto& entry : row.arguments) {
        given_[place(entry.first)] = entry.second;
    }
    for (const auto& entry : row.gives) {
        gives_[place(entry.first)] = entry.second;
    }
    for (const auto& entry : row.appends) {
        appends_[place(entry.first)] = entry.second;
    }
    code_ = row.code.empty() ? code_ : place(row.code);
    error_ = row.error.empty() ? error_ : place(row.error);
    whole_ = row.whole.empty() ? whole_ : place(row.whole);

    // The result is the structure that comes back and is not named otherwise; rather not the one that is sent.
    const std::string sent = RootOf(row.body) + RootOf(row.in);
    const Invocation fresh(function);
    for (std::size_t i = 0; i < function.Arguments().size(); ++i) {
        blank_.push_back(fresh.Json(i));
        const bool record = At(i).type->shape == Shape::Record && row.answer.kind != Form::Kind::None;
        if (!At(i).output || gives_.count(i) + appends_.count(i) != 0 || !(IsStructure(At(i)) || record)) {
            continue;
        }
        if (result_ == function.Arguments().size() || RootName(At(result_)) == sent) {
            result_ = i;
        }
    }
}

// ---- What goes in ----

std::string RowRun::FilledArgument(std::size_t place, int series, const std::string& id) const
{
    const Argument& argument = At(place);
    Filling filling{series, id, series == kSeriesBefore ? std::size_t{1} : std::size_t{2}};
    const bool before = series == kSeriesBefore;
    switch (argument.type->shape) {
    case Shape::Text:
        return before ? "before" : id;
    case Shape::Integer:
        return before ? "4711" : "7";
    case Shape::Boolean: {
        const auto given = gives_.find(place);
        return before && given != gives_.end() && given->second == "true" ? "false" : "true";
    }
    case Shape::TextList:
        return "[" + Quoted(before ? "before" : id) + "]";
    case Shape::Structure:
        return Filled(*argument.type->fields(), filling);
    case Shape::StructureList: {
        const std::string first = Filled(*argument.type->fields(), filling);
        return "[" + first + "," + Filled(*argument.type->fields(), filling) + "]";
    }
    case Shape::Record: {
        Invocation call(function_);
        call.Sample(place);
        return Refilled(call.Json(place), filling);
    }
    case Shape::RecordList: {
        Invocation call(function_);
        call.Set(place, "[{}]");
        return Refilled(call.Json(place), filling);
    }
    default:
        break;
    }
    // Numbers, lists and maps of other kinds: what the type takes.
    for (const char* json : {"[4711,4712]", R"({"1":"before"})", R"({"1":4711})", "4711"}) {
        if (Invocation(function_).Set(place, json)) {
            return json;
        }
    }
    return "";
}

std::string RowRun::Given(std::size_t place, const std::string& text, const std::string& id) const
{
    if (text.compare(0, 4, "new{") == 0) {
        return WithInJson(text.substr(3), id);
    }
    if (text.empty() || std::string("{[\"").find(text[0]) == std::string::npos) {
        return With(text, id);
    }
    const std::string json = WithInJson(text, id);
    const Shape shape = At(place).type->shape;
    if (shape == Shape::Text && json[0] == '"') {
        const Document value = Parsed(json);
        return {value.GetString(), value.GetStringLength()};
    }
    const bool object = shape == Shape::Structure || shape == Shape::Record;
    return object ? Overlaid(FilledArgument(place, kSeriesGiven, id), json) : json;
}

bool RowRun::Prepare(Invocation& call, const std::string& id)
{
    for (std::size_t i = 0; i < function_.Arguments().size(); ++i) {
        const Argument& argument = At(i);
        const auto given = given_.find(i);
        if (argument.type->shape == Shape::ErrorCode) {
            call.Set(i, ErrorCode{1, 2, "before"});
            continue;
        }
        if (argument.type->shape == Shape::AnyStructure && given == given_.end()) {
            continue;
        }
        const std::string value = given != given_.end()
                                      ? Given(i, given->second, id)
                                      : FilledArgument(i, argument.output ? kSeriesBefore : kSeriesGiven, id);
        if (!call.Set(i, value) && !value.empty()) {
            Fail("'" + argument.name + "' must be " + nexwire::catalogue::Misfit(*argument.type, value));
            return false;
        }
    }
    return true;
}

bool RowRun::Execute(nexwire::RspInfos& response, std::size_t index, const std::string& id, const Reply& reply) const
{
    const std::size_t main = row_.first.size();
    if (index == main) {
        response.body = reply.body;
        for (const auto& field : row_.fields) {
            response.headers[field.first] = With(field.second, id);
        }
        if (!reply.success) {
            Keel::Error::SetLastError(kTransport);
        }
        return reply.success;
    }
    const std::size_t after = index - main - 1;
    const Step* const step = index < main ? &row_.first[index] : after < row_.then.size() ? &row_.then[after] : nullptr;
    response.body = Success(step != nullptr ? WithInJson(step->data, id) : "{}");
    return true;
}

RowRun::Made RowRun::Make(const std::string& id, const Reply& reply)
{
    Made made;
    made.reply = reply.body;
    Invocation call(function_);
    if (!Prepare(call, id)) {
        return made;
    }
    for (std::size_t i = 0; i < function_.Arguments().size(); ++i) {
        made.before.push_back(call.Json(i));
    }
    if (library_ != nullptr) {
        library_->wire.requests.clear();
        library_->wire.handler = [&](nexwire::RspInfos& response, const RequestParams&) {
            return Execute(response, library_->wire.requests.size() - 1, id, reply);
        };
    }
    wall_.Start(reply.success ? nexwire::loopback::Reply::Json(reply.body) : nexwire::loopback::Reply().Close());
    Keel::Error::SetLastError(kEarlier);
    made.called = true;
    made.outcome = call.Run();
    made.lastError = Keel::Error::GetLastError();
    made.exchange = nexwire::LastExchange();
    for (std::size_t i = 0; i < function_.Arguments().size(); ++i) {
        made.after.push_back(call.Json(i));
    }
    made.sent = wall_.Requests();
    if (library_ != nullptr) {
        made.sent.insert(made.sent.end(), library_->wire.requests.begin(), library_->wire.requests.end());
    }
    return made;
}

// ---- What is answered ----

std::string RowRun::Answer(const Form& form, const std::string& id, bool wrapped)
{
    if (form.kind == Form::Kind::Literal || form.kind == Form::Kind::Text) {
        return form.kind == Form::Kind::Text ? With(form.text, id) : WithInJson(form.text, id);
    }
    Filling filling{kSeriesAnswered, id, 2};
    const nexwire::core::FieldTable* const table =
        result_ < function_.Arguments().size() ? At(result_).type->fields() : nullptr;
    if (table == nullptr) {
        if (form.kind == Form::Kind::Keys) {
            Fail("keys of an answer, but no structure to fill");
        }
        return wrapped ? "" : "{}";
    }
    if (form.kind == Form::Kind::None) {
        const std::string members = Filled(*table, filling);
        return wrapped ? "{" + Quoted(RootName(At(result_))) + ":" + members + "}" : members;
    }
    // What stands under the root that the row names: the structure itself in a device's text, otherwise its member.
    if (!wrapped) {
        const nexwire::core::Field* member = nullptr;
        for (const nexwire::core::Field& field : *table) {
            member = form.root == field.key ? &field : member;
        }
        if (member == nullptr) {
            Fail("no member '" + form.root + "' in " + table->name);
            return "{}";
        }
        if (form.named) {
            ExpectNothing("the answer", member->ops == nullptr ? "no structure under " + form.root
                                                               : Misfit(form.keys, form.more, *member->ops->fields));
        }
        const Document whole = Parsed(Filled(*table, filling));
        return "{" + Quoted(form.root) + ":" + TextOf(whole[form.root.c_str()]) + "}";
    }
    if (form.named) {
        ExpectNothing("the device's answer", Misfit(form.keys, form.more, *table));
    }
    return "{" + Quoted(form.root) + ":" + Filled(*table, filling) + "}";
}

std::string RowRun::DeviceData(const std::string& out, const std::string& id) const
{
    const std::string buffers =
        "\"outBuffer\":" + Quoted(out) + ",\"statusBuffer\":" + Quoted(WithInJson(row_.status, id));
    switch (row_.route) {
    case Route::Dag:
        return "{\"dagPassThroughRsp\":{" + buffers + "}}";
    case Route::Batch:
        return R"({"batchPassThroughRsp":{"guid":"batch","isFinish":true,"batchReturnDataList":[{"id":"1","code":0,)" +
               buffers + "}]}}";
    default:
        break;
    }
    // The holder of the answer of a HTTP-API or SDK device: one text in one structure.
    const auto* const info = nexwire::catalogue::FindStructure(
        row_.route == Route::Kestrel ? "KestrelPassThroughRspData" : "NetsdkPassThroughRspData");
    if (info == nullptr || info->fields->count != 1 || info->fields->fields[0].ops == nullptr) {
        return "{}";
    }
    const nexwire::core::Field& holder = info->fields->fields[0];
    for (const nexwire::core::Field& field : *holder.ops->fields) {
        if (field.kind == nexwire::core::Kind::Text) {
            return "{" + Quoted(holder.key) + ":{" + Quoted(field.key) + ":" + Quoted(out) + "}}";
        }
    }
    return "{}";
}

std::string RowRun::Data(const std::string& id)
{
    return IsDevice() ? DeviceData(Out(id), id) : Answer(row_.answer, id, false);
}

std::string RowRun::Envelope(const std::string& code, const std::string& data) const
{
    return "{\"code\":" + code + ",\"msg\":\"a message\"" + (data.empty() ? "" : ",\"data\":" + data) + "}";
}

std::string RowRun::Success(const std::string& data) const
{
    return Envelope(row_.route == Route::Wall ? "0,\"module\":4" : "\"0-0\"", data);
}

std::string RowRun::Refusal(const std::string& data) const
{
    return Envelope(row_.route == Route::Wall ? "17,\"module\":3" : "\"3-17\"", data);
}

// ---- What must come of it ----

void RowRun::Fail(const std::string& what)
{
    if (++failures_ <= kMostFailures) {
        ADD_FAILURE_AT(row_.file.c_str(), row_.line)
            << row_.function << (variation_.empty() ? "" : ", " + variation_) << ": " << what;
    }
}

void RowRun::Expect(const std::string& label, const std::string& expected, const std::string& found)
{
    if (expected != found) {
        Fail(label + "\n    expected " + expected + "\n    found    " + found);
    }
}

void RowRun::ExpectNothing(const std::string& label, const std::string& difference)
{
    if (!difference.empty()) {
        Fail(label + " " + difference);
    }
}

std::string RowRun::KeysMisfit(const Form& form, const Value& members, const std::string& id, const Made& made) const
{
    std::vector<Key> keys = form.keys;
    if (!row_.longKey.empty() && id.size() <= 32) {
        keys.erase(std::remove_if(keys.begin(), keys.end(), [&](const Key& key) { return key.name == row_.longKey; }),
                   keys.end());
    }
    const std::string misfit = form.named ? Misfit(keys, form.more, members) : "";
    if (!misfit.empty()) {
        return misfit;
    }
    for (std::size_t i = 0; i < function_.Arguments().size(); ++i) {
        const Document input = Parsed(made.before[i]);
        const bool any = At(i).type->shape == Shape::AnyStructure;
        if (any || form.root != RootName(At(i))) {
            continue;
        }
        if (!form.named) {
            return Difference(input, members, Match::Ordered, form.root);
        }
        for (const auto& member : members.GetObject()) {
            const auto given = input.FindMember(member.name);
            const std::string key = member.name.GetString();
            const std::string difference =
                key == row_.longKey          ? Difference(Parsed(Quoted(id)), member.value, Match::Ordered, key)
                : given == input.MemberEnd() ? "a key that was not given: " + key
                                             : Difference(given->value, member.value, Match::Ordered, key);
            if (!difference.empty()) {
                return difference;
            }
        }
        return "";
    }
    return "has no structure among the arguments that stands under \"" + form.root + "\": write it whole";
}

std::string RowRun::BodyMisfit(const Form& form, const std::string& body, const std::string& id, const Made& made) const
{
    if (form.kind == Form::Kind::None) {
        return body.empty() ? "" : "\n    expected none\n    found    " + body;
    }
    if (form.kind == Form::Kind::Text) {
        const std::string text =
            form.text[0] == '"' ? Parsed(WithInJson(form.text, id)).GetString() : With(form.text, id);
        return body == text ? "" : "\n    expected " + text + "\n    found    " + body;
    }
    const Document found = Parsed(body);
    if (!found.IsObject()) {
        return "is no JSON object: " + body;
    }
    if (row_.route != Route::Wall && !IsFormatted(body)) {
        return "is not printed with one member a line: " + body;
    }
    if (form.kind == Form::Kind::Literal) {
        Document expected = Parsed(WithInJson(form.text, id));
        if (!row_.longKey.empty() && id.size() <= 32 && expected.MemberCount() == 1) {
            expected.MemberBegin()->value.EraseMember(row_.longKey.c_str());
        }
        return Difference(expected, found, Match::Ordered);
    }
    if (found.MemberCount() != 1 || found.MemberBegin()->name != form.root.c_str()) {
        return "must stand under \"" + form.root + "\": " + body;
    }
    return KeysMisfit(form, found.MemberBegin()->value, id, made);
}

std::string RowRun::DeviceBodyMisfit(const std::string& body, const std::string& id, const Made& made) const
{
    const Document found = Parsed(body);
    if (!found.IsObject() || found.MemberCount() != 1 || !found.MemberBegin()->value.IsObject() || !IsFormatted(body)) {
        return "is no command: " + body;
    }
    const Value& members = found.MemberBegin()->value;
    const std::string root = found.MemberBegin()->name.GetString();
    const auto text = [&](const Value& object, const char* key) -> std::string {
        const auto member = object.FindMember(key);
        return member != object.MemberEnd() && member->value.IsString() ? member->value.GetString() : "";
    };
    const std::string command = std::to_string(row_.command);
    if (row_.route == Route::Dag) {
        const std::string input = text(members, "inBuffer");
        const std::string expected = "{\"dagPassThroughReq\":{\"command\":" + command +
                                     ",\"condBuffer\":" + Quoted(With(row_.condition, id)) +
                                     ",\"inBuffer\":" + Quoted(input) + "}}";
        const std::string difference = Difference(Parsed(expected), found, Match::Ordered);
        const std::string inside = BodyMisfit(row_.in, input, id, made);
        return !difference.empty() ? difference : inside.empty() ? "" : "in inBuffer " + inside;
    }
    if (row_.route == Route::Batch) {
        static const std::vector<Key> keys = {
            {"guid", {}},         {"flagGuid", {}},         {"cancel", {}},     {"getPreviousData", {}},
            {"command", {}},      {"hasNext", {}},          {"condBuffer", {}}, {"condBufferEncoding", {}},
            {"maxResultNum", {}}, {"batchSendDataList", {}}};
        const std::string misfit =
            root == "batchPassThroughReq" ? Misfit(keys, false, members) : "stands under " + root;
        if (!misfit.empty()) {
            return misfit;
        }
        const Value& list = members["batchSendDataList"];
        const std::string input = list.Empty() ? "" : text(list[0], "inBuffer");
        const std::string expected =
            "{\"command\":" + command + ",\"condBuffer\":" + Quoted(With(row_.condition, id)) + "}";
        const std::string difference = Difference(Parsed(expected), members, Match::Part);
        return !difference.empty() ? difference : BodyMisfit(row_.in, input, id, made);
    }
    // The keys of the other two envelopes are their structures'; what they carry must be there.
    bool named = row_.route == Route::Netsdk;
    std::string input;
    for (const auto& member : members.GetObject()) {
        const bool request =
            member.value.IsString() && row_.route == Route::Kestrel && member.value == With(row_.request, id).c_str();
        named = named || request;
        if (member.value.IsString() && !request && member.value != With(row_.condition, id).c_str()) {
            input = member.value.GetString();
        }
    }
    if (!named) {
        return "does not hold the text " + Quoted(With(row_.request, id)) + ": " + body;
    }
    if (row_.route == Route::Netsdk &&
        Difference(Parsed("{\"command\":" + command + "}"), members, Match::Part) != "") {
        return "does not hold the command " + command + ": " + body;
    }
    return BodyMisfit(row_.in, input, id, made);
}

std::string RowRun::RequestMisfit(const RequestParams& request, const std::string& id, const Made& made) const
{
    static const std::map<Route, std::string> segments = {{Route::Dag, "/dagPassThrough"},
                                                          {Route::Batch, "/batchPassThrough"},
                                                          {Route::Kestrel, "/kestrelPassThrough"},
                                                          {Route::Netsdk, "/netsdkPassThrough"}};
    const std::string path = IsDevice() ? std::string("/7730/v1/") + (row_.internal ? "internal/" : "") +
                                              "deviceManagement/devices/*" + segments.at(row_.route)
                                        : row_.path;
    const auto differs = [](const std::string& label, const std::string& expected, const std::string& found) {
        return expected == found ? "" : label + "\n    expected " + expected + "\n    found    " + found + "\n";
    };
    std::string text = differs("path", With(path, id), request.url);
    text += differs("method code", std::to_string(row_.method), std::to_string(request.method));
    if (row_.route != Route::Wall) {
        const int timeout = row_.timeoutMs != 0 ? row_.timeoutMs : 40000;
        text += differs("time-out", std::to_string(timeout), std::to_string(request.timeoutMs));
    }
    const auto entries = [&](const std::map<std::string, std::string>& map) {
        std::map<std::string, std::string> expected;
        for (const auto& entry : map) {
            const std::string value = With(entry.second, id);
            if (!value.empty()) { // An empty value is not sent at all.
                expected[entry.first] = value;
            }
        }
        return Shown(expected);
    };
    text += differs("headers", entries(row_.headers), Shown(request.headers));
    text += differs("params", entries(row_.params), Shown(request.params));
    const std::string body =
        IsDevice() ? DeviceBodyMisfit(request.body, id, made) : BodyMisfit(row_.body, request.body, id, made);
    return text + (body.empty() ? "" : "the body " + body);
}

void RowRun::CheckSent(const Made& made, const std::string& id, bool whole)
{
    const std::size_t main = row_.first.size();
    const std::size_t count = main + 1 + (whole ? row_.then.size() : 0);
    if (made.sent.size() != count) {
        std::string paths;
        for (const RequestParams& request : made.sent) {
            paths += "\n    " + std::to_string(request.method) + " " + request.url;
        }
        Fail(std::to_string(count) + " requests expected, " + std::to_string(made.sent.size()) + " sent" + paths);
        return;
    }
    const std::string misfit = RequestMisfit(made.sent[main], id, made);
    if (!misfit.empty()) {
        Fail("what it sends: " + misfit + "\n    sent     " + std::to_string(made.sent[main].method) + " " +
             made.sent[main].url + " " + made.sent[main].body);
    }
    for (std::size_t i = 0; i < count; ++i) {
        if (i == main) {
            continue;
        }
        const Step& step = i < main ? row_.first[i] : row_.then[i - main - 1];
        const RequestParams& request = made.sent[i];
        Expect("request " + std::to_string(i + 1), std::to_string(step.method) + " " + With(step.path, id),
               std::to_string(request.method) + " " + request.url);
        ExpectNothing("the body of request " + std::to_string(i + 1),
                      step.body.empty()
                          ? (request.body.empty() ? "" : "is not empty: " + request.body)
                          : Difference(Parsed(WithInJson(step.body, id)), Parsed(request.body), Match::Ordered));
    }
}

std::string RowRun::Expected(std::size_t place, const Made& made, const std::string& id, const std::string& data) const
{
    const Shape shape = At(place).type->shape;
    const std::string root = RootName(At(place));
    bool sentToo = !root.empty() && (root == RootOf(row_.body) || root == RootOf(row_.in));
    for (const Argument& argument : function_.Arguments()) {
        sentToo = sentToo && (argument.output || root != RootName(argument)); // Question and answer of one structure.
    }
    const std::string& base = shape == Shape::Record || sentToo ? made.before[place] : blank_[place];
    if (place == code_) {
        return "0";
    }
    if (place == whole_) {
        return Quoted(made.reply);
    }
    if (shape == Shape::Envelope) { // As it came, refusals included.
        const Document answer = Parsed(made.reply);
        return "{\"code\":" + TextOf(answer["code"]) + ",\"msg\":" + TextOf(answer["msg"]) + "}";
    }
    if (const auto appended = appends_.find(place); appended != appends_.end()) {
        const Document more = Parsed(WithInJson(appended->second, id));
        std::string start = shape == Shape::Structure ? blank_[place] : made.before[place];
        const Document before = Parsed(made.before[place]);
        if (more.IsObject()) {
            for (const auto& member : more.GetObject()) {
                if (member.value.IsArray() && before.HasMember(member.name)) {
                    start = Overlaid(start, "{" + TextOf(member.name) + ":" + TextOf(before[member.name]) + "}");
                }
            }
        }
        return Overlaid(start, TextOf(more), true);
    }
    if (const auto given = gives_.find(place); given != gives_.end()) {
        const std::string& text = given->second;
        if (shape == Shape::Text) {
            return Quoted(Given(place, text, id));
        }
        const bool replaced = text.compare(0, 4, "new{") == 0;
        const std::string json = WithInJson(replaced ? text.substr(3) : text, id);
        return shape == Shape::Structure || shape == Shape::Record ? Overlaid(replaced ? blank_[place] : base, json)
                                                                   : json;
    }
    if (!IsResult(place)) {
        return made.before[place];
    }
    if (!IsDevice()) {
        return Overlaid(base, data);
    }
    const std::string out = data;
    const Document device = Parsed(out);
    return device.IsObject() && device.MemberCount() == 1 && device.MemberBegin()->value.IsObject()
               ? Overlaid(base, TextOf(device.MemberBegin()->value))
               : base;
}

void RowRun::CheckFilled(const Made& made, const std::string& id, const std::string& data)
{
    for (std::size_t i = 0; i < made.after.size(); ++i) {
        if (At(i).output) {
            ExpectNothing("afterwards '" + At(i).name + "'",
                          Difference(Parsed(Expected(i, made, id, data)), Parsed(made.after[i]), Match::Part));
        }
    }
}

void RowRun::CheckUntouched(const Made& made)
{
    // What is not looked at is handed out whatever it is.
    const bool unread = row_.unread && made.outcome.success;
    for (std::size_t i = 0; i < made.after.size(); ++i) {
        if (unread && i == whole_) {
            Expect("'" + At(i).name + "'", Quoted(made.reply), made.after[i]);
        } else if (i != code_ && i != error_ && !(unread && gives_.count(i) != 0)) {
            Expect("'" + At(i).name + "' is touched", made.before[i], made.after[i]);
        }
    }
}

void RowRun::CheckError(const Made& made, const ErrorCode& error)
{
    if (row_.first.empty() && row_.then.empty()) {
        Expect("last error", Shown(error), Shown(made.lastError));
    }
}

void RowRun::CheckErrorOutput(const Made& made, const ErrorCode& error)
{
    if (error_ == function_.Arguments().size()) {
        return;
    }
    const bool text = At(error_).type->shape == Shape::Text;
    if (error.number != 0) {
        Expect("'" + At(error_).name + "'", text ? Quoted(error.text) : Json(error), made.after[error_]);
        return;
    }
    // Nothing of an earlier call, and a text of its own.
    const Document found = Parsed(made.after[error_]);
    const Value& words = text ? static_cast<const Value&>(found) : found["text"];
    if (made.after[error_] == made.before[error_] || words.GetStringLength() == 0 || words == kEarlier.text.c_str() ||
        (!text && Difference(Parsed("{\"category\":0,\"number\":0}"), found, Match::Part) != "")) {
        Fail("'" + At(error_).name + "' must be no error with a text that says what happened, is " +
             made.after[error_]);
    }
}

void RowRun::CheckRecord(const Made& made, int number, bool answered, bool parsed)
{
    if (row_.route == Route::Wall || made.sent.size() <= row_.first.size()) {
        return;
    }
    const nexwire::ExchangeRecord& record = made.exchange;
    const auto shown = [](const std::string& path, bool a, bool p, int n) {
        return path + (a ? " answered" : "") + (p ? " parsed " : " ") + std::to_string(n);
    };
    Expect("LastExchange", shown(made.sent[row_.first.size()].url, answered, parsed, number),
           shown(record.path, record.answered, record.parsed, record.number));
}

// ---- Variations ----

void RowRun::Succeeds(const std::string& id)
{
    variation_ = "identifier \"" + (id.size() > 40 ? std::to_string(id.size()) + " times x" : id) + "\"";
    const std::string data = Data(id);
    const Made made = Make(id, {row_.hasRaw ? With(row_.raw, id) : Success(data)});
    if (!made.called) {
        return;
    }
    CheckSent(made, id, true);
    if (!made.outcome.success) {
        Fail("returns false, last error " + Shown(made.lastError));
    }
    if (row_.hasReturns) {
        Expect("returns", Quoted(With(row_.returns, id)), made.outcome.returned);
    }
    CheckFilled(made, id, IsDevice() ? Out(id) : data);
    if (row_.route == Route::Wall) {
        CheckError(made, {4, 0, "a message"});
    } else {
        CheckError(made, kEarlier);
        CheckRecord(made, 0, true, !row_.hasRaw && !row_.unread);
    }
}

void RowRun::Logs()
{
    // The time-out of a direct call shows nowhere else.
    const std::string plain = row_.function.substr(row_.function.rfind(':') + 1);
    const std::string name = row_.logs.empty() ? plain : row_.logs;
    const auto named = [&](const char* text) {
        const auto other = row_.misnamed.find(text);
        return (other != row_.misnamed.end() ? other->second : name) + " ";
    };
    const std::string success = Success(Data(kPlain));
    const std::string refusal = Refusal("");
    const struct {
        const char* what;
        Reply reply;
    } cases[] = {
        {"logged on success", {success}}, {"logged when refused", {refusal}}, {"logged when not sent", {"", false}}};
    for (const auto& [what, reply] : cases) {
        variation_ = what;
        test::LogCapture log(false);
        const Made made = Make(kPlain, reply);
        const int timeout = row_.timeoutMs != 0 ? row_.timeoutMs : kUsualWallMs;
        std::string expected = "INFO " + named("request") + "url:[http://127.0.0.1:" + wall_.Port() + row_.path + "]\n";
        if (row_.body.kind != Form::Kind::None) {
            expected +=
                "INFO " + named("request") + "conntent:[" + (made.sent.empty() ? "" : made.sent[0].body) + "]\n";
        }
        if (timeout != kUsualWallMs) {
            expected += "INFO [kkkkpppp]HttpSend timeout : [" + std::to_string(timeout) + "].\n";
        }
        if (!reply.success) {
            expected += "ERROR " + named("unsent") + "HttpSend failed! \n";
        } else {
            expected += "INFO " + named("reply") + "data:[" + reply.body + "]\n";
        }
        if (reply.body == success) {
            for (const std::string& also : row_.also) {
                expected += "INFO " + name + " " + also + "\n";
            }
            expected += "INFO " + name + " success! " + With(row_.success, kPlain) + "\n";
        } else if (reply.success) {
            expected += "ERROR " + name + " failed! \n";
        }
        std::string found;
        for (const std::string& line : log.NewLines()) {
            found += line + "\n";
        }
        Expect("", "\n" + expected, "\n" + found);
    }
}

void RowRun::RefusesEverything()
{
    const std::string data = Data(kPlain);
    const bool judged = row_.judged || !row_.code.empty() || row_.route == Route::Wall;
    for (const bool withData : {true, false}) {
        variation_ = withData ? "refused with data" : "refused without data";
        const Made made = Make(kPlain, {Refusal(withData ? data : "")});
        if (!made.called) {
            return;
        }
        CheckSent(made, kPlain, !judged && withData);
        const bool device = IsDevice() && !withData && result_ < made.after.size() && !row_.tolerant;
        const bool text = !withData && !(gives_.empty() && appends_.empty());
        const bool success = !judged && !device;
        if (!text && !row_.hasReturns) {
            Expect("returns", success ? "true" : "false", made.outcome.success ? "true" : "false");
        }
        if (judged) {
            CheckUntouched(made);
            CheckError(made, {3, 17, row_.route == Route::Wall ? "a message" : ""});
            if (code_ < made.after.size()) {
                Expect("'" + At(code_).name + "'", "17", made.after[code_]);
            }
        } else {
            CheckError(made, kEarlier);
            if (device) {
                CheckUntouched(made);
            } else if (withData && !row_.hasReturns) {
                CheckFilled(made, kPlain, IsDevice() ? Out(kPlain) : data);
            } else if (!text && result_ < made.after.size()) {
                CheckFilled(made, kPlain, "{}");
            }
        }
        CheckRecord(made, row_.unread ? 0 : 17, true, !row_.unread);
    }
}

void RowRun::BeforeTheStart()
{
    variation_ = "before the library's start";
    const Made made = Make(kPlain, {});
    if (!made.called) {
        return;
    }
    if (row_.hasReturns) {
        Expect("returns", Quoted(With(row_.otherwise, kPlain)), made.outcome.returned);
    } else if (made.outcome.success) {
        Fail("returns true");
    }
    CheckUntouched(made);
    CheckError(made, kEarlier);
    CheckErrorOutput(made, {});
    if (made.exchange.sent) {
        Fail("LastExchange says that something was sent");
    }
}

void RowRun::ExecutorFails(const std::string& left, const ErrorCode& error)
{
    variation_ = left.empty() ? "the executor fails" : "the executor fails and leaves " + left;
    const Made made = Make(kPlain, {left, false});
    if (!made.called) {
        return;
    }
    CheckSent(made, kPlain, false);
    if (row_.hasReturns) {
        Expect("returns", Quoted(With(row_.otherwise, kPlain)), made.outcome.returned);
    } else if (made.outcome.success) {
        Fail("returns true");
    }
    CheckUntouched(made);
    if (code_ < made.after.size()) {
        Expect("'" + At(code_).name + "'", made.before[code_], made.after[code_]);
    }
    CheckError(made, error);
    CheckErrorOutput(made, kTransport);
    CheckRecord(made, 0, false, false);
}

void RowRun::CannotBeRead(const std::string& body)
{
    variation_ = body.empty() ? "an empty answer" : "the answer " + body;
    const Made made = Make(kPlain, {body});
    if (!made.called) {
        return;
    }
    CheckSent(made, kPlain, row_.unread);
    if (row_.hasReturns) {
        Expect("returns", Quoted(With(row_.otherwise, kPlain)), made.outcome.returned);
    } else {
        Expect("returns", row_.unread ? "true" : "false", made.outcome.success ? "true" : "false");
    }
    if (!(row_.unread && row_.hasRaw)) { // Whoever hands out bytes hands out none, too.
        CheckUntouched(made);
    }
    if (code_ < made.after.size()) {
        Expect("'" + At(code_).name + "'", made.before[code_], made.after[code_]);
    }
    CheckError(made, row_.route == Route::Wall
                         ? ErrorCode{0, nexwire::CTWDeviceCommon::kNetworkFailure, "网络异常，请稍后再试。"}
                         : kEarlier);
    CheckErrorOutput(made, {});
    CheckRecord(made, 0, true, false);
}

void RowRun::DeviceAnswers(const std::string& out)
{
    variation_ = "the device answers \"" + out + "\"";
    const Made made = Make(kPlain, {Success(DeviceData(out, kPlain))});
    const bool read = result_ < function_.Arguments().size() || (!gives_.empty() && out.empty());
    if (!made.called || (!gives_.empty() && !out.empty())) {
        return;
    }
    const bool success = !read || row_.tolerant;
    Expect("returns", success ? "true" : "false", made.outcome.success ? "true" : "false");
    if (!row_.tolerant) {
        CheckUntouched(made);
    }
}

void RowRun::SendsNothing()
{
    variation_ = "";
    const Made made = Make(kPlain, {Success("{}")});
    if (!made.called) {
        return;
    }
    if (!made.sent.empty()) {
        Fail("sends " + made.sent.front().url);
    }
    if (row_.hasReturns) {
        Expect("returns", Quoted(With(row_.returns, kPlain)), made.outcome.returned);
    } else if (made.outcome.success) {
        Fail("returns true");
    }
    CheckUntouched(made);
    CheckError(made, kEarlier);
}

void RowRun::Run()
{
    if (row_.alone || failures_ > 0) {
        return;
    }
    if (row_.route != Route::Wall && row_.route != Route::Nothing) {
        BeforeTheStart();
    }
    test::Library library;
    library_ = &library;
    if (row_.route == Route::Nothing) {
        SendsNothing();
        return;
    }
    if (row_.route == Route::Wall) {
        Logs();
    }
    for (const std::string& id : kIds) {
        Succeeds(id);
        if (failures_ > 0) {
            return; // The rest would say the same again.
        }
    }
    if (!row_.hasRaw) {
        RefusesEverything();
        CannotBeRead("<html>");
    }
    CannotBeRead("");
    if (row_.route == Route::Wall) {
        ExecutorFails("", {0, nexwire::CTWDeviceCommon::kNetworkFailure, "网络异常，请稍后再试。"});
    } else {
        ExecutorFails("", kTransport);
        ExecutorFails(Refusal(""), row_.failure ? ErrorCode{3, 17, ""} : kTransport);
    }
    if (IsDevice()) {
        for (const std::string& out :
             {std::string(), std::string("null"), Out(kPlain) + "x", std::string(R"({"X":{}})")}) {
            DeviceAnswers(out);
        }
    }
    library_ = nullptr;
}

} // namespace requests
