#include <algorithm>
#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/pointer.h>

#include "nexwire/DeviceManagement/Channel.h"
#include "nexwire/DeviceManagement/Device.h"
#include "nexwire/LastExchange.h"
#include "support/LogCapture.h"
#include "support/StubExecutor.h"

namespace {

using namespace nexwire;
using testing::ElementsAre;
using Texts = std::vector<std::string>;

const std::string kSerial = "0123456789";
const std::string kKey = "\xE9\x8D\xB5"; // One character of three bytes.

struct Length {
    std::string guid;
    std::string serial;  ///< Before it is filled up.
    std::string segment; ///< In the path.
    bool inBody;         ///< The path cannot carry it in full.
};

const std::vector<Length>& Lengths()
{
    static const std::vector<Length> lengths = {
        {"abcde", "abcde", "abcde" + std::string(27, '$'), false},
        {"", "", std::string(32, '$'), false},
        {std::string(32, 'x'), std::string(32, 'x'), std::string(32, 'x'), false},
        {std::string(23, 'x') + kSerial, kSerial, kSerial + std::string(22, '$'), true},
        {std::string(30, 'x') + kSerial, kSerial, kSerial + std::string(22, '$'), true},
        // Length counts in bytes, and the cut does not look for the beginning of a character.
        {std::string(22, 'x') + kKey + kSerial.substr(1), kKey.substr(2) + kSerial.substr(1),
         kKey.substr(2) + kSerial.substr(1) + std::string(22, '$'), true},
        {std::string(29, 'x') + kKey, std::string(29, 'x') + kKey, std::string(29, 'x') + kKey, false},
    };
    return lengths;
}

std::string At(const std::string& body, const char* pointer)
{
    rapidjson::Document document;
    document.Parse(body.c_str());
    const rapidjson::Value* const value = rapidjson::Pointer(pointer).Get(document);
    return value == nullptr ? "<none>" : value->IsString() ? value->GetString() : "<no text>";
}

/// As the log shows it: the rest of the cut character is no UTF-8.
std::string Logged(std::string text)
{
    std::replace(text.begin(), text.end(), kKey[2], '?');
    return text;
}

using DeviceCall = std::function<bool(const std::string& guid)>;

struct DeviceRow {
    const char* logName;
    const char* fullGuid; ///< Where the body carries the identifier in full.
    DeviceCall call;
};

TEST(DeviceGuid, RequestsAboutADeviceBringItToLengthAndCarryItInFull)
{
    const test::Library library;
    const std::vector<DeviceRow> rows = {
        {"CGetSingleDevicesComm", "/deviceQueryCondition/mLongStrGuid",
         [](const std::string& guid) {
             protocol::DeviceResponseData result;
             protocol::DeviceQueryCondition condition;
             return CGetSingleDevicesComm::request(result, condition, guid) && condition.mLongStrGuid == guid;
         }},
        {"CGetSingleDevicesCommBySlowThread", "/deviceQueryCondition/mLongStrGuid",
         [](const std::string& guid) {
             protocol::DeviceResponseData result;
             protocol::DeviceQueryCondition condition;
             return CGetSingleDevicesCommBySlowThread::request(result, condition, guid);
         }},
        {"CModDevice", "/deviceModificationReq/deviceBasicInfo/mLongStrGuid",
         [](const std::string& guid) {
             protocol::DeviceBasicInfo info;
             return CModDevice::request(info, guid) && info.mLongStrGuid == guid;
         }},
        {"CDeviceStreamKeyComm", "/deviceModificationReq/deviceBasicInfo/mLongStrGuid",
         [](const std::string& guid) { return CDeviceStreamKeyComm::setStreamKey(guid, "k"); }},
    };
    for (const DeviceRow& row : rows) {
        for (const Length& length : Lengths()) {
            SCOPED_TRACE(std::string(row.logName) + " " + length.guid);
            test::LogCapture log(false);
            ASSERT_TRUE(row.call(length.guid));
            const RequestParams& sent = library.wire.Last();
            EXPECT_EQ(sent.url, "/7730/v1/deviceManagement/devices/" + length.segment);
            EXPECT_EQ(At(sent.body, row.fullGuid), length.guid);
            EXPECT_EQ(log.Count(std::string("[mko]SupplyGuid ") + row.logName + " [strGuid - serial] [" + length.guid +
                                " - " + (length.inBody ? Logged(length.segment) : length.segment) + "]"),
                      1U);
        }
    }
}

TEST(DeviceGuid, ARefreshLogsTheSerialToo)
{
    const test::Library library;
    protocol::DeviceResponseData result;
    protocol::DeviceQueryCondition condition;
    test::LogCapture log;
    ASSERT_TRUE(CRefreshSingleDevice::request(result, condition, "abcde"));
    ASSERT_TRUE(CRefreshSingleDevice::requestinternal("abcde"));
    const std::string segment = Lengths()[0].segment;
    const std::string pair = "INFO [mko]SupplyGuid CRefreshSingleDevice [strGuid - serial] [abcde - " + segment + "]";
    const std::string serial = "INFO [mko]SupplyGuid CRefreshSingleDevice [serial - " + segment + "]";
    EXPECT_THAT(log.NewLines(), ElementsAre(pair, serial, pair, serial));
}

TEST(DeviceGuid, RequestsAboutChannelsCarryOnlyALongOneInTheBody)
{
    const test::Library library;
    const std::vector<DeviceRow> rows = {
        {"CGetChannelInfoComm", "/channelExtra/longDeviceGuid",
         [](const std::string& guid) {
             protocol::ChannelInfoData result;
             return CGetChannelInfoComm::request(result, guid, "c");
         }},
        {"setRelatedServers", "/channelExtra/longDeviceGuid",
         [](const std::string& guid) { return CChannelRequestComm::setRelatedServers(guid, "c", "s"); }},
        {"getAllPresetInfo", "/presetInfo/longDeviceGuid",
         [](const std::string& guid) {
             protocol::PresetInfoListData result;
             return CChannelPresetComm::getAllPresetInfo(result, guid, "c");
         }},
        {"savePreset", "/presetInfo/longDeviceGuid",
         [](const std::string& guid) {
             std::string presetGuid;
             protocol::PresetInfo preset;
             preset.longDeviceGuid = "of another call";
             return CChannelPresetComm::savePreset(presetGuid, preset, guid, "c");
         }},
        {"deletePreset", "/presetInfo/longDeviceGuid",
         [](const std::string& guid) { return CChannelPresetComm::deletePreset(guid, "c", "p"); }},
        {"updatePresetName", "/presetInfo/longDeviceGuid",
         [](const std::string& guid) { return CChannelPresetComm::updatePresetName(guid, "c", "p", "n"); }},
        {"updateCloudP2PPresetNo", "/presetInfo/longDeviceGuid",
         [](const std::string& guid) { return CChannelPresetComm::updateCloudP2PPresetNo(3, guid, "c", "p"); }},
    };
    for (const DeviceRow& row : rows) {
        for (const Length& length : Lengths()) {
            SCOPED_TRACE(std::string(row.logName) + " " + length.guid);
            test::LogCapture log(false);
            ASSERT_TRUE(row.call(length.guid));
            const RequestParams& sent = library.wire.Last();
            const std::string path = "/7730/v1/deviceManagement/devices/" + length.segment + "/channels/c";
            EXPECT_EQ(sent.url.compare(0, path.size(), path), 0) << sent.url;
            EXPECT_EQ(At(sent.body, row.fullGuid), length.inBody ? length.guid : "<none>");
            const auto shown = [&](const std::string& text) { return length.inBody ? Logged(text) : text; };
            const std::string line = std::string("INFO [mko]SupplyGuid ") + row.logName + " [serial - ";
            EXPECT_THAT(log.NewLines(),
                        ElementsAre(line + shown(length.serial) + "]", line + shown(length.segment) + "]"));
        }
    }
}

TEST(Modification, TheCallersFilterAddsMembers)
{
    const test::Library library;
    protocol::DeviceBasicInfo info;
    info.name = "n";
    info.port = 8000;
    info.username = "u";
    info.password = "p";
    info.WriteOnly({"name", "port"});
    ASSERT_TRUE(CModDevice::request(info, "d"));
    const std::string& body = library.wire.Last().body;
    EXPECT_EQ(At(body, "/deviceModificationReq/deviceBasicInfo/name"), "n");
    EXPECT_EQ(At(body, "/deviceModificationReq/deviceBasicInfo/port"), "<no text>");
    EXPECT_EQ(At(body, "/deviceModificationReq/deviceBasicInfo/password"), "p");
    EXPECT_EQ(At(body, "/deviceModificationReq/deviceBasicInfo/model"), "<none>");
    EXPECT_EQ(At(body, "/deviceModificationReq/deviceExtInfo"), "<none>");
    EXPECT_THAT(info.FilterKeys(), ElementsAre("name", "port"));

    info.LeaveOut({"name"});
    ASSERT_TRUE(CModDevice::request(info, "d"));
    EXPECT_EQ(At(library.wire.Last().body, "/deviceModificationReq/deviceBasicInfo/name"), "<none>");
}

// ---- Adding ----

/// Answers with what the test says.
class ScriptedEncryption : public IEncryption {
public:
    explicit ScriptedEncryption(std::function<bool(Texts&, const Texts&)> script) : script_(std::move(script)) {}
    bool Encrypt(Texts& ciphertexts, const Texts& plaintexts, const std::string& sid) override
    {
        EXPECT_EQ(sid, "");
        EXPECT_THAT(plaintexts, ElementsAre("user", "secret"));
        return script_(ciphertexts, plaintexts);
    }
    bool Decrypt(Texts&, const Texts&, const std::string&) override { return false; }

private:
    std::function<bool(Texts&, const Texts&)> script_;
};

class Adding : public testing::Test {
protected:
    Adding()
    {
        device.address = "192.0.2.7";
        device.username = "user";
        device.password = "secret";
    }

