// The table of known differences: tests that a platform fails because it does not keep its own documented
// contract.
//
// Such a test may fail without failing the run, and fails the run when it passes, so that the table never
// says more than is true. A test that is not in the table has to pass.
#pragma once

#include <istream>
#include <map>
#include <string>
#include <vector>

namespace tessarin::testing {

struct KnownDifference {
    std::string platform;
    std::string executable; // the test program that holds the test
    std::string test;       // Suite.Test
    std::string reason;
};

struct KnownDifferenceTable {
    std::vector<KnownDifference> rows;
    std::vector<std::string> errors; // lines that are no rows
};

// Reads rows of four columns separated by tabs. Empty lines and lines that begin with "#" are left out.
KnownDifferenceTable readKnownDifferences(std::istream& input);

// The rows of one test program on one platform.
std::vector<KnownDifference> rowsOf(const KnownDifferenceTable& table, const std::string& platform,
                                    const std::string& executable);

enum class Outcome { passed, failed, skipped, notRun };

struct Judgement {
    std::vector<std::string>
        lines; // what is to be said: one line per listed test that was run, skipped test, and mistake
    bool isAcceptable = true;
};

// Judges the outcomes of all tests of a program, by full name, under the rows that apply to it.
Judgement judge(const std::map<std::string, Outcome>& outcomes, const std::vector<KnownDifference>& rows);

} // namespace tessarin::testing
