#include <gtest/gtest.h>

#include "Application/Framework/DefaultEncryption.h"
#include "core/ConfigManager.h"
#include "nexwire/AccessController/Wiegand.h"
#include "nexwire/ConfigManagerProxy.h"
#include "nexwire/InterfaceManager.h"
#include "nexwire/LastExchange.h"
#include "support/StubExecutor.h"

namespace {

using nexwire::CIInterfaceManger;
using nexwire::RequestContext;

TEST(Lifecycle, SecondInitIsRefusedAndUnInitDeletesBoth)
{
    struct Encryption : nexwire::IEncryption {
        explicit Encryption(bool& gone_) : gone(gone_) {}
        ~Encryption() override { gone = true; }
        bool Encrypt(std::vector<std::string>&, const std::vector<std::string>&, const std::string&) override
        {
            return false;
        }
        bool Decrypt(std::vector<std::string>&, const std::vector<std::string>&, const std::string&) override
        {
            return false;
        }
        bool& gone;
    };
    EXPECT_FALSE(nexwire::NexwireUnInit());
    test::Wire first;
    test::Wire second;
    bool gone = false;
    nexwire::NexwireInitParams params;
    params.executor = new test::StubExecutor(first);
    params.encryption = new Encryption(gone);
    ASSERT_TRUE(nexwire::NexwireInit(params));

    nexwire::NexwireInitParams other;
    test::StubExecutor otherExecutor(second);
    other.executor = &otherExecutor;
    EXPECT_FALSE(nexwire::NexwireInit(other));
    protocol::WiegandQueryResultListData result;
    EXPECT_TRUE(nexwire::CGetWiegands::request(result));
    EXPECT_EQ(first.requests.size(), 1u);
    EXPECT_TRUE(second.requests.empty());

    EXPECT_TRUE(nexwire::NexwireUnInit());
    EXPECT_TRUE(first.destroyed && gone);
    EXPECT_FALSE(nexwire::NexwireUnInit());
    EXPECT_FALSE(nexwire::CGetWiegands::request(result));
    EXPECT_FALSE(nexwire::LastExchange().sent);
}

TEST(Lifecycle, WithoutAnExecutorNothingIsSentAndTheDefaultEncryptionIsThere)
{
    ASSERT_TRUE(nexwire::NexwireInit({}));
    EXPECT_NE(dynamic_cast<nexwire::CDefaultComponentEncryption*>(RequestContext::Instance().encryption), nullptr);
    protocol::WiegandQueryResultListData result;
    EXPECT_FALSE(nexwire::CGetWiegands::request(result));
    nexwire::RspInfos response;
    EXPECT_FALSE(nexwire::CConfigManagerProxy::httpRequest(response, nexwire::RequestParams("/x", 2)));
    EXPECT_TRUE(nexwire::NexwireUnInit());
}

TEST(Lifecycle, ProxyPassesTheRecordThrough)
{
    test::Library library;
    library.wire.AnswerWith("anything");
    nexwire::RequestParams request("/path", 9, "body");
    request.headers["a"] = "b";
    request.params["Content-Type"] = "c";
    request.timeoutMs = 5;
    nexwire::RspInfos response;
    EXPECT_TRUE(nexwire::CConfigManagerProxy::httpRequest(response, request));
    EXPECT_EQ(response.body, "anything");
    const nexwire::RequestParams& seen = library.wire.Last();
    EXPECT_EQ(seen.url + seen.body, "/pathbody");
    EXPECT_EQ(seen.method, 9);
    EXPECT_EQ(seen.headers, request.headers);
    EXPECT_EQ(seen.params, request.params);
    EXPECT_EQ(seen.timeoutMs, 5);
    EXPECT_EQ(library.wire.lastFlag, 1);
    EXPECT_EQ(nexwire::RequestParams("/x", 0).timeoutMs, 40000);
    library.wire.Fail();
    EXPECT_FALSE(nexwire::CConfigManagerProxy::httpRequest(response, request));
}

TEST(Registry, SlotsAreIndependentReplaceableAndKeepOldObjectsAliveForTheirHolders)
{
    struct Manager : nexwire::ILocalDeviceManager {};
    struct Status : nexwire::ILocalDeviceStatusManager {};
    CIInterfaceManger& registry = Keel::CSingleton<CIInterfaceManger>::Instance();
    EXPECT_EQ(&registry, &Keel::CSingleton<CIInterfaceManger>::Instance());
    EXPECT_EQ(registry.GetLocalDeviceManager(), nullptr);
    const auto first = std::make_shared<Manager>();
    EXPECT_TRUE(registry.RegisterLocalDeviceManager(first));
    EXPECT_EQ(registry.GetLocalDeviceStatusManager(), nullptr);
    EXPECT_TRUE(registry.RegisterLocalDeviceStatusManager(std::make_shared<Status>()));
    std::weak_ptr<nexwire::ILocalDeviceManager> watched;
    {
        const auto held = registry.GetLocalDeviceManager();
        EXPECT_EQ(held, first);
        const auto second = std::make_shared<Manager>();
        watched = second;
        registry.RegisterLocalDeviceManager(second);
        EXPECT_EQ(held.use_count(), 2);
    }
    EXPECT_FALSE(watched.expired());
    registry.RegisterLocalDeviceManager(nullptr);
    EXPECT_TRUE(watched.expired());
    EXPECT_NE(registry.GetLocalDeviceStatusManager(), nullptr);
    registry.RegisterLocalDeviceStatusManager(nullptr);
}

} // namespace
