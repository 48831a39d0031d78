#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <rapidjson/pointer.h>

#include "src/Services.h"

// What the words of resource files do, on a small library of its own.

namespace {

using namespace nexwire::simulator;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

const std::string kLibrary = R"json({
    "functions": [
        {"class": "Items", "function": "add", "verb": "PUT", "path": "/video/items", "root": "itemAdd", "body": "ItemAdd",
         "result": "ItemData"},
        {"class": "Items", "function": "addAll", "verb": "PUT", "path": "/video/items", "root": "itemsAdd", "body": "ItemsAdd",
         "result": "ResultListData"},
        {"class": "Items", "function": "all", "verb": "POST", "path": "/video/items", "result": "ItemListData"},
        {"class": "Items", "function": "find", "verb": "POST", "path": "/video/items", "root": "itemCond", "body": "ItemCond",
         "result": "ItemPageData"},
        {"class": "Items", "function": "get", "verb": "POST", "path": "/video/items/{item}", "result": "ItemData"},
        {"class": "Items", "function": "modify", "verb": "PUT", "path": "/video/items/{item}", "root": "itemAdd",
         "body": "ItemAdd", "sample": {"itemAdd": {"name": ""}}},
        {"class": "Items", "function": "remove", "verb": "DELETE", "path": "/video/items", "root": "itemRemove",
         "body": "GuidList", "result": "ResultListData"},
        {"class": "Rule", "function": "set", "verb": "PUT", "path": "/video/rules/{rule}", "root": "rule", "body": "Rule"},
        {"class": "Rule", "function": "get", "verb": "POST", "path": "/video/rules/{rule}", "result": "RuleData"},
        {"class": "Rule", "function": "forget", "verb": "DELETE", "path": "/video/rules/{rule}"},
        {"class": "Job", "function": "start", "verb": "PUT", "path": "/video/jobs", "root": "jobStart", "body": "GuidList",
         "result": "JobStarted"},
        {"class": "Job", "function": "progress", "verb": "POST", "path": "/video/jobs/{job}/progress", "result": "JobProgress"},
        {"class": "Job", "function": "stop", "verb": "PUT", "path": "/video/jobs/{job}/stop"},
        {"class": "File", "function": "put", "verb": "PUT", "path": "/video/maps/{map}/pictures"},
        {"class": "File", "function": "get", "verb": "POST", "path": "/video/maps/{map}/pictures"},
        {"class": "Device", "function": "batch", "verb": "POST", "path": "/devices/{device}/batchPassThrough",
         "root": "batchPassThroughReq", "body": "Batch"},
        {"class": "Device", "function": "list", "verb": "POST", "path": "/devices/{device}/batchPassThrough",
         "root": "batchPassThroughReq", "body": "Batch", "command": 9001, "batch": true, "result": "Rule"},
        {"class": "Device", "function": "kestrel", "verb": "POST", "path": "/devices/{device}/kestrelPassThrough",
         "root": "kestrelReq", "body": "Kestrel", "result": "KestrelData"},
        {"class": "Device", "function": "suffixed", "verb": "GET", "path": "/devices/{device}/days{suffix}", "result": "RuleData"}
    ],
    "structures": {
        "ItemAdd": {"root": "itemAdd", "members": [
            {"key": "name", "kind": "text", "required": true, "maxLength": 8}, {"key": "state", "kind": "int",
             "values": [{"value": 0, "means": "any"}, {"value": 1, "means": "on"}, {"value": 2, "means": "off"}]},
            {"key": "mode", "kind": "text", "values": [{"value": "slow"}, {"value": "fast"}]},
            {"key": "wait", "kind": "int", "min": 1, "max": 255, "also": [0]}, {"key": "beginTime", "kind": "int64"}]},
        "ItemsAdd": {"root": "itemsAdd", "members": [{"key": "list", "kind": "structList", "element": "ItemAdd"}]},
        "ItemCond": {"root": "itemCond", "members": [
            {"key": "name", "kind": "text", "maxLength": 8}, {"key": "state", "kind": "int",
             "values": [{"value": 0, "means": "any"}, {"value": 1}, {"value": 2}]},
            {"key": "modeList", "kind": "textList"}, {"key": "endTime", "kind": "int64"}, {"key": "pageNo", "kind": "int"},
            {"key": "pageSize", "kind": "int"}]},
        "Item": {"members": [{"key": "itemGuid", "kind": "text"}, {"key": "name", "kind": "text"},
            {"key": "state", "kind": "int"}, {"key": "mode", "kind": "text"}, {"key": "beginTime", "kind": "int64"}]},
        "ItemData": {"members": [{"key": "item", "kind": "struct", "element": "Item"}]},
        "ItemListData": {"members": [{"key": "itemList", "kind": "structList", "element": "Item"}]},
        "ItemPageData": {"members": [{"key": "page", "kind": "struct", "element": "ItemPage"}]},
        "ItemPage": {"members": [{"key": "total", "kind": "int"}, {"key": "pageNo", "kind": "int"},
            {"key": "items", "kind": "structList", "element": "Item"}]},
        "GuidList": {"root": "guids", "members": [{"key": "guidList", "kind": "textList"}]},
        "Result": {"members": [{"key": "guid", "kind": "text"}, {"key": "name", "kind": "text"},
            {"key": "resultCode", "kind": "int"}, {"key": "resultMsg", "kind": "text"}]},
        "ResultListData": {"members": [{"key": "resultList", "kind": "structList", "element": "Result"}]},
        "Rule": {"root": "rule", "members": [{"key": "colour", "kind": "text", "values": [{"value": "red"}, {"value": "blue"}]},
            {"key": "size", "kind": "int", "min": 3, "max": 9}, {"key": "label", "kind": "text"},
            {"key": "roomList", "kind": "textList"}]},
        "RuleData": {"members": [{"key": "rule", "kind": "struct", "element": "Rule"}]},
        "JobStarted": {"members": [{"key": "taskGuid", "kind": "text"}]},
        "JobProgress": {"members": [{"key": "progress", "kind": "int"}, {"key": "isFinish", "kind": "bool"},
            {"key": "failedNum", "kind": "int"}, {"key": "state", "kind": "int", "values": [{"value": 7, "means": "running"},
             {"value": 8, "means": "finished"}, {"value": 9, "means": "failed"}, {"value": 6, "means": "stopped"}]},
            {"key": "details", "kind": "structList", "element": "JobItem"}]},
        "JobItem": {"members": [{"key": "guid", "kind": "text"}, {"key": "progress", "kind": "int"},
            {"key": "errorCode", "kind": "int"}]},
        "Batch": {"root": "batchPassThroughReq", "members": [{"key": "guid", "kind": "text"}, {"key": "command", "kind": "int"},
            {"key": "maxResultNum", "kind": "int"}]},
        "Kestrel": {"root": "kestrelReq", "members": [{"key": "url", "kind": "text"}, {"key": "inBuffer", "kind": "text"}]},
        "KestrelRsp": {"members": [{"key": "status", "kind": "text"}, {"key": "outBuffer", "kind": "text"}]},
        "KestrelData": {"members": [{"key": "kestrelRsp", "kind": "struct", "element": "KestrelRsp"}]}
    }
})json";

