// A query's answer with persons of the register, all their sections filled, turn by turn with RapidJSON's DOM that
// fills the same structures. With --arena conversions run in the arena, a choice for the whole process.

#include <cstring>
#include <ctime>
#include <memory>

#include <benchmark/benchmark.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "Turns.h"
#include "nexwire/ConversionArena.h"
#include "nexwire/HTTPCommonJSONStruct.h"
#include "nexwire/ParseJSONUtil.h"
#include "protocol/Personnel/Person.h"

namespace {

using namespace protocol::personnelcommon;

constexpr std::size_t kTemplate = 512; ///< Characters of a fingerprint or an iris.
constexpr std::size_t kPicture = 2048; ///< Characters of a small face.

/// Characters as of Base64, other ones for every person.
std::string Data(std::size_t length, std::size_t seed)
{
    std::string text(length, 'A');
    for (char& c : text) {
        seed = seed * 1103515245 + 12345;
        c = static_cast<char>('A' + seed / 65536 % 26);
    }
    return text;
}

PersonnelInfo MakePerson(std::size_t i)
{
    const std::string number = std::to_string(100000 + i);
    const std::string guid = "7F3C9A52B1E84D06A4C700000" + number;
    const std::string time = "2026-03-01T08:00:00+00:00";
    PersonnelInfo person;
    person.basic.guid = guid;
    person.basic.personNo = number;
    person.basic.name = i % 3 == 0 ? "王小明" + number : "Alexandra Lindqvist " + number;
    person.basic.orgGuid = "0B64E1D97C3548F20000000000000001";
    person.basic.orgName = "Production";
    person.basic.phone = "1390" + number;
    person.basic.email = number + "@example.org";
    person.basic.validBegin = person.basic.validEnd = person.basic.createTime = person.basic.modifyTime = time;
    person.accesscontrol.personPassword = number;
    person.accesscontrol.verifyMode = "cardAndPw";
    person.resident.buildingNo = person.resident.roomNo = static_cast<std::int32_t>(i % 400);
    person.cardList.resize(2);
    for (CardInfo& card : person.cardList) {
        card.cardNo = "4000" + number;
        card.issueTime = card.validBegin = card.validEnd = time;
    }
    person.fingerprintList.resize(2);
    for (FingerprintInfo& finger : person.fingerprintList) {
        finger.fingerprintGuid = finger.collectDeviceGuid = guid;
        finger.fingerprintName = "Right index";
        finger.fingerData = Data(kTemplate, i);
        finger.dataFormat = "private";
        finger.collectTime = time;
    }
    FaceInfo& face = person.faceList.emplace_back();
    face.faceGuid = face.collectDeviceGuid = guid;
    face.faceData = Data(kPicture, i);
    face.faceUrl = "/pictures/" + guid + ".jpg";
    face.collectTime = time;
    IrisInfo& iris = person.irisList.emplace_back();
    iris.irisGuid = iris.collectDeviceGuid = guid;
    iris.irisData = Data(kTemplate, i);
    iris.collectTime = time;
    person.addition.position = "Engineer";
    person.addition.employeeNo = "E" + number;
    person.addition.hireDate = "2020-01-01";
    person.addition.address = "12 Example Street, Sampletown";
    person.addition.plateNoList = {"NX " + number};
    person.addition.remark = "badge \"old\" returned";
    for (const char* const name : {"Locker", "Shoe size"}) {
        PrivateData& value = person.privateDataList.emplace_back();
        value.propertyGuid = guid;
        value.name = name;
        value.value = number;
    }
    person.ext = "kept";
    return person;
}

std::string Answer(std::size_t count)
{
    TotalData data;
    data.totalNum = static_cast<std::int32_t>(count);
    data.pageNo = 1;
    for (std::size_t i = 0; i < count; ++i) {
        data.personnelInfoList.push_back(MakePerson(i));
    }
    rapidjson::Document document;
    document.Parse(protocol::StructureToJSON(data).c_str());
    rapidjson::StringBuffer text;
    rapidjson::Writer<rapidjson::StringBuffer> writer(text);
    document.Accept(writer);
    return R"({"code":"0-0","msg":"success","data":)" + std::string(text.GetString(), text.GetSize()) + "}";
}

bool ReadWithNexwire(const std::string& answer, TotalData& result)
{
    protocol::ReturnData envelope(std::shared_ptr<protocol::IJSONStruct>(std::shared_ptr<void>(), &result));
    return envelope.Parse(answer) && envelope.code.number == 0;
}

// ---- The peer ----

using rapidjson::Value;

template <class Structure>
void Pick(const Value& value, Structure& out);

/// Reads members by their names; a missing one leaves its default, as with the library.
class From {
public:
    explicit From(const Value& object) : object_(object) {}

