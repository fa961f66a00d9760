#include "data/level_catalogue.h"

#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace vorn {
namespace {

std::vector<LevelDef> load(const std::string& text) {
    std::vector<LevelDef> levels;
    loadLevelsFromText(levels, text);
    return levels;
}

std::string literal(const std::string& text) {
    std::size_t pos = 0;
    return jsonStringLiteral(text, pos);
}

TEST(Catalogue, OneRecordFileYieldsEveryField) {
    test::TempDir dir("catalogue_one");
    const auto path = dir.write(
        "levels.json", R"({"levels":[{"n":1,"id":"a","name":"X","type":"hold","base_time":12}]})");
    std::vector<LevelDef> levels;
    ASSERT_TRUE(loadLevels(levels, path.string()));
    ASSERT_EQ(levels.size(), 1u);
    EXPECT_EQ(levels[0].number, 1);
    EXPECT_EQ(levels[0].id, "a");
    EXPECT_EQ(levels[0].name, "X");
    EXPECT_EQ(levels[0].type, "hold");
    EXPECT_EQ(levels[0].baseTime, 12);
    EXPECT_EQ(levels[0].phase, "probation");
    EXPECT_EQ(levels[0].instruction, "");
    EXPECT_EQ(levels[0].trick, "");
}

TEST(Catalogue, LoadsFromAFolderWithANonAsciiName) {
    test::TempDir dir("\u00fcn\u00ef \u03a9mega");
    const auto path = dir.write(
        "levels.json", R"({"levels":[{"n":7,"id":"a","name":"X","type":"hold","base_time":12}]})");
    std::vector<LevelDef> levels;
    ASSERT_TRUE(loadLevels(levels, path.u8string()));
    ASSERT_EQ(levels.size(), 1u);
    EXPECT_EQ(levels[0].number, 7);
}

TEST(Catalogue, InstructionAndTrickAreRead) {
    const auto levels =
        load(R"({"levels":[{"n":4,"id":"b","instruction":"DO IT","trick":"it lies","extra":[1,2]}]})");
    ASSERT_EQ(levels.size(), 1u);
    EXPECT_EQ(levels[0].instruction, "DO IT");
    EXPECT_EQ(levels[0].trick, "it lies");
}

TEST(Catalogue, MissingOrQuotedBaseTimeGivesFifteenAndNegativeIsKept) {
    const auto levels = load(R"({"levels":[
        {"n":1,"id":"missing"},
        {"n":2,"id":"quoted","base_time":"20"},
        {"n":3,"id":"negative","base_time":-5}]})");
    ASSERT_EQ(levels.size(), 3u);
    EXPECT_EQ(levels[0].baseTime, 15);
    EXPECT_EQ(levels[1].baseTime, 15);
    EXPECT_EQ(levels[2].baseTime, -5);
}

TEST(Catalogue, RecordsWithoutNumberOrIdAreDropped) {
    const auto levels = load(R"({"levels":[
        {"n":0,"id":"zero"},
        {"id":"no-number"},
        {"n":-2,"id":"negative"},
        {"n":3,"id":""},
        {"n":4,"name":"no id"},
        {"n":5,"id":"kept"}]})");
    ASSERT_EQ(levels.size(), 1u);
    EXPECT_EQ(levels[0].id, "kept");
}

TEST(Catalogue, PhaseFollowsTheNumberBands) {
    const auto levels = load(R"({"levels":[
        {"n":10,"id":"a"},{"n":11,"id":"b"},{"n":20,"id":"c"},{"n":21,"id":"d"},
        {"n":30,"id":"e"},{"n":31,"id":"f"},{"n":33,"id":"g"},{"n":34,"id":"h"}]})");
    const std::vector<std::string> expected = {"probation", "fullshift", "fullshift", "graveyard",
                                               "graveyard", "overtime",  "overtime",  "extended"};
    ASSERT_EQ(levels.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(levels[i].phase, expected[i]) << "number " << levels[i].number;
    }
}

