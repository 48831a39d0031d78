#include "nexwire/HTTPCommonJSONStruct.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <locale>
#include <sstream>
#include <utility>
#include <vector>

#include "core/AnswerBudget.h"
#include "core/AnswerReads.h"
#include "core/FieldTable.h"
#include "core/JsonTree.h"
#include "core/Log.h"
#include "core/Serialize.h"
#include "nexwire/ParseJSONUtil.h"

// Memory may run out in each of these; nothing is thrown across the library's boundary.

namespace protocol {
namespace {

using nexwire::core::AnswerBudget;
using nexwire::core::ConversionScope;
using nexwire::core::Wanted;

/// The table of a structure, if it says all of it: a structure of the host's own may be anything.
const nexwire::core::FieldTable& TableOf(const IJSONStruct& structure)
{
    if (const auto* const result = dynamic_cast<const IReturnData*>(&structure)) {
        return result->Fields();
    }
    if (const auto* const request = dynamic_cast<const IInboundData*>(&structure)) {
        return request->Fields();
    }
    static constexpr nexwire::core::FieldTable kNone = {"", "", nullptr, 0, {}};
    return kNone;
}

/// What a structure reads of a value.
Wanted WantedBy(const IJSONStruct& structure)
{
    const nexwire::core::FieldTable& fields = TableOf(structure);
    if (!nexwire::core::IsOfTable(structure, fields)) {
        return nexwire::core::kEverything;
    }
    return {Wanted::Of::Fields, &fields, nullptr, 0};
}

const char* TextOf(const cJSON* node)
{
    return cJSON_IsString(node) != 0 && node->valuestring != nullptr ? node->valuestring : "";
}

std::int32_t ReadNumber(const std::string& piece)
{
    std::istringstream stream(piece);
    stream.imbue(std::locale::classic());
    std::int32_t number = 0;
    // Out of range leaves the nearest end of the range, no number at all leaves 0.
    stream >> std::dec >> number;
    return number;
}

} // namespace

ReturnData::ReturnData(std::shared_ptr<IJSONStruct> data_) : data(std::move(data_)) {}

bool ReturnData::Parse(const std::string& body)
try {
    if (body.empty()) {
        return false;
    }
    const AnswerBudget budget(body.size());
    const Wanted::Member members[] = {{"code", nexwire::core::kItself},
                                      {"msg", nexwire::core::kItself},
                                      {"data", data ? WantedBy(*data) : nexwire::core::kItself}};
    if (auto* const watched = nexwire::core::WatchedAnswers()) {
        watched->envelope = true;
        watched->data = data ? members[2].wanted.table : watched->data;
    }
    ConversionScope scope;
    const char* position = nullptr;
    const cJSON* const root = scope.Parse(body, position, {Wanted::Of::Members, nullptr, members, std::size(members)});
    if (root == nullptr) {
        NEXWIRE_LOG_ERROR("Failed to cJSON_Parse( [%s] ). Error info: [%s].", body.c_str(), position);
        return false;
    }
    if (const cJSON* const node = cJSON_GetObjectItemCaseSensitive(root, "code")) {
        const char* const text = TextOf(node);
        // The everyday answer without the detour over streams.
        code = std::string_view(text) == "0-0" ? Keel::Error::ErrorCode() : Str2ErrorCode(text);
        coded = std::count(text, text + std::strlen(text), '-') == 1;
    }
    if (const cJSON* const node = cJSON_GetObjectItemCaseSensitive(root, "msg")) {
        msg = TextOf(node);
    }
    const cJSON* const payload = cJSON_GetObjectItemCaseSensitive(root, "data");
    if (data && payload != nullptr) {
        data->Parse(payload);
    }
    return true;
} catch (const nexwire::core::AnswerTooCostly&) {
    return nexwire::core::ReportTooCostly(body.size());
} catch (...) {
    return false;
}

Keel::Error::ErrorCode Str2ErrorCode(const std::string& code)
try {
    Keel::Error::ErrorCode result;
    const std::vector<std::string> pieces = Keel::StringUtil::SplitString(code, "-");
    if (pieces.size() != 2) {
        NEXWIRE_LOG_ERROR("Invalid return code. code: [%s].", code.c_str());
        return result;
    }
    result.category = ReadNumber(pieces[0]);
    result.number = ReadNumber(pieces[1]);
    return result;
} catch (...) {
    return {};
}

bool ParseJSONText(IJSONStruct& out, const char* root, const std::string& json, const char* caller)
try {
    return nexwire::core::ReadText(out, root, json, caller);
} catch (...) {
    return false;
}

std::string StructureToJSON(const IJSONStruct& structure)
try {
    ConversionScope scope;
    return nexwire::core::PrintFormatted(scope.Write(structure, TableOf(structure)));
} catch (...) {
    return {};
}

std::string SerializeRequest(const IInboundData& request)
try {
    return nexwire::core::Serialize(request);
} catch (...) {
    return {};
}

} // namespace protocol

namespace nexwire::core {

bool ReadText(protocol::IJSONStruct& out, const char* root, const std::string& json, const char* caller)
try {
    if (json.empty()) {
        return false;
    }
    const AnswerBudget budget(json.size());
    const Wanted wanted = protocol::WantedBy(out);
    const Wanted::Member member = {root, wanted};
    ConversionScope scope;
    const char* position = nullptr;
    const cJSON* node =
        scope.Parse(json, position, root != nullptr ? Wanted{Wanted::Of::Members, nullptr, &member, 1} : wanted);
    if (node == nullptr) {
        NEXWIRE_LOG_ERROR_OF(caller, "Failed to cJSON_Parse( [%s] ). Error info: [%s].", json.c_str(), position);
        return false;
    }
    if (root != nullptr) {
        node = cJSON_GetObjectItemCaseSensitive(node, root);
        if (node == nullptr) {
            // Nothing was unreadable, so there is no error position to show.
            NEXWIRE_LOG_ERROR_OF(caller, "Failed to cJSON_GetObjectItem([%s]). Error info: [%s].", root, "");
            return false;
        }
    }
    out.Parse(node);
    return true;
} catch (const AnswerTooCostly&) {
    return ReportTooCostly(json.size());
}

std::string Serialize(const protocol::IInboundData& request)
{
    ConversionScope scope;
    const char* const root = request.RootName();
    return root != nullptr ? PrintFormatted(scope.Write(request, request.Fields(), root)) : std::string();
}

} // namespace nexwire::core