    From& operator()(const char* key, std::string& out)
    {
        const Value* const value = Find(key);
        if (value != nullptr && value->IsString()) {
            out.assign(value->GetString(), value->GetStringLength());
        }
        return *this;
    }
    From& operator()(const char* key, std::int32_t& out)
    {
        const Value* const value = Find(key);
        if (value != nullptr && value->IsInt()) {
            out = value->GetInt();
        }
        return *this;
    }
    From& operator()(const char* key, bool& out)
    {
        const Value* const value = Find(key);
        if (value != nullptr && value->IsBool()) {
            out = value->GetBool();
        }
        return *this;
    }
    From& operator()(const char* key, std::vector<std::string>& out)
    {
        return Each(key, out, [](const Value& value, std::string& text) {
            text.assign(value.GetString(), value.GetStringLength());
        });
    }
    template <class Structure>
    From& operator()(const char* key, std::vector<Structure>& out)
    {
        return Each(key, out, [](const Value& value, Structure& element) { Pick(value, element); });
    }
    template <class Structure>
    From& operator()(const char* key, Structure& out)
    {
        const Value* const value = Find(key);
        if (value != nullptr && value->IsObject()) {
            Pick(*value, out);
        }
        return *this;
    }

private:
    const Value* Find(const char* key) const
    {
        const auto member = object_.FindMember(key);
        return member == object_.MemberEnd() ? nullptr : &member->value;
    }
    template <class Element, class Read>
    From& Each(const char* key, std::vector<Element>& out, const Read& read)
    {
        const Value* const value = Find(key);
        if (value != nullptr && value->IsArray()) {
            out.reserve(value->Size());
            for (const Value& each : value->GetArray()) {
                read(each, out.emplace_back());
            }
        }
        return *this;
    }

