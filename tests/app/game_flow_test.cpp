// The screens' state machine: splash timing, the title menu by keys and
// pointer, shift cards and the notices, driven with real SDL events, with
// every sound and music request the flow makes on the way.

#include "support/headless_app.h"
#include "support/play_area.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace vorn::test {
namespace {

// No assets (so no sting) and a two-station catalogue.
GameFolderOptions quietFolder() {
    GameFolderOptions options;
    options.shipAssets = false;
    options.catalogue = catalogueOf({{1, "a", 20}, {2, "a", 20}});
    return options;
}

GameFolderOptions listening(GameFolderOptions options, std::vector<std::string>* sounds) {
    options.sounds = sounds;
    return options;
}

using Sounds = std::vector<std::string>;

class GameFlow : public ::testing::Test {
protected:
    explicit GameFlow(GameFolderOptions options = quietFolder())
        : headless("flow", listening(std::move(options), &sounds)) {}
    void SetUp() override { ASSERT_TRUE(headless.started); }

    // The requests made since position `from` of the sound log.
    Sounds soundsSince(std::size_t from) const {
        return Sounds(sounds.begin() + static_cast<std::ptrdiff_t>(from), sounds.end());
    }
    std::filesystem::path saveFile() const {
        return headless.folder.dir.path() / "data" / "vornco_save.txt";
    }
    std::string savedText() const { return readTextFile(saveFile()); }

    Sounds sounds;   // declared first: the application logs into it to the end
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

// The device opens at full volume for music and every channel, and the
// splash asks for the sting once, played once (not looped).
TEST_F(GameFlow, StartUpOpensAtFullVolumeAndAsksForTheStingOnce) {
    EXPECT_EQ(sounds, (Sounds{"volume music=128", "volume channels=128", "music sting loops=1"}));
    driver.frames(96, kFrame);   // through the whole splash to the title
    ASSERT_EQ(app.screen, GameScreen::title);
    EXPECT_EQ(soundsSince(3), Sounds{"music title loops=-1"});
}

TEST_F(GameFlow, SilentSplashRevealsAtOneAndAHalfSecondsAndEndsAtThree) {
    driver.frames(47, kFrame);   // 1.47 s
    EXPECT_FALSE(app.splashRevealed);
    driver.frame(kFrame);        // 1.5 s
    EXPECT_TRUE(app.splashRevealed);
    EXPECT_DOUBLE_EQ(app.splashRevealAt, 1.5);
    driver.frames(47, kFrame);   // 2.97 s
    EXPECT_EQ(app.screen, GameScreen::splash);
    EXPECT_FALSE(std::filesystem::exists(saveFile()));
    const std::size_t before = sounds.size();
    driver.frame(kFrame);        // 3.0 s
    EXPECT_EQ(app.screen, GameScreen::title);
    EXPECT_TRUE(app.save.splashSeen);
    EXPECT_NE(savedText().find("splashSeen=1"), std::string::npos) << savedText();
    // Nothing to stop: the title music simply takes over, looping.
    EXPECT_EQ(soundsSince(before), Sounds{"music title loops=-1"});
}

// A skip at any moment: stop the sting, note the splash as seen in the save
// file at once, and start the title with its looping music.
TEST_F(GameFlow, AKeyBeforeTheRevealGoesToTheTitleAndWritesTheSave) {
    driver.frames(10, kFrame);   // 0.31 s: the logo has not been revealed
    ASSERT_FALSE(app.splashRevealed);
    ASSERT_FALSE(std::filesystem::exists(saveFile()));
    const std::size_t before = sounds.size();
    driver.key(SDLK_q);
    driver.frame(kFrame);
    EXPECT_EQ(app.screen, GameScreen::title);
    EXPECT_EQ(app.menuIndex, 0);
    EXPECT_DOUBLE_EQ(app.screenTime, 0.0);
    EXPECT_TRUE(app.save.splashSeen);
    EXPECT_NE(savedText().find("splashSeen=1"), std::string::npos) << savedText();
    EXPECT_EQ(soundsSince(before), (Sounds{"music stop", "music title loops=-1"}));
}

TEST_F(GameFlow, AClickAfterTheRevealGoesToTheTitleAndWritesTheSave) {
    driver.frames(60, kFrame);   // 1.875 s: revealed, before its 3.0 s end
    ASSERT_TRUE(app.splashRevealed);
    ASSERT_EQ(app.screen, GameScreen::splash);
    ASSERT_FALSE(std::filesystem::exists(saveFile()));
    const std::size_t before = sounds.size();
    driver.press(10, 10);
    driver.frame(kFrame);
    EXPECT_EQ(app.screen, GameScreen::title);
    EXPECT_TRUE(app.save.splashSeen);
    EXPECT_NE(savedText().find("splashSeen=1"), std::string::npos) << savedText();
    EXPECT_EQ(soundsSince(before), (Sounds{"music stop", "music title loops=-1"}));
}

TEST_F(GameFlow, EscapeOnTheFirstFrameSkipsTheSplash) {
    driver.key(SDLK_ESCAPE);
    driver.frame(kFrame);
    EXPECT_EQ(app.screen, GameScreen::title);
    EXPECT_NE(savedText().find("splashSeen=1"), std::string::npos) << savedText();
}

TEST_F(GameFlow, TheReservedIntroScreenHandsOverToTheTitle) {
    app.screen = GameScreen::intro;
    const std::size_t before = sounds.size();
    driver.frame(kFrame);
    EXPECT_EQ(app.screen, GameScreen::title);
    EXPECT_EQ(soundsSince(before), Sounds{"music title loops=-1"});
}

class TitleMenu : public GameFlow {
protected:
    void SetUp() override {
        GameFlow::SetUp();
        app.enterTitle();
        heard = sounds.size();
    }
    // The middle of row i of the menu: rows are 300 x 38 from (533, 350 + 46 i).
    static int rowY(int i) { return 350 + 46 * i + 19; }
    Sounds newSounds() const { return soundsSince(heard); }

