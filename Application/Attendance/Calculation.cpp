#include "nexwire/Attendance/Calculation.h"

#include <utility>

#include <rapidjson/document.h>

#include "core/Pipeline.h"

namespace nexwire {
namespace {

using Value = rapidjson::Value;

const Value* Find(const Value& object, const char* key)
{
    if (!object.IsObject()) {
        return nullptr;
    }
    const auto member = object.FindMember(key);
    return member == object.MemberEnd() ? nullptr : &member->value;
}

/// Reads the members of one object, in the order in which answers mostly have them. Once one is missing or of another
/// type, the object is no good.
class RowReader {
public:
    explicit RowReader(const Value& object) : object_(object), next_(object.MemberBegin()) {}

    RowReader& Text(const char* key, std::string& text)
    {
        const Value* const value = Take(key);
        good_ = value != nullptr && value->IsString();
        if (good_) {
            text.assign(value->GetString(), value->GetStringLength());
        }
        return *this;
    }
    RowReader& Number(const char* key, std::int32_t& number)
    {
        const Value* const value = Take(key);
        good_ = value != nullptr && value->IsInt();
        if (good_) {
            number = value->GetInt();
        }
        return *this;
    }
    bool Good() const { return good_; }

private:
    const Value* Take(const char* key)
    {
        if (!good_) {
            return nullptr;
        }
        if (next_ == object_.MemberEnd() || next_->name != key) {
            next_ = object_.FindMember(key);
            if (next_ == object_.MemberEnd()) {
                return nullptr;
            }
        }
        return &(next_++)->value;
    }

    const Value& object_;
    Value::ConstMemberIterator next_;
    bool good_ = true;
};

bool ReadRow(const Value& object, protocol::StatisticsCalc& row)
{
    return object.IsObject() && RowReader(object)
                                    .Text("personnelID", row.personnelID)
                                    .Text("personnelCode", row.personnelCode)
                                    .Text("personnelName", row.personnelName)
                                    .Text("orgName", row.orgName)
                                    .Text("attendenceDate", row.attendenceDate)
                                    .Text("shiftName", row.shiftName)
                                    .Text("periodID", row.periodID)
                                    .Text("periodName", row.periodName)
                                    .Text("startWorkStatus", row.startWorkStatus)
                                    .Text("endWorkStatus", row.endWorkStatus)
                                    .Number("lateDuration", row.lateDuration)
                                    .Number("earlyDuration", row.earlyDuration)
                                    .Number("attendanceDuration", row.attendanceDuration)
                                    .Number("absenceDuration", row.absenceDuration)
                                    .Number("workDuration", row.workDuration)
                                    .Number("restDuartion", row.restDuartion)
                                    .Text("vocationName", row.vocationName)
                                    .Number("vocationDuartion", row.vocationDuartion)
                                    .Number("level1Duartion", row.level1Duartion)
                                    .Number("level2Duartion", row.level2Duartion)
                                    .Number("level3Duartion", row.level3Duartion)
                                    .Text("detail", row.detail)
                                    .Good();
}

/// Code and message of the envelope around the page.
protocol::ReturnData EnvelopeOf(const Value& document)
{
    protocol::ReturnData envelope;
    const Value* const code = Find(document, "code");
    const Value* const message = Find(document, "msg");
    if (code != nullptr) {
        envelope.code = protocol::Str2ErrorCode(code->IsString() ? code->GetString() : "");
        envelope.coded = code->IsString();
    }
    if (message != nullptr && message->IsString()) {
        envelope.msg = message->GetString();
    }
    return envelope;
}

} // namespace

bool CalculateComm::manualCalculate(protocol::ManualResultData& result, const protocol::ManualCalcCondition& condition)
{
    return ExchangeJudged(Query("/7730/v1/attendance/calculation/manual", condition), result);
}

bool CalculateComm::queryCalculate(protocol::StatisticsCalcDataData& result,
                                   const protocol::StatisticsCalcCondition& condition)
{
    return core::Guard([&] {
        RspInfos response;
        return core::Execute(response, Query("/7730/v1/attendance/statistics/calculation", condition)) &&
               ParseRapidJson(result, response.body);
    });
}

bool CalculateComm::queryCalculateStatus(protocol::CalculateStatusData& result)
{
    return ExchangeJudged(Query("/7730/v1/attendance/calculate/status"), result);
}

bool CalculateComm::ParseRapidJson(protocol::StatisticsCalcDataData& result, const std::string& body)
{
    rapidjson::Document document;
    // Not by recursion: how deep an answer nests is not ours to say.
    document.Parse<rapidjson::kParseIterativeFlag>(body.data(), body.size());
    if (document.HasParseError() || !core::Settle(EnvelopeOf(document), core::Verdict::Judge)) {
        return false;
    }
    const Value* const data = Find(document, "data");
    const Value* const page = data != nullptr ? Find(*data, "statisticsCalcData") : nullptr;
    const Value* const list = page != nullptr ? Find(*page, "statisticsCalcList") : nullptr;
    protocol::StatisticsCalcData fresh;
    if (list == nullptr || !list->IsArray() ||
        !RowReader(*page)
             .Number("total", fresh.total)
             .Number("pageSize", fresh.pageSize)
             .Number("pageNo", fresh.pageNo)
             .Good()) {
        return false;
    }
    fresh.statisticsCalcList.resize(list->Size());
    protocol::StatisticsCalc* row = fresh.statisticsCalcList.data();
    for (const Value& element : list->GetArray()) {
        if (!ReadRow(element, *row++)) {
            return false;
        }
    }
    result.statisticsCalcData = std::move(fresh);
    return true;
}

} // namespace nexwire
