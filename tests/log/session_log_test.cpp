#include "log/session_log.h"

#include "support/temp_dir.h"
#include "support/test_platform.h"

#include <gtest/gtest.h>

#include <regex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace vorn {
namespace {

const std::string kRule(66, '=');
const char* const kEmDash = "\xE2\x80\x94";

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    std::string line;
    while (std::getline(in, line)) {
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> logLines(const test::TempDir& dir) {
    return linesOf(test::readTextFile(dir.path() / "vornco_log.txt"));
}

std::string logPath(const test::TempDir& dir) { return (dir.path() / "vornco_log.txt").u8string(); }

bool matches(const std::string& line, const std::string& pattern) {
    return std::regex_match(line, std::regex(pattern));
}

TEST(SessionLog, AppendsInAFolderWithANonAsciiName) {
    test::TempDir dir("\u00fcn\u00ef \u03a9mega");
    openLog(logPath(dir), "v0.01");
    logInfo("Game: hello");
    closeLog();
    const auto lines = logLines(dir);
    ASSERT_EQ(lines.size(), 6u);
    EXPECT_TRUE(matches(lines[4], "\\[\\d\\d:\\d\\d:\\d\\d\\] INFO  Game: hello"));
}

TEST(SessionLog, OpeningWritesBannerAfterAnEmptyLine) {
    test::TempDir dir("log_banner");
    openLog(logPath(dir), "v0.01");
    closeLog();

    const auto lines = logLines(dir);
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[0], "");
    EXPECT_EQ(lines[1], kRule);
    EXPECT_TRUE(matches(lines[2], std::string(" The Vorn Co\\. ") + kEmDash +
                                      " session start  \\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d   build v0\\.01"))
        << lines[2];
    EXPECT_EQ(lines[3], kRule);
    EXPECT_TRUE(matches(lines[4], "\\[\\d\\d:\\d\\d:\\d\\d\\] INFO  session end")) << lines[4];
}

TEST(SessionLog, TwoSessionsAppendTwoBannersEachStartingWithAnEmptyLine) {
    test::TempDir dir("log_two_sessions");
    dir.write("vornco_log.txt", "earlier run\n");

    openLog(logPath(dir), "v0.01");
    logInfo("first");
    closeLog();
    openLog(logPath(dir), "v0.02");
    logInfo("second");
    closeLog();

    const auto lines = logLines(dir);
    ASSERT_EQ(lines.size(), 13u);
    EXPECT_EQ(lines[0], "earlier run");
    // Each block: empty line, rule, title, rule, the session's lines, end.
    for (std::size_t start : {1u, 7u}) {
        EXPECT_EQ(lines[start], "") << start;
        EXPECT_EQ(lines[start + 1], kRule) << start;
        EXPECT_EQ(lines[start + 3], kRule) << start;
    }
    EXPECT_NE(lines[3].find("build v0.01"), std::string::npos);
    EXPECT_NE(lines[9].find("build v0.02"), std::string::npos);
    EXPECT_TRUE(matches(lines[5], ".* INFO  first"));
    EXPECT_TRUE(matches(lines[6], ".* INFO  session end"));
    EXPECT_TRUE(matches(lines[11], ".* INFO  second"));
    EXPECT_TRUE(matches(lines[12], ".* INFO  session end"));
}

TEST(SessionLog, OpeningTwiceWithoutClosingWritesOneBanner) {
    test::TempDir dir("log_open_twice");
    openLog(logPath(dir), "v0.01");
    openLog(logPath(dir), "v0.01");
    closeLog();

    EXPECT_EQ(logLines(dir).size(), 5u);
}

TEST(SessionLog, LogInfoWritesStampedInfoLineAndEchoesBareMessage) {
    test::TempDir dir("log_info");
    openLog(logPath(dir), "v0.01");
    testing::internal::CaptureStderr();
    logInfo("Game: %s build %s", "The Vorn Co.", "v0.01");
    const std::string console = testing::internal::GetCapturedStderr();
    closeLog();

    EXPECT_EQ(console, "Game: The Vorn Co. build v0.01\n");
    const auto lines = logLines(dir);
    ASSERT_EQ(lines.size(), 6u);
    EXPECT_TRUE(matches(lines[4], "\\[\\d\\d:\\d\\d:\\d\\d\\] INFO  Game: The Vorn Co\\. build v0\\.01")) << lines[4];
}

TEST(SessionLog, LogInfoWithLogClosedStillEchoesToStderr) {
    testing::internal::CaptureStderr();
    logInfo("RUN: start %d", 7);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "RUN: start 7\n");
}

TEST(SessionLog, LogInfoAfterCloseEchoesButLeavesFileAlone) {
    test::TempDir dir("log_info_after_close");
    openLog(logPath(dir), "v0.01");
    closeLog();
    testing::internal::CaptureStderr();
    logInfo("late line");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "late line\n");
    EXPECT_EQ(test::readTextFile(logPath(dir)).find("late line"), std::string::npos);
}

