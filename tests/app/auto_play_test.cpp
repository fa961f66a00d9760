// The automatic player drives the real game through real SDL events: whole
// runs from the title terminal to victory, and the two ways to be fired.

#include "data/save_data.h"
#include "log/printf_format.h"
#include "support/difficulty_terms.h"
#include "support/auto_player.h"
#include "support/run_log.h"
#include "stations/paperwork_stations.h"
#include "support/headless_app.h"
#include "support/solvers/family_solvers.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

namespace vorn::test {
namespace {

std::uint32_t fixedSeed() { return 20261122u; }


// Two probation, two shift and one overtime station, all odd-tile stations.
GameFolderOptions fallbackShift() {
    GameFolderOptions options;
    options.shipAssets = false;
    options.catalogue = catalogueOf({{2, "odd", 20}, {1, "odd", 20}, {12, "paper", 20},
                                     {11, "odd", 20}, {31, "odd", 20}});
    return options;
}


std::string format(const char* pattern, ...) VORN_PRINTF_FORMAT(1);
std::string format(const char* pattern, ...) {
    char buffer[256];
    va_list args;
    va_start(args, pattern);
    std::vsnprintf(buffer, sizeof buffer, pattern, args);
    va_end(args);
    return buffer;
}

// The LEVEL line the run writes for position i of the station order.
std::string levelLine(const Application& app, std::size_t i, double multiplier) {
    const LevelDef& def = app.levels[static_cast<std::size_t>(app.stationOrder[i])];
    const double m = def.phase == "overtime" ? 0.7 : multiplier;
    return format("LEVEL: %zu/%zu station %02d '%s' type=%s time=%.1fs (base=%d x%.2f x0.9)", i + 1,
                  app.stationOrder.size(), def.number, def.name.c_str(), def.type.c_str(),
                  def.baseTime * m * 0.45, def.baseTime, m);
}

struct AutoPlay : ::testing::Test {
    AutoPlay() : headless("autoplay", fallbackShift()), player(headless.app) {}
    void SetUp() override {
        ASSERT_TRUE(headless.started);
        headless.app.seedSource = fixedSeed;
        // Any key leaves the splash.
        InputDriver(headless.app).key(SDLK_SPACE);
        player.frame();
        ASSERT_EQ(headless.app.screen, GameScreen::title);
    }

    // Every line a victorious run writes, in order.
    std::vector<std::string> victoryLines(Difficulty d, const char* awarded, int cards) {
        const Application& app = headless.app;
        const Terms terms = termsOf(d);
        const double m = terms.multiplier;
        return {
            format("RUN: start difficulty=%s seed=%u levels=5 (probation=2 shift=2 overtime=1)",
                   terms.name, fixedSeed()),
            "SHIFTCARD: phase=0 ('PROBATION')",
            levelLine(app, 0, m),
            levelLine(app, 1, m),
            "SHIFTCARD: phase=1 ('SHIFT STARTS')",
            levelLine(app, 2, m),
            levelLine(app, 3, m),
            "SHIFTCARD: phase=2 ('OVERTIME')",
            levelLine(app, 4, m),
            format("VICTORY: difficulty=%s clockInChance=%.2f awarded=%s totalCards=%d", terms.name,
                   terms.chance, awarded, cards),
        };
    }

    SaveData savedFile() {
        SaveData saved;
        loadSave(saved, (headless.folder.dir.path() / "data" / "vornco_save.txt").u8string());
        return saved;
    }

    HeadlessApp headless;
    AutoPlayer player;
};

TEST_F(AutoPlay, AnEasyShiftOfOddTilesIsWonAndEarnsACard) {
    EXPECT_EQ(player.playShift(Difficulty::easy), GameScreen::victory);
    EXPECT_EQ(runLines(headless.folder.logText()), victoryLines(Difficulty::easy, "YES", 1));
    EXPECT_EQ(savedFile().clockInCards, 1);
    EXPECT_EQ(savedFile().timesFired, 0);

    // Dismissing the notice returns to the title, which now offers CONTINUE.
    player.playUntil([&] { return headless.app.screenTime > 0.7; }, 2.0);
    InputDriver(headless.app).key(SDLK_RETURN);
    player.frame();
    ASSERT_EQ(headless.app.screen, GameScreen::title);
    MenuItem items[6];
    ASSERT_EQ(titleMenu(headless.app.save, items), 6);
    EXPECT_STREQ(items[0].label, "> CONTINUE");
}

TEST_F(AutoPlay, AVornShiftIsWonButNeverEarnsACard) {
    EXPECT_EQ(player.playShift(Difficulty::vorn), GameScreen::victory);
    EXPECT_EQ(runLines(headless.folder.logText()), victoryLines(Difficulty::vorn, "no", 0));
    EXPECT_EQ(savedFile().clockInCards, 0);
}

// Clicks the first tile that is not the odd one.
class WrongTile final : public Solver {
public:
    Intent decide(const Level& station, const Hand& hand, double) override {
        const auto& level = dynamic_cast<const GenericLevel&>(station);
        const Rect& b = level.boxes[(level.answer + 1) % level.count];
        return clickAt(hand, b.x + b.w / 2, b.y + b.h / 2);
    }
};

// Looks and never touches anything.
class Idle final : public Solver {
public:
    Intent decide(const Level&, const Hand& hand, double) override { return Intent{hand.x, hand.y, false}; }
};

TEST_F(AutoPlay, AWrongTileFiresThePlayerAndCountsItInTheSave) {
    player.solverFor = [](const Level&) { return std::make_unique<WrongTile>(); };
    EXPECT_EQ(player.playShift(Difficulty::medium), GameScreen::fired);
    const Application& app = headless.app;
    const LevelDef& def = app.levels[static_cast<std::size_t>(app.stationOrder[0])];
    const std::vector<std::string> lines = runLines(headless.folder.logText());
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.back(), format("FIRED: at station %02d '%s' (1/5) timeLeft=%.1fs timesFired=1", def.number,
                                   def.name.c_str(), app.timeLeft));
    EXPECT_GT(app.timeLeft, 0.0);
    EXPECT_EQ(savedFile().timesFired, 1);
}

TEST_F(AutoPlay, AClockThatRunsOutFiresThePlayer) {
    player.solverFor = [](const Level&) { return std::make_unique<Idle>(); };
    EXPECT_EQ(player.playShift(Difficulty::hard), GameScreen::fired);
    const Application& app = headless.app;
    const LevelDef& def = app.levels[static_cast<std::size_t>(app.stationOrder[0])];
    const std::vector<std::string> lines = runLines(headless.folder.logText());
    ASSERT_EQ(lines.size(), 4u);   // RUN, SHIFTCARD, LEVEL, FIRED
    EXPECT_EQ(lines[3], format("FIRED: at station %02d '%s' (1/5) timeLeft=0.0s timesFired=1", def.number,
                               def.name.c_str()));
    EXPECT_EQ(savedFile().timesFired, 1);
}

}  // namespace
}  // namespace vorn::test
