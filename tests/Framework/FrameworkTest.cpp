#include <gtest/gtest.h>

#include "nexwire/Framework/Account.h"
#include "nexwire/Framework/User.h"
#include "nexwire/LastExchange.h"
#include "nexwire/Video/Record.h"
#include "support/LogCapture.h"
#include "support/StubExecutor.h"

namespace {

const std::string kDecryption = "/7730/v1/internal/framework/decryption";

std::string Opened(const std::string& text)
{
    return R"({"code":"0-0","data":{"plaintextList":[{"plaintext":")" + text + R"("},{"plaintext":"other"}]}})";
}

TEST(Users, WhatCannotBeDecipheredStaysAndTheRestIsOpened)
{
    test::Library library;
    library.wire.AnswerWith(R"({"code":"2-9","msg":"the list","data":{"userInfoList":[
        {"userName":"a","telephone":"A"},{"userName":"b","telephone":"B"},{"userName":"c","telephone":"C"},
        {"userName":"d","telephone":"D"},{"userName":"e","telephone":""}]}})");
    library.wire.AnswerWith(Opened("1"));
    library.wire.Fail();
    library.wire.AnswerWith("broken");
    library.wire.AnswerWith(R"({"code":"0-0","data":{"plaintextList":[]}})");
    library.wire.AnswerWith(Opened("5"));
    protocol::UserInfoListData users;
    ASSERT_TRUE(nexwire::CGetAllUserBasicInfoComm::request(users));

    std::string telephones;
    for (const protocol::UserInfo& user : users.userInfoList) {
        telephones += user.userName + user.telephone + " ";
    }
    EXPECT_EQ(telephones, "a1 bB cC dD e5 ");
    ASSERT_EQ(library.wire.requests.size(), 6u);
    for (std::size_t i = 1; i < library.wire.requests.size(); ++i) {
        EXPECT_EQ(library.wire.requests[i].url, kDecryption);
        EXPECT_TRUE(library.wire.requests[i].headers.empty());
    }
    EXPECT_NE(library.wire.requests[3].body.find("[\"C\"]"), std::string::npos);
    EXPECT_EQ(nexwire::LastExchange().path, "/7730/v1/framework/users");
    EXPECT_TRUE(nexwire::LastExchange().parsed);
    EXPECT_EQ(nexwire::LastExchange().message, "the list");
}

TEST(Users, WithoutAListNothingIsDeciphered)
{
    test::Library library;
    protocol::UserInfoListData users;
    users.userInfoList.resize(1);
    users.userInfoList[0].telephone = "kept";
    library.wire.AnswerWith("broken");
    EXPECT_FALSE(nexwire::CGetAllUserBasicInfoComm::request(users));
    library.wire.Fail();
    EXPECT_FALSE(nexwire::CGetAllUserBasicInfoComm::request(users));
    EXPECT_EQ(library.wire.requests.size(), 2u);
    ASSERT_EQ(users.userInfoList.size(), 1u);
    EXPECT_EQ(users.userInfoList[0].telephone, "kept");
}

TEST(Accounts, OutcomesAreLogged)
{
    test::LogCapture log;
    test::Library library;
    protocol::CloudP2PAccountInfo account;
    protocol::WSRequestInfo channel;
    protocol::UserLoginAccountTeamInfo info;
    const auto call = [&] {
        nexwire::CSetLoginToken::request(account);
        nexwire::CSetComponentRecvMsg::request(channel);
        nexwire::CGetAccountAndTeamInfo::request(info);
        return log.NewLines();
    };
    EXPECT_EQ(call(), (std::vector<std::string>{"INFO CSetLoginToken true", "INFO CSetComponentRecvMsg true"}));
    library.wire.Fail();
    library.wire.Fail();
    library.wire.Fail();
    EXPECT_EQ(call(), (std::vector<std::string>{"INFO CSetLoginToken false", "INFO CSetComponentRecvMsg false",
                                                "ERROR GetAccountAndTeamInfo false"}));
}

TEST(Accounts, WhatTheAnswerDoesNotMentionStaysAsItWasSent)
{
    test::Library library;
    protocol::OrvelAccountInfo account;
    account.accountName = "asked";
    account.region = "NO";
    std::string token = "asked";
    for (const char* body : {R"({"code":"0-0"})", R"({"code":"2-20","data":{}})", "broken"}) {
        library.wire.AnswerWith(body);
        library.wire.AnswerWith(body);
        const bool readable = body[0] == '{';
        EXPECT_EQ(nexwire::CGetOrvelAccountInfo::request(account), readable);
        EXPECT_EQ(nexwire::CStartTiming::request(token), readable);
        EXPECT_EQ(account.accountName + account.region + token, "askedNOasked") << body;
    }
    library.wire.AnswerWith(R"({"code":"0-0","data":{"accountName":"known","isLoggedIn":true}})");
    ASSERT_TRUE(nexwire::CGetOrvelAccountInfo::request(account));
    EXPECT_EQ(account.accountName + account.region, "knownNO");
    EXPECT_TRUE(account.isLoggedIn);
}

TEST(Pictures, BytesComeAsTheyAreAndStayWhenNoneCome)
{
    test::Library library;
    const std::string bytes("\xFF\xD8\0\0{\"code\":\"3-17\"}\0", 20);
    std::string picture = "before";
    library.wire.AnswerWith(bytes);
    ASSERT_TRUE(nexwire::CGetPictureComm::request(picture, {}));
    EXPECT_EQ(picture, bytes);
    library.wire.Fail();
    EXPECT_FALSE(nexwire::CGetPictureComm::request(picture, {}));
    EXPECT_EQ(picture, bytes);
}

} // namespace
