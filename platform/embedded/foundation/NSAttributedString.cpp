#include "platform/embedded/foundation/AttributedStringStorage.h"
#include "platform/embedded/foundation/ContainerDescription.h"
#include "platform/embedded/foundation/ContainerEquality.h"
#include "platform/embedded/foundation/StringStorage.h"

#include "TessarinPlatform/Exceptions.h"
#include "TessarinPlatform/NSException.h"

#include <algorithm>
#include <string>
#include <utility>

namespace tessarin::embedded {
namespace {

AttributedStringStorage& storageOf(NSAttributedString string) {
    return embedded::storageOf<AttributedStringStorage>(string);
}

bool isMutable(NSAttributedString string) {
    return string.isKindOfClass(NSMutableAttributedString::classObject());
}

// ---- Making

// Of text that is kept.
void assign(NSAttributedString self, NSString text, std::vector<AttributeRun> runs) {
    AttributedStringStorage made;
    made.text = isMutable(self) ? newAttributedText(text) : retain(text);
    made.runs.replace({0, 0}, std::move(runs));
    std::swap(storageOf(self), made);
}

// The platform's own wording, for both initialisers.
void rejectNilText(NSString text, NSAttributedString self) {
    if (text) return;
    const std::string className =
        isMutable(self) ? "NSConcreteMutableAttributedString" : "NSConcreteAttributedString";
    raise(NSInvalidArgumentException(), NSString(className + " initWithString:: nil value"));
}

NSAttributedString initWithString_attributes(NSAttributedString self, SEL, NSString text,
                                             NSDictionary attributes) {
    Retained<NSAttributedString> owned = adopt(self);
    rejectNilText(text, self);
    const Retained<NSString> kept = keptText(text);
    std::vector<AttributeRun> runs;
    if (const NSUInteger length = kept.length()) runs.push_back({length, keptAttributes(attributes)});
    assign(self, kept, std::move(runs));
    return owned.leak();
}

NSAttributedString initWithString(NSAttributedString self, SEL, NSString text) {
    return self.initWithString_attributes(text, nil);
}

NSAttributedString init(NSAttributedString self, SEL) { return self.initWithString(""_ns); }

NSAttributedString initWithAttributedString(NSAttributedString self, SEL, NSAttributedString other) {
    Retained<NSAttributedString> owned = adopt(self);
    const NSString original = other.string();
    rejectNilText(original, self);
    const Retained<NSString> text = keptText(original);
    std::vector<AttributeRun> runs = runsOf(other, {0, text.length()});
    joinEqualRuns(runs);
    assign(self, text, std::move(runs));
    return owned.leak();
}

// A mutable attributed string answers copyWithZone: itself; every other cannot change.
NSAttributedString copyWithZone(NSAttributedString self, SEL, void*) { return retain(self).leak(); }
id mutableCopyWithZone(NSAttributedString self, SEL, void*) {
    return NSMutableAttributedString::alloc().initWithAttributedString(self);
}

// ---- Reading: two primitive operations, and what goes through them

NSString string(NSAttributedString self, SEL) { return storageOf(self).text; }

NSDictionary attributesAtIndex_effectiveRange(NSAttributedString self, SEL, NSUInteger index,
                                              NSRange* range) {
    const AttributeRuns& runs = storageOf(self).runs;
    if (index >= runs.length())
        raise(NSRangeException(), "NSRLEArray objectAtIndex:effectiveRange:: Out of bounds"_ns);
    // The caller may keep them over an edit.
    return retain(runs.attributesAt(index, range)).autorelease();
}

NSUInteger length(NSAttributedString self, SEL) { return self.string().length(); }

id attribute_atIndex_effectiveRange(NSAttributedString self, SEL, NSString name, NSUInteger index,
                                    NSRange* range) {
    return self.attributesAtIndex_effectiveRange(index, range).objectForKey(name);
}

NSAttributedString attributedSubstringFromRange(NSAttributedString self, SEL selector, NSRange range) {
    const Retained<NSString> text = keptText(self.string());
    checkRange(range, text.length(), self, selector);
    std::vector<AttributeRun> runs = runsOf(self, range);
    joinEqualRuns(runs);
    Retained<NSAttributedString> part = adopt(NSAttributedString::alloc());
    assign(part, text.substringWithRange(range), std::move(runs));
    return part.autorelease();
}

NSUInteger hash(NSAttributedString self, SEL) { return self.string().hash(); }

// Each run's characters, followed by its attributes.
NSString description(NSAttributedString self, SEL) {
    const Retained<NSString> text = keptText(self.string());
    std::vector<AttributeRun> runs = runsOf(self, {0, text.length()});
    joinEqualRuns(runs);
    StringStorage described;
    NSUInteger start = 0;
    for (const AttributeRun& run : runs) {
        described.append(contentsOf(text).sub(start, run.length));
        described.append(contentsOf(attributesDescription(run.attributes, described.length())));
        start += run.length;
    }
    return makeString(described.view());
}

// The attributes of any attributed string, and the end of the run around the index, within a limit.
std::pair<NSDictionary, NSUInteger> askedAttributes(NSAttributedString string, NSUInteger index,
                                                    NSUInteger limit) {
    NSRange range{index, 0};
    const NSDictionary attributes = string.attributesAtIndex_effectiveRange(index, &range);
    // A subclass may answer any range.
    const NSUInteger start = std::min(range.location, limit);
    const NSUInteger end = range.length > limit - start ? limit : start + range.length;
    return {attributes, std::max(end, index + 1)};
}

} // namespace

bool hasAttributedStringStorage(NSAttributedString string) {
    return string
           && answersWith(string, "attributesAtIndex:effectiveRange:"_sel, attributesAtIndex_effectiveRange)
           && answersWith(string, "string"_sel, embedded::string);
}

std::vector<AttributeRun> runsOf(NSAttributedString string, NSRange range) {
    if (hasAttributedStringStorage(string)) return storageOf(string).runs.runsIn(range);
    std::vector<AttributeRun> runs;
    const NSUInteger limit = range.location + range.length;
    for (NSUInteger index = range.location; index < limit;) {
        const auto [attributes, end] = askedAttributes(string, index, limit);
        runs.push_back({end - index, keptAttributes(attributes)});
        index = end;
    }
    return runs;
}

Retained<NSDictionary> keptAttributes(NSDictionary attributes) {
    return attributes ? adopt(NSDictionary(attributes.copy())) : retain(NSDictionary::dictionary());
}

Retained<NSString> keptText(NSString text) {
    Retained<NSString> copy = adopt(NSString(text.copy()));
    return !copy || copy.isMemberOfClass(NSString::classObject()) ? copy : newString(contentsOf(copy));
}

ClassDescription describeNSAttributedString() {
    return {
        .name = "NSAttributedString",
        .superclass = "NSObject",
        .protocols = {"NSCopying", "NSMutableCopying"},
        .storage = storageLayout<AttributedStringStorage>(),
        .methods = {instanceMethod("init", init), instanceMethod("initWithString:", initWithString),
                    instanceMethod("initWithString:attributes:", initWithString_attributes),
                    instanceMethod("initWithAttributedString:", initWithAttributedString),
                    instanceMethod("copyWithZone:", copyWithZone),
                    instanceMethod("mutableCopyWithZone:", mutableCopyWithZone),
                    instanceMethod("string", string), instanceMethod("length", length),
                    instanceMethod("attributesAtIndex:effectiveRange:", attributesAtIndex_effectiveRange),
                    instanceMethod("attribute:atIndex:effectiveRange:", attribute_atIndex_effectiveRange),
                    instanceMethod("attributedSubstringFromRange:", attributedSubstringFromRange),
                    instanceMethod("isEqualToAttributedString:", isEqualToAttributedString),
                    instanceMethod("isEqual:", attributedStringIsEqual), instanceMethod("hash", hash),
                    instanceMethod("description", description)},
    };
}

} // namespace tessarin::embedded
