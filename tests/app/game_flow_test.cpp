// The screens' state machine: splash timing, the title menu by keys and
// pointer, shift cards and the notices, driven with real SDL events.

#include "support/headless_app.h"

#include <gtest/gtest.h>

namespace vorn::test {
namespace {

// No assets (so no sting) and a two-station catalogue.
GameFolderOptions quietFolder() {
    GameFolderOptions options;
    options.shipAssets = false;
    options.catalogue = catalogueOf({{1, "a", 20}, {2, "a", 20}});
    return options;
}

class GameFlow : public ::testing::Test {
protected:
    explicit GameFlow(GameFolderOptions options = quietFolder()) : headless("flow", std::move(options)) {}
    void SetUp() override { ASSERT_TRUE(headless.started); }

    HeadlessApp headless;
    Application& app = headless.app;
    InputDriver driver{headless.app};
    static constexpr double kFrame = 1.0 / 32;   // adds up exactly
};

TEST_F(GameFlow, StartsOnTheSplash) {
    EXPECT_EQ(app.screen, GameScreen::splash);
    EXPECT_TRUE(app.stingStarted);
    EXPECT_FALSE(app.splashRevealed);
}

TEST_F(GameFlow, SilentSplashRevealsAtOneAndAHalfSecondsAndEndsAtThree) {
    driver.frames(47, kFrame);   // 1.47 s
    EXPECT_FALSE(app.splashRevealed);
    driver.frame(kFrame);        // 1.5 s
    EXPECT_TRUE(app.splashRevealed);
    EXPECT_DOUBLE_EQ(app.splashRevealAt, 1.5);
    driver.frames(47, kFrame);   // 2.97 s
    EXPECT_EQ(app.screen, GameScreen::splash);
    driver.frame(kFrame);        // 3.0 s
    EXPECT_EQ(app.screen, GameScreen::title);
    EXPECT_TRUE(app.save.splashSeen);
    EXPECT_NE(readTextFile(headless.folder.dir.path() / "data" / "vornco_save.txt").find("splashSeen=1"),
              std::string::npos);
}

TEST_F(GameFlow, AnyKeyOnTheSplashGoesToTheTitleAtOnce) {
    driver.frame(kFrame);
    driver.key(SDLK_q);
    driver.frame(kFrame);
    EXPECT_EQ(app.screen, GameScreen::title);
    EXPECT_EQ(app.menuIndex, 0);
    EXPECT_TRUE(app.save.splashSeen);
}

TEST_F(GameFlow, AClickOnTheSplashGoesToTheTitleAtOnce) {
    driver.press(10, 10);
    driver.frame(kFrame);
    EXPECT_EQ(app.screen, GameScreen::title);
}

TEST_F(GameFlow, TheReservedIntroScreenHandsOverToTheTitle) {
    app.screen = GameScreen::intro;
    driver.frame(kFrame);
    EXPECT_EQ(app.screen, GameScreen::title);
}

class TitleMenu : public GameFlow {
protected:
    void SetUp() override {
        GameFlow::SetUp();
        app.enterTitle();
    }
};

TEST_F(TitleMenu, WithoutCardsFiveItemsStartWithEasy) {
    MenuItem items[6];
    ASSERT_EQ(titleMenu(app.save, items), 5);
    EXPECT_STREQ(items[0].label, "NEW: EASY");
    EXPECT_STREQ(items[4].label, "QUIT");
    driver.moveTo(683, 360);   // the first row, y 350..388
    driver.frame(kFrame);
    EXPECT_EQ(app.menuIndex, 0);
    driver.click(683, 360);
    EXPECT_EQ(app.screen, GameScreen::shiftCard);
    EXPECT_EQ(app.difficulty, Difficulty::easy);
}

TEST_F(TitleMenu, ACardAddsContinueInTheFirstRow) {
    app.save.clockInCards = 1;
    MenuItem items[6];
    ASSERT_EQ(titleMenu(app.save, items), 6);
    EXPECT_STREQ(items[0].label, "> CONTINUE");
    EXPECT_EQ(items[0].code, 10);
    EXPECT_STREQ(items[1].label, "NEW: EASY");
    app.difficulty = Difficulty::hard;
    driver.click(683, 355);
    EXPECT_EQ(app.screen, GameScreen::shiftCard);
    EXPECT_EQ(app.difficulty, Difficulty::hard);   // continue keeps the difficulty
    EXPECT_EQ(app.save.clockInCards, 1);           // and spends no card
}

TEST_F(TitleMenu, UpOnTheFirstItemHighlightsQuit) {
    driver.key(SDLK_UP);
    driver.frame(kFrame);
    EXPECT_EQ(app.menuIndex, 4);
}

TEST_F(TitleMenu, HeldKeyRepeatsScrollTheMenu) {
    driver.key(SDLK_s);
    driver.frame(kFrame);
    driver.key(SDLK_s, true);
    driver.frame(kFrame);
    driver.key(SDLK_DOWN, true);
    driver.frame(kFrame);
    EXPECT_EQ(app.menuIndex, 3);
}

TEST_F(TitleMenu, ARestingPointerHoldsItsRowAgainstTheKeys) {
    driver.moveTo(683, 350 + 46 * 2 + 5);
    driver.frame(kFrame);
    EXPECT_EQ(app.menuIndex, 2);
    driver.key(SDLK_DOWN);
    driver.frame(kFrame);
    EXPECT_EQ(app.menuIndex, 2);
    driver.moveTo(833, 350 + 46 * 2 + 5);   // x 833 is outside the row
    driver.key(SDLK_DOWN);
    driver.frame(kFrame);
    EXPECT_EQ(app.menuIndex, 3);
}

TEST_F(TitleMenu, ConfirmChoosesTheHighlightedDifficultyWithoutWritingTheSave) {
    const std::string before = readTextFile(headless.folder.dir.path() / "data" / "vornco_save.txt");
    driver.key(SDLK_DOWN);
    driver.frame(kFrame);
    driver.key(SDLK_DOWN);
    driver.frame(kFrame);
    driver.key(SDLK_KP_ENTER);
    driver.frame(kFrame);
    EXPECT_EQ(app.screen, GameScreen::shiftCard);
    EXPECT_EQ(app.difficulty, Difficulty::hard);
    EXPECT_EQ(app.save.lastDifficulty, 2);
    EXPECT_EQ(readTextFile(headless.folder.dir.path() / "data" / "vornco_save.txt"), before);
}

TEST_F(TitleMenu, QuitStopsTheGame) {
    driver.key(SDLK_UP);
    driver.frame(kFrame);
    driver.key(SDLK_RETURN);
    driver.frame(kFrame);
    EXPECT_FALSE(app.running);
}

class Notices : public GameFlow {
protected:
    void SetUp() override {
        GameFlow::SetUp();
        app.startRunWithSeed(Difficulty::medium, 3);
        app.startStation(0);
        app.fired();
    }
};

TEST_F(Notices, APressOnceSixTenthsOfASecondHavePassedDismisses) {
    driver.frames(19, kFrame);   // 0.59 s
    driver.press(683, 384);
    driver.frame(kFrame);        // the press is seen at 0.625 s
    EXPECT_EQ(app.screen, GameScreen::title);
}

TEST_F(Notices, AnEarlyPressDoesNotDismiss) {
    driver.frames(10, kFrame);
    driver.press(683, 384);
    driver.frame(kFrame);
    EXPECT_EQ(app.screen, GameScreen::fired);
}

TEST_F(Notices, EscapeDismissesTheFiredNoticeLikeAnyKey) {
    driver.frames(20, kFrame);
    driver.key(SDLK_ESCAPE);
    driver.frame(kFrame);
    EXPECT_EQ(app.screen, GameScreen::title);
}

TEST_F(Notices, EscapeDismissesTheVictoryNotice) {
    app.screen = GameScreen::victory;
    app.screenTime = 0.0;
    driver.frames(20, kFrame);
    driver.key(SDLK_ESCAPE);
    driver.frame(kFrame);
    EXPECT_EQ(app.screen, GameScreen::title);
}

}  // namespace
}  // namespace vorn::test

