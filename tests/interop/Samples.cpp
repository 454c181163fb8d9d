#include "Samples.h"

#include <limits>

namespace tessarin::interop {
namespace {

// ---- A class of an application's own, which archives a value of every kind

class ArchivedTrack : public Handle<ArchivedTrack, "ArchivedTrack", NSObject> {
public:
    using Handle::Handle;
};

constexpr std::uint8_t trackBytes[] = {0, 1, 0xFF};

template <class T>
T& variable(NSObject track, const char* name) {
    return instanceVariableOf<T>(track, name);
}

void encodeWithCoder(ArchivedTrack self, SEL, NSCoder coder) {
    coder.encodeObject_forKey(variable<NSObject>(self, "name"), "name"_ns);
    coder.encodeConditionalObject_forKey(variable<NSObject>(self, "next"), "next"_ns);
    coder.encodeObject_forKey(nil, "nothing"_ns);
    coder.encodeBool_forKey(true, "muted"_ns);
    coder.encodeInt_forKey(variable<int>(self, "channel"), "channel"_ns);
    coder.encodeInt64_forKey(std::numeric_limits<std::int64_t>::min(), "$frames"_ns);
    coder.encodeFloat_forKey(0.5F, "pan"_ns);
    coder.encodeDouble_forKey(0.125, "gain"_ns);
    coder.encodeBytes_length_forKey(trackBytes, sizeof trackBytes, "bytes"_ns);
}

// Answers nil for a track that is not what was encoded.
ArchivedTrack initWithCoder(ArchivedTrack self, SEL, NSCoder coder) {
    Retained<ArchivedTrack> track = adopt(self);
    variable<NSObject>(self, "name") =
        retain(static_cast<NSObject>(coder.decodeObjectForKey("name"_ns))).leak();
    // Not retained: the tracks refer to each other in a circle.
    variable<NSObject>(self, "next") = coder.decodeObjectForKey("next"_ns);
    variable<int>(self, "channel") = coder.decodeIntForKey("channel"_ns);
    NSUInteger length = 0;
    const std::uint8_t* const bytes = coder.decodeBytesForKey_returnedLength("bytes"_ns, &length);
    const bool isWhole =
        coder.containsValueForKey("nothing"_ns) && !coder.containsValueForKey("other"_ns)
        && !coder.decodeObjectForKey("nothing"_ns) && coder.decodeBoolForKey("muted"_ns)
        && coder.decodeInt64ForKey("$frames"_ns) == std::numeric_limits<std::int64_t>::min()
        && coder.decodeFloatForKey("pan"_ns) == 0.5F && coder.decodeDoubleForKey("gain"_ns) == 0.125
        && std::string_view(reinterpret_cast<const char*>(bytes), length)
               == std::string_view(reinterpret_cast<const char*>(trackBytes), sizeof trackBytes);
    return isWhole ? track.leak() : ArchivedTrack();
}

void dealloc(ArchivedTrack self, SEL selector) {
    adopt(variable<NSObject>(self, "name")).reset();
    sendSuper<void>(self, ArchivedTrack::classObject(), selector);
}

// Name, channel, and the channel of the next.
BOOL isEqual(ArchivedTrack self, SEL, NSObject other) {
    const auto track = kindOf<ArchivedTrack>(other);
    if (!track || variable<int>(self, "channel") != variable<int>(track, "channel")) return NO;
    const auto next = variable<NSObject>(self, "next"), otherNext = variable<NSObject>(track, "next");
    if (bool(next) != bool(otherNext)) return NO;
    if (next && variable<int>(next, "channel") != variable<int>(otherNext, "channel")) return NO;
    return variable<NSObject>(self, "name").isEqual(variable<NSObject>(track, "name")) ? YES : NO;
}

const ClassDefinition definition{{
    .name = "ArchivedTrack",
    .superclass = "NSObject",
    .protocols = {"NSCoding"},
    .instanceVariables = {instanceVariable<NSObject>("name"), instanceVariable<NSObject>("next"),
                          instanceVariable<int>("channel")},
    .methods = {instanceMethod("encodeWithCoder:", encodeWithCoder),
                instanceMethod("initWithCoder:", initWithCoder), instanceMethod("dealloc", dealloc),
                instanceMethod("isEqual:", isEqual)},
}};

ArchivedTrack track(NSString name, int channel) {
    const ArchivedTrack made = adopt(send<ArchivedTrack>(ArchivedTrack::alloc(), "init"_sel)).autorelease();
    variable<NSObject>(made, "name") = retain(static_cast<NSObject>(name)).leak();
    variable<int>(made, "channel") = channel;
    return made;
}

// ---- The samples

NSObject strings() {
    return NSArray::arrayOf(""_ns, "text"_ns, u"\u00e9\u20ac\u05d0"_ns, "<&>\"'"_ns, "$class"_ns);
}
NSObject mutableString() { return NSMutableString::stringWithString("text"_ns); }
NSObject null() { return NSArray::arrayOf(NSNull::null(), NSNull::null()); }
NSObject textNull() { return "$null"_ns; }
NSObject booleans() {
    return NSArray::arrayOf(NSNumber::numberWithBool(true), NSNumber::numberWithBool(false));
}
NSObject integers() {
    const auto number = NSNumber::numberWithLongLong;
    return NSArray::arrayOf(number(0), number(1), number(-1), number(255), number(65536), number(1LL << 32),
                            number(std::numeric_limits<long long>::max()),
                            number(std::numeric_limits<long long>::min()));
}
NSObject largestInteger() { return NSNumber::numberWithUnsignedLongLong(~0ULL); }
NSObject reals() {
    return NSArray::arrayOf(NSNumber::numberWithDouble(2.5), NSNumber::numberWithDouble(-1e300),
                            NSNumber::numberWithFloat(0.25F));
}
NSObject preciseReal() { return NSNumber::numberWithDouble(0.1); }
NSObject data() { return NSArray::arrayOf(NSData::data(), NSData::dataWithBytes_length("a\0\xFF", 3)); }
NSObject mutableData() { return NSMutableData::dataWithBytes_length("abc", 3); }
NSObject dates() {
    const auto date = NSDate::dateWithTimeIntervalSinceReferenceDate;
    return NSArray::arrayOf(date(0), date(86400), date(-86400));
}
NSObject dateWithFraction() { return NSDate::dateWithTimeIntervalSinceReferenceDate(0.375); }
NSObject urls() {
    return NSArray::arrayOf(NSURL::URLWithString("http://example.com/a%20b?c#d"_ns),
                            NSURL::fileURLWithPath_isDirectory("/a b/c"_ns, false));
}
NSObject colors() {
    return NSArray::arrayOf(NSColor::colorWithCalibratedRed_green_blue_alpha(1, 0.5, 0.25, 0.75),
                            NSColor::colorWithDeviceRed_green_blue_alpha(0, 0.125, 1, 1),
                            NSColor::colorWithCalibratedWhite_alpha(0.3, 0.5),
                            NSColor::colorWithDeviceWhite_alpha(0.75, 1),
                            NSColor::colorWithCatalogName_colorName("Acme"_ns, "accent"_ns));
}
NSObject colorOfInk() {
    return NSColor::colorWithDeviceCyan_magenta_yellow_black_alpha(0.2, 0.4, 0.6, 0.3, 0.5);
}
NSObject array() {
    return NSArray::arrayOf("a"_ns, NSArray::array(), NSArray::arrayOf("b"_ns, NSArray::arrayOf("c"_ns)));
}
NSObject mutableArray() {
    const NSMutableArray made = NSMutableArray::array();
    made.addObject("a"_ns);
    made.addObject(NSMutableArray::array());
    return made;
}
NSObject dictionary() {
    const NSMutableDictionary made = NSMutableDictionary::dictionary();
    made.setObject_forKey("value"_ns, "key"_ns);
    made.setObject_forKey(NSArray::arrayOf("item"_ns), "items"_ns);
    made.setObject_forKey("one"_ns, NSNumber::numberWithInt(1));
    return NSDictionary::dictionaryWithDictionary(made);
}
NSObject mutableDictionary() {
    const NSMutableDictionary made = NSMutableDictionary::dictionary();
    made.setObject_forKey("value"_ns, "$key"_ns);
    return made;
}
NSObject sharedObjects() {
    const NSArray shared = NSArray::arrayOf("x"_ns);
    return NSArray::arrayOf(shared, shared, NSDictionary::dictionaryWithObject_forKey(shared, "shared"_ns));
}
// In a circle, by references that are written on condition.
NSObject tracks() {
    const ArchivedTrack first = track("first"_ns, 1), second = track("second"_ns, 2),
                        third = track("third"_ns, 3);
    variable<NSObject>(first, "next") = second;
    variable<NSObject>(second, "next") = first;
    variable<NSObject>(third, "next") = first;
    return NSArray::arrayOf(first, second, third);
}
NSObject trackWithoutNext() { return track("last"_ns, 4); }
NSObject nothing() { return nil; }

} // namespace

const std::vector<Sample>& samples() {
    static const std::vector<Sample> all = [] {
        std::vector<Sample> found{{"strings", strings},
                                  {"mutable-string", mutableString},
                                  {"null", null},
                                  {"text-null", textNull},
                                  {"booleans", booleans},
                                  {"integers", integers},
                                  {"largest-integer", largestInteger},
                                  {"reals", reals},
                                  {"precise-real", preciseReal},
                                  {"data", data},
                                  {"mutable-data", mutableData},
                                  {"dates", dates},
                                  {"date-with-fraction", dateWithFraction},
                                  {"urls", urls},
                                  {"colors", colors},
                                  {"color-of-ink", colorOfInk},
                                  {"array", array},
                                  {"mutable-array", mutableArray},
                                  {"dictionary", dictionary},
                                  {"mutable-dictionary", mutableDictionary},
                                  {"shared-objects", sharedObjects},
                                  {"tracks", tracks},
                                  {"track-without-next", trackWithoutNext},
                                  {"nil", nothing}};
        for (const Sample& sample : transformedValueSamples()) found.push_back(sample);
        return found;
    }();
    return all;
}

} // namespace tessarin::interop
