#include <thread>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include <cjson/cJSON.h>
#include <gtest/gtest.h>

#include "Sample.h"
#include "core/JsonTree.h"
#include "nexwire/ConversionArena.h"
#include "nexwire/ParseJSONUtil.h"

namespace {

#if defined(__GLIBC__)
TEST(Arena, AThreadKeepsLittleOfALargeAnswer)
{
    const auto used = [] {
        const struct mallinfo2 info = mallinfo2();
        return info.uordblks + info.hblkhd;
    };
    sample::All small;
    ASSERT_TRUE(protocol::TParseJSONStrWithoutRoot(small, "{}"));
    const std::string large = "[" + std::string(std::size_t{16} << 20, '1') + "]";
    const std::size_t before = used();
    ASSERT_TRUE(protocol::TParseJSONStrWithoutRoot(small, R"({"unknown":")" + large + "\"}"));
    EXPECT_LE(used(), before + (std::size_t{2} << 20));
}
#endif

// Last of the test program by its name: the arena stays switched on for the rest of the process.
TEST(ZArena, ConversionsAreTheSameAndTreesOfTheHostOutliveThem)
{
    sample::All all;
    all.parts.resize(5000);
    for (std::size_t i = 0; i < all.parts.size(); ++i) {
        all.parts[i].id = std::string(i % 300, 'x');
        all.parts[i].tags = {"a", std::to_string(i)};
    }
    const std::string before = protocol::SerializeRequest(all);
    cJSON* const older = cJSON_Parse(R"({"made":"before"})");

    nexwire::UseConversionArena(std::size_t{1} << 20);
    cJSON* const hosts = cJSON_Parse(R"({"made":"by the host"})");
    const auto work = [&] {
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(protocol::SerializeRequest(all), before);
            sample::All read;
            ASSERT_TRUE(protocol::TParseJSONStr(read, before));
            EXPECT_EQ(read.parts.back().tags.back(), "4999");
            EXPECT_FALSE(protocol::TParseJSONStr(read, "{\"all\":["));
        }
    };
    std::thread other(work);
    work();
    other.join();
    EXPECT_STREQ(cJSON_GetObjectItem(hosts, "made")->valuestring, "by the host");
    cJSON_Delete(hosts);
    cJSON_Delete(older);
    const nexwire::core::JsonTree outside(all.ToJson());
    EXPECT_NE(outside.get(), nullptr);
}

} // namespace