TEST(Catalogue, PhaseIsNeverReadFromTheFile) {
    const auto levels = load(R"({"levels":[{"n":32,"id":"a","phase":"probation"}]})");
    ASSERT_EQ(levels.size(), 1u);
    EXPECT_EQ(levels[0].phase, "overtime");
}

TEST(Catalogue, LoadingAppendsAndGivesEarlierRecordsTheirPhaseToo) {
    std::vector<LevelDef> levels(1);
    levels[0].number = 21;
    levels[0].id = "already";
    ASSERT_TRUE(loadLevelsFromText(levels, R"({"levels":[{"n":2,"id":"new"}]})"));
    ASSERT_EQ(levels.size(), 2u);
    EXPECT_EQ(levels[0].id, "already");
    EXPECT_EQ(levels[0].phase, "graveyard");
    EXPECT_EQ(levels[1].id, "new");
}

TEST(Catalogue, NullStringValueTakesTheNextQuotedText) {
    EXPECT_EQ(jsonStringField(R"({"trick": null, "note": "x"})", "trick"), "note");
    const auto levels = load(R"({"levels":[{"n":1,"id":"a","trick": null, "note": "x"}]})");
    ASSERT_EQ(levels.size(), 1u);
    EXPECT_EQ(levels[0].trick, "note");
}

TEST(Catalogue, EscapesReadTheTolerantWay) {
    EXPECT_EQ(literal(R"("x\u00e9\r\/y")"), "x?r/y");
    EXPECT_EQ(literal(R"("a\nb\tc\\d\be\f")"), "a\nb\tc\\dbef");
    const auto levels = load(R"({"levels":[{"n":1,"id":"a","name":"x\u00e9\r\/y"}]})");
    ASSERT_EQ(levels.size(), 1u);
    EXPECT_EQ(levels[0].name, "x?r/y");
}

TEST(Catalogue, EscapedQuoteIsKeptAndDoesNotEndTheValue) {
    const std::string text = R"("say \"hi\" now" tail)";
    std::size_t pos = 0;
    EXPECT_EQ(jsonStringLiteral(text, pos), "say \"hi\" now");
    EXPECT_EQ(text.substr(pos), " tail");

    const auto levels = load(R"({"levels":[{"n":1,"id":"a","name":"the \"boss\"","type":"quiz"}]})");
    ASSERT_EQ(levels.size(), 1u);
    EXPECT_EQ(levels[0].name, "the \"boss\"");
    EXPECT_EQ(levels[0].type, "quiz");
}

TEST(Catalogue, Utf8PassesThroughUnchanged) {
    const auto levels = load("{\"levels\":[{\"n\":1,\"id\":\"a\",\"name\":\"GO \xE2\x80\x94 NOW\"}]}");
    ASSERT_EQ(levels.size(), 1u);
    EXPECT_EQ(levels[0].name, "GO \xE2\x80\x94 NOW");
}

TEST(Catalogue, OpeningBraceInATextShiftsTheRecordExtent) {
    // The '{' in the instruction is counted, so the first record only closes
    // at the array's last '}' and swallows the second one.
    const auto levels = load(R"({"levels":[{"n":1,"id":"a","instruction":"open { here"},{"n":2,"id":"b"}]})");
    ASSERT_EQ(levels.size(), 1u);
    EXPECT_EQ(levels[0].number, 1);
    EXPECT_EQ(levels[0].instruction, "open { here");
}

TEST(Catalogue, ClosingBraceInATextCutsTheRecordShort) {
    const auto levels = load(R"({"levels":[{"n":1,"id":"a","instruction":"close } early","trick":"t"}]})");
    ASSERT_EQ(levels.size(), 1u);
    EXPECT_EQ(levels[0].instruction, "close }");
    EXPECT_EQ(levels[0].trick, "");
}

