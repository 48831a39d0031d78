#include <algorithm>
#include <charconv>

#include "src/Base64.h"
#include "src/Drawing.h"
#include "src/Rules.h"
#include "src/Services.h"

namespace nexwire::simulator {
namespace {

constexpr const char* kFiles = "_files";
constexpr const char* kSlices = "_slices";
constexpr const char* kLast = "_lastFile"; ///< Of each plan.
constexpr std::int64_t kUsualSize = 1024;

std::int64_t Number(std::string_view text, std::int64_t otherwise)
{
    std::int64_t number = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
    return parsed.ec == std::errc() ? number : otherwise;
}

// A parameter of the query, which comes behind the path or as a header field.
std::string_view Parameter(const Handling& handling, std::string_view name)
{
    const auto field = handling.request.headers.find("query");
    for (std::string_view text :
         {std::string_view(handling.request.query),
          field == handling.request.headers.end() ? std::string_view() : std::string_view(field->second)}) {
        while (!text.empty()) {
            const std::string_view one = text.substr(0, text.find('&'));
            if (one.size() > name.size() && one.substr(0, name.size()) == name && one[name.size()] == '=') {
                return one.substr(name.size() + 1);
            }
            text.remove_prefix(std::min(one.size() + 1, text.size()));
        }
    }
    return {};
}

std::string KeyOf(const Handling& handling, std::string_view upload)
{
    std::string key = handling.action->planName;
    for (const std::string& identifier : handling.identifiers) {
        key += "/" + identifier;
    }
    return upload.empty() ? key : key + "?" + std::string(upload);
}

// The bytes of the one part of a multipart body; the whole body when it is none. False without any part.
bool Part(const Handling& handling, std::string_view& bytes)
{
    bytes = handling.request.body;
    const auto field = handling.request.headers.find("content-type");
    const std::string type = field == handling.request.headers.end() ? std::string() : field->second;
    if (!BeginsWith(type, "multipart/form-data")) {
        return !bytes.empty();
    }
    const std::size_t at = type.find("boundary=");
    if (at == std::string::npos) {
        throw Refusal(Reason::kMissingField, "boundary");
    }
    const std::string border = "--" + type.substr(at + 9, type.find_first_of("; \"", at + 9) - at - 9);
    if (bytes.empty()) {
        return false;
    }
    if (bytes.find(border + "--") == std::string_view::npos) {
        throw Refusal(Reason::kWrongType, "the body does not end with its boundary");
    }
    // Parts without a file name say something about the slice; a request without a file closes the upload.
    for (std::size_t begin = bytes.find(border + "\r\n"); begin != std::string_view::npos;
         begin = bytes.find(border + "\r\n", begin + 1)) {
        const std::size_t head = bytes.find("\r\n\r\n", begin);
        const std::size_t end = head == std::string_view::npos ? head : bytes.find("\r\n" + border, head + 2);
        if (end == std::string_view::npos) {
            throw Refusal(Reason::kWrongType, "a part of the body does not end");
        }
        const std::string_view fields = bytes.substr(begin, head - begin);
        if (fields.find("filename=") != std::string_view::npos) {
            bytes = bytes.substr(head + 4, end - head - 4);
            return true;
        }
        if (fields.find("name=\"file\"") != std::string_view::npos) {
            throw Refusal(Reason::kMissingField, "filename");
        }
    }
    return false;
}

// The document that the files belong to; null when the plan names none. Refuses when there is no such document.
Json Owner(Handling& handling)
{
    const Json* of = Member(*handling.action->plan, "of");
    return of == nullptr ? Json()
                         : handling.Need(*handling.description.FindCollection(AsText(of)), handling.identifiers.back());
}

void Complete(Handling& handling, const std::string& key, Json& file)
{
    SetMember(file, "complete", Json(true), handling.Memory());
    handling.Save(kFiles, key, file);
    Json owner = Owner(handling);
    const Json* flag = Member(*handling.action->plan, "flag");
    if (owner.IsObject() && flag != nullptr) {
        SetMember(owner, AsText(flag), Json(true), handling.Memory());
        handling.Save(AsText(Member(*handling.action->plan, "of")), handling.identifiers.back(), owner);
    }
}

void PutSlice(Handling& handling)
{
    Allocator& memory = handling.Memory();
    std::string upload(Parameter(handling, "uploadGuid"));
    const std::string key = KeyOf(handling, upload);
    Owner(handling);
    Json file = handling.Load(kFiles, key);
    std::string_view bytes;
    if (!Part(handling, bytes)) {
        if (!file.IsObject()) {
            throw Refusal(Reason::kUnknownGuid, "\"" + upload + "\"");
        }
        Complete(handling, key, file);
    } else {
        if (!file.IsObject() || AsBool(Member(file, "complete"))) {
            file = Json(rapidjson::kObjectType);
            SetMember(file, "size", Json(0), memory);
            SetMember(file, "slices", Json(rapidjson::kArrayType), memory);
        }
        Json& slices = *Member(file, "slices");
        Json slice(rapidjson::kObjectType);
        SetMember(slice, "bytes", MakeText(ToBase64(bytes), memory), memory);
        handling.Save(kSlices, key + "#" + std::to_string(slices.Size()), slice);
        slices.PushBack(Json(static_cast<std::int64_t>(bytes.size())), memory);
        const std::int64_t size = AsInt(Member(file, "size")) + static_cast<std::int64_t>(bytes.size());
        SetMember(file, "size", Json(size), memory);
        Json last(rapidjson::kObjectType);
        SetMember(last, "key", MakeText(key, memory), memory);
        handling.Save(kLast, handling.action->planName, last);
        SetMember(file, "complete", Json(false), memory);
        if (size >= Number(Parameter(handling, "totalBytes"), size + 1)) {
            Complete(handling, key, file);
        } else {
            handling.Save(kFiles, key, file);
        }
    }
    handling.Define("guid", MakeText(upload.empty() ? NewGuid() : upload, memory));
    handling.Define("doc", Json(rapidjson::kObjectType));
    Compose(handling);
}

void CloseFile(Handling& handling)
{
    const std::string key = KeyOf(handling, Parameter(handling, "uploadGuid"));
    Json file = handling.Load(kFiles, key);
    if (!file.IsObject()) {
        throw Refusal(Reason::kUnknownGuid, "\"" + key + "\"");
    }
    Complete(handling, key, file);
    Compose(handling);
}

// Bytes of a file that nobody sent: the first ones tell what they claim to be.
std::string Made(std::int64_t begin, std::int64_t end, std::string_view type)
{
    const std::string_view magic = type == "image/jpeg"  ? "\xFF\xD8\xFF\xE0"
                                   : type == "image/png" ? "\x89PNG\r\n\x1A\n"
                                                         : "";
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(end - begin));
    for (std::int64_t i = begin; i < end; ++i) {
        const auto at = static_cast<std::size_t>(i);
        bytes += at < magic.size() ? magic[at] : static_cast<char>('a' + i % 26);
    }
    return bytes;
}

std::string Stored(Handling& handling, const std::string& key, const Json& file, std::int64_t begin, std::int64_t end)
{
    std::string all;
    std::int64_t at = 0;
    rapidjson::SizeType index = 0;
    for (const Json& size : Member(file, "slices")->GetArray()) {
        const std::int64_t from = std::max(begin, at);
        const std::int64_t to = std::min(end, at + AsInt(&size));
        if (from < to) {
            const Json slice = handling.Load(kSlices, key + "#" + std::to_string(index));
            std::string bytes;
            FromBase64(std::string(AsText(Member(slice, "bytes"))), bytes);
            all += bytes.substr(static_cast<std::size_t>(from - at), static_cast<std::size_t>(to - from));
        }
        at += AsInt(&size);
        ++index;
    }
    return all;
}

void GetBytes(Handling& handling)
{
    const Json& plan = *handling.action->plan;
    const std::string key = KeyOf(handling, Parameter(handling, "uploadGuid"));
    const Json owner = Owner(handling);
    const Json file = handling.Load(kFiles, key);
    if (!file.IsObject() && owner.IsObject() && !AsBool(Member(owner, AsText(Member(plan, "flag"))))) {
        throw Refusal(Reason::kUnknownGuid, "nobody sent this file");
    }
    std::string drawn;
    if (const Json* size = Member(plan, "drawn"); size != nullptr && !file.IsObject()) {
        drawn = DrawPlan(key, static_cast<int>(AsInt(Member(*size, "width"), 1)),
                         static_cast<int>(AsInt(Member(*size, "height"), 1)))
                    .Jpeg();
    }
    const std::int64_t total = file.IsObject()  ? AsInt(Member(file, "size"))
                               : !drawn.empty() ? static_cast<std::int64_t>(drawn.size())
                                                : AsInt(Member(plan, "sample"), kUsualSize);
    Answer answer;
    answer.type = AsText(Member(plan, "type"), "application/octet-stream");
    std::int64_t begin = 0;
    std::int64_t end = total;
    const auto range = handling.request.headers.find("range");
    if (range != handling.request.headers.end() && BeginsWith(range->second, "bytes=")) {
        const std::string_view text = std::string_view(range->second).substr(6);
        begin = Number(text, 0);
        const std::size_t dash = text.find('-');
        end = std::min(total, Number(dash == std::string_view::npos ? "" : text.substr(dash + 1), total) + 1);
        if (begin >= total || end <= begin) {
            answer.status = 416;
            answer.range = "bytes */" + std::to_string(total);
            handling.bytes = std::move(answer);
            return;
        }
        answer.status = 206;
        answer.range = "bytes " + std::to_string(begin) + "-" + std::to_string(end - 1) + "/" + std::to_string(total);
    }
    answer.body = file.IsObject() ? Stored(handling, key, file, begin, end)
                  : !drawn.empty()
                      ? drawn.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin))
                      : Made(begin, end, answer.type);
    handling.bytes = std::move(answer);
}