const std::string kResources = R"json({
    "module": "video",
    "collections": {
        "items": {
            "key": "itemGuid", "unique": [["name"]], "add": ["Items::add", "Items::addAll"], "all": "Items::all",
            "find": "Items::find", "get": "Items::get", "modify": "Items::modify", "remove": "Items::remove"
        },
        "devices": {"key": "deviceGuid", "seed": [{"deviceGuid": "D1"}, {"deviceGuid": "D2", "_offline": true}]}
    },
    "jobs": {
        "checks": {
            "start": "Job::start", "progress": "Job::progress", "stop": "Job::stop", "items": "guidList", "itemMs": 100,
            "fail": [3]
        }
    },
    "files": {"pictures": {"put": "File::put", "get": "File::get", "type": "image/jpeg", "sample": 100}},
    "functions": {"Device::batch": {"service": "deviceBatch"}, "Device::kestrel": {"service": "kestrel"}},
    "batches": {"9001": {"items": [{"size": 3}, {"size": 4}, {"size": 5}], "later": 1}},
    "kestrel": {"GET /KESTREL/a/capabilities": "<A/>"}
})json";

class BehaviourTest : public testing::Test {
protected:
    BehaviourTest() : description_(kLibrary, {ResourceFile{"test.json", kResources}})
    {
        store_.Open({});
        Services services;
        AddDeviceChannel(services, description_);
        AddDeviceTexts(services);
        AddJobs(services, 1.0);
        AddFiles(services);
        engine_ = std::make_unique<Engine>(
            description_, store_, [this] { return now_; }, std::move(services));
        engine_->Seed();
    }

