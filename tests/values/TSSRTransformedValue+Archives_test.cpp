// The result of a value transformation in archives: first in those of a coder that the test looks into, then
// in the platform's own, where it has them.
#include "PlatformTest.h"

#include "TessarinFoundation/TSSRTransformedValue.h"

namespace tessarin::testing {
namespace {

NSString classKey() { return "TSSRValueTransformerValueClass"_ns; }
NSString valueKey() { return "TSSRValueTransformerTransformedValue"_ns; }
NSString descriptionKey() { return "TSSRValueTransformerTransformedValueDescription"_ns; }
NSString shortKey() { return "TSRValueTransformerTransformedValue"_ns; }

NSObject newInstance(Class ofClass) {
    return adopt(send<NSObject>(ofClass.alloc(), "init"_sel)).autorelease();
}

// A keyed coder that keeps the objects that it is given; NSNull stands for nil. It notes what it is asked.
class RecordingCoder {
public:
    RecordingCoder() : coder_(newInstance(classObject())) {
        instanceVariableOf<RecordingCoder*>(coder_, "record") = this;
    }
    RecordingCoder(const RecordingCoder&) = delete;
    RecordingCoder& operator=(const RecordingCoder&) = delete;

    operator NSCoder() const { return as<NSCoder>(coder_); }
    void put(NSObject object, NSString key) {
        contents_.setObject_forKey(object ? object : NSNull::null(), key);
    }
    id at(NSString key) const {
        const NSObject object = contents_.objectForKey(key);
        return object == NSNull::null() ? NSObject() : object;
    }
    bool contains(NSString key) const { return static_cast<bool>(contents_.objectForKey(key)); }
    NSUInteger count() const { return contents_.count(); }

    Texts decodedKeys;
    bool refusesToTell = false; // as a coder without keys does

private:
    static Class classObject() {
        static const ClassDefinition definition{
            {.name = "TessarinRecordingCoder",
             .instanceVariables = {instanceVariable<RecordingCoder*>("record")},
             .methods = {instanceMethod("encodeObject:forKey:", encodeObject_forKey),
                         instanceMethod("decodeObjectForKey:", decodeObjectForKey),
                         instanceMethod("containsValueForKey:", containsValueForKey)}}};
        return definition.classObject();
    }
    static RecordingCoder& record(NSObject self) {
        return *instanceVariableOf<RecordingCoder*>(self, "record");
    }
    static void encodeObject_forKey(NSObject self, SEL, NSObject object, NSString key) {
        record(self).put(object, key);
    }
    static id decodeObjectForKey(NSObject self, SEL, NSString key) {
        record(self).decodedKeys.push_back(text(key));
        return record(self).at(key);
    }
    static BOOL containsValueForKey(NSObject self, SEL, NSString key) {
        if (record(self).refusesToTell) raise(NSInvalidArgumentException(), "not with this coder"_ns);
        return record(self).contains(key) ? YES : NO;
    }

    const NSMutableDictionary contents_ = as<NSMutableDictionary>(NSMutableDictionary::dictionary());
    const NSObject coder_;
};

// Conforms to NSCoding, with nothing to write.
Class codableClass() {
    static const ClassDefinition definition{
        {.name = "TessarinCodableValue",
         .protocols = {"NSCoding"},
         .methods = {instanceMethod(
                         "encodeWithCoder:", +[](NSObject, SEL, NSCoder) {}),
                     instanceMethod(
                         "initWithCoder:", +[](NSObject self, SEL, NSCoder) { return self; })}}};
    return definition.classObject();
}

// Does not conform to NSCoding; its description says so.
Class plainClass() {
    static const ClassDefinition definition{
        {.name = "TessarinPlainValue",
         .methods = {instanceMethod(
             "description", +[](NSObject, SEL) { return "a plain value"_ns; })}}};
    return definition.classObject();
}

class TransformedValueArchiveTest : public PlatformTest {
protected:
    static TSSRTransformedValue make(NSObject value, Class valueClass = NSNumber::classObject()) {
        return TSSRTransformedValue::transformedValueWithClass_value(valueClass, value);
    }
    static TSSRTransformedValue decodedFrom(NSCoder coder) {
        return adopt(TSSRTransformedValue::alloc().initWithCoder(coder)).autorelease();
    }
    static std::string shown(NSObject object) { return object ? text(object.description()) : "(nil)"; }

