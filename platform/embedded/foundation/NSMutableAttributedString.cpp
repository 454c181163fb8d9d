#include "platform/embedded/foundation/AttributedStringStorage.h"
#include "platform/embedded/foundation/StringStorage.h"

#include "TessarinPlatform/Exceptions.h"
#include "TessarinPlatform/NSException.h"
#include "TessarinPlatform/NSMutableDictionary.h"

#include <iterator>
#include <utility>

namespace tessarin::embedded {
namespace {

AttributedStringStorage& storageOf(NSMutableAttributedString string) {
    return embedded::storageOf<AttributedStringStorage>(string);
}

void checkRangeOf(NSMutableAttributedString self, SEL selector, NSRange range) {
    checkRange(range, self.string().length(), self, selector);
}

// ---- Editing the storage

void refuseMutation(NSMutableAttributedString self, NSUInteger mutations) {
    if (storageOf(self).mutations != mutations) runtime::raiseMutation(self.object());
}

// Puts runs in the place of a range, and the text, unless it is nil, in the place of its characters. Both
// happen at once, when all code that is not the platform's has run; what that changed meanwhile is refused.
void replace(NSMutableAttributedString self, NSRange range, std::vector<AttributeRun> runs, NSString text,
             NSUInteger mutations) {
    refuseMutation(self, mutations);
    AttributedStringStorage& storage = storageOf(self);
    const NSRange widened = storage.runs.widened(range);
    const NSUInteger end = range.location + range.length;
    std::vector<AttributeRun> all =
        storage.runs.runsIn({widened.location, range.location - widened.location});
    std::move(runs.begin(), runs.end(), std::back_inserter(all));
    const std::vector<AttributeRun> behind =
        storage.runs.runsIn({end, widened.location + widened.length - end});
    all.insert(all.end(), behind.begin(), behind.end());
    joinEqualRuns(all);

    refuseMutation(self, mutations);
    if (text) {
        if (!storage.text) storage.text = newAttributedText(""_ns); // not initialised
        embedded::storageOf<StringStorage>(storage.text).replace(range, contentsOf(text));
    }
    ++storage.mutations;
    // Released at the end, which may set off anything.
    const std::vector<AttributeRun> replaced = storage.runs.replace(widened, std::move(all));
}

// Replaces the attributes of each run in a range by what change(attributes) answers.
template <class Change>
void changeAttributes(NSMutableAttributedString self, NSRange range, Change&& change) {
    const NSUInteger mutations = storageOf(self).mutations;
    std::vector<AttributeRun> runs = storageOf(self).runs.runsIn(range);
    for (AttributeRun& run : runs) run.attributes = change(run.attributes);
    replace(self, range, std::move(runs), nil, mutations);
}

// What new characters in the place of a range have: the attributes of the first that they replace, or of the
// one before them; at the start, of the one behind.
Retained<NSDictionary> inheritedAttributes(NSMutableAttributedString self, NSRange range) {
    const AttributeRuns& runs = storageOf(self).runs;
    if (runs.length() == 0) return keptAttributes(nil);
    const bool takesBefore = range.length == 0 && range.location > 0;
    return retain(runs.attributesAt(range.location - (takesBefore ? 1 : 0), nullptr));
}

// ---- The primitive operations. A subclass may take them over; the others then go through them.

void replaceCharactersInRange_withString(NSMutableAttributedString self, SEL selector, NSRange range,
                                         NSString text) {
    rejectNil(text, self, selector);
    const Retained<NSString> kept = keptText(text); // it may be the receiver's own
    checkRange(range, storageOf(self).runs.length(), self, selector);
    std::vector<AttributeRun> runs;
    if (const NSUInteger length = kept.length()) runs.push_back({length, inheritedAttributes(self, range)});
    replace(self, range, std::move(runs), kept, storageOf(self).mutations);
}

void setAttributes_range(NSMutableAttributedString self, SEL selector, NSDictionary attributes,
                         NSRange range) {
    const Retained<NSDictionary> kept = keptAttributes(attributes);
    checkRange(range, storageOf(self).runs.length(), self, selector);
    changeAttributes(self, range, [&](const Retained<NSDictionary>&) { return kept; });
}

bool editsStorage(NSMutableAttributedString string) {
    return hasAttributedStringStorage(string)
           && answersWith(string, "replaceCharactersInRange:withString:"_sel,
                          replaceCharactersInRange_withString)
           && answersWith(string, "setAttributes:range:"_sel, setAttributes_range);
}

// ---- What goes through them

void deleteCharactersInRange(NSMutableAttributedString self, SEL, NSRange range) {
    self.replaceCharactersInRange_withString(range, ""_ns);
}

void setAttributesOfRuns(NSMutableAttributedString self, NSUInteger start,
                         const std::vector<AttributeRun>& runs) {
    for (const AttributeRun& run : runs) {
        self.setAttributes_range(run.attributes, {start, run.length});
        start += run.length;
    }
}

// Sets the attributes of each run of a range to what edit(attributes) makes of them.
template <class Edit>
void editAttributes(NSMutableAttributedString self, NSRange range, Edit&& edit) {
    const auto change = [&](NSDictionary attributes) {
        const Retained<NSMutableDictionary> changed = adopt(NSMutableDictionary(attributes.mutableCopy()));
        edit(changed);
        return adopt(NSDictionary(changed.copy()));
    };
    if (editsStorage(self)) return changeAttributes(self, range, change);
    std::vector<AttributeRun> runs = runsOf(self, range);
    for (AttributeRun& run : runs) run.attributes = change(run.attributes);
    setAttributesOfRuns(self, range.location, runs);
}

void addAttribute_value_range(NSMutableAttributedString self, SEL selector, NSString name, NSObject value,
                              NSRange range) {
    if (!name || !value)
        raise(NSInvalidArgumentException(),
              "NSConcreteMutableAttributedString addAttribute:value:range:: nil value"_ns);
    checkRangeOf(self, selector, range);
    editAttributes(self, range,
                   [&](NSMutableDictionary attributes) { attributes.setObject_forKey(value, name); });
}

void removeAttribute_range(NSMutableAttributedString self, SEL selector, NSString name, NSRange range) {
    rejectNil(name, self, selector);
    checkRangeOf(self, selector, range);
    editAttributes(self, range, [&](NSMutableDictionary attributes) { attributes.removeObjectForKey(name); });
}

void replaceCharactersInRange_withAttributedString(NSMutableAttributedString self, SEL selector,
                                                   NSRange range, NSAttributedString other) {
    rejectNil(other, self, selector);
    checkRangeOf(self, selector, range);
    const NSUInteger mutations = storageOf(self).mutations;
    const Retained<NSString> text = keptText(other.string());
    std::vector<AttributeRun> runs = runsOf(other, {0, text.length()});
    if (editsStorage(self)) return replace(self, range, std::move(runs), text, mutations);
    self.replaceCharactersInRange_withString(range, text);
    setAttributesOfRuns(self, range.location, runs);
}

void appendAttributedString(NSMutableAttributedString self, SEL, NSAttributedString other) {
    send<void>(self, "replaceCharactersInRange:withAttributedString:"_sel, NSRange{self.length(), 0}, other);
}

NSAttributedString copyWithZone(NSMutableAttributedString self, SEL, void*) {
    return as<NSAttributedString>(NSAttributedString::alloc().initWithAttributedString(self));
}

// ---- The text of a mutable attributed string

id copyText(NSString self, SEL, void*) { return newString(contentsOf(self)).leak(); }

} // namespace

Retained<NSString> newAttributedText(NSString contents) {
    Retained<NSString> text = adopt(NSString(createInstance("TessarinAttributedText"_class)));
    embedded::storageOf<StringStorage>(text).assign(contentsOf(contents));
    return text;
}

ClassDescription describeAttributedText() {
    return {.name = "TessarinAttributedText",
            .superclass = "NSString",
            .methods = {instanceMethod("copyWithZone:", copyText)}};
}

ClassDescription describeNSMutableAttributedString() {
    return {
        .name = "NSMutableAttributedString",
        .superclass = "NSAttributedString",
        .methods = {instanceMethod("replaceCharactersInRange:withString:",
                                   replaceCharactersInRange_withString),
                    instanceMethod("setAttributes:range:", setAttributes_range),
                    instanceMethod("deleteCharactersInRange:", deleteCharactersInRange),
                    instanceMethod("addAttribute:value:range:", addAttribute_value_range),
                    instanceMethod("removeAttribute:range:", removeAttribute_range),
                    instanceMethod("replaceCharactersInRange:withAttributedString:",
                                   replaceCharactersInRange_withAttributedString),
                    instanceMethod("appendAttributedString:", appendAttributedString),
                    instanceMethod("copyWithZone:", copyWithZone)},
    };
}

} // namespace tessarin::embedded