    const Value& object_;
};

template <>
void Pick(const Value& v, PersonBasic& o)
{
    From{v}("guid", o.guid)("personNo", o.personNo)("name", o.name)("orgGuid", o.orgGuid)("orgName", o.orgName)(
        "personType", o.personType)("gender", o.gender)("birthday", o.birthday)("certificateType", o.certificateType)(
        "certificateNo", o.certificateNo)("phone", o.phone)("email", o.email)("validBegin", o.validBegin)(
        "validEnd", o.validEnd)("createTime", o.createTime)("modifyTime", o.modifyTime);
}
template <>
void Pick(const Value& v, PersonAccessControl& o)
{
    From{v}("superAuthority", o.superAuthority)("extendedOpen", o.extendedOpen)("dutyCard", o.dutyCard)(
        "deviceOperator", o.deviceOperator)("personPassword", o.personPassword)("verifyMode", o.verifyMode)(
        "maxOpenTimes", o.maxOpenTimes)("floorNo", o.floorNo);
}
template <>
void Pick(const Value& v, PersonResident& o)
{
    From{v}("periodNo", o.periodNo)("buildingNo", o.buildingNo)("unitNo", o.unitNo)("floorNo", o.floorNo)(
        "roomNo", o.roomNo)("relation", o.relation)("moveInDate", o.moveInDate)("phone", o.phone);
}
template <>
void Pick(const Value& v, CardInfo& o)
{
    From{v}("cardNo", o.cardNo)("cardType", o.cardType)("cardState", o.cardState)("cardPassword", o.cardPassword)(
        "issueTime", o.issueTime)("validBegin", o.validBegin)("validEnd", o.validEnd)("ext", o.ext);
}
template <>
void Pick(const Value& v, FingerprintInfo& o)
{
    From{v}("fingerprintGuid", o.fingerprintGuid)("fingerprintName", o.fingerprintName)("fingerNo", o.fingerNo)(
        "fingerType", o.fingerType)("fingerData", o.fingerData)("fingerDataLen", o.fingerDataLen)("quality", o.quality)(
        "dataFormat", o.dataFormat)("collectDeviceGuid", o.collectDeviceGuid)("collectTime", o.collectTime)("ext",
                                                                                                            o.ext);
}
template <>
void Pick(const Value& v, FaceInfo& o)
{
    From{v}("faceGuid", o.faceGuid)("faceName", o.faceName)("faceData", o.faceData)("faceDataLen", o.faceDataLen)(
        "faceUrl", o.faceUrl)("modelData", o.modelData)("modelDataLen", o.modelDataLen)("modelVersion", o.modelVersion)(
        "quality", o.quality)("collectDeviceGuid", o.collectDeviceGuid)("collectTime", o.collectTime)("ext", o.ext);
}
template <>
void Pick(const Value& v, IrisInfo& o)
{
    From{v}("irisGuid", o.irisGuid)("irisNo", o.irisNo)("irisData", o.irisData)("irisDataLen", o.irisDataLen)(
        "quality", o.quality)("collectDeviceGuid", o.collectDeviceGuid)("collectTime", o.collectTime)("ext", o.ext);
}
template <>
void Pick(const Value& v, PersonAddition& o)
{
    From{v}("position", o.position)("employeeNo", o.employeeNo)("hireDate", o.hireDate)("leaveDate", o.leaveDate)(
        "nationality", o.nationality)("address", o.address)("plateNoList", o.plateNoList)("remark", o.remark);
}
template <>
void Pick(const Value& v, PrivateData& o)
{
    From{v}("propertyGuid", o.propertyGuid)("name", o.name)("value", o.value);
}
template <>
void Pick(const Value& v, PersonnelInfo& o)
{
    From{v}("basic", o.basic)("accesscontrol", o.accesscontrol)("resident", o.resident)("cardList", o.cardList)(
        "fingerprintList", o.fingerprintList)("faceList", o.faceList)("irisList", o.irisList)("addition", o.addition)(
        "privateDataList", o.privateDataList)("ext", o.ext);
}

bool ReadWithRapidJson(const std::string& answer, TotalData& result)
{
    rapidjson::Document document;
    document.Parse(answer.data(), answer.size());
    if (document.HasParseError() || !document.IsObject() || !document.HasMember("data")) {
        return false;
    }
    From{document["data"]}("totalNum", result.totalNum)("pageNo", result.pageNo)("personnelInfoList",
                                                                                 result.personnelInfoList);
    return true;
}

// ---- The measurement ----

/// Processor time of this process: others on the machine take none of it.
double ProcessorSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

void Persons(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::string answer = Answer(count);
    TotalData made;
    TotalData theirs;
    // Written out again both are the same, members and order.
    if (!ReadWithNexwire(answer, made) || !ReadWithRapidJson(answer, theirs) ||
        made.personnelInfoList.size() != count ||
        protocol::StructureToJSON(made) != protocol::StructureToJSON(theirs)) {
        state.SkipWithError("read something else");
        return;
    }
    const auto once = [&](bool (*read)(const std::string&, TotalData&)) {
        TotalData result;
        const bool good = read(answer, result);
        benchmark::DoNotOptimize(result);
        benchmark::ClobberMemory();
        return good;
    };
    bench::Turns turns(&ProcessorSeconds);
    for (auto _ : state) {
        turns.Take([&] { return once(ReadWithNexwire); }, [&] { return once(ReadWithRapidJson); });
    }
    bench::Report(state, turns.Own() * 1e6 / static_cast<double>(count), turns.Ratio(), 1.0, "us/el|rapidjson");
}

} // namespace

int main(int argc, char** argv)
{
    const bool arena = argc > 1 && std::strcmp(argv[1], "--arena") == 0;
    if (arena) {
        nexwire::UseConversionArena(std::size_t{256} << 20);
        argv[1] = argv[0];
        --argc;
        ++argv;
    }
    benchmark::RegisterBenchmark(arena ? "persons, all sections, arena" : "persons, all sections", Persons)
        ->Arg(100)
        ->Arg(5000)
        ->Iterations(12)
        ->UseRealTime();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
