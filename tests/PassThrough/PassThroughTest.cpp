#include "Application/PassThrough/PassThrough.h"

#include <gtest/gtest.h>

#include "nexwire/DeviceParameters/AcsParam.h"
#include "support/DeviceAnswer.h"
#include "support/StubExecutor.h"

namespace {

using namespace nexwire;

TEST(PassThrough, StructuresTravelAsTextUnderTheirRootName)
{
    test::Library library;
    protocol::NFCCfg nfc;
    nfc.enable = true;
    nfc.cardNoSource = "application";
    nfc.applicationId = "F0\\01";
    nfc.readTimeout = 900;
    EXPECT_TRUE(AcsParamConfig::setNFCConfigRequest(nfc, "d"));
    EXPECT_EQ(
        library.wire.Last().body,
        "{\n\t\"dagPassThroughReq\":\t{\n\t\t\"command\":\t4141,\n\t\t\"condBuffer\":\t\"\",\n"
        R"(		"inBuffer":	"{\n\t\"nFCCfg\":\t{\n\t\t\"enable\":\ttrue,\n\t\t\"cloneProtection\":\tfalse,\n)"
        R"(\t\t\"cardNoSource\":\t\"application\",\n\t\t\"applicationId\":\t\"F0\\\\01\",\n)"
        R"(\t\t\"readTimeout\":\t900\n\t}\n}")"
        "\n\t}\n}");

    nfc.WriteOnly({"enable"});
    EXPECT_TRUE(AcsParamConfig::setNFCConfigRequest(nfc, "d"));
    EXPECT_NE(library.wire.Last().body.find(R"("{\n\t\"nFCCfg\":\t{\n\t\t\"enable\":\ttrue\n\t}\n}")"),
              std::string::npos);

    library.wire.otherwise = test::DeviceAnswer(
        R"( {"other":1,"nFCCfg":{"readTimeout":30,"applicationId":"a\"b","enable":true,"unknown":[]}} )");
    protocol::NFCCfg read;
    EXPECT_TRUE(AcsParamConfig::getNFCConfigRequest(read, "d"));
    EXPECT_TRUE(read.enable);
    EXPECT_EQ(read.applicationId, "a\"b");
    EXPECT_EQ(read.readTimeout, 30);
}

TEST(PassThrough, ConditionsAndTimeoutsOfTheBuildingBlocks)
{
    test::Library library;
    library.wire.otherwise = test::DeviceAnswer(R"({"nFCCfg":{}})");
    protocol::NFCCfg nfc;
    for (const std::string& condition : {std::string(" 1,\"2\" "), std::string("\xF0\x9F\x94\x91")}) {
        const std::vector<std::function<bool()>> calls = {
            [&] { return DeviceGet(Route::External, 7, "d", nfc, condition, 1500); },
            [&] { return DeviceSet(Route::External, 7, "d", nfc, condition, 1500); },
            [&] { return DeviceCommand(Route::External, 7, "d", condition, 1500); },
        };
        for (const auto& call : calls) {
            EXPECT_TRUE(call());
            protocol::DagPassThroughReq request;
            ASSERT_TRUE(protocol::TParseJSONStr(request, library.wire.Last().body));
            EXPECT_EQ(request.condBuffer, condition);
            EXPECT_EQ(request.command, 7);
            EXPECT_EQ(library.wire.Last().timeoutMs, 1500);
        }
        EXPECT_EQ(library.wire.Last().body.find("nFCCfg"), std::string::npos); // a plain command has no input
    }
}

} // namespace
