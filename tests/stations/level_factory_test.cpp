// The station base and the type-string factory.

#include "data/level_catalogue.h"
#include "stations/level_factory.h"
#include "stations/paperwork_stations.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

bool isGeneric(const std::unique_ptr<Level>& level) {
    return dynamic_cast<GenericLevel*>(level.get()) != nullptr;
}

TEST(LevelFactory, UnknownOrEmptyTypesMakeTheGenericStation) {
    EXPECT_TRUE(isGeneric(createLevel("")));
    EXPECT_TRUE(isGeneric(createLevel("photocopier")));
}

TEST(LevelFactory, TypeMatchIsExactAndCaseSensitive) {
    EXPECT_TRUE(isGeneric(createLevel("Button")));
    EXPECT_TRUE(isGeneric(createLevel("BUTTON")));
    EXPECT_TRUE(isGeneric(createLevel("button ")));
    EXPECT_TRUE(isGeneric(createLevel(" button")));
}

TEST(LevelBase, ConstructorDefaults) {
    GenericLevel level;
    EXPECT_EQ(level.number, 0);
    EXPECT_TRUE(level.id.empty());
    EXPECT_EQ(level.baseTime, 15);
    EXPECT_EQ(level.playArea.x, 84);
    EXPECT_EQ(level.playArea.y, 210);
    EXPECT_EQ(level.playArea.w, 856);
    EXPECT_EQ(level.playArea.h, 360);
}

TEST(LevelBase, SetupCopiesTheCatalogueRecordAndPlayArea) {
    LevelDef def;
    def.number = 12;
    def.id = "tiles";
    def.name = "ODD ONE OUT";
    def.type = "whatever";
    def.phase = "fullshift";
    def.baseTime = 27;
    def.instruction = "Pick the odd tile.";
    def.trick = "only the shade differs";
    GenericLevel level;
    Rng rng(1);
    level.setup(def, rng, kPlayArea);
    EXPECT_EQ(level.number, 12);
    EXPECT_EQ(level.id, "tiles");
    EXPECT_EQ(level.name, "ODD ONE OUT");
    EXPECT_EQ(level.type, "whatever");
    EXPECT_EQ(level.phase, "fullshift");
    EXPECT_EQ(level.baseTime, 27);
    EXPECT_EQ(level.instruction, "Pick the odd tile.");
    EXPECT_EQ(level.trick, "only the shade differs");
    EXPECT_EQ(level.playArea.x, 263);
    EXPECT_EQ(level.playArea.y, 190);
    EXPECT_EQ(level.playArea.w, 840);
    EXPECT_EQ(level.playArea.h, 430);
}

}  // namespace
}  // namespace vorn
