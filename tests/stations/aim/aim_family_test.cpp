// The aim family as a whole: the factory makes each of its six stations from
// its type string, and each station starts from the same defaults before it
// is set up. Each station's own tests are in the file named after its type.

#include "stations/aim_stations.h"
#include "stations/level_factory.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(AimFactory, EachTypeStringMakesItsStation) {
    EXPECT_NE(dynamic_cast<WhackLevel*>(createLevel("whack").get()), nullptr);
    EXPECT_NE(dynamic_cast<DoubleClickLevel*>(createLevel("doubleclick").get()), nullptr);
    EXPECT_NE(dynamic_cast<PrecisionLevel*>(createLevel("precision").get()), nullptr);
    EXPECT_NE(dynamic_cast<DecoyLevel*>(createLevel("decoy").get()), nullptr);
    EXPECT_NE(dynamic_cast<GreasedLevel*>(createLevel("greased").get()), nullptr);
    EXPECT_NE(dynamic_cast<HotColdLevel*>(createLevel("hotcold").get()), nullptr);
    EXPECT_EQ(dynamic_cast<WhackLevel*>(createLevel("Whack").get()), nullptr);   // type strings are exact
}

TEST(AimFactory, ConstructorDefaults) {
    WhackLevel whack;
    EXPECT_EQ(whack.slots[5].radius, 30);
    EXPECT_FALSE(whack.slots[0].active);
    EXPECT_EQ(whack.rng, nullptr);
    DoubleClickLevel dc;
    EXPECT_EQ(dc.columns, 4);
    EXPECT_EQ(dc.rows, 2);
    EXPECT_EQ(dc.cellCount, 8);
    EXPECT_EQ(dc.armedCell, -1);
    EXPECT_EQ(dc.armedTime, -1.0);
    PrecisionLevel precision;
    EXPECT_EQ(precision.dotRadius, 9);
    EXPECT_EQ(precision.ringRadius, 44);
    DecoyLevel decoy;
    EXPECT_EQ(decoy.radius, 34.0);
    EXPECT_EQ(HotColdLevel{}.spotRadius, 46);
}

}  // namespace
}  // namespace vorn
