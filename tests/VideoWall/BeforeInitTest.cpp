// A program of its own: nobody here says where the service is.

#include "VideoWall/Wall.h"

namespace wall_test {
namespace {

TEST(VideoWallBeforeInit, RequestsFailAsIfTheServiceWereNotReached)
{
    EXPECT_EQ(LastError(), "0 0 ");
    LogFile log(false);
    EXPECT_FALSE(CTWDeviceCommon::refreshDevice("a"));
    EXPECT_EQ(LastError(), kNetworkError);
    EXPECT_EQ(log.NewLines(),
              (Lines{"INFO refreshDevice url:[/videoWall/v1/deviceManager/device/refresh]",
                     R"(INFO refreshDevice conntent:[{"guid":"a"}])", "ERROR refreshDevice HttpSend failed! "}));
}

} // namespace
} // namespace wall_test