TEST(SessionLog, LongMessageIsCutTo1023CharactersInFileAndOnStderr) {
    test::TempDir dir("log_long");
    const std::string longText(1500, 'x');
    openLog(logPath(dir), "v0.01");
    testing::internal::CaptureStderr();
    logInfo("%s", longText.c_str());
    const std::string console = testing::internal::GetCapturedStderr();
    closeLog();

    EXPECT_EQ(console, std::string(1023, 'x') + "\n");
    const auto lines = logLines(dir);
    ASSERT_EQ(lines.size(), 6u);
    ASSERT_GE(lines[4].size(), 1023u);
    EXPECT_EQ(lines[4].substr(lines[4].size() - 1024), " " + std::string(1023, 'x'));
    EXPECT_TRUE(matches(lines[4], "\\[\\d\\d:\\d\\d:\\d\\d\\] INFO  x{1023}"));
}

TEST(SessionLog, SectionLineIsWrittenWithoutConsoleEcho) {
    test::TempDir dir("log_section");
    openLog(logPath(dir), "v0.01");
    testing::internal::CaptureStderr();
    logSection("startup environment");
    const std::string console = testing::internal::GetCapturedStderr();
    closeLog();

    EXPECT_EQ(console, "");
    const auto lines = logLines(dir);
    ASSERT_EQ(lines.size(), 6u);
    EXPECT_TRUE(matches(lines[4], "\\[\\d\\d:\\d\\d:\\d\\d\\] ---- startup environment ----")) << lines[4];
}

