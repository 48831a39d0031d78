#include <gtest/gtest.h>

#include "nexwire/InformationRelease/Marquee.h"
#include "nexwire/InformationRelease/ReleaseDevice.h"
#include "nexwire/LastExchange.h"
#include "nexwire/LibraryErrors.h"
#include "nexwire/ParseJSONUtil.h"
#include "protocol/ElectronicMap/EmapRadar.h"
#include "support/DeviceAnswer.h"
#include "support/LogCapture.h"
#include "support/StubExecutor.h"

namespace {

using namespace nexwire;
using Release = CInformationReleaseDeviceComm;

constexpr const char* kRefusal = "<ResponseStatus><statusCode>4</statusCode><statusString>Invalid Operation"
                                 "</statusString><subStatusCode>notSupport</subStatusCode></ResponseStatus>";

std::string KestrelAnswer(const std::string& document, const std::string& status, const char* code = "0-0")
{
    protocol::KestrelPassThroughRspData data;
    data.kestrelPassThroughRsp.outBuffer = document;
    data.kestrelPassThroughRsp.statusBuffer = status;
    return "{\"code\":\"" + std::string(code) + R"(","msg":"no","data":)" + protocol::StructureToJSON(data) + "}";
}

class InformationRelease : public testing::Test {
protected:
    InformationRelease() { Keel::Error::SetLastError({1, 2, "earlier"}); }

    test::Library library;
};

TEST_F(InformationRelease, ARefusingDeviceLeavesItsStatusAsTheLastError)
{
    Abacus::Program program;
    program.pageNum.max = 5;
    Abacus::SecurityAbility security;
    const std::string answers[] = {KestrelAnswer(kRefusal, ""), KestrelAnswer("", kRefusal)};
    for (const std::string& answer : answers) {
        Keel::Error::SetLastError({1, 2, "earlier"});
        library.wire.otherwise = answer;
        EXPECT_FALSE(Release::getProgramCapability("d", program));
        EXPECT_EQ(Keel::Error::GetLastError().category, kDeviceStatusCategory);
        EXPECT_EQ(Keel::Error::GetLastError().number, 4);
        EXPECT_EQ(Keel::Error::GetLastError().text, "Invalid Operation (notSupport)");
    }
    library.wire.otherwise = test::DeviceAnswer("", kRefusal);
    Keel::Error::SetLastError({1, 2, "earlier"});
    EXPECT_FALSE(Release::getIRSSecurityCapability("d", security));
    EXPECT_EQ(Keel::Error::GetLastError().number, 4);
    EXPECT_EQ(program.pageNum.max, 5);
}

TEST_F(InformationRelease, AnotherDocumentThanTheOneAskedForIsFalse)
{
    Abacus::Program program;
    for (const char* document : {"", "<Page/>", "<Program>", "{\"Page\":{}}"}) {
        library.wire.otherwise = KestrelAnswer(document, "");
        EXPECT_FALSE(Release::getProgramCapability("d", program)) << document;
    }
    EXPECT_EQ(Keel::Error::GetLastError().text, "earlier");
    EXPECT_TRUE(LastExchange().parsed);
}

TEST_F(InformationRelease, AnUnknownServerIsToldInThePlatformsWords)
{
    library.wire.otherwise =
        R"({"code":"0-0","msg":"no such server","data":{"deviceExistedResult":{"existed":false}}})";
    bool exists = true;
    int type = 7;
    EXPECT_EQ(Release::ServerExisted("192.0.2.7", 80, "u", "p", exists, type), "no such server");
    EXPECT_FALSE(exists);
    EXPECT_EQ(type, 0);

    const test::LogCapture log;
    library.wire.Fail();
    exists = true;
    EXPECT_EQ(Release::ServerExisted("192.0.2.7", 80, "u", "p", exists, type), "");
    EXPECT_TRUE(exists);
    EXPECT_NE(log.Text().find("stub transport failure"), std::string::npos);
    EXPECT_NE(log.Text().find("ServerExisted"), std::string::npos);
}

class NoCipher : public IEncryption {
public:
    bool Encrypt(std::vector<std::string>& output, const std::vector<std::string>& input, const std::string&) override
    {
        output = input;
        return true;
    }
    bool Decrypt(std::vector<std::string>&, const std::vector<std::string>&, const std::string&) override
    {
        return false;
    }
};

