#include "KnownDifferences.h"

#include <gtest/gtest.h>

#include <sstream>

namespace tessarin::testing {
namespace {

const std::vector<KnownDifference> oneRow = {{"native", "library_tests", "Strings.Folds", "folds less"}};

KnownDifferenceTable read(const std::string& text) {
    std::istringstream input(text);
    return readKnownDifferences(input);
}

TEST(KnownDifferencesTest, ReadsFourColumns) {
    const KnownDifferenceTable table = read("native\tlibrary_tests\tStrings.Folds\tfolds less\n");
    ASSERT_EQ(table.rows.size(), 1u);
    EXPECT_EQ(table.rows[0].platform, "native");
    EXPECT_EQ(table.rows[0].executable, "library_tests");
    EXPECT_EQ(table.rows[0].test, "Strings.Folds");
    EXPECT_EQ(table.rows[0].reason, "folds less");
    EXPECT_TRUE(table.errors.empty());
}

TEST(KnownDifferencesTest, LeavesOutCommentsAndEmptyLines) {
    const KnownDifferenceTable table = read("# platform\texecutable\ttest\treason\n\n");
    EXPECT_TRUE(table.rows.empty());
    EXPECT_TRUE(table.errors.empty());
}

TEST(KnownDifferencesTest, RejectsLinesThatAreNoRows) {
    const KnownDifferenceTable table =
        read("native\tlibrary_tests\tA.B\nnative\t\tA.B\treason\na\tb\tc\td\te\n");
    EXPECT_TRUE(table.rows.empty());
    EXPECT_EQ(table.errors.size(), 3u);
}

TEST(KnownDifferencesTest, RowsApplyToTheirPlatformAndProgramOnly) {
    const KnownDifferenceTable table = read("native\tlibrary_tests\tA.A\tr\n"
                                            "embedded\tlibrary_tests\tA.B\tr\n"
                                            "native\tplatform_tests\tA.C\tr\n");
    const std::vector<KnownDifference> rows = rowsOf(table, "native", "library_tests");
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].test, "A.A");
}

TEST(KnownDifferencesTest, AcceptsARunThatPasses) {
    const Judgement judgement = judge({{"A.B", Outcome::passed}}, {});
    EXPECT_TRUE(judgement.isAcceptable);
    EXPECT_TRUE(judgement.lines.empty());
}

TEST(KnownDifferencesTest, AcceptsAndNamesAListedFailure) {
    const Judgement judgement = judge({{"Strings.Folds", Outcome::failed}}, oneRow);
    EXPECT_TRUE(judgement.isAcceptable);
    EXPECT_EQ(judgement.lines, std::vector<std::string>{"known difference: Strings.Folds: folds less"});
}

TEST(KnownDifferencesTest, RejectsAnUnlistedFailure) {
    const Judgement judgement = judge({{"A.B", Outcome::failed}}, {});
    EXPECT_FALSE(judgement.isAcceptable);
    EXPECT_EQ(judgement.lines, std::vector<std::string>{"failed: A.B"});
}

TEST(KnownDifferencesTest, RejectsAListedTestThatPasses) {
    const Judgement judgement = judge({{"Strings.Folds", Outcome::passed}}, oneRow);
    EXPECT_FALSE(judgement.isAcceptable);
    EXPECT_EQ(judgement.lines,
              std::vector<std::string>{"known difference has vanished: Strings.Folds: folds less"});
}

TEST(KnownDifferencesTest, RejectsAListedTestThatDoesNotExist) {
    const Judgement judgement = judge({{"A.B", Outcome::passed}}, oneRow);
    EXPECT_FALSE(judgement.isAcceptable);
    EXPECT_EQ(judgement.lines, std::vector<std::string>{"known difference without a test: Strings.Folds"});
}

TEST(KnownDifferencesTest, SaysNothingOfAListedTestThatWasNotRun) {
    const Judgement judgement = judge({{"Strings.Folds", Outcome::notRun}}, oneRow);
    EXPECT_TRUE(judgement.isAcceptable);
    EXPECT_TRUE(judgement.lines.empty());
}

TEST(KnownDifferencesTest, AcceptsAndNamesASkippedTest) {
    const Judgement judgement = judge({{"A.B", Outcome::skipped}}, {});
    EXPECT_TRUE(judgement.isAcceptable);
    EXPECT_EQ(judgement.lines, std::vector<std::string>{"skipped: A.B"});
}

TEST(KnownDifferencesTest, RejectsATestListedTwice) {
    const Judgement judgement = judge({{"Strings.Folds", Outcome::failed}}, {oneRow[0], oneRow[0]});
    EXPECT_FALSE(judgement.isAcceptable);
}

} // namespace
} // namespace tessarin::testing
