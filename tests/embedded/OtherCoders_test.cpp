// The platform's values with a coder of an application's own that allows keys.
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

// ---- DictionaryCoder: keeps what it is given under its key

struct DictionaryCoder : Handle<DictionaryCoder, "DictionaryCoder", NSCoder> {
    using Handle::Handle;
    NSMutableDictionary& values() const { return instanceVariableOf<NSMutableDictionary>(*this, "values"); }
};

DictionaryCoder init(DictionaryCoder self, SEL) {
    self.values() = NSMutableDictionary::alloc().init();
    return self;
}
void dealloc(DictionaryCoder self, SEL selector) {
    adopt(self.values()).reset();
    sendSuper<void>(self, DictionaryCoder::classObject(), selector);
}
BOOL allowsKeyedCoding(DictionaryCoder, SEL) { return YES; }
void encodeObject(DictionaryCoder self, SEL, NSObject object, NSString key) {
    if (object) self.values().setObject_forKey(object, key);
}
void encodeBool(DictionaryCoder self, SEL, BOOL value, NSString key) {
    self.values().setObject_forKey(NSNumber::numberWithBool(value), key);
}
void encodeInt64(DictionaryCoder self, SEL, std::int64_t value, NSString key) {
    self.values().setObject_forKey(NSNumber::numberWithLongLong(value), key);
}
void encodeDouble(DictionaryCoder self, SEL, double value, NSString key) {
    self.values().setObject_forKey(NSNumber::numberWithDouble(value), key);
}
void encodeBytes(DictionaryCoder self, SEL, const std::uint8_t* bytes, NSUInteger length, NSString key) {
    self.values().setObject_forKey(NSData::dataWithBytes_length(bytes, length), key);
}
BOOL containsValue(DictionaryCoder self, SEL, NSString key) { return bool(self.values().objectForKey(key)); }
id decodeObject(DictionaryCoder self, SEL, NSString key) { return self.values().objectForKey(key); }
BOOL decodeBool(DictionaryCoder self, SEL, NSString key) {
    return NSNumber(self.values().objectForKey(key)).boolValue();
}
std::int64_t decodeInt64(DictionaryCoder self, SEL, NSString key) {
    return NSNumber(self.values().objectForKey(key)).longLongValue();
}
double decodeDouble(DictionaryCoder self, SEL, NSString key) {
    return NSNumber(self.values().objectForKey(key)).doubleValue();
}
const std::uint8_t* decodeBytes(DictionaryCoder self, SEL, NSString key, NSUInteger* length) {
    const NSData data = self.values().objectForKey(key);
    *length = data.length();
    return static_cast<const std::uint8_t*>(data.bytes());
}

const ClassDefinition definition{
    {.name = "DictionaryCoder",
     .superclass = "NSCoder",
     .instanceVariables = {instanceVariable<NSMutableDictionary>("values")},
     .methods = {
         instanceMethod("init", init), instanceMethod("dealloc", dealloc),
         instanceMethod("allowsKeyedCoding", allowsKeyedCoding),
         instanceMethod("encodeObject:forKey:", encodeObject),
         instanceMethod("encodeBool:forKey:", encodeBool), instanceMethod("encodeInt64:forKey:", encodeInt64),
         instanceMethod("encodeDouble:forKey:", encodeDouble),
         instanceMethod("encodeBytes:length:forKey:", encodeBytes),
         instanceMethod("containsValueForKey:", containsValue),
         instanceMethod("decodeObjectForKey:", decodeObject), instanceMethod("decodeBoolForKey:", decodeBool),
         instanceMethod("decodeInt64ForKey:", decodeInt64),
         instanceMethod("decodeDoubleForKey:", decodeDouble),
         instanceMethod("decodeBytesForKey:returnedLength:", decodeBytes)}}};

// ---- PosingCoder: the same, and says that it is whatever it is taken for

const ClassDefinition posingDefinition{
    {.name = "PosingCoder",
     .superclass = "DictionaryCoder",
     .methods = {instanceMethod(
         "isKindOfClass:", +[](NSObject, SEL, Class) -> BOOL { return YES; })}}};

