// The dial family as a whole: the factory makes each of its four stations
// from its type string, and only from that exact string.

#include "stations/dial_stations.h"
#include "stations/level_factory.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(DialFamily, TheFactoryMakesEachStationFromItsTypeString) {
    EXPECT_NE(dynamic_cast<DialLevel*>(createLevel("dial").get()), nullptr);
    EXPECT_NE(dynamic_cast<ComboLevel*>(createLevel("combo").get()), nullptr);
    EXPECT_NE(dynamic_cast<CalibrateLevel*>(createLevel("calibrate").get()), nullptr);
    EXPECT_NE(dynamic_cast<ScaleLevel*>(createLevel("scale").get()), nullptr);
    EXPECT_EQ(dynamic_cast<DialLevel*>(createLevel("Dial").get()), nullptr);
}

}  // namespace
}  // namespace vorn
