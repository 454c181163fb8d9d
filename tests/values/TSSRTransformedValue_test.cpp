// The result of a value transformation: accessors, descriptions, ownership, copies. Its archives have a file
// of their own.
#include "FailingRootInitialiser.h"
#include "PlatformTest.h"

#include "TessarinFoundation/TSSRTransformedValue.h"

#include <atomic>
#include <limits>
#include <thread>

namespace tessarin::testing {
namespace {

NSObject newInstance(Class ofClass) {
    return adopt(send<NSObject>(ofClass.alloc(), "init"_sel)).autorelease();
}

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

// Derived from the library's class: it counts how often its getters are sent, and its instances.
class Derived {
public:
    static Class classObject() {
        static const ClassDefinition definition{
            {.name = "TessarinDerivedValue",
             .superclass = "TSSRTransformedValue",
             .instanceVariables = {instanceVariable<int>("extra")},
             .methods = {instanceMethod("transformedValue", transformedValue),
                         instanceMethod("valueClass", valueClass), instanceMethod("dealloc", dealloc)}}};
        return definition.classObject();
    }
    static TSSRTransformedValue make(Class valueClass, NSObject value) {
        return adopt(as<TSSRTransformedValue>(classObject().alloc()).initWithClass_value(valueClass, value))
            .autorelease();
    }

    static inline int valueReads = 0, classReads = 0;
    static inline std::atomic<int> deallocations = 0;

private:
    static id transformedValue(NSObject self, SEL selector) {
        ++valueReads;
        return sendSuper<id>(self, classObject(), selector);
    }
    static id valueClass(NSObject self, SEL selector) {
        ++classReads;
        return sendSuper<id>(self, classObject(), selector);
    }
    static void dealloc(NSObject self, SEL selector) {
        ++deallocations;
        sendSuper<void>(self, classObject(), selector);
    }
};

// Fails its initialisation when it is told to.
class Failing {
public:
    static Class classObject() {
        static const ClassDefinition definition{
            {.name = "TessarinFailingValue",
             .superclass = "TSSRTransformedValue",
             .methods = {instanceMethod("initWithClass:value:", initWithClass_value)}}};
        return definition.classObject();
    }
    static inline bool fails = false;

private:
    static NSObject initWithClass_value(NSObject self, SEL selector, Class valueClass, NSObject value) {
        if (!fails) return sendSuper<NSObject>(self, classObject(), selector, valueClass, value);
        runtime::release(self.object());
        return nil;
    }
};

// Conforms to NSCopying; a copy names the one it was made from.
class Copyable {
public:
    static Class classObject() {
        static const ClassDefinition definition{
            {.name = "TessarinCopyableValue",
             .protocols = {"NSCopying"},
             .instanceVariables = {instanceVariable<NSObject>("original"), instanceVariable<void*>("zone")},
             .methods = {instanceMethod("copyWithZone:", copyWithZone)}}};
        return definition.classObject();
    }

private:
    static NSObject copyWithZone(NSObject self, SEL, void* zone) {
        const NSObject copy = send<NSObject>(classObject().alloc(), "init"_sel);
        instanceVariableOf<NSObject>(copy, "original") = self;
        instanceVariableOf<void*>(copy, "zone") = zone;
        return copy;
    }
};

class TransformedValueTest : public PlatformTest {
protected:
    static TSSRTransformedValue make(NSObject value, Class valueClass = NSNumber::classObject()) {
        return TSSRTransformedValue::transformedValueWithClass_value(valueClass, value);
    }
    static TSSRTransformedValue copyOf(TSSRTransformedValue value) {
        return adopt(as<TSSRTransformedValue>(value.copy())).autorelease();
    }