    Answer Ask(const std::string& verb, const std::string& path, const std::string& body = {},
               const std::map<std::string, std::string, std::less<>>& headers = {})
    {
        Answer answer = engine_->Handle({verb, path, {}, headers, body});
        json_.Parse(answer.body.c_str());
        return answer;
    }
    std::string Code(const std::string& verb, const std::string& path, const std::string& body = {})
    {
        return Ask(verb, path, body).code;
    }
    /// Of the last answer, as compact JSON.
    std::string At(const std::string& pointer)
    {
        const rapidjson::Value* value = rapidjson::Pointer(pointer.c_str()).Get(json_);
        return value == nullptr ? "(none)" : PrintJson(*value);
    }
    std::vector<std::string> Names(const std::string& condition)
    {
        Ask("POST", "/video/items", "{\"itemCond\":{" + condition + "}}");
        std::vector<std::string> names;
        const rapidjson::Value* list = rapidjson::Pointer("/data/page/items").Get(json_);
        for (const auto& item : list == nullptr ? rapidjson::Value(rapidjson::kArrayType).GetArray()
                                                : const_cast<rapidjson::Value*>(list)->GetArray()) {
            names.emplace_back(item["name"].GetString());
        }
        return names;
    }

    std::int64_t now_ = 1000000;

private:
    Description description_;
    Store store_;
    std::unique_ptr<Engine> engine_;
    rapidjson::Document json_;
};

TEST_F(BehaviourTest, ACollectionNeedsNoMoreThanItsFunctions)
{
    Ask("PUT", "/video/items", R"({"itemAdd":{"name":"Ada","state":1,"mode":"slow","beginTime":10}})");
    const std::string guid = At("/data/item/itemGuid");
    EXPECT_EQ(guid.size(), 34u);
    EXPECT_EQ(At("/data/item/name"), "\"Ada\"");
    Ask("PUT", "/video/items",
        R"({"itemsAdd":{"list":[{"name":"Ben","state":2,"mode":"fast","beginTime":20},{"name":"Ada"},{"name":"Adam","beginTime":30}]}})");
    EXPECT_EQ(At("/data/resultList/0/resultCode"), "0");
    EXPECT_EQ(At("/data/resultList/1/resultCode"), "22");
    EXPECT_EQ(At("/data/resultList/1/guid"), "\"\"");
    EXPECT_EQ(At("/data/resultList/1/name"), "\"Ada\"");
    const std::string ben = At("/data/resultList/0/guid");

    Ask("POST", "/video/items");
    EXPECT_EQ(At("/data/itemList/2/name"), "\"Adam\"");
    EXPECT_EQ(At("/data/itemList/3"), "(none)");
    EXPECT_THAT(Names(R"("name":"AD")"), ElementsAre("Ada", "Adam"));
    EXPECT_THAT(Names(R"("name":"","state":0)"), ElementsAre("Ada", "Ben", "Adam"));
    EXPECT_THAT(Names(R"("state":-1,"modeList":[])"), ElementsAre("Ada", "Ben", "Adam"));
    EXPECT_THAT(Names(R"("state":2)"), ElementsAre("Ben"));
    EXPECT_THAT(Names(R"("modeList":["slow","fast"])"), ElementsAre("Ada", "Ben"));
    EXPECT_THAT(Names(R"("endTime":20)"), ElementsAre("Ada", "Ben"));
    EXPECT_THAT(Names(R"("pageNo":2,"pageSize":2)"), ElementsAre("Adam"));
    EXPECT_EQ(At("/data/page/total"), "3");
    EXPECT_EQ(At("/data/page/pageNo"), "2");

    const std::string path = "/video/items/" + guid.substr(1, 32);
    EXPECT_EQ(Code("PUT", path, R"({"itemAdd":{"state":2}})"), "0-0") << "a change without the name";
    Ask("POST", path);
    EXPECT_EQ(At("/data/item/state"), "2");
    EXPECT_EQ(At("/data/item/name"), "\"Ada\"");
    EXPECT_EQ(Code("PUT", path, R"({"itemAdd":{"name":"Ben"}})"), "21-22");
    EXPECT_EQ(Code("POST", "/video/items/nobody"), "21-20");
    Ask("DELETE", "/video/items", "{\"itemRemove\":{\"guidList\":[" + ben + ",\"x\"]}}");
    EXPECT_EQ(At("/data/resultList/0/resultCode") + At("/data/resultList/1/resultCode"), "020");
    EXPECT_THAT(Names(""), ElementsAre("Ada", "Adam"));
}

