// What the tests of transformed values have in common.
#pragma once

#include "PlatformTest.h"

#include "TessarinFoundation/TSSRTransformedValue.h"

#include <atomic>

namespace tessarin::testing {

inline NSObject newInstance(Class ofClass) {
    return adopt(send<NSObject>(ofClass.alloc(), "init"_sel)).autorelease();
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

} // namespace tessarin::testing
