// How the embedded platform's attributed strings keep text and attributes.
#pragma once

#include "TessarinPlatform/NSMutableAttributedString.h"
#include "platform/embedded/foundation/AttributeRuns.h"
#include "platform/embedded/runtime/BuiltInClass.h"

#include <vector>

namespace tessarin::embedded {

struct AttributedStringStorage {
    Retained<NSString> text; // nil before the string is initialised; the runs are as long as it
    AttributeRuns runs;
    NSUInteger mutations = 0;
};

// Whether an object is an attributed string that no subclass has taken the primitive operations, string and
// attributesAtIndex:effectiveRange:, from. Then its storage may be read.
bool hasAttributedStringStorage(NSAttributedString string);

// The runs of a range within any attributed string, kept by whoever gets them; neighbours may be equal.
std::vector<AttributeRun> runsOf(NSAttributedString string, NSRange range);

// Attributes as they are kept: a copy, empty for nil.
Retained<NSDictionary> keptAttributes(NSDictionary attributes);

// A text as it is kept: a copy, which is a string of the platform's own, so that its length stays the same.
// nil for nil.
Retained<NSString> keptText(NSString text);

// A new string whose storage its mutable attributed string edits. To everyone else it is an immutable string,
// whose copies do not follow the edits.
Retained<NSString> newAttributedText(NSString contents);

} // namespace tessarin::embedded