TEST_F(BehaviourTest, BodiesAreHeldAgainstTheirStructure)
{
    const struct {
        const char* members;
        const char* code;
        const char* says;
    } cases[] = {
        {R"("state":1)", "21-7", "itemAdd.name"},
        {R"("name":"")", "21-7", "itemAdd.name"},
        {R"("name":"A","nmae":"B")", "21-9", "itemAdd.nmae"},
        {R"("name":7)", "21-8", "itemAdd.name"},
        {R"("name":"A","state":"1")", "21-8", "itemAdd.state"},
        {R"("name":"A","state":1.5)", "21-8", "itemAdd.state"},
        {R"("name":"A","state":3)", "21-10", "itemAdd.state"},
        {R"("name":"A","mode":"")", "21-10", "itemAdd.mode"},
        {R"("name":"A","mode":"Slow")", "21-10", "itemAdd.mode"},
        {R"("name":"A","wait":-5)", "21-10", "itemAdd.wait"},
        {R"("name":"A","wait":256)", "21-10", "itemAdd.wait"},
        {R"("name":"123456789")", "21-10", "itemAdd.name"},
    };
    for (const auto& c : cases) {
        const Answer answer = Ask("PUT", "/video/items", std::string("{\"itemAdd\":{") + c.members + "}}");
        EXPECT_EQ(answer.code, c.code) << c.members;
        EXPECT_THAT(At("/msg"), HasSubstr(c.says));
    }
    EXPECT_EQ(
        Code("PUT", "/video/items", "{\"itemAdd\":{\"name\":\"\xC3\xA4\xC3\xB6\xC3\xBC\xC3\xA4\xC3\xB6\",\"wait\":0}}"),
        "0-0")
        << "characters count, not bytes";
    EXPECT_EQ(Code("POST", "/video/items", R"({"itemCond":{"name":"123456789"}})"), "21-10");
}

TEST_F(BehaviourTest, WithoutAnEntryStateIsKeptAndTheRestIsASample)
{
    Ask("POST", "/video/rules/1");
    EXPECT_EQ(At("/data/rule"), R"({"colour":"red","size":3,"label":"label","roomList":["roomList"]})");
    EXPECT_EQ(Code("PUT", "/video/rules/1", R"({"rule":{"colour":"blue","size":5}})"), "0-0");
    EXPECT_EQ(Code("PUT", "/video/rules/1", R"({"rule":{"label":"L"}})"), "0-0");
    EXPECT_EQ(Code("PUT", "/video/rules/1", R"({"rule":{"size":2}})"), "21-10");
    Ask("POST", "/video/rules/1");
    EXPECT_EQ(At("/data/rule"), R"({"colour":"blue","size":5,"label":"L"})");
    Ask("POST", "/video/rules/2");
    EXPECT_EQ(At("/data/rule/label"), "\"label\"") << "another identifier";
    Ask("DELETE", "/video/rules/1");
    Ask("POST", "/video/rules/1");
    EXPECT_EQ(At("/data/rule/colour"), "\"red\"");
    EXPECT_EQ(Code("GET", "/devices/D1/days"), "0-0") << "a suffix may be nothing";
    EXPECT_EQ(Code("GET", "/devices/D9/days"), "7-21");
}

TEST_F(BehaviourTest, JobsTakeTheirTime)
{
    Ask("PUT", "/video/jobs", R"({"jobStart":{"guidList":["D1","D2","x","y"]}})");
    const std::string guid = At("/data/taskGuid").substr(1, 32);
    const std::string path = "/video/jobs/" + guid;
    const struct {
        std::int64_t wait;
        const char* answer;
        const char* first;
        const char* second;
    } steps[] = {
        {0, R"([0,false,0,7])", R"({"guid":"D1","progress":0,"errorCode":0})",
         R"({"guid":"D2","progress":0,"errorCode":0})"},
        {150, R"([37,false,0,7])", R"({"guid":"D1","progress":100,"errorCode":0})",
         R"({"guid":"D2","progress":50,"errorCode":0})"},
        {150, R"([75,false,2,7])", R"({"guid":"D1","progress":100,"errorCode":0})",
         R"({"guid":"D2","progress":100,"errorCode":40})"},
        {100, R"([100,true,2,9])", R"({"guid":"D1","progress":100,"errorCode":0})",
         R"({"guid":"D2","progress":100,"errorCode":40})"},
    };
    for (const auto& step : steps) {
        now_ += step.wait;
        Ask("POST", path + "/progress");
        EXPECT_EQ("[" + At("/data/progress") + "," + At("/data/isFinish") + "," + At("/data/failedNum") + "," +
                      At("/data/state") + "]",
                  step.answer);
        EXPECT_EQ(At("/data/details/0"), step.first);
        EXPECT_EQ(At("/data/details/1"), step.second);
    }
    EXPECT_EQ(At("/data/details/2/errorCode"), "43");
    Ask("PUT", "/video/jobs", R"({"jobStart":{"guidList":["a","b"]}})");
    const std::string second = "/video/jobs/" + At("/data/taskGuid").substr(1, 32);
    now_ += 120;
    EXPECT_EQ(Code("PUT", second + "/stop"), "0-0");
    now_ += 5000;
    Ask("POST", second + "/progress");
    EXPECT_EQ(At("/data/progress") + At("/data/state") + At("/data/isFinish"), "606true");
    EXPECT_EQ(Code("POST", "/video/jobs/none/progress"), "21-20");
}

