// Copies of transformed values.
#include "FailingRootInitialiser.h"
#include "TransformedValueTest.h"

namespace tessarin::testing {
namespace {

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

} // namespace
} // namespace tessarin::testing