    std::size_t heard = 0;
};

TEST_F(TitleMenu, WithoutCardsFiveItemsStartWithEasy) {
    MenuItem items[6];
    ASSERT_EQ(titleMenu(app.save, items), 5);
    const char* const labels[] = {"NEW: EASY", "NEW: MEDIUM", "NEW: HARD", "NEW: VORN", "QUIT"};
    const int codes[] = {0, 1, 2, 3, 99};
    for (int i = 0; i < 5; ++i) {
        EXPECT_STREQ(items[i].label, labels[i]);
        EXPECT_EQ(items[i].code, codes[i]);
    }
    driver.key(SDLK_DOWN);
    driver.frame(kFrame);
    driver.key(SDLK_DOWN);
    driver.frame(kFrame);
    ASSERT_EQ(app.menuIndex, 2);
    driver.moveTo(kCanvasCentreX, 351);   // the first row, y 350..387
    driver.frame(kFrame);
    EXPECT_EQ(app.menuIndex, 0);
    driver.click(kCanvasCentreX, 351);
    EXPECT_EQ(app.screen, GameScreen::shiftCard);
    EXPECT_EQ(app.difficulty, Difficulty::easy);
    EXPECT_EQ(newSounds(), Sounds{"click"});
}

TEST_F(TitleMenu, ACardAddsContinueInTheFirstRow) {
    app.save.clockInCards = 1;
    MenuItem items[6];
    ASSERT_EQ(titleMenu(app.save, items), 6);
    EXPECT_STREQ(items[0].label, "> CONTINUE");
    EXPECT_EQ(items[0].code, 10);
    EXPECT_STREQ(items[1].label, "NEW: EASY");
    EXPECT_STREQ(items[5].label, "QUIT");
    app.difficulty = Difficulty::hard;
    driver.click(kCanvasCentreX, 355);
    EXPECT_EQ(app.screen, GameScreen::shiftCard);
    EXPECT_EQ(app.difficulty, Difficulty::hard);   // continue keeps the difficulty
    EXPECT_EQ(app.save.clockInCards, 1);           // and spends no card
    EXPECT_EQ(newSounds(), Sounds{"click"});
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
    driver.moveTo(kCanvasCentreX, 350 + 46 * 2 + 5);
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

// Moving about the menu, by keys or by pointer, is silent: only a choice
// clicks.
TEST_F(TitleMenu, MovingAboutTheMenuMakesNoSound) {
    driver.key(SDLK_DOWN);
    driver.frame(kFrame);
    driver.key(SDLK_UP);
    driver.frame(kFrame);
    driver.key(SDLK_w);
    driver.frame(kFrame);
    driver.moveTo(kCanvasCentreX, rowY(3));
    driver.frame(kFrame);
    driver.key(SDLK_x);
    driver.frame(kFrame);
    EXPECT_EQ(app.screen, GameScreen::title);
    EXPECT_EQ(newSounds(), Sounds{});
}

// A press beside the rows, or in the gap between two, chooses nothing and
// makes no sound at all.
TEST_F(TitleMenu, APressBesideTheRowsChoosesNothingSilently) {
    for (const auto& [x, y] : {std::pair{532, rowY(1)}, std::pair{833, rowY(1)}, std::pair{kCanvasCentreX, 349},
                               std::pair{kCanvasCentreX, 388 + 46 * 4}, std::pair{kCanvasCentreX, 390}}) {
        driver.click(x, y);
        EXPECT_EQ(app.screen, GameScreen::title) << x << "," << y;
        EXPECT_EQ(app.menuIndex, 0) << x << "," << y;
    }
    EXPECT_EQ(newSounds(), Sounds{});
}

TEST_F(TitleMenu, ConfirmChoosesTheHighlightedDifficultyWithoutWritingTheSave) {
    ASSERT_FALSE(std::filesystem::exists(saveFile()));
    driver.key(SDLK_DOWN);
    driver.frame(kFrame);
    driver.key(SDLK_DOWN);
    driver.frame(kFrame);
    driver.key(SDLK_KP_ENTER);
    driver.frame(kFrame);
    EXPECT_EQ(app.screen, GameScreen::shiftCard);
    EXPECT_EQ(app.difficulty, Difficulty::hard);
    EXPECT_EQ(app.save.lastDifficulty, 2);
    EXPECT_FALSE(std::filesystem::exists(saveFile()));
    EXPECT_EQ(newSounds(), Sounds{"click"});
}

// Confirm takes the row the keys left highlighted before the pointer is
// looked at: a pointer that arrives on another row in the same frame does
// not change what Enter chose.
TEST_F(TitleMenu, ConfirmTakesTheKeyboardRowNotTheRowThePointerArrivesOn) {
    driver.moveTo(kCanvasCentreX, rowY(3));   // NEW: VORN
    driver.key(SDLK_RETURN);
    driver.frame(kFrame);
    EXPECT_EQ(app.screen, GameScreen::shiftCard);
    EXPECT_EQ(app.difficulty, Difficulty::easy);
    EXPECT_EQ(newSounds(), Sounds{"click"});
}

// The pointer rests on MEDIUM and keeps it highlighted; Down and Enter in one
// frame move the highlight to HARD first, and HARD is what Enter takes.
TEST_F(TitleMenu, ConfirmWithThePointerRestingOnAnotherRowTakesTheKeyboardRow) {
    driver.moveTo(kCanvasCentreX, rowY(1));
    driver.frame(kFrame);
    ASSERT_EQ(app.menuIndex, 1);
    driver.key(SDLK_DOWN);
    driver.key(SDLK_SPACE);
    driver.frame(kFrame);
    EXPECT_EQ(app.screen, GameScreen::shiftCard);
    EXPECT_EQ(app.difficulty, Difficulty::hard);
    EXPECT_EQ(app.save.lastDifficulty, 2);
}

TEST_F(TitleMenu, QuitClicksAndStopsTheGame) {
    driver.key(SDLK_UP);
    driver.frame(kFrame);
    driver.key(SDLK_RETURN);
    driver.frame(kFrame);
    EXPECT_FALSE(app.running);
    EXPECT_EQ(newSounds(), Sounds{"click"});
}

class Notices : public GameFlow {
protected:
    void SetUp() override {
        GameFlow::SetUp();
        app.startRunWithSeed(Difficulty::medium, 3);
        app.startStation(0);
        app.fired();
    }
    // One frame with the pointer pressed, of exactly dt (no frame clamp).
    void pressFor(double dt) {
        driver.press(kCanvasCentreX, kCanvasCentreY);
        app.processEvents();
        app.update(dt);
    }
};

TEST_F(Notices, APressOnceSixTenthsOfASecondHavePassedDismisses) {
    driver.frames(19, kFrame);   // 0.59 s
    driver.press(kCanvasCentreX, kCanvasCentreY);
    const std::size_t before = sounds.size();
    driver.frame(kFrame);        // the press is seen at 0.625 s
    EXPECT_EQ(app.screen, GameScreen::title);
    EXPECT_EQ(soundsSince(before), Sounds{"music title loops=-1"});
}

TEST_F(Notices, AnEarlyPressDoesNotDismiss) {
    driver.frames(10, kFrame);
    driver.press(kCanvasCentreX, kCanvasCentreY);
    driver.frame(kFrame);
    EXPECT_EQ(app.screen, GameScreen::fired);
}

// 0.5 + 0.1 lands exactly on the 0.6 the notice guards, which is not yet
// more than 0.6; the next press, a moment later, is.
TEST_F(Notices, APressAtExactlySixTenthsIsIgnoredAndTheNextOneDismisses) {
    app.update(0.5);
    pressFor(0.1);
    ASSERT_DOUBLE_EQ(app.screenTime, 0.6);
    EXPECT_EQ(app.screen, GameScreen::fired);
    pressFor(0.001);
    EXPECT_EQ(app.screen, GameScreen::title);
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

// A music folder of tracks that never load: every frame that asks the
// playlist to move on shows at once as a "music track" request, without
// waiting for a real track to end.
GameFolderOptions brokenTracks() {
    GameFolderOptions options = quietFolder();
    options.prepare = [](const TempDir& dir) {
        dir.write("data/music/a.ogg", "not music at all");
        dir.write("data/music/b.ogg", "not music either");
    };
    return options;
}

class Playlist : public GameFlow {
protected:
    Playlist() : GameFlow(brokenTracks()) {}

    void startEasyRun() {
        app.enterTitle();
        const std::size_t before = sounds.size();
        driver.key(SDLK_RETURN);
        driver.frame(kFrame);
        ASSERT_EQ(app.screen, GameScreen::shiftCard);
        // The click, then the playlist built and its first track started, once.
        ASSERT_EQ(soundsSince(before), (Sounds{"click", "music track loops=1"}));
    }
    // Each of `count` frames asks for the next track, once, and for nothing else.
    void expectEveryFrameAsksForTheNextTrack(int count) {
        for (int i = 0; i < count; ++i) {
            const std::size_t before = sounds.size();
            driver.frame(kFrame);
            EXPECT_EQ(soundsSince(before), Sounds{"music track loops=1"}) << "frame " << i;
        }
    }
};

TEST_F(Playlist, TheShiftCardLeavesThePlaylistAlone) {
    startEasyRun();
    const std::size_t before = sounds.size();
    driver.frames(95, kFrame);   // 2.97 s of the card
    ASSERT_EQ(app.screen, GameScreen::shiftCard);
    EXPECT_EQ(soundsSince(before), Sounds{});
}

TEST_F(Playlist, EveryStationFrameAsksForTheNextTrack) {
    startEasyRun();
    driver.frames(96, kFrame);
    ASSERT_EQ(app.screen, GameScreen::station);
    expectEveryFrameAsksForTheNextTrack(5);
}

TEST_F(Playlist, EveryFrameOfTheFiredNoticeAsksForTheNextTrack) {
    startEasyRun();
    driver.frames(96, kFrame);
    ASSERT_EQ(app.screen, GameScreen::station);
    app.fired();
    expectEveryFrameAsksForTheNextTrack(5);
    EXPECT_EQ(app.screen, GameScreen::fired);
}

TEST_F(Playlist, EveryFrameOfTheVictoryNoticeAsksForTheNextTrack) {
    startEasyRun();
    driver.frames(96, kFrame);
    ASSERT_EQ(app.screen, GameScreen::station);
    app.stationIndex = 1;   // the last station of two
    app.stationPassed();
    ASSERT_EQ(app.screen, GameScreen::victory);
    expectEveryFrameAsksForTheNextTrack(5);
}

// Back on the title its music loops, and the playlist is left alone.
TEST_F(Playlist, TheTitleAfterANoticeLeavesThePlaylistAlone) {
    startEasyRun();
    driver.frames(96, kFrame);
    app.fired();
    driver.frames(20, kFrame);
    driver.key(SDLK_x);
    std::size_t before = sounds.size();
    driver.frame(kFrame);
    ASSERT_EQ(app.screen, GameScreen::title);
    EXPECT_EQ(soundsSince(before), Sounds{"music title loops=-1"});
    before = sounds.size();
    driver.frames(10, kFrame);
    EXPECT_EQ(soundsSince(before), Sounds{});
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

GameFolderOptions longSting() {
    GameFolderOptions options;
    options.shipAssets = false;
    options.catalogue = catalogueOf({{1, "a", 20}});
    options.prepare = [](const TempDir& dir) {
        dir.write("assets/audio/zembrilux-sting.wav", longWav(12));
    };
    return options;
}

TEST(SplashWithALongSting, RevealsAtOnceAndIsCutSixSecondsAfterTheReveal) {
    HeadlessApp headless("long_sting", longSting());
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

TEST(SplashWithALongSting, ASkipWhileTheStingPlaysStopsItAtOnce) {
    HeadlessApp headless("long_sting_skip", longSting());
    ASSERT_TRUE(headless.started);
    Application& app = headless.app;
    InputDriver driver(app);
    driver.frames(32, 1.0 / 32);
    ASSERT_TRUE(app.audio.isMusicPlaying()) << "the sting did not start";
    driver.key(SDLK_RETURN);
    driver.frame(1.0 / 32);
    EXPECT_EQ(app.screen, GameScreen::title);
    // No title music ships here, so the stopped sting leaves silence.
    EXPECT_FALSE(app.audio.isMusicPlaying());
    EXPECT_NE(readTextFile(headless.folder.dir.path() / "data" / "vornco_save.txt").find("splashSeen=1"),
              std::string::npos);
}

}  // namespace
}  // namespace vorn::test