TEST(Catalogue, BracketInsideAStringDoesNotEndTheWalk) {
    const auto levels = load(R"({"levels":[{"n":1,"id":"a","name":"x]y"},{"n":2,"id":"b"}]})");
    ASSERT_EQ(levels.size(), 2u);
    EXPECT_EQ(levels[0].name, "x]y");
    EXPECT_EQ(levels[1].id, "b");
}

TEST(Catalogue, WalkEndsAtABracketAtDepthZero) {
    const auto levels = load(R"({"levels":[{"n":1,"id":"a"}], "more":[{"n":2,"id":"b"}]})");
    ASSERT_EQ(levels.size(), 1u);
    EXPECT_EQ(levels[0].id, "a");
}

TEST(Catalogue, StrayClosingBraceStopsAllLaterRecords) {
    const auto levels = load(R"({"levels":[{"n":1,"id":"a"}},{"n":2,"id":"b"},{"n":3,"id":"c"}]})");
    ASSERT_EQ(levels.size(), 1u);
    EXPECT_EQ(levels[0].id, "a");
}

TEST(Catalogue, RecordsWithTheSameNumberAreBothKeptInFileOrder) {
    const auto levels = load(R"({"levels":[{"n":7,"id":"first"},{"n":7,"id":"second"},{"n":7,"id":"first"}]})");
    ASSERT_EQ(levels.size(), 3u);
    EXPECT_EQ(levels[0].id, "first");
    EXPECT_EQ(levels[1].id, "second");
    EXPECT_EQ(levels[2].id, "first");
}

TEST(Catalogue, MissingFileFailsAndLeavesTheVectorAlone) {
    test::TempDir dir("catalogue_missing");
    std::vector<LevelDef> levels(2);
    EXPECT_FALSE(loadLevels(levels, (dir.path() / "nope.json").string()));
    EXPECT_EQ(levels.size(), 2u);
    EXPECT_EQ(levels[0].phase, "");
}

TEST(Catalogue, UnusableTextFails) {
    for (const char* text : {"", "[{}]", R"({"levls":[{"n":1,"id":"a"}]})", R"({"levels":{"n":1,"id":"a"}})",
                             R"({"levels":[]})", R"({"levels":[{"n":0,"id":"a"}]})", R"({"levels":[{"n":1}]})"}) {
        std::vector<LevelDef> levels;
        EXPECT_FALSE(loadLevelsFromText(levels, text)) << text;
        EXPECT_TRUE(levels.empty()) << text;
    }
}

TEST(Catalogue, ShortTextFailsEvenWhenItWouldParse) {
    std::vector<LevelDef> levels;
    EXPECT_FALSE(loadLevelsFromText(levels, "\"levels"));
    // Eight bytes is enough to be looked at; this one just has no array.
    EXPECT_FALSE(loadLevelsFromText(levels, "\"levels\""));
}

TEST(Catalogue, LevelsKeyMayStandAnywhere) {
    const auto levels = load(R"(garbage "levels" more garbage [ {"n":1,"id":"a"} ])");
    ASSERT_EQ(levels.size(), 1u);
}

TEST(CatalogueField, IntegerStopsAtTheFirstNonDigit) {
    EXPECT_EQ(jsonIntField(R"({"n": 12.9})", "n", 0), 12);
    EXPECT_EQ(jsonIntField(R"({"n":1e3})", "n", 0), 1);
    EXPECT_EQ(jsonIntField("{\"n\":\n\t +7}", "n", 0), 7);
    EXPECT_EQ(jsonIntField(R"({"n":-0})", "n", 9), 0);
}

TEST(CatalogueField, IntegerWithoutDigitsGivesTheDefault) {
    EXPECT_EQ(jsonIntField(R"({"n":"3"})", "n", 4), 4);
    EXPECT_EQ(jsonIntField(R"({"n":null})", "n", 4), 4);
    EXPECT_EQ(jsonIntField(R"({"n":true})", "n", 4), 4);
    EXPECT_EQ(jsonIntField(R"({"n":-})", "n", 4), 4);
    EXPECT_EQ(jsonIntField(R"({"n":)", "n", 4), 4);
    EXPECT_EQ(jsonIntField(R"({"m":1})", "n", 4), 4);
}

