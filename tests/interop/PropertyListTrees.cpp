#include "PropertyListTrees.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <map>
#include <random>

namespace tessarin::interop {
namespace {

NSObject integer(long long value) { return NSNumber::numberWithLongLong(value); }
NSObject real(double value) { return NSNumber::numberWithDouble(value); }
NSObject date(double seconds) { return NSDate::dateWithTimeIntervalSinceReferenceDate(seconds); }
NSObject bytes(const std::string& text) { return NSData::dataWithBytes_length(text.data(), text.size()); }
NSObject units(std::u16string_view text) { return NSString(text); }

NSArray list(std::initializer_list<NSObject> items) {
    return NSArray::arrayWithObjects_count(items.begin(), items.size());
}

// 2^0 to 2^62, one less and one more, of either sign.
NSArray integersOfEachWidth() {
    const NSMutableArray result = NSMutableArray::array();
    for (int bit = 0; bit < 63; ++bit)
        for (const long long difference : {-1, 0, 1}) {
            const long long value = (1LL << bit) + difference;
            result.addObject(integer(value));
            result.addObject(integer(-value));
        }
    result.addObject(integer(std::numeric_limits<long long>::min()));
    result.addObject(integer(std::numeric_limits<long long>::max()));
    return result;
}

// What takes 16 bytes in binary form.
NSArray integersBeyond63Bits() {
    return list({NSNumber::numberWithUnsignedLongLong(1ULL << 63),
                 NSNumber::numberWithUnsignedLongLong(~0ULL), integer(-1)});
}

NSArray reals() {
    return list({real(1), real(-0.5), real(0.1), real(1.0 / 3), real(1e300),
                 real(std::numeric_limits<double>::max()), real(std::numeric_limits<double>::min()),
                 NSNumber::numberWithFloat(0.1F), NSNumber::numberWithFloat(-1e30F)});
}

NSArray wholeDates() {
    return list({date(0), date(1), date(-1), date(86'400 * 366.0), date(-978'307'200), date(3e9),
                 date(-62e9)}); // the last in the year 36
}

NSArray dataOfEachLength() {
    const NSMutableArray result = NSMutableArray::array();
    std::string text;
    for (int length = 0; length < 80; ++length) {
        result.addObject(bytes(text));
        text.push_back(static_cast<char>(length * 37));
    }
    return result;
}

NSDictionary manyKeys() {
    const NSMutableDictionary result = NSMutableDictionary::dictionary();
    for (int key = 0; key < 100'000; ++key)
        result.setObject_forKey(integer(key), NSString("key " + std::to_string(key)));
    return result;
}

NSArray nested() {
    NSArray result = list({"innermost"_ns});
    for (int level = 0; level < 100; ++level)
        result = list({result, NSDictionary::dictionaryWithObject_forKey(result.lastObject(), "last"_ns)});
    return result;
}

NSArray deep() {
    NSArray result = NSArray::array();
    for (int level = 0; level < 200; ++level) result = list({result});
    return result;
}

// ---- Lists by chance. Only what the standard fixes is used of its random numbers.

class RandomTree {
public:
    explicit RandomTree(unsigned seed) : engine_(seed) {}

    NSObject object(int depth) {
        switch (below(depth > 0 ? 10 : 8)) {
        case 0:
            return NSNumber::numberWithBool(below(2) == 0);
        case 1:
            return integer(static_cast<long long>(wide() >> below(64)));
        case 2:
            return integer(-static_cast<long long>(wide() >> (1 + below(62))));
        case 3:
            return real(std::ldexp(static_cast<double>(wide() >> 11), static_cast<int>(below(200)) - 100));
        case 4:
            return date(static_cast<double>(below(4'000'000'000U)) - 1e9);
        case 5:
            return bytes(std::string(below(300), static_cast<char>(below(256))));
        case 6:
        case 7:
            return string();
        case 8: {
            const NSMutableArray array = NSMutableArray::array();
            for (std::uint32_t count = below(20); count > 0; --count) array.addObject(object(depth - 1));
            return array;
        }
        default: {
            const NSMutableDictionary dictionary = NSMutableDictionary::dictionary();
            for (std::uint32_t count = below(20); count > 0; --count)
                dictionary.setObject_forKey(object(depth - 1), string());
            return dictionary;
        }
        }
    }

private:
    std::uint32_t below(std::uint32_t bound) { return static_cast<std::uint32_t>(engine_() % bound); }
    std::uint64_t wide() { return std::uint64_t{engine_()} << 32 | engine_(); }

    NSString string() {
        static const std::u16string_view alphabets[] = {u"abc <>&'\"\\;={}()",
                                                        u"\u00e9\u00fc\u00df\u00a0\u00ff",
                                                        u"\u6f22\u5b57\u304b\u306a", u"\U0001F600\U0001D11E"};
        const std::u16string_view alphabet = alphabets[below(4)];
        std::u16string text;
        // Two units at a time, which keeps surrogates together.
        for (std::uint32_t count = below(20); count > 0; --count)
            text += alphabet.substr(2 * below(static_cast<std::uint32_t>(alphabet.size() / 2)), 2);
        return NSString(text);
    }

    std::mt19937 engine_;
};

// ---- The plain form

constexpr const char* digits = "0123456789abcdef";

void appendHexadecimal(std::string& text, std::uint64_t value, int count) {
    for (int digit = count; digit-- > 0;) text += digits[value >> 4 * digit & 0xF];
}

std::string plainString(NSString string) {
    std::string text = "s";
    for (const char16_t unit : static_cast<std::u16string>(string)) appendHexadecimal(text, unit, 4);
    return text;
}

void append(std::string& text, NSObject object);

void appendBits(std::string& text, char kind, double value) {
    text += kind;
    appendHexadecimal(text, std::bit_cast<std::uint64_t>(value), 16);
}

void appendNumber(std::string& text, NSNumber number) {
    switch (number.objCType()[0]) {
    case 'c':
    case 'C':
    case 'B':
        text += number.boolValue() ? "b1" : "b0";
        break;
    case 'f':
    case 'd':
        appendBits(text, 'r', number.doubleValue());
        break;
    case 'Q':
        text += "i" + std::to_string(number.unsignedLongLongValue());
        break;
    default:
        text += "i" + std::to_string(number.longLongValue());
    }
}

void appendDictionary(std::string& text, NSDictionary dictionary) {
    std::map<std::string, NSObject> sorted;
    for (const NSObject key : dictionary)
        sorted[plainString(as<NSString>(key))] = dictionary.objectForKey(key);
    text += '{';
    const char* separator = "";
    for (const auto& [key, object] : sorted) {
        text += separator + key + ":";
        append(text, object);
        separator = ",";
    }
    text += '}';
}

void append(std::string& text, NSObject object) {
    if (const auto string = kindOf<NSString>(object)) {
        text += plainString(string);
    } else if (const auto number = kindOf<NSNumber>(object)) {
        appendNumber(text, number);
    } else if (const auto instant = kindOf<NSDate>(object)) {
        appendBits(text, 'd', instant.timeIntervalSinceReferenceDate());
    } else if (const auto data = kindOf<NSData>(object)) {
        text += 'x';
        const auto* const start = static_cast<const unsigned char*>(data.bytes());
        for (NSUInteger index = 0; index < data.length(); ++index) appendHexadecimal(text, start[index], 2);
    } else if (const auto array = kindOf<NSArray>(object)) {
        text += '[';
        const char* separator = "";
        for (const NSObject item : array) {
            text += separator;
            append(text, item);
            separator = ",";
        }
        text += ']';
    } else if (const auto dictionary = kindOf<NSDictionary>(object)) {
        appendDictionary(text, dictionary);
    } else {
        text += "?" + static_cast<std::string>(object.description());
    }
}

} // namespace

std::vector<PropertyListTree> propertyListTrees() {
    std::vector<PropertyListTree> trees;
    const auto add = [&](const std::string& name, NSObject root, bool hasXML = true) {
        trees.push_back({name, retain(root), hasXML});
    };
    const auto addLarge = [&](const std::string& name, NSObject root) {
        trees.push_back({name, retain(root), true, false});
    };
    const char16_t unpaired[] = {u'a', 0xD800, u'b', 0xDC00};
    add("integers", integersOfEachWidth());
    add("integers-beyond-63-bits", integersBeyond63Bits());
    add("booleans", list({NSNumber::numberWithBool(true), NSNumber::numberWithBool(false), integer(1)}));
    add("reals", reals());
    add("infinite-reals", list({real(std::numeric_limits<double>::infinity()),
                                real(-std::numeric_limits<double>::infinity())}));
    add("dates", wholeDates());
    add("dates-with-fractions", list({date(0.5), date(-0.25), date(1e9 + 0.125)}), false);
    add("data", dataOfEachLength());
    addLarge("large-data", bytes(std::string(1'000'000, '\xA5')));
    add("ascii", list({""_ns, "a"_ns, "fourteen chars"_ns, "fifteen letters"_ns, "a\tb\nc"_ns, "<&>\"'"_ns}));
    add("latin-1", list({u"\u00e9"_ns, u"\u00a0\u00ff"_ns, u"gr\u00fc\u00dfe"_ns}));
    add("cjk", list({u"\u6f22\u5b57"_ns, u"\u304b\u306a"_ns, u"\ud55c\uae00"_ns}));
    add("emoji", list({units(u"\U0001F600"), units(u"a\U0001D11Eb")}));
    add("carriage-returns", list({"a\rb\r\nc"_ns}));
    add("control-characters", list({"\x01\x1f\x7f"_ns}));
    add("unpaired-surrogates", list({units({unpaired, 4})}), false);
    add("empty-containers", list({NSArray::array(), NSDictionary::dictionary()}));
    add("empty-array", NSArray::array());
    add("empty-dictionary", NSDictionary::dictionary());
    add("string-alone", "alone"_ns);
    const NSString shared = NSString(std::string("a string that is shared"));
    const NSArray sharing = list({shared, shared});
    add("shared",
        list({shared, sharing, sharing, NSDictionary::dictionaryWithObject_forKey(shared, shared)}));
    add("keys", NSDictionary::dictionaryWithObject_forKey(
                    NSDictionary::dictionaryWithObject_forKey(integer(1), ""_ns), u"\u00e9 \u6f22"_ns));
    addLarge("many-keys", manyKeys());
    addLarge("nested", nested());
    addLarge("deep", deep());
    addLarge("long-string", NSString(std::string(70'000, 'x')));
    for (unsigned seed = 1; seed <= 20; ++seed)
        addLarge("random-" + std::to_string(seed), list({RandomTree(seed).object(4)}));
    return trees;
}

std::string plainForm(NSObject propertyList) {
    std::string text;
    append(text, propertyList);
    return text;
}

} // namespace tessarin::interop
