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

using nexwire::core::ConversionScope;

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
{
    return nexwire::core::ReadEnvelope(*this, body, nullptr);
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
    return nexwire::core::PrintFormatted(scope.Write(structure, nexwire::core::TableOf(structure)));
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

bool ReadEnvelope(protocol::ReturnData& envelope, const std::string& body, const FieldTable* table) noexcept
try {
    if (body.empty()) {
        return false;
    }
    const AnswerBudget budget(body.size());
    enum Member : std::size_t { kCode, kMessage, kData };
    protocol::IJSONStruct* const data = envelope.data.get();
    Wanted payload = kItself;
    if (data != nullptr) {
        payload = table != nullptr ? Wanted(Wanted::Of::Fields, table) : WantedBy(*data);
    }
    const Wanted::Member members[] = {{"code", kItself}, {"msg", kItself}, {"data", payload}};
    if (auto* const watched = WatchedAnswers()) {
        watched->envelope = true;
        watched->data = data != nullptr ? payload.table() : watched->data;
    }
    ConversionScope scope;
    const char* position = nullptr;
    auto tape = scope.Parse(body, position, Wanted(members));
    if (!tape) {
        // Whoever searches logs knows this place.
        NEXWIRE_LOG_ERROR_OF("bool protocol::ReturnData::Parse(const std::string&)",
                             "Failed to cJSON_Parse( [%s] ). Error info: [%s].", body.c_str(), position);
        return false;
    }
    const TapeEntry& root = tape->Next();
    for (std::size_t i = 0; i < root.size() && root.what() == TapeEntry::What::Object; ++i) {
        const TapeEntry& member = tape->Next();
        switch (member.index()) {
        case kCode:
            // The everyday answer without the detour over streams.
            envelope.code =
                member.text() == "0-0" ? Keel::Error::ErrorCode() : protocol::Str2ErrorCode(std::string(member.text()));
            envelope.coded = std::count(member.text().begin(), member.text().end(), '-') == 1;
            break;
        case kMessage:
            envelope.msg = member.text();
            break;
        default:
            if (data != nullptr) {
                Hand(*data, payload, member, *tape);
            }
            break;
        }
    }
    return true;
} catch (const AnswerTooCostly&) {
    return ReportTooCostly(body.size());
} catch (...) {
    return false;
}

bool ReadText(protocol::IJSONStruct& out, const char* root, const std::string& json, const char* caller)
try {
    if (json.empty()) {
        return false;
    }
    const AnswerBudget budget(json.size());
    const Wanted wanted = WantedBy(out);
    const Wanted::Member member[] = {{root != nullptr ? root : "", wanted}};
    ConversionScope scope;
    const char* position = nullptr;
    auto tape = scope.Parse(json, position, root != nullptr ? Wanted(member) : wanted);
    if (!tape) {
        NEXWIRE_LOG_ERROR_OF(caller, "Failed to cJSON_Parse( [%s] ). Error info: [%s].", json.c_str(), position);
        return false;
    }
    const TapeEntry* value = &tape->Next();
    if (root != nullptr) {
        if (value->what() != TapeEntry::What::Object || value->size() == 0) {
            // Nothing was unreadable, so there is no error position to show.
            NEXWIRE_LOG_ERROR_OF(caller, "Failed to cJSON_GetObjectItem([%s]). Error info: [%s].", root, "");
            return false;
        }
        value = &tape->Next();
    }
    Hand(out, wanted, *value, *tape);
    return true;
} catch (const AnswerTooCostly&) {
    return ReportTooCostly(json.size());
}

std::string Serialize(const protocol::IInboundData& request)
{
    ConversionScope scope;
    const char* const root = request.RootName();
    const FieldTable* const fields = IsOfTable(request, request.Fields()) ? &request.Fields() : nullptr;
    return root != nullptr ? PrintFormatted(scope.Write(request, fields, root)) : std::string();
}

} // namespace nexwire::core