class OtherCodersTest : public PlatformTest {
protected:
    // What an object is after it was encoded and decoded, and the keys that it used.
    void expectToComeBack(NSObject object, const Texts& keys,
                          Class coderClass = DictionaryCoder::classObject()) {
        const auto coder = adopt(send<DictionaryCoder>(coderClass.alloc(), "init"_sel));
        send<void>(object, "encodeWithCoder:"_sel, coder);
        EXPECT_EQ(texts(coder.values().allKeys()), keys);
        const Class objectClass = send<Class>(object, "classForCoder"_sel);
        const Retained<NSObject> back =
            adopt(static_cast<NSObject>(send<id>(objectClass.alloc(), "initWithCoder:"_sel, coder)));
        EXPECT_TRUE(back.isEqual(object)) << text(object.description());
    }
};

TEST_F(OtherCodersTest, ValuesComeBack) {
    expectToComeBack("text"_ns, {"NS.bytes"});
    expectToComeBack(NSMutableString::stringWithString(u"\u00e9"_ns), {"NS.bytes"});
    expectToComeBack(NSNumber::numberWithBool(true), {"NS.boolval"});
    expectToComeBack(NSNumber::numberWithInt(-7), {"NS.intval"});
    expectToComeBack(NSNumber::numberWithDouble(0.1), {"NS.dblval"});
    expectToComeBack(NSData::dataWithBytes_length("a\0b", 3), {"NS.data"});
    expectToComeBack(NSDate::dateWithTimeIntervalSinceReferenceDate(0.1), {"NS.time"});
    expectToComeBack(NSURL::URLWithString("a/b"_ns), {"NS.relative"});
    expectToComeBack(NSNull::null(), {});
}

TEST_F(OtherCodersTest, IntegersBeyondTheSignedOnesComeBack) {
    constexpr unsigned long long beyondSigned = 1ULL << 63;
    for (const unsigned long long value : {beyondSigned, beyondSigned + 1, ~0ULL})
        expectToComeBack(NSNumber::numberWithUnsignedLongLong(value), {"NS.intval", "NS.isunsigned"});
    expectToComeBack(NSNumber::numberWithUnsignedLongLong(beyondSigned - 1), {"NS.intval"});
}

TEST_F(OtherCodersTest, OnlyAnIntegerIsUnsigned) {
    for (const bool isReal : {true, false}) {
        const auto coder = adopt(send<DictionaryCoder>(DictionaryCoder::classObject().alloc(), "init"_sel));
        coder.encodeBool_forKey(true, "NS.isunsigned"_ns);
        if (isReal)
            coder.encodeDouble_forKey(-0.5, "NS.dblval"_ns);
        else
            coder.encodeBool_forKey(true, "NS.boolval"_ns);
        const auto number = adopt(send<NSNumber>(NSNumber::alloc(), "initWithCoder:"_sel, coder));
        EXPECT_TRUE(
            number.isEqual(isReal ? NSNumber::numberWithDouble(-0.5) : NSNumber::numberWithBool(true)))
            << text(number.description());
        EXPECT_STREQ(number.objCType(), isReal ? "d" : "c");
    }
}

TEST_F(OtherCodersTest, ACoderThatPosesAsAnArchiverIsGivenWhatAnyOtherIs) {
    const Class posing = posingDefinition.classObject();
    expectToComeBack("text"_ns, {"NS.bytes"}, posing);
    expectToComeBack(NSData::dataWithBytes_length("a\0b", 3), {"NS.data"}, posing);
    expectToComeBack(NSArray::arrayOf("a"_ns, "b"_ns), {"NS.object.0", "NS.object.1"}, posing);
    expectToComeBack(NSDictionary::dictionaryWithObject_forKey("value"_ns, "key"_ns),
                     {"NS.key.0", "NS.object.0"}, posing);
}

TEST_F(OtherCodersTest, ContainersAreCodedItemByItem) {
    expectToComeBack(NSArray::arrayOf("a"_ns, "b"_ns), {"NS.object.0", "NS.object.1"});
    expectToComeBack(NSMutableArray::array(), {});
    expectToComeBack(NSDictionary::dictionaryWithObject_forKey("value"_ns, "key"_ns),
                     {"NS.key.0", "NS.object.0"});
}

TEST_F(OtherCodersTest, ACoderWithoutKeysIsRefused) {
    const Retained<NSCoder> abstract = adopt(send<NSCoder>(NSCoder::alloc(), "init"_sel));
    EXPECT_THROWS_NAMED(send<void>("text"_ns, "encodeWithCoder:"_sel, abstract),
                        "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(send<void>(NSArray::arrayOf("a"_ns), "encodeWithCoder:"_sel, abstract),
                        "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(adopt(send<NSObject>(NSArray::alloc(), "initWithCoder:"_sel, abstract)),
                        "NSInvalidArgumentException");
}

} // namespace
} // namespace tessarin::testing
