// The control-panel family as a whole: the factory makes each of its four
// stations from its type string, and only from that exact string.

#include "stations/level_factory.h"
#include "stations/panel_stations.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(PanelFactory, EachTypeStringMakesItsStation) {
    EXPECT_NE(dynamic_cast<SwitchesLevel*>(createLevel("switches").get()), nullptr);
    EXPECT_NE(dynamic_cast<FuseboxLevel*>(createLevel("fusebox").get()), nullptr);
    EXPECT_NE(dynamic_cast<ValveLevel*>(createLevel("valve").get()), nullptr);
    EXPECT_NE(dynamic_cast<GauntletLevel*>(createLevel("gauntlet").get()), nullptr);
    EXPECT_EQ(dynamic_cast<ValveLevel*>(createLevel("Valve").get()), nullptr);
}

}  // namespace
}  // namespace vorn
