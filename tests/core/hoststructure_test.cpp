// Structures that a host brings, written with nothing but the public headers and cJSON.

#include <cstring>
#include <memory>

#include <cjson/cJSON.h>
#include <gtest/gtest.h>

#include "Application/PassThrough/PassThrough.h"
#include "core/Pipeline.h"
#include "nexwire/AccessController/Wiegand.h"
#include "nexwire/ParseJSONUtil.h"
#include "support/StubExecutor.h"

namespace {

using namespace nexwire;

void ReadText(std::string& text, const cJSON* node)
{
    text = cJSON_IsString(node) != 0 ? node->valuestring : "";
}

struct OwnParam : protocol::IInboundData {
    std::string name;

    void Parse(const cJSON* node) override
    {
        if (node == nullptr) {
            return;
        }
        ClearPresent();
        if (const cJSON* const item = cJSON_GetObjectItemCaseSensitive(node, "name")) {
            ReadText(name, item);
            NotePresent("name");
        }
    }
    cJSON* ToJson() const override
    {
        cJSON* const object = cJSON_CreateObject();
        if (!IsLeftOut("name")) {
            cJSON_AddStringToObject(object, "name", name.c_str());
        }
        return object;
    }
    const char* RootName() const override { return "ownParam"; }
};

struct OwnResult : protocol::IReturnData {
    std::string name = "before";
    std::vector<OwnParam> parts;

    void Parse(const cJSON* node) override
    {
        if (node == nullptr) {
            return;
        }
        ClearPresent();
        parts.clear();
        const cJSON* item = nullptr;
        cJSON_ArrayForEach(item, node)
        {
            NotePresent(item->string);
            if (std::strcmp(item->string, "parts") == 0) {
                const cJSON* part = nullptr;
                cJSON_ArrayForEach(part, item)
                {
                    parts.emplace_back();
                    parts.back().Parse(part);
                }
            } else {
                ReadText(name, item);
            }
        }
    }
    cJSON* ToJson() const override { return cJSON_CreateObject(); }
};

/// A structure of the library that reads a key more.
struct Widened : protocol::WiegandQueryResultListData {
    std::string total;

    void Parse(const cJSON* node) override
    {
        protocol::WiegandQueryResultListData::Parse(node);
        ReadText(total, cJSON_GetObjectItemCaseSensitive(node, "total"));
    }
};

const char* const kAnswer = R"({"code":"0-0","data":{"name":"after","parts":[{"name":"p"},{}]}})";
const char* const kRefusal = R"({"code":"3-17","data":{"name":"refused"}})";

TEST(HostStructures, ReceiveTheAnswerInEveryEnding)
{
    using Ending = bool (*)(OwnResult&);
    const struct {
        Ending call;
        bool judges;
    } endings[] = {
        {[](OwnResult& result) { return Exchange(Query("/p"), result); }, false},
        {[](OwnResult& result) { return ExchangeJudged(Query("/p"), result); }, true},
        {[](OwnResult& result) {
             int code = 0;
             return ExchangeForCode(Query("/p"), result, code);
         },
         true},
        {[](OwnResult& result) {
             std::string text;
             return ExchangeForText(Query("/p"), result, text);
         },
         false},
        {[](OwnResult& result) { return ExchangeBothWays(Query("/p"), result); }, false},
    };
    for (const auto& ending : endings) {
        test::Library library;
        library.wire.AnswerWith("<html>");
        library.wire.AnswerWith(kRefusal);
        library.wire.AnswerWith(kAnswer);
        OwnResult result;
        EXPECT_FALSE(ending.call(result));
        EXPECT_EQ(result.name, "before");
        EXPECT_EQ(ending.call(result), !ending.judges);
        EXPECT_EQ(result.name, ending.judges ? "before" : "refused");
        ASSERT_TRUE(ending.call(result));
        EXPECT_EQ(result.name, "after");
        ASSERT_EQ(result.parts.size(), 2u);
        EXPECT_EQ(result.parts[0].name, "p");
        EXPECT_TRUE(result.parts[0].IsPresent("name"));
        EXPECT_FALSE(result.parts[1].IsPresent("name"));
        EXPECT_EQ(result.PresentKeys(), (std::unordered_set<std::string>{"name", "parts"}));
        const OwnResult copy = result;
        EXPECT_TRUE(copy.IsPresent("parts"));
    }
}

TEST(HostStructures, AreSentFilteredReadBackAndCollected)
{
    test::Library library;
    OwnParam param;
    param.name = "n";
    ASSERT_TRUE(Exchange(Write("/p", param)));
    EXPECT_EQ(library.wire.Last().body, "{\n\t\"ownParam\":\t{\n\t\t\"name\":\t\"n\"\n\t}\n}");
    param.WriteOnly({});
    EXPECT_EQ(protocol::SerializeRequest(param), "{\n\t\"ownParam\":\t{\n\t}\n}");

    OwnParam read;
    EXPECT_TRUE(protocol::TParseJSONStr(read, R"({"ownParam":{"name":"text"}})"));
    EXPECT_EQ(read.name, "text");
    const auto data = std::make_shared<OwnResult>();
    protocol::ReturnData envelope(data);
    ASSERT_TRUE(envelope.Parse(kAnswer));
    EXPECT_EQ(data->parts.size(), 2u);

    library.wire.AnswerWith(R"({"code":"0-0","data":{"batchPassThroughRsp":{"batchReturnDataList":[
        {"outBuffer":"{\"ownParam\":{\"name\":\"first\"}}"},{"outBuffer":"{\"ownParam\":{\"name\":\"second\"}}"}]}}})");
    std::vector<OwnParam> list;
    std::string guid;
    bool finished = false;
    ASSERT_TRUE(AppendPage(Route::External, {}, "device", list, guid, finished));
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list[1].name, "second");
}

TEST(HostStructures, MayWidenOneOfTheLibrary)
{
    test::Library library;
    library.wire.AnswerWith(R"({"code":"0-0","data":{"total":"7","wiegandQueryResultList":[{"guid":"g"}]}})");
    Widened result;
    ASSERT_TRUE(CGetWiegands::request(result));
    EXPECT_EQ(result.total, "7");
    EXPECT_EQ(result.wiegandQueryResultList.size(), 1u);
    EXPECT_TRUE(result.IsPresent("wiegandQueryResultList"));
}

#if defined(__GNUC__) && defined(__x86_64__)
/// Which place a virtual function has in the table of its class.
template <class Function>
std::size_t Slot(Function function)
{
    std::uintptr_t offset = 0;
    std::memcpy(&offset, &function, sizeof(offset));
    return (offset - 1) / sizeof(void*);
}

TEST(HostStructures, VirtualFunctionsKeepTheirPlaces)
{
    using protocol::IInboundData;
    using protocol::IReturnData;
    EXPECT_EQ(Slot(&IReturnData::Parse), 0u);
    EXPECT_EQ(Slot(&IReturnData::ToJson), 1u);
    EXPECT_EQ(Slot(&IReturnData::Fields), 4u) << "behind both forms of the destructor";
    EXPECT_EQ(Slot(&IInboundData::Parse), 0u);
    EXPECT_EQ(Slot(&IInboundData::ToJson), 1u);
    EXPECT_EQ(Slot(&IInboundData::RootName), 2u);
    EXPECT_EQ(Slot(&IInboundData::Check), 5u);
    EXPECT_EQ(Slot(&IInboundData::Fields), 6u);
}
#endif

} // namespace