TEST(InformationReleaseServer, ARefusedServerIsNoServer)
{
    test::Library library(new NoCipher);
    library.wire.otherwise =
        R"({"code":"0-0","msg":"","data":{"deviceResultList":[{"deviceGuid":"d","resultCode":31,"resultMsg":"wrong password"}]}})";
    EXPECT_EQ(Release::addServer("192.0.2.7", 80, "u", "p"), "");
    EXPECT_EQ(Keel::Error::GetLastError().number, 31);
    EXPECT_EQ(Keel::Error::GetLastError().text, "wrong password");
    library.wire.otherwise = R"({"code":"0-0","msg":"","data":{"deviceResultList":[]}})";
    EXPECT_EQ(Release::addServer("192.0.2.7", 80, "u", "p"), "");
}

TEST_F(InformationRelease, ParametersByPointerNeedAStructure)
{
    protocol::DisplayMode mode;
    mode.mode = "before";
    EXPECT_FALSE(Release::getDeviceParams("d", 4321, nullptr, sizeof(mode)));
    EXPECT_FALSE(Release::getDeviceParams("d", 4321, &mode, 8));
    EXPECT_TRUE(library.wire.requests.empty());
    library.wire.otherwise = test::DeviceAnswer(R"({"other":{"mode":"track"}})");
    EXPECT_FALSE(Release::getDeviceParams("d", 4321, &mode, sizeof(mode)));
    EXPECT_EQ(mode.mode, "before");
    library.wire.otherwise = test::DeviceAnswer(R"({"displayMode":{"mode":"track"}})");
    EXPECT_TRUE(Release::getDeviceParams("d", 4321, &mode, sizeof(mode)));
    EXPECT_EQ(mode.mode, "track");
}

TEST_F(InformationRelease, ProgressNeedsAnItem)
{
    int progress = 7;
    bool finished = true;
    library.wire.otherwise = R"({"code":"0-0","msg":"","data":{"batchPassThroughRsp":{"isFinish":false}}})";
    EXPECT_FALSE(Release::getProgress("d", "b", progress, "", finished));
    EXPECT_EQ(progress, 7);
    EXPECT_TRUE(finished);
}

TEST_F(InformationRelease, RawRequestsHandOutWhatThereIs)
{
    protocol::KestrelPassThroughReq request;
    std::string output = "before";
    std::string why = "before";
    library.wire.otherwise = KestrelAnswer("", "");
    EXPECT_FALSE(CMarqueeComm::dataThrough(output, why, "d", request));
    EXPECT_EQ(why, "the device's answer is empty");
    library.wire.otherwise = KestrelAnswer("<x/>", "", "5-31");
    EXPECT_FALSE(CMarqueeComm::dataThrough(output, why, "d", request)) << "judged";
    EXPECT_EQ(why, "no");
    EXPECT_EQ(Keel::Error::GetLastError().number, 31);
    EXPECT_EQ(output, "before");
    EXPECT_TRUE(Release::dataThrough("d", request, output, why)) << "not judged";
    EXPECT_EQ(output, "<x/>");
}

TEST_F(InformationRelease, TheSharedKeyIsSetOnlyByThatVeryWord)
{
    protocol::ModifyGeneralCorvidKeyResult result;
    result.status = "before";
    for (const char* status : {"", "Success", "success ", "successful", "failed"}) {
        library.wire.otherwise = R"({"code":"5-0","msg":"","data":{"status":")" + std::string(status) + "\"}}";
        EXPECT_FALSE(CMarqueeComm::setGeneralCorvidKey(result, protocol::GeneralCorvidKey()));
        EXPECT_EQ(result.status, "before");
        EXPECT_EQ(Keel::Error::GetLastError().category, 5);
        EXPECT_EQ(Keel::Error::GetLastError().text, status);
    }
    library.wire.otherwise = R"({"code":"5-31","msg":"","data":{"status":"success"}})";
    EXPECT_FALSE(CMarqueeComm::setGeneralCorvidKey(result, protocol::GeneralCorvidKey()));
    library.wire.otherwise = R"({"code":"5-0","msg":"","data":{"status":"success"}})";
    EXPECT_TRUE(CMarqueeComm::setGeneralCorvidKey(result, protocol::GeneralCorvidKey()));
    EXPECT_EQ(result.status, "success");
}

} // namespace
