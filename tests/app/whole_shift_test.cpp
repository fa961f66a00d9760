// The whole shipped shift, played by the automatic player from the title
// terminal to SHIFT COMPLETE on every difficulty: every station cleared
// within its clock by a human-limited hand, the log's run lines in order,
// the card rules kept, and CONTINUE offered afterwards.

#include "data/save_data.h"
#include "support/difficulty_terms.h"
#include "support/auto_player.h"
#include "support/run_log.h"
#include "support/headless_app.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

namespace vorn::test {
namespace {

std::uint32_t gSeed = 0;
std::uint32_t chosenSeed() { return gSeed; }



class WholeShift : public ::testing::TestWithParam<std::tuple<Difficulty, std::uint32_t>> {};

TEST_P(WholeShift, TheAutomaticPlayerClearsTheShippedShift) {
    const Difficulty d = std::get<0>(GetParam());
    gSeed = std::get<1>(GetParam());
    GameFolderOptions options;   // the shipped catalogue and assets
    HeadlessApp headless("whole_shift", options);
    ASSERT_TRUE(headless.started);
    Application& app = headless.app;
    app.seedSource = chosenSeed;
    AutoPlayer player(app);
    player.drawEvery = 12;   // five pictures a second of play
    InputDriver(app).key(SDLK_SPACE);   // past the splash
    player.frame();
    ASSERT_EQ(app.screen, GameScreen::title);
    ASSERT_EQ(app.levels.size(), 38u);

    // Track each station's clock as it is cleared: the share of the clock
    // still left when it passed is the player's margin.
    struct Margin {
        std::string type;
        double left;
        double total;
    };
    std::vector<Margin> margins;
    const Level* current = nullptr;
    Margin seen{};
    char label[32];
    std::snprintf(label, sizeof label, "NEW: %s", termsOf(d).name);
    ASSERT_TRUE(player.choose(label));
    player.playUntil([&] {
        const Level* now = app.screen == GameScreen::station ? app.station.get() : nullptr;
        if (now != current && current != nullptr && app.screen != GameScreen::fired) {
            margins.push_back(seen);
        }
        current = now;
        if (now != nullptr) {
            seen = Margin{now->type, app.timeLeft, app.timeTotal};
        }
        return app.screen == GameScreen::fired || app.screen == GameScreen::victory || !app.running;
    }, 900.0);
    const GameScreen end = app.screen;
    for (const Margin& m : margins) {
        // Greppable: the smallest margin per station and difficulty over the
        // seeds is what decides whether a base time is generous enough.
        std::printf("MARGIN %s %s %.1f%% of %.2f s\n", termsOf(d).name, m.type.c_str(),
                    100.0 * m.left / m.total, m.total);
        EXPECT_GE(m.left / m.total, 0.2) << m.type << ": less than a fifth of the clock was left";
    }
    EXPECT_EQ(margins.size(), end == GameScreen::victory ? 38u : margins.size());
    const std::vector<std::string> lines = runLines(headless.folder.logText());
    std::string where;
    for (const std::string& line : lines) {
        where += line + "\n";
    }
    ASSERT_EQ(end, GameScreen::victory) << where;

    // RUN, then the probation card, ten stations, the shift card, 25
    // stations, the overtime card, three stations, and the victory line.
    ASSERT_EQ(lines.size(), 1u + 1u + 10u + 1u + 25u + 1u + 3u + 1u) << where;
    char run[160];
    std::snprintf(run, sizeof run, "RUN: start difficulty=%s seed=%u levels=38 (probation=10 shift=25 overtime=3)",
                  termsOf(d).name, gSeed);
    EXPECT_EQ(lines[0], run);
    EXPECT_EQ(lines[1], "SHIFTCARD: phase=0 ('PROBATION')");
    EXPECT_EQ(lines[12], "SHIFTCARD: phase=1 ('SHIFT STARTS')");
    EXPECT_EQ(lines[38], "SHIFTCARD: phase=2 ('OVERTIME')");
    for (std::size_t i = 0; i < 38; ++i) {
        const std::size_t at = 2 + i + (i >= 10 ? 1 : 0) + (i >= 35 ? 1 : 0);
        const LevelDef& def = app.levels[static_cast<std::size_t>(app.stationOrder[i])];
        const double m = def.phase == "overtime" ? 0.7 : termsOf(d).multiplier;
        char level[200];
        std::snprintf(level, sizeof level, "LEVEL: %zu/38 station %02d '%s' type=%s time=%.1fs (base=%d x%.2f x0.9)",
                      i + 1, def.number, def.name.c_str(), def.type.c_str(), def.baseTime * m * 0.45,
                      def.baseTime, m);
        EXPECT_EQ(lines[at], level);
        // Probation, shift and overtime stations land in their own stretch.
        EXPECT_EQ(def.phase == "probation", i < 10) << def.number;
        EXPECT_EQ(def.phase == "overtime", i >= 35) << def.number;
    }
    const bool awarded = app.cardAwarded;
    char victory[160];
    std::snprintf(victory, sizeof victory, "VICTORY: difficulty=%s clockInChance=%.2f awarded=%s totalCards=%d",
                  termsOf(d).name, termsOf(d).chance, awarded ? "YES" : "no", awarded ? 1 : 0);
    EXPECT_EQ(lines.back(), victory);
    if (d == Difficulty::easy) {
        EXPECT_TRUE(awarded);
    }
    if (d == Difficulty::vorn) {
        EXPECT_FALSE(awarded);
    }
    SaveData saved;
    loadSave(saved, (headless.folder.dir.path() / "data" / "vornco_save.txt").u8string());
    EXPECT_EQ(saved.clockInCards, awarded ? 1 : 0);
    EXPECT_EQ(saved.timesFired, 0);
    EXPECT_EQ(saved.lastDifficulty, static_cast<int>(d));

    // Back at the title: a card offers CONTINUE, which starts a run at the
    // difficulty just played.
    player.playUntil([&] { return app.screenTime > 0.7; }, 2.0);
    InputDriver(app).key(SDLK_RETURN);
    player.frame();
    ASSERT_EQ(app.screen, GameScreen::title);
    if (awarded) {
        ASSERT_TRUE(player.choose("> CONTINUE"));
        EXPECT_EQ(app.screen, GameScreen::shiftCard);
        EXPECT_EQ(app.difficulty, d);
    }
}

INSTANTIATE_TEST_SUITE_P(
    EveryDifficulty, WholeShift,
    ::testing::Combine(::testing::Values(Difficulty::easy, Difficulty::medium, Difficulty::hard, Difficulty::vorn),
                       ::testing::Values(11u, 2026u)),
    [](const ::testing::TestParamInfo<std::tuple<Difficulty, std::uint32_t>>& info) {
        return std::string(termsOf(std::get<0>(info.param)).name) + "_seed" +
               std::to_string(std::get<1>(info.param));
    });

}  // namespace
}  // namespace vorn::test
