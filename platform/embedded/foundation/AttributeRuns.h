// Which attributes the characters of a text have: dictionaries for runs of characters.
#pragma once

#include "TessarinPlatform/NSDictionary.h"
#include "TessarinPlatform/Retained.h"

#include <vector>

namespace tessarin::embedded {

struct AttributeRun {
    NSUInteger length; // not 0
    Retained<NSDictionary> attributes;
};

// Makes one run of neighbours with equal attributes, keeping the first's dictionary. Comparing them is the
// attributes' own code.
void joinEqualRuns(std::vector<AttributeRun>& runs);

// The runs of a text, none empty. None of the operations sends a message.
class AttributeRuns {
public:
    NSUInteger length() const { return runs_.empty() ? 0 : runs_.back().end; }

    // The attributes at an index below the length, and the run around it, unless `range` is null.
    NSDictionary attributesAt(NSUInteger index, NSRange* range) const;
    // The runs of a range within the text, cut to it.
    std::vector<AttributeRun> runsIn(NSRange range) const;
    // A range within the text, widened to whole runs, and to those beside it.
    NSRange widened(NSRange range) const;
    // Replaces whole runs by others, and answers those that were replaced, which the caller releases when
    // nothing is half done any more.
    std::vector<AttributeRun> replace(NSRange wholeRuns, std::vector<AttributeRun> replacements);

private:
    struct Run {
        NSUInteger end;
        Retained<NSDictionary> attributes;
    };

    std::size_t runAt(NSUInteger index) const; // the number of runs where the index is behind the last
    NSUInteger startOf(std::size_t run) const { return run == 0 ? 0 : runs_[run - 1].end; }

    std::vector<Run> runs_;
};

} // namespace tessarin::embedded