TEST_F(BehaviourTest, BytesComeInSlicesAndGoInRanges)
{
    const std::string path = "/video/maps/m/pictures";
    const auto get = [&](const std::string& range) {
        return Ask("POST", path, {},
                   range.empty() ? std::map<std::string, std::string, std::less<>>()
                                 : std::map<std::string, std::string, std::less<>>{{"range", range}});
    };
    const Answer sample = get("");
    EXPECT_EQ(sample.body.size(), 100u);
    EXPECT_EQ(sample.type, "image/jpeg");
    EXPECT_THAT(sample.body, StartsWith("\xFF\xD8"));

    const auto put = [&](const std::string& bytes, const std::string& head) {
        return Ask("PUT", path,
                   "--B\r\nContent-Disposition: form-data; name=\"file\"" + head +
                       "\r\nContent-Type: image/jpeg\r\n\r\n" + bytes + "\r\n--B--\r\n",
                   {{"content-type", "multipart/form-data; boundary=B"}, {"query", "totalBytes=9"}})
            .code;
    };
    const std::string zero("ab\0\r\nz", 6);
    EXPECT_EQ(put(zero, "; filename=\"a.jpg\""), "0-0");
    EXPECT_EQ(put("cde", "; filename=\"a.jpg\""), "0-0");
    EXPECT_EQ(get("").body, zero + "cde");
    EXPECT_EQ(put("cde", ""), "21-7") << "a part that is no file";
    const Answer part = get("bytes=4-6");
    EXPECT_EQ(part.status, 206u);
    EXPECT_EQ(part.body, "\nzc");
    EXPECT_EQ(part.range, "bytes 4-6/9");
    EXPECT_EQ(get("bytes=7-100").range, "bytes 7-8/9");
    EXPECT_EQ(get("bytes=9-10").status, 416u);
    put("new", "; filename=\"b.jpg\"");
    EXPECT_EQ(get("").body, "new") << "a complete file is followed by a new one";
    EXPECT_EQ(Ask("PUT", path, "--C\r\n", {{"content-type", "multipart/form-data; boundary=B"}}).code, "21-8");
}

TEST_F(BehaviourTest, DevicesHandOutPagesAndTexts)
{
    const auto page = [&](const std::string& guid) {
        Ask("POST", "/devices/D1/batchPassThrough",
            "{\"batchPassThroughReq\":{\"command\":9001,\"maxResultNum\":2,\"guid\":" + guid + "}}");
        return At("/data/batchPassThroughRsp/isFinish") +
               At("/data/batchPassThroughRsp/batchReturnDataList/0/outBuffer") +
               At("/data/batchPassThroughRsp/batchReturnDataList/1/outBuffer");
    };
    EXPECT_EQ(page("\"\""), "false(none)(none)") << "nothing yet";
    const std::string guid = At("/data/batchPassThroughRsp/guid");
    EXPECT_EQ(page(guid), R"(false"{\"rule\":{\"size\":3}}""{\"rule\":{\"size\":4}}")");
    EXPECT_EQ(page(guid), R"(true"{\"rule\":{\"size\":5}}"(none))");

    const auto text = [&](const std::string& line, const std::string& input = {}) {
        Ask("POST", "/devices/D1/kestrelPassThrough",
            "{\"kestrelReq\":{\"url\":\"" + line + "\",\"inBuffer\":\"" + input + "\"}}");
        return At("/data/kestrelRsp/outBuffer");
    };
    EXPECT_EQ(text("GET /KESTREL/a/capabilities\\r\\n"), "\"<A/>\"");
    EXPECT_EQ(text("GET /KESTREL/b?format=json\\r\\n"), "\"{}\"");
    EXPECT_THAT(text("GET /KESTREL/b"), HasSubstr("<b/>"));
    text("PUT /KESTREL/b", "<b>1</b>");
    EXPECT_EQ(text("GET /KESTREL/b"), "\"<b>1</b>\"");
    EXPECT_EQ(Code("POST", "/devices/D1/kestrelPassThrough", R"({"kestrelReq":{"url":"b"}})"), "21-7");
    EXPECT_EQ(Code("POST", "/devices/D2/kestrelPassThrough", R"({"kestrelReq":{"url":"GET /b"}})"), "21-40");
}

} // namespace
