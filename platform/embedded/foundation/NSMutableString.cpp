// The embedded platform's NSMutableString: a string with edits. Beside the primitive operations of NSString
// there is one of its own, replaceCharactersInRange:withString:, which a derived class may bring.
#include "TessarinPlatform/NSMutableString.h"
#include "platform/embedded/foundation/StringFormat.h"
#include "platform/embedded/foundation/StringStorage.h"

namespace tessarin::embedded {
namespace {

void replaceCharacters(NSMutableString self, SEL selector, NSRange range, NSString replacement) {
    rejectNil(replacement, self, selector);
    // Before the range is checked, since a derived class's units are code of its own, which may edit the
    // string.
    const Contents contents = contentsOf(replacement);
    StringStorage& storage = storageOf<StringStorage>(self);
    checkRange(range, storage.length(), self, selector);
    storage.replace(range, contents);
}

StringStorage* editableStorageOfSubclass(NSMutableString self) {
    StringStorage* storage = directStorage(self);
    return storage && answersWith(self, "replaceCharactersInRange:withString:"_sel, replaceCharacters)
               ? storage
               : nullptr;
}
// The storage, where every edit may go straight to it; null where a derived class has its say.
inline StringStorage* editableStorage(NSMutableString self) {
    return self.object()->isa == "NSMutableString"_class.object() ? &storageOf<StringStorage>(self)
                                                                  : editableStorageOfSubclass(self);
}

inline void append(NSMutableString self, StringView contents) {
    if (StringStorage* storage = editableStorage(self)) return storage->append(contents);
    const NSString appended = makeString(contents); // first, since the length is the derived class's own code
    self.replaceCharactersInRange_withString({self.length(), 0}, appended);
}

NSMutableString initWithCapacity(NSMutableString self, SEL, NSUInteger capacity) {
    const NSMutableString made = self.init();
    if (StringStorage* storage = made ? editableStorage(made) : nullptr) storage->reserve(capacity);
    return made;
}
NSMutableString stringWithCapacity(Class self, SEL, NSUInteger capacity) {
    return adopt(as<NSMutableString>(self.alloc()).initWithCapacity(capacity)).autorelease();
}

void appendString(NSMutableString self, SEL selector, NSString other) {
    rejectNil(other, self, selector);
    append(self, contentsOf(other));
}
void appendWithFormat(NSMutableString self, SEL selector, NSString format, ...) {
    rejectNil(format, self, selector);
    // Apart from the string, which may be an argument and which descriptions may edit.
    StringStorage text;
    std::va_list arguments;
    va_start(arguments, format);
    appendFormat(text, format, arguments);
    va_end(arguments);
    append(self, text.view());
}
void setString(NSMutableString self, SEL selector, NSString other) {
    rejectNil(other, self, selector);
    if (StringStorage* storage = editableStorage(self))
        storage->assign(contentsOf(other));
    else
        self.replaceCharactersInRange_withString({0, self.length()}, other);
}
void insertString(NSMutableString self, SEL selector, NSString other, NSUInteger index) {
    rejectNil(other, self, selector);
    checkRange({index, 0}, self.length(), self, selector);
    self.replaceCharactersInRange_withString({index, 0}, other);
}
void deleteCharacters(NSMutableString self, SEL selector, NSRange range) {
    checkRange(range, self.length(), self, selector);
    self.replaceCharactersInRange_withString(range, ""_ns);
}

id copyWithZone(NSMutableString self, SEL, void*) { return newString(contentsOf(self)).leak(); }

} // namespace

ClassDescription describeNSMutableString() {
    return {.name = "NSMutableString",
            .superclass = "NSString",
            .methods = {
                classMethod("stringWithCapacity:", stringWithCapacity),
                instanceMethod("initWithCapacity:", initWithCapacity),
                instanceMethod("appendString:", appendString),
                instanceMethod("appendFormat:", appendWithFormat),
                instanceMethod("setString:", setString),
                instanceMethod("insertString:atIndex:", insertString),
                instanceMethod("deleteCharactersInRange:", deleteCharacters),
                instanceMethod("replaceCharactersInRange:withString:", replaceCharacters),
                instanceMethod("copyWithZone:", copyWithZone),
            }};
}

} // namespace tessarin::embedded