TEST(CatalogueField, IntegerWrapsIn32Bits) {
    EXPECT_EQ(jsonIntField(R"({"n":4294967297})", "n", 0), 1);
    EXPECT_EQ(jsonIntField(R"({"n":2147483648})", "n", 0), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(jsonIntField(R"({"n":-2147483648})", "n", 0), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(jsonIntField(R"({"n":99999999999999999999})", "n", 0), static_cast<std::int32_t>(1661992959u));
}

TEST(CatalogueField, QuotedKeyNeverMatchesALongerKey) {
    EXPECT_EQ(jsonIntField(R"({"name":"x","n":3})", "n", 0), 3);
    EXPECT_EQ(jsonIntField(R"({"name":5})", "n", 8), 8);
    EXPECT_EQ(jsonStringField(R"({"identity":"x"})", "id"), "");
}

TEST(CatalogueField, FirstOccurrenceCountsEvenWhenNested) {
    EXPECT_EQ(jsonIntField(R"({"meta":{"n":9},"n":1})", "n", 0), 9);
    // A string value that equals the key matches too; the value is then the
    // text after the next colon.
    EXPECT_EQ(jsonStringField(R"({"type":"id","name":"N","id":"real"})", "id"), "N");
}

TEST(CatalogueField, KeyAtTheVeryEndOrWithoutColonIsMissing) {
    EXPECT_EQ(jsonIntField(R"("n")", "n", 4), 4);
    EXPECT_EQ(jsonIntField(R"({"n" 5})", "n", 4), 4);
    EXPECT_EQ(jsonStringField(R"("id")", "id"), "");
    EXPECT_EQ(jsonStringField(R"({"id": 5})", "id"), "");
}

TEST(CatalogueField, StringLiteralNeedsAnOpeningQuote) {
    std::size_t pos = 0;
    EXPECT_EQ(jsonStringLiteral("x\"y\"", pos), "");
    EXPECT_EQ(pos, 0u);
    pos = 5;
    EXPECT_EQ(jsonStringLiteral("\"abc\"", pos), "");
    EXPECT_EQ(pos, 5u);
}

TEST(CatalogueField, StringLiteralAdvancesPastTheClosingQuote) {
    const std::string text = R"(  "ab"  "cd")";
    std::size_t pos = 2;
    EXPECT_EQ(jsonStringLiteral(text, pos), "ab");
    EXPECT_EQ(pos, 6u);
}

TEST(CatalogueField, UnterminatedLiteralKeepsWhatWasRead) {
    EXPECT_EQ(literal(R"("abc)"), "abc");
    EXPECT_EQ(literal("\"ab\\"), "ab\\");
}

TEST(CatalogueField, ShortUnicodeEscapeConsumesOnlyTheU) {
    EXPECT_EQ(literal(R"("a\u12)"), "a?12");
    EXPECT_EQ(literal(R"("a\u123)"), "a?123");
    EXPECT_EQ(literal(R"("a\u1234)"), "a?");
    EXPECT_EQ(literal(R"("a\u1234b")"), "a?b");
}

TEST(CatalogueFile, ReadWholeFileKeepsEveryByte) {
    test::TempDir dir("catalogue_read");
    const std::string bytes("a\r\nb\0c\xff", 7);
    const auto path = dir.write("raw.bin", bytes);
    bool ok = false;
    EXPECT_EQ(readWholeFile(path.string(), ok), bytes);
    EXPECT_TRUE(ok);
}

TEST(CatalogueFile, ReadWholeFileOfAMissingFileIsEmptyAndNotOk) {
    test::TempDir dir("catalogue_read_missing");
    bool ok = true;
    EXPECT_EQ(readWholeFile((dir.path() / "absent").string(), ok), "");
    EXPECT_FALSE(ok);
}

}  // namespace
}  // namespace vorn
