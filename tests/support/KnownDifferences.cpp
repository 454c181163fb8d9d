#include "KnownDifferences.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <sstream>

namespace tessarin::testing {

KnownDifferenceTable readKnownDifferences(std::istream& input) {
    KnownDifferenceTable table;
    std::string line;
    for (int number = 1; std::getline(input, line); ++number) {
        if (line.empty() || line.front() == '#') continue;
        std::vector<std::string> columns;
        std::istringstream rest(line);
        for (std::string column; std::getline(rest, column, '\t');) columns.push_back(column);
        const bool isRow = columns.size() == 4
                           && std::none_of(columns.begin(), columns.end(),
                                           [](const std::string& column) { return column.empty(); });
        if (isRow)
            table.rows.push_back({columns[0], columns[1], columns[2], columns[3]});
        else
            table.errors.push_back("line " + std::to_string(number)
                                   + " is not platform, executable, test, reason: " + line);
    }
    return table;
}

std::vector<KnownDifference> rowsOf(const KnownDifferenceTable& table, const std::string& platform,
                                    const std::string& executable) {
    std::vector<KnownDifference> rows;
    std::copy_if(
        table.rows.begin(), table.rows.end(), std::back_inserter(rows),
        [&](const KnownDifference& row) { return row.platform == platform && row.executable == executable; });
    return rows;
}

Judgement judge(const std::map<std::string, Outcome>& outcomes, const std::vector<KnownDifference>& rows) {
    Judgement judgement;
    const auto reject = [&](std::string line) {
        judgement.lines.push_back(std::move(line));
        judgement.isAcceptable = false;
    };

    std::set<std::string> listed;
    for (const KnownDifference& row : rows) {
        if (!listed.insert(row.test).second) reject("listed twice: " + row.test);
        const auto found = outcomes.find(row.test);
        if (found == outcomes.end())
            reject("known difference without a test: " + row.test);
        else if (found->second == Outcome::passed)
            reject("known difference has vanished: " + row.test + ": " + row.reason);
        else if (found->second == Outcome::failed)
            judgement.lines.push_back("known difference: " + row.test + ": " + row.reason);
    }
    for (const auto& [test, outcome] : outcomes) {
        if (outcome == Outcome::failed && !listed.contains(test)) reject("failed: " + test);
        if (outcome == Outcome::skipped) judgement.lines.push_back("skipped: " + test);
    }
    return judgement;
}

} // namespace tessarin::testing
