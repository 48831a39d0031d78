#include <thread>

#include <gtest/gtest.h>

#include <keel/Error.h>

namespace {

using namespace Keel;

TEST(Error, JsonTextAndCodeAreTheSameThreeValues)
{
    Error::SetLastErrorJson("网络异常，请稍后再试。", 0, 99999);
    EXPECT_EQ(Error::GetLastErrorJson(), "{\"code\":99999,\"module\":0,\"msg\":\"网络异常，请稍后再试。\"}");
    EXPECT_EQ(Error::GetLastError().category, 0);
    EXPECT_EQ(Error::GetLastError().number, 99999);
    EXPECT_EQ(Error::GetLastError().text, "网络异常，请稍后再试。");

    Error::SetLastError({-2147483647 - 1, 2147483647, "a\"b\\c/\n\t\x01\x7F"});
    EXPECT_EQ(Error::GetLastErrorJson(),
              "{\"code\":2147483647,\"module\":-2147483648,\"msg\":\"a\\\"b\\\\c/\\u000a\\u0009\\u0001\x7F\"}");

    Error::SetLastError({1, 2, std::string("x\0y\xFF\xE4\xB8", 6)});
    EXPECT_EQ(Error::GetLastErrorJson(), "{\"code\":2,\"module\":1,\"msg\":\"x\\u0000y\uFFFD\uFFFD\uFFFD\"}");
    EXPECT_EQ(Error::GetLastError().text.size(), 6U);

    Error::SetLastError(Error::ErrorCode());
    EXPECT_EQ(Error::GetLastError().number, 0);
    EXPECT_EQ(Error::GetLastErrorJson(), "{\"code\":0,\"module\":0,\"msg\":\"\"}");
}

TEST(Error, EveryThreadHasItsOwn)
{
    Error::SetLastError({1, 2, "main"});
    std::thread([] {
        EXPECT_EQ(Error::GetLastErrorJson(), "");
        EXPECT_EQ(Error::GetLastError().text, "");
        Error::SetLastError({3, 4, "other"});
        EXPECT_EQ(Error::GetLastError().text, "other");
    }).join();
    EXPECT_EQ(Error::GetLastErrorJson(), "{\"code\":2,\"module\":1,\"msg\":\"main\"}");
}

/// Made before the thread's last error, so destroyed after it.
struct AsksLate {
    ~AsksLate()
    {
        Error::SetLastError({1, 2, std::string(100, 'x')});
        *number = Error::GetLastError().number;
        *json = Error::GetLastErrorJson();
    }
    int* number = nullptr;
    std::string* json = nullptr;
};

TEST(Error, DestructorsOfAnEndingThreadMayAsk)
{
    int number = -1;
    std::string json = "before";
    std::thread([&] {
        thread_local AsksLate late;
        late.number = &number;
        late.json = &json;
        Error::SetLastError({5, 6, std::string(100, 'y')});
    }).join();
    EXPECT_EQ(number, 0);
    EXPECT_EQ(json, "");
}

} // namespace