namespace vorn::test {
namespace {

// A WAV of `seconds` of quiet 8-bit mono at 8 kHz: long enough to outlast
// the splash, small enough to write in a test.
std::string longWav(int seconds) {
    const std::uint32_t samples = 8000u * static_cast<std::uint32_t>(seconds);
    std::string bytes = "RIFF";
    const auto put = [&bytes](std::uint32_t v, int n) {
        for (int i = 0; i < n; ++i) {
            bytes.push_back(static_cast<char>((v >> (8 * i)) & 0xFFu));
        }
    };
    put(36 + samples, 4);
    bytes += "WAVEfmt ";
    put(16, 4);
    put(1, 2);      // PCM
    put(1, 2);      // mono
    put(8000, 4);
    put(8000, 4);   // bytes per second
    put(1, 2);
    put(8, 2);
    bytes += "data";
    put(samples, 4);
    for (std::uint32_t i = 0; i < samples; ++i) {
        bytes.push_back(static_cast<char>(128 + ((i / 20) % 2 == 0 ? 8 : -8)));
    }
    return bytes;
}

TEST(SplashWithALongSting, RevealsAtOnceAndIsCutSixSecondsAfterTheReveal) {
    GameFolderOptions options;
    options.shipAssets = false;
    options.catalogue = catalogueOf({{1, "a", 20}});
    options.prepare = [](const TempDir& dir) {
        dir.write("assets/audio/zembrilux-sting.wav", longWav(12));
    };
    HeadlessApp headless("long_sting", options);
    ASSERT_TRUE(headless.started);
    Application& app = headless.app;
    InputDriver driver(app);
    ASSERT_TRUE(app.audio.isMusicPlaying()) << "the sting did not start";
    constexpr double kFrame = 1.0 / 32;
    driver.frame(kFrame);
    // The sting is playing, so the logo shows on the first frame.
    EXPECT_TRUE(app.splashRevealed);
    EXPECT_DOUBLE_EQ(app.splashRevealAt, kFrame);
    driver.frames(191, kFrame);   // 5.97 s after the reveal; the 12 s sting plays on
    EXPECT_EQ(app.screen, GameScreen::splash);
    EXPECT_TRUE(app.audio.isMusicPlaying());
    driver.frame(kFrame);   // 6.0 s after the reveal: cut short
    EXPECT_EQ(app.screen, GameScreen::title);
}

}  // namespace
}  // namespace vorn::test