    protocol::DeviceAddReq device;
    protocol::DeviceResultListData result;
};

TEST_F(Adding, CredentialsTravelEncryptedAndTheTimeoutIsTheCallers)
{
    const test::Library library(new ScriptedEncryption([](Texts& output, const Texts& input) {
        output = {"1" + input[0], "2" + input[1]};
        return true;
    }));
    ASSERT_TRUE(CAddDevice::request(result, device));
    EXPECT_EQ(library.wire.Last().timeoutMs, 40000);
    ASSERT_TRUE(CAddDevice::request(result, device, 120000));
    EXPECT_EQ(library.wire.Last().timeoutMs, 120000);
    ASSERT_EQ(library.wire.requests.size(), 2U);
    for (const RequestParams& sent : library.wire.requests) {
        EXPECT_EQ(sent.url, "/7730/v1/deviceManagement/devices");
        EXPECT_EQ(sent.method, 1);
        EXPECT_EQ(At(sent.body, "/deviceAddReq/username"), "1user");
        EXPECT_EQ(At(sent.body, "/deviceAddReq/password"), "2secret");
        EXPECT_EQ(At(sent.body, "/deviceAddReq/address"), "192.0.2.7");
    }
    EXPECT_EQ(device.password, "secret");
}

TEST_F(Adding, NothingIsSentWhenTheCredentialsCannotBeEncrypted)
{
    const std::vector<std::function<bool(Texts&, const Texts&)>> failures = {
        [](Texts&, const Texts&) { return false; },
        [](Texts& output, const Texts& input) {
            output = input;
            return false;
        },
        [](Texts& output, const Texts&) {
            output = {"one"};
            return true;
        },
        [](Texts& output, const Texts&) {
            output = {"one", "two", "three"};
            return true;
        },
        [](Texts&, const Texts&) -> bool { throw std::runtime_error("the host's fault"); },
    };
    for (const auto& failure : failures) {
        const test::Library library(new ScriptedEncryption(failure));
        test::LogCapture log;
        EXPECT_FALSE(CAddDevice::request(result, device));
        EXPECT_TRUE(library.wire.requests.empty());
        EXPECT_THAT(log.NewLines(), ElementsAre("ERROR AESEncryption failed!"));
        EXPECT_EQ(LastExchange().path, "/7730/v1/deviceManagement/devices");
        EXPECT_FALSE(LastExchange().sent);
    }
    test::LogCapture log;
    EXPECT_FALSE(CAddDevice::request(result, device, 5000)); // Not initialised.
    EXPECT_THAT(log.NewLines(), ElementsAre("ERROR AESEncryption failed!"));
}

TEST_F(Adding, WithoutACipherOfTheHostThePlatformEncryptsFirst)
{
    test::Library library;
    library.wire.AnswerWith(R"({"code":"0-0","data":{"ciphertextList":[{"ciphertext":"c1"},{"ciphertext":"c2"}]}})");
    library.wire.AnswerWith(R"({"code":"4-9","data":{"deviceResultList":[{"deviceGuid":"d","resultCode":0}]}})");
    ASSERT_TRUE(CAddDevice::request(result, device));
    ASSERT_EQ(library.wire.requests.size(), 2U);
    EXPECT_EQ(At(library.wire.Last().body, "/deviceAddReq/password"), "c2");
    ASSERT_EQ(result.deviceResultList.size(), 1U);
    EXPECT_EQ(LastExchange().number, 9);
}

} // namespace
