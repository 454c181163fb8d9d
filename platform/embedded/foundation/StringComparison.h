// Comparing and finding text whatever its normal form or letter case.
#pragma once

#include "platform/embedded/foundation/StringStorage.h"

namespace tessarin::embedded {

// Whether a string answers compare: with what the platform's own does.
bool comparesCanonically(NSString string);
// Canonically equivalent texts are the same; case folding comes on top of that. By character value.
NSComparisonResult compareCanonically(StringView left, StringView right, bool foldsCase);

// A text with its letter case folded, and where in the text each character comes from.
struct FoldedText {
    std::vector<char32_t> characters;
    // The unit at which the segment of each character begins, a base with its marks, and the length of the
    // text.
    std::vector<std::size_t> origins;

    // Whether a match that ends or begins before a character cuts no segment in two.
    bool isBoundary(std::size_t index) const { return index == 0 || origins[index] != origins[index - 1]; }
};
// Decomposed canonically besides, unless the segments are to be single characters as they are.
FoldedText foldedText(StringView text, bool isLiteral);

// The characters of a text, decomposed canonically, with marks in canonical order.
std::vector<char32_t> decomposedText(StringView text);

// Where a text stands that is not empty, whatever its letter case: at the start or the end only with
// NSAnchoredSearch, in the same normal form only with NSLiteralSearch. The location is NSNotFound when it
// does not.
NSRange findFolded(StringView text, StringView searched, NSStringCompareOptions options);

} // namespace tessarin::embedded