    const NSObject mute = newInstance(NSObject::classObject()); // answers no accessor
};

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

// ---- Copies

TEST_F(TransformedValueTest, ACopyIsOfTheReceiversOwnClass) {
    const TSSRTransformedValue copy = copyOf(make(mute));
    EXPECT_EQ(copy.class_(), TSSRTransformedValue::classObject());
    EXPECT_EQ(copy.valueClass(), TSSRTransformedValue::classObject());

    const TSSRTransformedValue derivedCopy = copyOf(Derived::make(NSNumber::classObject(), mute));
    EXPECT_EQ(derivedCopy.class_(), Derived::classObject());
    EXPECT_EQ(derivedCopy.valueClass(), Derived::classObject());
    EXPECT_EQ(copyOf(make(nil, nil)).valueClass(), TSSRTransformedValue::classObject());
}

TEST_F(TransformedValueTest, ACopyOfNoValueHasNone) { EXPECT_EQ(copyOf(make(nil)).transformedValue(), nil); }

TEST_F(TransformedValueTest, AValueThatCanBeCopiedIsCopied) {
    const NSObject original = newInstance(Copyable::classObject());
    int anything;
    void* zone = mute.respondsToSelector("zone") ? send<void*>(mute, "zone"_sel) : &anything;
    const Retained<TSSRTransformedValue> copy =
        adopt(send<TSSRTransformedValue>(make(original), "copyWithZone:"_sel, zone));
    const NSObject copied = copy.transformedValue();
    EXPECT_NE(copied, original);
    EXPECT_EQ(instanceVariableOf<NSObject>(copied, "original"), original);
    EXPECT_EQ(instanceVariableOf<void*>(copied, "zone"), zone);
}

TEST_F(TransformedValueTest, OnlyTheCopyOwnsTheCopiedValue) {
    const TSSRTransformedValue copy = copyOf(make(newInstance(Copyable::classObject())));
    Retained<NSObject> copied;
    {
        const AutoreleasePool pool;
        const Retained<TSSRTransformedValue> another = adopt(as<TSSRTransformedValue>(copy.copy()));
        copied = retain(static_cast<NSObject>(another.transformedValue()));
    }
    EXPECT_EQ(copied.retainCount(), 1u);
}

TEST_F(TransformedValueTest, AMutableStringIsCopied) {
    const Retained<NSMutableString> original = adopt(NSMutableString::alloc().initWithString("a"_ns));
    const TSSRTransformedValue copy = copyOf(make(original));
    original.setString("b"_ns);
    EXPECT_EQ(text(copy.description()), "a");
}

TEST_F(TransformedValueTest, AnyOtherValueIsShared) {
    const TSSRTransformedValue value = make(mute);
    EXPECT_EQ(copyOf(value).transformedValue(), mute);
    EXPECT_EQ(referencesLeftBy([&] { copyOf(value); }, mute), 0);
    Retained<NSObject> copy;
    EXPECT_EQ(referencesLeftBy([&] { copy = adopt(static_cast<NSObject>(value.copy())); }, mute), 1);
}

TEST_F(TransformedValueTest, TheCallerOwnsACopy) {
    EXPECT_EQ(ownedReferencesOfNew([&] { return make(mute).copy(); }), 1);
}

TEST_F(TransformedValueTest, ACopyThatCannotBeInitialisedIsNil) {
    const Retained<TSSRTransformedValue> value =
        adopt(as<TSSRTransformedValue>(Failing::classObject().alloc()).initWithClass_value(nil, mute));
    Failing::fails = true;
    EXPECT_EQ(value.copy(), nil);
    Failing::fails = false;
    EXPECT_EQ(copyOf(value).transformedValue(), mute);
}

TEST_F(TransformedValueTest, AFailedRootInitialiserGivesNil) {
    const auto one = TSSRTransformedValue::alloc(), other = TSSRTransformedValue::alloc();
    const FailingRootInitialiser failing;
    EXPECT_EQ(one.initWithClass_value(nil, nil), nil);
    EXPECT_EQ(other.initWithCoder(nil), nil);
}

int valuesSet = 0;
void setTransformedValue(NSObject self, SEL, NSObject value) {
    ++valuesSet;
    instanceVariableOf<NSObject>(self, "transformedValue") = retain(value).leak();
}

TEST_F(TransformedValueTest, ACopyIsGivenItsValueByKey) {
    static const ClassDefinition settable{
        {.name = "TessarinSettableValue",
         .superclass = "TSSRTransformedValue",
         .methods = {instanceMethod("setTransformedValue:", setTransformedValue)}}};
    const Retained<TSSRTransformedValue> value =
        adopt(as<TSSRTransformedValue>(settable.classObject().alloc()).initWithClass_value(nil, mute));
    valuesSet = 0;
    EXPECT_EQ(copyOf(value).transformedValue(), mute);
    EXPECT_EQ(valuesSet, 1);
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
    std::atomic<int> mistakes = 0;
    std::vector<std::thread> threads;
    for (int index = 0; index < 8; ++index)
        threads.emplace_back([&] {
            for (int round = 0; round < 500; ++round) {
                const AutoreleasePool pool;
                const TSSRTransformedValue copy = copyOf(value);
                if (value.intValue() != 5 || copy.longLongValue() != 5
                    || copy.valueClass() != TSSRTransformedValue::classObject()
                    || text(value.completeDescription()) != "Transformed value '5' of class 'NSNumber'.")
                    ++mistakes;
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(mistakes, 0);
}

} // namespace
} // namespace tessarin::testing