TEST(SessionLog, SectionWithLogClosedDoesNothing) {
    testing::internal::CaptureStderr();
    logSection("diagnostics");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(SessionLog, WarnThroughSdlLogGoesToFileAsWarnWithTwoBlanksAndNotToConsole) {
    test::TempDir dir("log_warn");
    openLog(logPath(dir), "v0.01");
    testing::internal::CaptureStderr();
    SDL_LogWarn(SDL_LOG_CATEGORY_APPLICATION, "Audio: %s", "mixer busy");
    const std::string console = testing::internal::GetCapturedStderr();
    closeLog();

    EXPECT_EQ(console, "");
    const auto lines = logLines(dir);
    ASSERT_EQ(lines.size(), 6u);
    EXPECT_TRUE(matches(lines[4], "\\[\\d\\d:\\d\\d:\\d\\d\\] WARN  Audio: mixer busy")) << lines[4];
}

TEST(SessionLog, PlainSdlLogArrivesAsInfoLine) {
    test::TempDir dir("log_sdl_info");
    openLog(logPath(dir), "v0.01");
    SDL_Log("Levels failed to load from %s", "/nowhere/levels.json");
    closeLog();

    const auto lines = logLines(dir);
    ASSERT_EQ(lines.size(), 6u);
    EXPECT_TRUE(matches(lines[4], "\\[\\d\\d:\\d\\d:\\d\\d\\] INFO  Levels failed to load from /nowhere/levels\\.json"))
        << lines[4];
}

TEST(SessionLog, OpeningRaisesEveryCategoryToInfoAndDropsVerboseAndDebug) {
    test::TempDir dir("log_priorities");
    openLog(logPath(dir), "v0.01");
    // Audio info is below SDL's default threshold for that category; it only
    // shows up because the log lowers every category to info.
    SDL_LogInfo(SDL_LOG_CATEGORY_AUDIO, "audio info");
    SDL_LogDebug(SDL_LOG_CATEGORY_APPLICATION, "app debug");
    SDL_LogVerbose(SDL_LOG_CATEGORY_APPLICATION, "app verbose");
    closeLog();

    const std::string text = test::readTextFile(logPath(dir));
    EXPECT_NE(text.find("INFO  audio info"), std::string::npos);
    EXPECT_EQ(text.find("app debug"), std::string::npos);
    EXPECT_EQ(text.find("app verbose"), std::string::npos);
}

TEST(SessionLog, PriorityNamesArePaddedToFiveCharacters) {
    test::TempDir dir("log_names");
    openLog(logPath(dir), "v0.01");
    const int priorities[] = {1, 2, 3, 4, 5, 6, 0, 7};
    for (int p : priorities) {
        sdlOutput(nullptr, SDL_LOG_CATEGORY_APPLICATION, static_cast<SDL_LogPriority>(p), "m");
    }
    closeLog();

    const auto lines = logLines(dir);
    ASSERT_EQ(lines.size(), 13u);
    const char* const expected[] = {"VERB  m", "DEBUG m", "INFO  m", "WARN  m",
                                    "ERROR m", "CRIT  m", "LOG   m", "LOG   m"};
    for (std::size_t i = 0; i < 8; ++i) {
        EXPECT_TRUE(matches(lines[4 + i], std::string("\\[\\d\\d:\\d\\d:\\d\\d\\] ") + expected[i]))
            << lines[4 + i];
    }
}

TEST(SessionLog, SdlMessageIsWrittenUnchanged) {
    test::TempDir dir("log_unchanged");
    openLog(logPath(dir), "v0.01");
    sdlOutput(nullptr, 0, SDL_LOG_PRIORITY_ERROR, "100% sure %s");
    closeLog();

    const auto lines = logLines(dir);
    ASSERT_EQ(lines.size(), 6u);
    EXPECT_TRUE(matches(lines[4], "\\[\\d\\d:\\d\\d:\\d\\d\\] ERROR 100% sure %s")) << lines[4];
}

TEST(SessionLog, SdlOutputWithLogClosedWritesNothing) {
    testing::internal::CaptureStderr();
    sdlOutput(nullptr, 0, SDL_LOG_PRIORITY_ERROR, "nobody listens");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

// SDL's own console output (before our log takes over) is written on Windows
// straight to the Win32 standard-error handle, which GoogleTest's capture of
// the C runtime's stderr does not see; there those lines are not checked.
constexpr bool kSdlConsoleIsCaptured = !test::kWindows;

TEST(SessionLog, FailedOpenIsReportedThroughSdlAndFileLoggingStaysOff) {
    test::TempDir dir("log_fail");
    const std::string path = (dir.path() / "missing" / "vornco_log.txt").string();

    testing::internal::CaptureStderr();
    openLog(path, "v0.01");
    const std::string report = testing::internal::GetCapturedStderr();
    if (kSdlConsoleIsCaptured) {
        EXPECT_NE(report.find("Log: could not open '" + path + "' for append " + kEmDash +
                              " file logging disabled."),
                  std::string::npos)
            << report;
    }

    // SDL's own output is still in place, and the game's lines still echo.
    testing::internal::CaptureStderr();
    SDL_Log("still on the console");
    logInfo("echo");
    const std::string later = testing::internal::GetCapturedStderr();
    if (kSdlConsoleIsCaptured) {
        EXPECT_NE(later.find("still on the console"), std::string::npos);
    }
    EXPECT_NE(later.find("echo\n"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(path));
    closeLog();
}

TEST(SessionLog, AfterCloseSdlMessagesAreDiscarded) {
    test::TempDir dir("log_discard");
    // Before the log opens, SDL prints on the console by itself.
    testing::internal::CaptureStderr();
    SDL_Log("before open");
    const std::string before = testing::internal::GetCapturedStderr();
    if (kSdlConsoleIsCaptured) {
        EXPECT_NE(before.find("before open"), std::string::npos);
    }

    openLog(logPath(dir), "v0.01");
    closeLog();
    testing::internal::CaptureStderr();
    SDL_Log("after close");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(test::readTextFile(logPath(dir)).find("after close"), std::string::npos);
}

TEST(SessionLog, ReopeningAfterCloseWritesANewBannerAndRoutesSdlAgain) {
    test::TempDir dir("log_reopen");
    openLog(logPath(dir), "v0.01");
    closeLog();
    openLog(logPath(dir), "v0.01");
    SDL_Log("routed again");
    closeLog();

    const auto lines = logLines(dir);
    ASSERT_EQ(lines.size(), 11u);
    EXPECT_EQ(lines[5], "");
    EXPECT_EQ(lines[6], kRule);
    EXPECT_TRUE(matches(lines[9], ".* INFO  routed again"));
}

TEST(SessionLog, LinesFromSeveralThreadsStayWhole) {
    test::TempDir dir("log_threads");
    openLog(logPath(dir), "v0.01");
    // SDL makes its own log mutex on first use and that is not thread-safe
    // before SDL_Init; the game always logs from the main thread first, so
    // the test does the same.
    SDL_Log("main thread first");
    testing::internal::CaptureStderr();
    std::vector<std::thread> writers;
    for (int t = 0; t < 4; ++t) {
        writers.emplace_back([t] {
            for (int i = 0; i < 100; ++i) {
                if (i % 2 == 0) {
                    logInfo("thread %d line %d", t, i);
                } else {
                    SDL_Log("thread %d line %d", t, i);
                }
            }
        });
    }
    for (auto& w : writers) {
        w.join();
    }
    testing::internal::GetCapturedStderr();
    closeLog();

    const auto lines = logLines(dir);
    ASSERT_EQ(lines.size(), 6u + 400u);
    for (std::size_t i = 5; i < 405; ++i) {
        EXPECT_TRUE(matches(lines[i], "\\[\\d\\d:\\d\\d:\\d\\d\\] INFO  thread \\d line \\d+")) << lines[i];
    }
}

}  // namespace
}  // namespace vorn
