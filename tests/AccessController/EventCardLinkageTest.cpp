#include <gtest/gtest.h>

#include "nexwire/AccessController/EventCardLinkage.h"
#include "support/DeviceAnswer.h"
#include "support/StubExecutor.h"

namespace {

TEST(EventCardLinkage, SetHandsOutTheDevicesWord)
{
    const std::string done = R"({"returnRst":{"statusCode":1,"statusString":"OK"}})";
    const std::string refused = R"({"returnRst":{"statusCode":4,"subStatusCode":"badCard","errorCode":9}})";
    const struct {
        std::string status, out;
        int statusCode;
    } cases[] = {
        {refused, "", 4}, {"", refused, 4}, {refused, done, 4}, {"busy", done, 1}, {"", "", 0}, {"busy", "{}", 0},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.status + " | " + row.out);
        test::Library library;
        protocol::ReturnRst result;
        result.statusCode = 77; // Of an earlier call.
        result.errorMsg = "earlier";
        library.wire.AnswerWith(test::DeviceAnswer(row.out, row.status));
        EXPECT_TRUE(nexwire::EventCardLinkage::requestSET(result, {}, "id", 1));
        EXPECT_EQ(result.statusCode, row.statusCode);
        EXPECT_EQ(result.subStatusCode, row.statusCode == 4 ? "badCard" : "");
        EXPECT_EQ(result.errorMsg, "");
    }
}

} // namespace
