#include "platform/embedded/foundation/AttributeRuns.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tessarin::embedded {

void joinEqualRuns(std::vector<AttributeRun>& runs) {
    std::vector<AttributeRun> joined;
    joined.reserve(runs.size());
    for (AttributeRun& run : runs) {
        const bool isEqual = !joined.empty()
                             && (joined.back().attributes == run.attributes
                                 || joined.back().attributes.isEqual(run.attributes));
        if (isEqual)
            joined.back().length += run.length;
        else
            joined.push_back(std::move(run));
    }
    runs = std::move(joined);
}

std::size_t AttributeRuns::runAt(NSUInteger index) const {
    const auto found = std::upper_bound(runs_.begin(), runs_.end(), index,
                                        [](NSUInteger place, const Run& run) { return place < run.end; });
    return static_cast<std::size_t>(found - runs_.begin());
}

NSDictionary AttributeRuns::attributesAt(NSUInteger index, NSRange* range) const {
    const std::size_t run = runAt(index);
    if (range) *range = {startOf(run), runs_[run].end - startOf(run)};
    return runs_[run].attributes;
}

std::vector<AttributeRun> AttributeRuns::runsIn(NSRange range) const {
    std::vector<AttributeRun> result;
    const NSUInteger end = range.location + range.length;
    NSUInteger start = range.location;
    for (std::size_t run = runAt(start); start < end; ++run) {
        const NSUInteger runEnd = std::min(runs_[run].end, end);
        result.push_back({runEnd - start, runs_[run].attributes});
        start = runEnd;
    }
    return result;
}

NSRange AttributeRuns::widened(NSRange range) const {
    const NSUInteger end = range.location + range.length;
    const NSUInteger widenedStart = range.location == 0 ? 0 : startOf(runAt(range.location - 1));
    const NSUInteger widenedEnd = end == length() ? end : runs_[runAt(end)].end;
    return {widenedStart, widenedEnd - widenedStart};
}

std::vector<AttributeRun> AttributeRuns::replace(NSRange wholeRuns, std::vector<AttributeRun> replacements) {
    const NSUInteger oldEnd = wholeRuns.location + wholeRuns.length;
    const std::size_t first = runAt(wholeRuns.location);
    const std::size_t oldCount = (wholeRuns.length == 0 ? first : runAt(oldEnd - 1) + 1) - first;
    std::vector<AttributeRun> replaced = runsIn(wholeRuns);

    const std::size_t kept = std::min(oldCount, replacements.size());
    const auto place = [&](std::size_t index) { return runs_.begin() + static_cast<std::ptrdiff_t>(index); };
    NSUInteger end = wholeRuns.location;
    std::vector<Run> further;
    for (std::size_t index = 0; index < replacements.size(); ++index) {
        end += replacements[index].length;
        Run run{end, std::move(replacements[index].attributes)};
        if (index < kept)
            runs_[first + index] = std::move(run);
        else
            further.push_back(std::move(run));
    }
    runs_.erase(place(first + kept), place(first + oldCount));
    runs_.insert(place(first + kept), std::make_move_iterator(further.begin()),
                 std::make_move_iterator(further.end()));
    if (end != oldEnd)
        std::for_each(place(first + replacements.size()), runs_.end(),
                      [&](Run& run) { run.end = run.end - oldEnd + end; });
    return replaced;
}

} // namespace tessarin::embedded
