// The embedded platform's NSString: creation, units, equality, encodings, parts and letter case. The other
// subjects have files of their own.
//
// A class derived from NSString may bring its own primitive operations, length and characterAtIndex:. Every
// other operation then works on those.
#include "TessarinPlatform/NSArray.h"
#include "TessarinPlatform/NSData.h"
#include "platform/embedded/foundation/StringFormat.h"
#include "platform/embedded/foundation/StringStorage.h"
#include "platform/embedded/foundation/Unicode.h"
#include "platform/embedded/runtime/StoredKind.h"
#include "platform/services/TextEncodings.h"
#include "platform/services/Utf8.h"

#include <algorithm>
#include <cstring>

namespace tessarin::embedded {
namespace {

// ---- Creation

// An immutable string is made in one piece with its units. What alloc answers only stands for the string that
// the initialiser will make.
NSString placeholder() {
    static const NSString string = [] {
        Retained<NSString> made = newString<std::uint8_t>(0, [](std::uint8_t*) {});
        makeImmortal(made);
        return made.leak();
    }();
    return string;
}
id allocWithZone(Class self, SEL, void*) {
    if (self == "NSString"_class) return placeholder();
    return NSObject(createInstance(self));
}

NSString initialise(NSString self, StringView contents) {
    if (self == placeholder()) return newString(contents).leak();
    storageOf<StringStorage>(self).assign(contents);
    const auto editable = directStorage(self) ? nil : storedKindOf<NSMutableString>(self);
    if (editable && !contents.isEmpty()) editable.setString(makeString(contents));
    return self;
}
NSString fail(NSString self) {
    runtime::release(self.object());
    return nil;
}

NSString init(NSString self, SEL) { return initialise(self, StringView()); }
NSString initWithString(NSString self, SEL selector, NSString other) {
    rejectNil(other, self, selector);
    if (self == placeholder() && isPlainString(other)) return retain(other).leak();
    return initialise(self, contentsOf(other));
}
NSString initWithCharacters(NSString self, SEL selector, const unichar* characters, NSUInteger length) {
    if (!characters && length > 0) raiseFrom(NSInvalidArgumentException(), self, selector, "NULL characters");
    return initialise(self, std::span<const char16_t>(characters, length));
}
NSString initWithText(NSString self, std::string_view utf8) {
    Retained<NSString> decoded = newStringFromUtf8(utf8);
    if (!decoded) return fail(self);
    return self == placeholder() ? decoded.leak() : initialise(self, contentsOf(decoded));
}
NSString initWithUTF8String(NSString self, SEL selector, const char* text) {
    if (!text) raiseFrom(NSInvalidArgumentException(), self, selector, "NULL cString");
    return initWithText(self, text);
}
NSString initWithBytes(NSString self, SEL, const void* bytes, NSUInteger length, NSStringEncoding encoding) {
    if (!bytes && length > 0) return fail(self);
    const std::string_view text(static_cast<const char*>(bytes), length);
    switch (encoding) {
    case NSUTF8StringEncoding:
        return initWithText(self, text);
    case NSASCIIStringEncoding:
        if (utf8::measure(text).highest != 0x7F) return fail(self);
        return initialise(self, StringView(text));
    case NSISOLatin1StringEncoding:
        return initialise(self, StringView(text));
    default:
        break;
    }
    std::u16string units;
    if (!encodings::decode(CFStringConvertNSStringEncodingToEncoding(encoding), text, units))
        return fail(self);
    return initialise(self, StringView(std::u16string_view(units)));
}
NSString initWithCString(NSString self, SEL selector, const char* text, NSStringEncoding encoding) {
    if (!text) raiseFrom(NSInvalidArgumentException(), self, selector, "NULL cString");
    return self.initWithBytes_length_encoding(text, std::strlen(text), encoding);
}
NSString initWithData(NSString self, SEL, NSData data, NSStringEncoding encoding) {
    return self.initWithBytes_length_encoding(data.bytes(), data.length(), encoding);
}
NSString initWithFormatArguments(NSString self, SEL selector, NSString format, std::va_list arguments) {
    rejectNil(format, self, selector);
    StringStorage text;
    appendFormat(text, format, arguments);
    return initialise(self, text.view());
}
NSString initWithFormat(NSString self, SEL selector, NSString format, ...) {
    rejectNil(format, self, selector);
    std::va_list arguments;
    va_start(arguments, format);
    StringStorage text;
    appendFormat(text, format, arguments);
    va_end(arguments);
    return initialise(self, text.view());
}

// The class operations make a string of the class that they are sent to.
NSString string(Class self, SEL) { return adopt(as<NSString>(self.alloc()).init()).autorelease(); }
NSString stringWithString(Class self, SEL selector, NSString other) {
    rejectNil(other, self, selector);
    return adopt(as<NSString>(self.alloc()).initWithString(other)).autorelease();
}
NSString stringWithCharacters(Class self, SEL, const unichar* characters, NSUInteger length) {
    return adopt(as<NSString>(self.alloc()).initWithCharacters_length(characters, length)).autorelease();
}
NSString stringWithUTF8String(Class self, SEL selector, const char* text) {
    if (!text) raiseFrom(NSInvalidArgumentException(), self, selector, "NULL cString");
    return adopt(as<NSString>(self.alloc())
                     .initWithBytes_length_encoding(text, std::strlen(text), NSUTF8StringEncoding))
        .autorelease();
}
NSString stringWithCString(Class self, SEL, const char* text, NSStringEncoding encoding) {
    return adopt(as<NSString>(self.alloc()).initWithCString_encoding(text, encoding)).autorelease();
}
NSString stringWithFormat(Class self, SEL selector, NSString format, ...) {
    rejectNil(format, self, selector);
    std::va_list arguments;
    va_start(arguments, format);
    StringStorage text;
    appendFormat(text, format, arguments);
    va_end(arguments);
    if (self == "NSString"_class) return makeString(text.view());
    return adopt(as<NSString>(self.alloc()).initWithString(makeString(text.view()))).autorelease();
}

id copyWithZone(NSString self, SEL, void*) { return retain(self).leak(); }
id mutableCopyWithZone(NSString self, SEL, void*) { return NSMutableString::alloc().initWithString(self); }

// ---- Units

void getCharacters(NSString self, SEL selector, unichar* buffer, NSRange range) {
    if (const StringStorage* storage = directStorage(self)) {
        checkRange(range, storage->length(), self, selector);
        storage->view().sub(range.location, range.length).copyTo(buffer);
        return;
    }
    checkRange(range, self.length(), self, selector);
    for (NSUInteger index = 0; index < range.length; ++index)
        buffer[index] = self.characterAtIndex(range.location + index);
}

BOOL isEqualToString(NSString self, SEL, NSString other) {
    if (self == other) return YES;
    if (!other) return NO;
    const ContentsOfBoth contents = contentsOfBoth(self, other);
    return equalUnits(contents.first, contents.second);
}
BOOL isEqual(NSString self, SEL, NSObject other) {
    if (self == other) return YES;
    if (!other) return NO;
    const Object* isa = other.object()->isa;
    if (isa != "NSString"_class.object() && isa != "NSMutableString"_class.object()
        && !other.isKindOfClass("NSString"_class))
        return NO;
    const NSString string = as<NSString>(other);
    const SEL comparison = "isEqualToString:"_sel;
    return answersWith(self, comparison, isEqualToString) ? isEqualToString(self, comparison, string)
                                                          : self.isEqualToString(string);
}
NSUInteger hash(NSString self, SEL) {
    if (const StringStorage* storage = directStorage(self)) return storage->hash();
    return hashOf(contentsOf(self));
}
NSString description_(NSString self, SEL) { return self; }

// ---- Encodings

const char* UTF8String(NSString self, SEL) {
    const Contents contents = contentsOf(self);
    if (isPlainString(self) && isAscii(contents)) {
        // The units are the bytes already, with a zero behind them, and stay as long as the string does.
        retain(self).autorelease();
        return reinterpret_cast<const char*>(contents.narrow());
    }
    return contents.visit([](auto units) {
        const std::size_t length = utf8::encodedLength(units.data(), units.size());
        Retained<NSObject> keeper = adopt(NSObject(createInstance("NSObject"_class, length + 1)));
        auto* bytes = static_cast<char*>(extraBytesOf(keeper.object()));
        *utf8::encode(units.data(), units.size(), bytes) = '\0';
        keeper.autorelease();
        return static_cast<const char*>(bytes);
    });
}

bool hasUnpairedSurrogate(StringView text) {
    return text.visit([](auto units) { return utf8::hasUnpairedSurrogate(units.data(), units.size()); });
}

// nil where the encoding cannot hold the text as it is.
NSData dataUsingEncoding(NSString self, SEL, NSStringEncoding encoding) {
    const Contents contents = contentsOf(self);
    if (encoding == NSUTF8StringEncoding) {
        if (hasUnpairedSurrogate(contents)) return nil;
        const std::string bytes = utf8Of(contents);
        return NSData::dataWithBytes_length(bytes.data(), bytes.size());
    }
    const char16_t highest = encoding == NSASCIIStringEncoding       ? 0x7F
                             : encoding == NSISOLatin1StringEncoding ? 0xFF
                                                                     : 0;
    if (highest == 0) {
        std::u16string units(contents.length(), u'\0');
        contents.copyTo(units.data());
        std::string bytes;
        if (!encodings::encode(CFStringConvertNSStringEncodingToEncoding(encoding), units, bytes)) return nil;
        return NSData::dataWithBytes_length(bytes.data(), bytes.size());
    }
    return contents.visit([&](auto units) -> NSData {
        std::string bytes(units.size(), '\0');
        for (std::size_t index = 0; index < units.size(); ++index) {
            if (units[index] > highest) return nil;
            bytes[index] = static_cast<char>(units[index]);
        }
        return NSData::dataWithBytes_length(bytes.data(), bytes.size());
    });
}

// ---- Parts

NSString part(NSString self, StringView contents, NSRange range) {
    if (range.length == contents.length() && isPlainString(self)) return retain(self).autorelease();
    return makeString(contents.sub(range.location, range.length));
}
void checkIndex(NSUInteger index, std::size_t length, NSString self, SEL selector) {
    if (index > length) [[unlikely]]
        raiseFrom(NSRangeException(), self, selector,
                  "Index " + std::to_string(index) + " out of bounds; string length "
                      + std::to_string(length));
}
NSString substringFromIndex(NSString self, SEL selector, NSUInteger index) {
    const Contents contents = contentsOf(self);
    checkIndex(index, contents.length(), self, selector);
    return part(self, contents, {index, contents.length() - index});
}
NSString substringToIndex(NSString self, SEL selector, NSUInteger index) {
    const Contents contents = contentsOf(self);
    checkIndex(index, contents.length(), self, selector);
    return part(self, contents, {0, index});
}
NSString substringWithRange(NSString self, SEL selector, NSRange range) {
    const Contents contents = contentsOf(self);
    checkRange(range, contents.length(), self, selector);
    return part(self, contents, range);
}
NSString stringByAppendingString(NSString self, SEL selector, NSString other) {
    rejectNil(other, self, selector);
    const ContentsOfBoth contents = contentsOfBoth(self, other);
    const StringView first = contents.first;
    const StringView second = contents.second;
    if (!first.isWide() && !second.isWide() && !second.isEmpty()) {
        const auto write = [&](std::uint8_t* units) {
            units = std::copy_n(first.narrow(), first.length(), units);
            std::copy_n(second.narrow(), second.length(), units);
        };
        return newString<std::uint8_t>(first.length() + second.length(), write).autorelease();
    }
    StringStorage joined;
    joined.reserve(first.length() + second.length());
    joined.append(first);
    joined.append(second);
    return makeString(joined.view());
}
NSString stringByAppendingFormat(NSString self, SEL selector, NSString format, ...) {
    rejectNil(format, self, selector);
    StringStorage joined;
    joined.append(contentsOf(self));
    std::va_list arguments;
    va_start(arguments, format);
    appendFormat(joined, format, arguments);
    va_end(arguments);
    return makeString(joined.view());
}

// ---- Letter case

// A capital sigma that ends a word has a small form of its own.
bool endsWord(StringView text, std::size_t index) {
    return index > 0 && unicode::isLetterOrMark(text[index - 1])
           && (index + 1 == text.length() || !unicode::isLetterOrMark(text[index + 1]));
}

template <class Map>
NSString mapped(NSString self, Map&& map) {
    constexpr char32_t capitalSigma = 0x3A3, finalSigma = 0x3C2;
    const Contents contents = contentsOf(self);
    StringStorage result;
    result.reserve(contents.length());
    contents.visit([&](auto units) {
        for (std::size_t index = 0; index < units.size();) {
            const std::size_t start = index;
            const char32_t character = utf8::nextCharacter(units.data(), units.size(), index);
            unicode::Mapping mapping = map(character);
            if (character == capitalSigma && mapping.characters[0] != character && endsWord(contents, start))
                mapping.characters[0] = finalSigma;
            for (std::size_t each = 0; each < mapping.count; ++each)
                result.appendCharacter(mapping.characters[each]);
        }
    });
    return makeString(result.view());
}
NSString lowercaseString(NSString self, SEL) { return mapped(self, unicode::lowercase); }
NSString uppercaseString(NSString self, SEL) { return mapped(self, unicode::uppercase); }

} // namespace

NSUInteger lengthOfString(NSString self, SEL) { return storageOf<StringStorage>(self).length(); }
unichar characterOfStringAtIndex(NSString self, SEL selector, NSUInteger index) {
    const StringStorage& storage = storageOf<StringStorage>(self);
    if (index >= storage.length()) [[unlikely]]
        raiseFrom(NSRangeException(), self, selector, "Range or index out of bounds");
    return storage.view()[index];
}

ClassDescription describeNSString() {
    ClassDescription result{.name = "NSString",
                            .superclass = "NSObject",
                            .protocols = {"NSCoding", "NSCopying", "NSMutableCopying"},
                            .storage = storageLayout<StringStorage>(false),
                            .methods = {
                                classMethod("allocWithZone:", allocWithZone),
                                classMethod("string", string),
                                classMethod("stringWithString:", stringWithString),
                                classMethod("stringWithCharacters:length:", stringWithCharacters),
                                classMethod("stringWithUTF8String:", stringWithUTF8String),
                                classMethod("stringWithCString:encoding:", stringWithCString),
                                classMethod("stringWithFormat:", stringWithFormat),
                                instanceMethod("init", init),
                                instanceMethod("initWithString:", initWithString),
                                instanceMethod("initWithCharacters:length:", initWithCharacters),
                                instanceMethod("initWithUTF8String:", initWithUTF8String),
                                instanceMethod("initWithBytes:length:encoding:", initWithBytes),
                                instanceMethod("initWithCString:encoding:", initWithCString),
                                instanceMethod("initWithData:encoding:", initWithData),
                                instanceMethod("initWithFormat:", initWithFormat),
                                // A va_list is a structure on some machines and a pointer on others; the
                                // runtimes write the latter.
                                {"initWithFormat:arguments:",
                                 reinterpret_cast<Implementation>(initWithFormatArguments), "@@:@^v", false},
                                instanceMethod("copyWithZone:", copyWithZone),
                                instanceMethod("mutableCopyWithZone:", mutableCopyWithZone),
                                instanceMethod("length", lengthOfString),
                                instanceMethod("characterAtIndex:", characterOfStringAtIndex),
                                instanceMethod("getCharacters:range:", getCharacters),
                                instanceMethod("isEqual:", isEqual),
                                instanceMethod("isEqualToString:", isEqualToString),
                                instanceMethod("hash", hash),
                                instanceMethod("description", description_),
                                instanceMethod("UTF8String", UTF8String),
                                instanceMethod("dataUsingEncoding:", dataUsingEncoding),
                                instanceMethod("substringFromIndex:", substringFromIndex),
                                instanceMethod("substringToIndex:", substringToIndex),
                                instanceMethod("substringWithRange:", substringWithRange),
                                instanceMethod("stringByAppendingString:", stringByAppendingString),
                                instanceMethod("stringByAppendingFormat:", stringByAppendingFormat),
                                instanceMethod("lowercaseString", lowercaseString),
                                instanceMethod("uppercaseString", uppercaseString),
                            }};
    for (const auto& rows :
         {stringComparisonMethods(), stringLocalizedComparisonMethods(), stringSearchingMethods(),
          stringNumberMethods(), stringPathMethods(), stringCodingMethods()})
        result.methods.insert(result.methods.end(), rows.begin(), rows.end());
    return result;
}

} // namespace tessarin::embedded
