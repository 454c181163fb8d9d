// The result of a value transformation: accessors, descriptions, ownership. Its copies and its archives have
// files of their own.
#include "ManyThreads.h"
#include "TransformedValueTest.h"

#include <limits>

namespace tessarin::testing {
namespace {

// A value that answers every accessor, each with a number of its own.
Class talkativeClass() {
    static const ClassDefinition definition{
        {.name = "TessarinTalkativeValue",
         .methods = {instanceMethod(
                         "boolValue", +[](NSObject, SEL) { return NO; }),
                     instanceMethod(
                         "integerValue", +[](NSObject, SEL) { return NSInteger{1} << 40; }),
                     instanceMethod(
                         "intValue", +[](NSObject, SEL) { return -3; }),
                     instanceMethod(
                         "longLongValue", +[](NSObject, SEL) { return 4ll; }),
                     instanceMethod(
                         "longValue", +[](NSObject, SEL) { return 5l; }),
                     instanceMethod(
                         "floatValue", +[](NSObject, SEL) { return 0.5f; }),
                     instanceMethod(
                         "doubleValue", +[](NSObject, SEL) { return 0.1; }),
                     instanceMethod(
                         "objectValue", +[](NSObject, SEL) { return id("object"_ns); })}}};
    return definition.classObject();
}

Class longOnlyClass() {
    static const ClassDefinition definition{
        {.name = "TessarinLongValue",
         .methods = {instanceMethod(
             "longValue", +[](NSObject, SEL) { return std::numeric_limits<long>::max(); })}}};
    return definition.classObject();
}

Class longLongOnlyClass() {
    static const ClassDefinition definition{{.name = "TessarinLongLongValue",
                                             .methods = {instanceMethod(
                                                 "longLongValue", +[](NSObject, SEL) { return 6ll; })}}};
    return definition.classObject();
}

// ---- Construction

TEST_F(TransformedValueTest, HoldsItsClassAndItsValue) {
    const TSSRTransformedValue value = make(mute);
    EXPECT_EQ(value.class_(), TSSRTransformedValue::classObject());
    EXPECT_EQ(value.class_().superclass(), NSObject::classObject());
    EXPECT_EQ(value.valueClass(), NSNumber::classObject());
    EXPECT_EQ(value.transformedValue(), mute);
}

TEST_F(TransformedValueTest, ConformsToItsProtocols) {
    EXPECT_TRUE(make(nil).conformsToProtocol("NSCoding"_protocol));
    EXPECT_TRUE(make(nil).conformsToProtocol("NSCopying"_protocol));
}

TEST_F(TransformedValueTest, EitherMayBeNil) {
    const TSSRTransformedValue empty = make(nil, nil);
    EXPECT_TRUE(static_cast<bool>(empty));
    EXPECT_EQ(empty.valueClass(), nil);
    EXPECT_EQ(empty.transformedValue(), nil);
    EXPECT_EQ(make(nil).valueClass(), NSNumber::classObject());
    EXPECT_EQ(make(mute, nil).transformedValue(), mute);
}

TEST_F(TransformedValueTest, AnUninitialisedInstanceIsEmpty) {
    const Retained<TSSRTransformedValue> value = adopt(TSSRTransformedValue::alloc());
    EXPECT_EQ(value.valueClass(), nil);
    EXPECT_EQ(value.transformedValue(), nil);
}

TEST_F(TransformedValueTest, RetainsItsValueAndDoesNotCopyIt) {
    const Retained<NSMutableString> text = adopt(NSMutableString::alloc().initWithString("a"_ns));
    EXPECT_EQ(make(text).transformedValue(), text);
    {
        Retained<TSSRTransformedValue> value;
        EXPECT_EQ(
            referencesLeftBy(
                [&] { value = adopt(TSSRTransformedValue::alloc().initWithClass_value(nil, text)); }, text),
            1);
        EXPECT_EQ(referencesLeftBy([&] { value.reset(); }, text), -1);
    }
}

TEST_F(TransformedValueTest, TheClassMethodAnswersAnAutoreleasedInstance) {
    EXPECT_EQ(ownedReferencesOfNew([&] { return make(mute); }), 0);
    EXPECT_EQ(
        ownedReferencesOfNew([&] { return TSSRTransformedValue::alloc().initWithClass_value(nil, mute); }),
        1);
    EXPECT_EQ(referencesLeftBy([&] { return make(mute); }, mute), 0);
}

TEST_F(TransformedValueTest, TheClassMethodMakesAnInstanceOfTheReceiver) {
    const auto made = send<TSSRTransformedValue>(
        Derived::classObject(), "transformedValueWithClass:value:"_sel, NSNumber::classObject(), mute);
    EXPECT_EQ(made.class_(), Derived::classObject());
    EXPECT_EQ(made.transformedValue(), mute);
}

TEST_F(TransformedValueTest, DeallocReleasesTheClassAsWell) {
    // After decoding it is an ordinary object.
    const Retained<NSMutableString> name = adopt(NSMutableString::alloc().initWithString("Name"_ns));
    EXPECT_EQ(referencesLeftBy([&] { make(nil, as<Class>(name)); }, name), 0);
    const int before = Derived::deallocations;
    {
        const AutoreleasePool pool;
        Derived::make(nil, mute);
    }
    EXPECT_EQ(Derived::deallocations, before + 1);
}

// An object that writes down its name when it goes.
class Departing {
public:
    static Retained<NSObject> make(char name) {
        Retained<NSObject> object = adopt(send<NSObject>(classObject().alloc(), "init"_sel));
        instanceVariableOf<char>(object, "name") = name;
        return object;
    }
    static inline std::string departed;

private:
    static Class classObject() {
        static const ClassDefinition definition{{.name = "TessarinDepartingValue",
                                                 .instanceVariables = {instanceVariable<char>("name")},
                                                 .methods = {instanceMethod("dealloc", dealloc)}}};
        return definition.classObject();
    }
    static void dealloc(NSObject self, SEL selector) {
        departed += instanceVariableOf<char>(self, "name");
        sendSuper<void>(self, classObject(), selector);
    }
};

TEST_F(TransformedValueTest, DeallocReleasesTheClassAndThenTheValue) {
    Departing::departed.clear();
    {
        Retained<NSObject> valueClass = Departing::make('c');
        Retained<NSObject> value = Departing::make('v');
        const Retained<TSSRTransformedValue> holder =
            adopt(TSSRTransformedValue::alloc().initWithClass_value(as<Class>(valueClass), value));
        value.reset();
        valueClass.reset();
        EXPECT_EQ(Departing::departed, "");
    }
    EXPECT_EQ(Departing::departed, "cv");
}

TEST_F(TransformedValueTest, TheGettersAnswerTheReferencesAsTheyAre) {
    const TSSRTransformedValue value = make(mute);
    EXPECT_EQ(referencesLeftBy([&] { return value.transformedValue(); }, mute), 0);
    EXPECT_EQ(as<NSObject>(value).valueForKey("transformedValue"_ns), mute);
    EXPECT_EQ(as<NSObject>(value).valueForKey("valueClass"_ns), NSNumber::classObject());
}

// ---- Descriptions

TEST_F(TransformedValueTest, IsDescribedByItsValue) {
    const TSSRTransformedValue five = make(NSNumber::numberWithInt(5));
    EXPECT_EQ(text(five.description()), "5");
    EXPECT_EQ(text(make(nil).description()), "(nil)");
    EXPECT_EQ(text(make("text"_ns).description()), "text");
}

TEST_F(TransformedValueTest, TheCompleteDescriptionNamesTheClass) {
    EXPECT_EQ(text(make(NSNumber::numberWithInt(5)).completeDescription()),
              "Transformed value '5' of class 'NSNumber'.");
    EXPECT_EQ(text(make(nil, nil).completeDescription()), "Transformed value '(null)' of class '(null)'.");
    EXPECT_EQ(text(make("100%@"_ns, NSString::classObject()).completeDescription()),
              "Transformed value '100%@' of class 'NSString'.");
}

// ---- Accessors

TEST_F(TransformedValueTest, AValueThatRespondsAnswersItself) {
    const TSSRTransformedValue value = make(newInstance(talkativeClass()));
    EXPECT_FALSE(value.boolValue());
    EXPECT_EQ(value.integerValue(), NSInteger{1} << 40);
    EXPECT_EQ(value.intValue(), -3);
    EXPECT_EQ(value.floatValue(), 0.5f);
    EXPECT_EQ(value.doubleValue(), 0.1);
    EXPECT_EQ(text(static_cast<NSObject>(value.objectValue()).description()), "object");
}

TEST_F(TransformedValueTest, AValueThatDoesNotRespondCountsAsOne) {
    for (const NSObject silent : {mute, static_cast<NSObject>(NSArray::arrayOf("a"_ns))}) {
        const TSSRTransformedValue value = make(silent);
        EXPECT_TRUE(value.boolValue());
        EXPECT_EQ(value.integerValue(), 1);
        EXPECT_EQ(value.intValue(), 1);
        EXPECT_EQ(value.longLongValue(), 1);
        EXPECT_EQ(value.floatValue(), 1.0f);
        EXPECT_EQ(value.doubleValue(), 1.0);
        EXPECT_EQ(value.objectValue(), silent);
    }
}

TEST_F(TransformedValueTest, NoValueCountsAsZero) {
    const TSSRTransformedValue empty = make(nil);
    EXPECT_FALSE(empty.boolValue());
    EXPECT_EQ(empty.integerValue(), 0);
    EXPECT_EQ(empty.intValue(), 0);
    EXPECT_EQ(empty.longLongValue(), 0);
    EXPECT_EQ(empty.floatValue(), 0.0f);
    EXPECT_EQ(empty.doubleValue(), 0.0);
    EXPECT_EQ(empty.objectValue(), nil);
}

TEST_F(TransformedValueTest, ANumberAnswersItself) {
    const TSSRTransformedValue value = make(NSNumber::numberWithDouble(2.5));
    EXPECT_TRUE(value.boolValue());
    EXPECT_EQ(value.integerValue(), 2);
    EXPECT_EQ(value.intValue(), 2);
    EXPECT_EQ(value.longLongValue(), 2);
    EXPECT_EQ(value.floatValue(), 2.5f);
    EXPECT_EQ(value.doubleValue(), 2.5);
    EXPECT_EQ(value.objectValue(), value.transformedValue());
}

TEST_F(TransformedValueTest, AStringAnswersItself) {
    const TSSRTransformedValue value = make("7.5"_ns);
    EXPECT_EQ(value.intValue(), 7);
    EXPECT_EQ(value.longLongValue(), 7);
    EXPECT_EQ(value.doubleValue(), 7.5);
    EXPECT_EQ(value.objectValue(), "7.5"_ns);
}

TEST_F(TransformedValueTest, TheLongLongValueIsTheIntegerValueOfWhoHasOne) {
    EXPECT_EQ(make(newInstance(talkativeClass())).longLongValue(), 1ll << 40);
    EXPECT_EQ(make(NSNumber::numberWithLongLong(1ll << 50)).longLongValue(), 1ll << 50);
}

TEST_F(TransformedValueTest, TheLongLongValueIsTheLongValueOfWhoHasThatAlone) {
    EXPECT_EQ(make(newInstance(longOnlyClass())).longLongValue(), std::numeric_limits<long>::max());
}

TEST_F(TransformedValueTest, WhoHasALongLongValueIsAskedForItsIntegerValueAllTheSame) {
    EXPECT_THROWS_NAMED(make(newInstance(longLongOnlyClass())).longLongValue(), "NSInvalidArgumentException");
}

TEST_F(TransformedValueTest, EachAccessorReadsTheValueTwiceThroughTheGetter) {
    for (const NSObject held :
         {newInstance(talkativeClass()), newInstance(longOnlyClass()), mute, NSObject()}) {
        const TSSRTransformedValue value = Derived::make(nil, held);
        const auto reads = [&](auto&& read) {
            Derived::valueReads = 0;
            static_cast<void>(read());
            return Derived::valueReads;
        };
        EXPECT_EQ(reads([&] { return value.boolValue(); }), 2);
        EXPECT_EQ(reads([&] { return value.integerValue(); }), 2);
        EXPECT_EQ(reads([&] { return value.intValue(); }), 2);
        EXPECT_EQ(reads([&] { return value.longLongValue(); }), 2);
        EXPECT_EQ(reads([&] { return value.floatValue(); }), 2);
        EXPECT_EQ(reads([&] { return value.doubleValue(); }), 2);
        EXPECT_EQ(reads([&] { return value.objectValue(); }), 2);
        Derived::classReads = 0;
        EXPECT_EQ(reads([&] { return value.completeDescription(); }), 1);
        EXPECT_EQ(Derived::classReads, 1);
    }
}

TEST_F(TransformedValueTest, AValueMayBeATransformedValue) {
    EXPECT_EQ(make(make(NSNumber::numberWithInt(5))).intValue(), 5);
    EXPECT_EQ(make(make(mute)).objectValue(), mute);
    EXPECT_EQ(text(make(make(nil)).description()), "(nil)");
}

// ---- Nil, and many threads

TEST_F(TransformedValueTest, ANilReceiverAnswersZero) {
    const TSSRTransformedValue none;
    EXPECT_EQ(none.transformedValue(), nil);
    EXPECT_EQ(none.valueClass(), nil);
    EXPECT_FALSE(none.boolValue());
    EXPECT_EQ(none.longLongValue(), 0);
    EXPECT_EQ(none.doubleValue(), 0.0);
    EXPECT_EQ(text(none.completeDescription()), "(nil)");
}

TEST_F(TransformedValueTest, ConcurrentReadersFindTheSame) {
    const TSSRTransformedValue value = make(NSNumber::numberWithInt(5));
    onManyThreads(500, [&]() -> std::string {
        const TSSRTransformedValue copy = copyOf(value);
        if (value.intValue() != 5 || copy.longLongValue() != 5) return "another number";
        if (copy.valueClass() != TSSRTransformedValue::classObject()) return "another class";
        return difference(text(value.completeDescription()), "Transformed value '5' of class 'NSNumber'.");
    });
}

} // namespace
} // namespace tessarin::testing