    RecordingCoder coder;
};

// ---- Writing

TEST_F(TransformedValueArchiveTest, WritesTheNameOfTheClass) {
    make(nil).encodeWithCoder(coder);
    EXPECT_TRUE(coder.at(classKey()).isKindOfClass(NSString::classObject()));
    EXPECT_EQ(shown(coder.at(classKey())), "NSNumber");
}

TEST_F(TransformedValueArchiveTest, WritesAValueThatConformsToNSCoding) {
    const NSObject value = newInstance(codableClass());
    make(value).encodeWithCoder(coder);
    EXPECT_EQ(coder.at(valueKey()), value);
    EXPECT_EQ(coder.count(), 2u);
}

TEST_F(TransformedValueArchiveTest, WritesTheDescriptionOfAnyOtherValue) {
    make(newInstance(plainClass())).encodeWithCoder(coder);
    EXPECT_EQ(shown(coder.at(descriptionKey())), "a plain value");
    EXPECT_EQ(coder.count(), 2u);
}

TEST_F(TransformedValueArchiveTest, WritesNilAsTheDescriptionOfNoValue) {
    make(nil, nil).encodeWithCoder(coder);
    EXPECT_TRUE(coder.contains(classKey()));
    EXPECT_EQ(coder.at(classKey()), nil);
    EXPECT_TRUE(coder.contains(descriptionKey()));
    EXPECT_EQ(coder.at(descriptionKey()), nil);
    EXPECT_EQ(coder.count(), 2u);
}

// ---- Reading

TEST_F(TransformedValueArchiveTest, ReadsTheClassAsTheStringThatItIs) {
    coder.put("NSNumber"_ns, classKey());
    EXPECT_EQ(decodedFrom(coder).valueClass(), "NSNumber"_ns);
    EXPECT_EQ(text(decodedFrom(coder).completeDescription()),
              "Transformed value '(null)' of class 'NSNumber'.");
}

TEST_F(TransformedValueArchiveTest, AWrittenValueComesBackAsNil) {
    make(newInstance(codableClass())).encodeWithCoder(coder);
    EXPECT_EQ(decodedFrom(coder).transformedValue(), nil);
    EXPECT_EQ(shown(decodedFrom(coder).valueClass()), "NSNumber");
}

TEST_F(TransformedValueArchiveTest, TheShorterKeyIsReadWhereTheValueIsPresent) {
    coder.put("long"_ns, valueKey());
    coder.put("short"_ns, shortKey());
    coder.put("description"_ns, descriptionKey());
    EXPECT_EQ(shown(decodedFrom(coder).transformedValue()), "short");
    EXPECT_EQ(coder.decodedKeys, (Texts{text(classKey()), text(shortKey())}));
}

TEST_F(TransformedValueArchiveTest, ThePresenceOfNilIsPresence) {
    coder.put(nil, valueKey());
    coder.put("short"_ns, shortKey());
    EXPECT_EQ(shown(decodedFrom(coder).transformedValue()), "short");
}

TEST_F(TransformedValueArchiveTest, TheShorterKeyAloneIsNotRead) {
    coder.put("short"_ns, shortKey());
    EXPECT_EQ(decodedFrom(coder).transformedValue(), nil);
}

TEST_F(TransformedValueArchiveTest, ADescriptionComesBackAsTheValue) {
    make(newInstance(plainClass())).encodeWithCoder(coder);
    const TSSRTransformedValue decoded = decodedFrom(coder);
    EXPECT_TRUE(decoded.transformedValue().isKindOfClass(NSString::classObject()));
    EXPECT_EQ(shown(decoded.transformedValue()), "a plain value");
}

TEST_F(TransformedValueArchiveTest, WithoutEitherKeyThereIsNoValue) {
    const TSSRTransformedValue decoded = decodedFrom(coder);
    EXPECT_TRUE(static_cast<bool>(decoded));
    EXPECT_EQ(decoded.valueClass(), nil);
    EXPECT_EQ(decoded.transformedValue(), nil);
}

TEST_F(TransformedValueArchiveTest, TheObjectItselfIsNotTakenForItsValue) {
    const TSSRTransformedValue allocated = TSSRTransformedValue::alloc();
    coder.put(allocated, descriptionKey());
    const Retained<TSSRTransformedValue> decoded = adopt(allocated.initWithCoder(coder));
    EXPECT_EQ(decoded.transformedValue(), nil);
    EXPECT_EQ(decoded.intValue(), 0);
}

TEST_F(TransformedValueArchiveTest, TheObjectItselfIsNotTakenForTheValueOfItsValues) {
    for (const int others : {1, 2}) {
        const TSSRTransformedValue allocated = TSSRTransformedValue::alloc();
        TSSRTransformedValue inside = allocated;
        for (int other = 0; other < others; ++other) {
            RecordingCoder ofOther;
            ofOther.put(inside, descriptionKey());
            inside = decodedFrom(ofOther);
        }
        coder.put(inside, descriptionKey());
        const Retained<TSSRTransformedValue> decoded = adopt(allocated.initWithCoder(coder));
        ASSERT_EQ(decoded.transformedValue(), nil);
        EXPECT_EQ(decoded.intValue(), 0);
        EXPECT_EQ(inside.intValue(), 0);
    }
}

TEST_F(TransformedValueArchiveTest, TransformedValuesMayBeInsideEachOtherButNotAboveMeasure) {
    NSObject inside = NSNumber::numberWithInt(5);
    for (int count = 0; count < 256; ++count) {
        coder.put(inside, descriptionKey());
        inside = decodedFrom(coder);
    }
    EXPECT_EQ(as<TSSRTransformedValue>(inside).intValue(), 5);
    coder.put(inside, descriptionKey());
    EXPECT_EQ(decodedFrom(coder).transformedValue(), nil);
}

TEST_F(TransformedValueArchiveTest, RetainsWhatItReads) {
    const Retained<NSMutableString> name = adopt(NSMutableString::alloc().initWithString("Name"_ns));
    const Retained<NSMutableString> value = adopt(NSMutableString::alloc().initWithString("value"_ns));
    coder.put(name, classKey());
    coder.put(value, descriptionKey());
    Retained<TSSRTransformedValue> decoded;
    const auto decode = [&] { decoded = adopt(TSSRTransformedValue::alloc().initWithCoder(coder)); };
    EXPECT_EQ(referencesLeftBy(decode, name), 1);
    EXPECT_EQ(referencesLeftBy([&] { decoded.reset(); }, value), -1);
    EXPECT_EQ(ownedReferencesOfNew([&] { return TSSRTransformedValue::alloc().initWithCoder(coder); }), 1);
}

TEST_F(TransformedValueArchiveTest, ANilCoderGivesAnEmptyInstance) {
    const TSSRTransformedValue decoded = decodedFrom(nil);
    EXPECT_TRUE(static_cast<bool>(decoded));
    EXPECT_EQ(decoded.transformedValue(), nil);
    make(nil).encodeWithCoder(nil);
}

TEST_F(TransformedValueArchiveTest, AnExceptionOfTheCoderPassesThrough) {
    // It answers none of the keyed operations.
    const NSCoder refusing = as<NSCoder>(newInstance(NSObject::classObject()));
    EXPECT_THROWS_NAMED(make(nil).encodeWithCoder(refusing), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(decodedFrom(refusing), "NSInvalidArgumentException");
}

TEST_F(TransformedValueArchiveTest, ARefusalToTellWhatThereIsPassesThroughAndNothingIsLeft) {
    const Retained<NSMutableString> name = adopt(NSMutableString::alloc().initWithString("Name"_ns));
    coder.put(name, classKey());
    coder.refusesToTell = true;
    const auto decode = [&] { EXPECT_THROWS_NAMED(decodedFrom(coder), "NSInvalidArgumentException"); };
    EXPECT_EQ(referencesLeftBy(decode, name), 0);
}

// ---- The platform's own archives

class TransformedValueKeyedArchiveTest : public TransformedValueArchiveTest {
protected:
    void SetUp() override {}

    static TSSRTransformedValue thereAndBack(TSSRTransformedValue value) {
        const NSData data = send<NSData>("NSKeyedArchiver"_class, "archivedDataWithRootObject:"_sel, value);
        return send<TSSRTransformedValue>("NSKeyedUnarchiver"_class, "unarchiveObjectWithData:"_sel, data);
    }
};

TEST_F(TransformedValueKeyedArchiveTest, AValueThatConformsToNSCodingComesBackAsNil) {
    for (const NSObject value :
         {static_cast<NSObject>("text"_ns), static_cast<NSObject>(NSNumber::numberWithInt(5)),
          newInstance(codableClass())}) {
        const TSSRTransformedValue back = thereAndBack(make(value));
        EXPECT_EQ(back.class_(), TSSRTransformedValue::classObject());
        EXPECT_EQ(shown(back.valueClass()), "NSNumber");
        EXPECT_TRUE(back.valueClass().isKindOfClass(NSString::classObject()));
        EXPECT_EQ(back.transformedValue(), nil);
    }
}

TEST_F(TransformedValueKeyedArchiveTest, AnyOtherValueComesBackAsItsDescription) {
    EXPECT_EQ(shown(thereAndBack(make(newInstance(plainClass()))).transformedValue()), "a plain value");
}

TEST_F(TransformedValueKeyedArchiveTest, NoValueComesBackAsNone) {
    const TSSRTransformedValue back = thereAndBack(make(nil, nil));
    EXPECT_TRUE(static_cast<bool>(back));
    EXPECT_EQ(back.valueClass(), nil);
    EXPECT_EQ(back.transformedValue(), nil);
}

} // namespace
} // namespace tessarin::testing