/// Quotes hold commas, and quotes that are doubled.
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

} // namespace

void EraseFile(Handling& handling, const std::string& plan, std::string_view identifier)
{
    const std::string key = plan + "/" + std::string(identifier);
    const Json file = handling.Load(kFiles, key);
    for (std::size_t slice = 0; slice < Elements(Member(file, "slices")).Size(); ++slice) {
        handling.store.Erase(kSlices, key + "#" + std::to_string(slice));
    }
    handling.store.Erase(kFiles, key);
}

bool ReadFile(Handling& handling, const std::string& plan, std::string_view upload, std::string& bytes, bool closed)
{
    const std::string key = plan + "?" + std::string(upload);
    const Json file = handling.Load(kFiles, key);
    if (!file.IsObject() || (closed && !AsBool(Member(file, "complete")))) {
        return false;
    }
    bytes = Stored(handling, key, file, 0, AsInt(Member(file, "size")));
    return true;
}

std::vector<std::vector<std::string>> LastTable(Handling& handling, const std::string& plan)
{
    const Json last = handling.Load(kLast, plan);
    const std::string key(AsText(Member(last, "key")));
    const Json file = handling.Load(kFiles, key);
    if (!file.IsObject()) {
        throw Refusal(Reason::kUnknownGuid, "no file has been uploaded");
    }
    const std::string text = Stored(handling, key, file, 0, AsInt(Member(file, "size")));
    std::vector<std::vector<std::string>> lines;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        lines.push_back(Cells(std::string_view(text).substr(begin, end - begin)));
        begin = end + 1;
    }
    return lines;
}

void AddFiles(Services& services)
{
    services["file.put"] = PutSlice;
    services["file.close"] = CloseFile;
    services["file.get"] = GetBytes;
}

} // namespace nexwire::simulator
