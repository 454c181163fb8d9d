// Runs all tests of a program and judges their outcomes by the table of known differences.
#include "KnownDifferences.h"
#include "PlatformTest.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iostream>

namespace {

using namespace tessarin::testing;

Outcome outcomeOf(const ::testing::TestInfo& test) {
    if (!test.should_run()) return Outcome::notRun;
    if (test.result()->Skipped()) return Outcome::skipped;
    return test.result()->Passed() ? Outcome::passed : Outcome::failed;
}

// What went wrong between the tests, in the set-up of a suite for instance, is listed under the suite's own
// name.
std::map<std::string, Outcome> outcomesOf(const ::testing::UnitTest& program) {
    std::map<std::string, Outcome> outcomes;
    if (program.ad_hoc_test_result().Failed()) outcomes["(outside of all suites)"] = Outcome::failed;
    for (int suiteIndex = 0; suiteIndex < program.total_test_suite_count(); ++suiteIndex) {
        const ::testing::TestSuite& suite = *program.GetTestSuite(suiteIndex);
        if (suite.ad_hoc_test_result().Failed()) outcomes[suite.name()] = Outcome::failed;
        for (int index = 0; index < suite.total_test_count(); ++index) {
            const ::testing::TestInfo& test = *suite.GetTestInfo(index);
            outcomes[std::string(suite.name()) + "." + test.name()] = outcomeOf(test);
        }
    }
    return outcomes;
}

} // namespace

// The GNU C library never frees what its newlocale makes of LOCPATH, which is set for the tests.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:argz_add_sep\n"; }

int main(int argumentCount, char** arguments) {
    // What is autoreleased between the tests needs a pool as well.
    const tessarin::AutoreleasePool pool;
    tessarin::testing::testProgram() = std::filesystem::canonical(arguments[0]);
    ::testing::InitGoogleTest(&argumentCount, arguments);
    const int result = RUN_ALL_TESTS();
    if (GTEST_FLAG_GET(list_tests)) return result;

    const ::testing::UnitTest& program = *::testing::UnitTest::GetInstance();
    const std::string path = tessarin::testing::testFile("known_differences.tsv");
    std::ifstream file(path);
    const KnownDifferenceTable table = readKnownDifferences(file);
    Judgement judgement =
        judge(outcomesOf(program), rowsOf(table, TESSARIN_TEST_PLATFORM, TESSARIN_TEST_EXECUTABLE));
    for (const std::string& error : table.errors)
        judgement.lines.push_back("known_differences.tsv: " + error);
    if (!file.eof()) judgement.lines.push_back("cannot read " + path);
    if (program.test_to_run_count() == 0) judgement.lines.push_back("no test was run");
    const bool isAcceptable =
        judgement.isAcceptable && table.errors.empty() && file.eof() && program.test_to_run_count() > 0;

    std::cout << "\n";
    for (const std::string& line : judgement.lines) std::cout << line << "\n";
    std::cout << TESSARIN_TEST_EXECUTABLE " (" TESSARIN_TEST_PLATFORM "): " << program.successful_test_count()
              << " of " << program.test_to_run_count() << " tests passed, "
              << (isAcceptable ? "as expected" : "NOT AS EXPECTED") << std::endl;
    return isAcceptable ? 0 : 1;
}
