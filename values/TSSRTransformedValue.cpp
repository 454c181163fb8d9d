#include "TessarinFoundation/TSSRTransformedValue.h"

#include "TessarinPlatform/Definition.h"
#include "TessarinPlatform/Retained.h"
#include "values/OwnVariable.h"

#include <utility>

using namespace tessarin;

namespace {

id& valueClassOf(TSSRTransformedValue self) { return values::ownVariable<id, "valueClass">(self); }
id& valueOf(TSSRTransformedValue self) { return values::ownVariable<id, "transformedValue">(self); }

// ---- Construction and release

TSSRTransformedValue transformedValueWithClass_value(Class self, SEL, Class valueClass, NSObject value) {
    return adopt(as<TSSRTransformedValue>(self.alloc()).initWithClass_value(valueClass, value)).autorelease();
}

TSSRTransformedValue superInit(TSSRTransformedValue self) {
    return sendSuper<TSSRTransformedValue>(self, TSSRTransformedValue::classObject(), "init"_sel);
}

TSSRTransformedValue initWithClass_value(TSSRTransformedValue self, SEL, Class valueClass, NSObject value) {
    self = superInit(self);
    if (!self) return nil;
    valueClassOf(self) = retain(valueClass).leak();
    valueOf(self) = retain(value).leak();
    return self;
}

void dealloc(TSSRTransformedValue self, SEL selector) {
    // Each is nil before what it held is released, so that nobody finds it on its way out.
    for (id* variable : {&valueClassOf(self), &valueOf(self)}) adopt(std::exchange(*variable, id())).reset();
    sendSuper<void>(self, TSSRTransformedValue::classObject(), selector);
}

// ---- Reading

id valueClass(TSSRTransformedValue self, SEL) { return valueClassOf(self); }
id transformedValue(TSSRTransformedValue self, SEL) { return valueOf(self); }

NSString description(TSSRTransformedValue self, SEL) { return self.transformedValue().description(); }

NSString completeDescription(TSSRTransformedValue self, SEL) {
    const NSString value = self.transformedValue().description();
    return NSString::stringWithFormat("Transformed value '%@' of class '%@'."_ns, value,
                                      self.valueClass().description());
}

// What the value answers to the message, or whether there is a value when it does not respond.
template <class Result>
Result numberOf(TSSRTransformedValue self, SEL selector) {
    if (self.transformedValue().respondsToSelector(selector))
        return send<Result>(self.transformedValue(), selector);
    return static_cast<Result>(self.transformedValue() ? 1 : 0);
}

// Not the value's longLongValue: whoever answers that is asked for its integerValue, which is meant.
long long longLongValue(TSSRTransformedValue self, SEL) {
    const id value = self.transformedValue();
    if (value.respondsToSelector("longLongValue"_sel))
        return send<NSInteger>(self.transformedValue(), "integerValue"_sel);
    if (value.respondsToSelector("longValue"_sel))
        return send<long>(self.transformedValue(), "longValue"_sel);
    return self.transformedValue() ? 1 : 0;
}

id objectValue(TSSRTransformedValue self, SEL selector) {
    if (self.transformedValue().respondsToSelector(selector))
        return send<id>(self.transformedValue(), selector);
    return self.transformedValue();
}

// ---- Archives

NSString valueClassKey() { return "TSSRValueTransformerValueClass"_ns; }
NSString valueKey() { return "TSSRValueTransformerTransformedValue"_ns; }
NSString valueDescriptionKey() { return "TSSRValueTransformerTransformedValueDescription"_ns; }
// The key that a value is read under where valueKey() is present: a letter short, which is meant.
NSString shortValueKey() { return "TSRValueTransformerTransformedValue"_ns; }

void encodeWithCoder(TSSRTransformedValue self, SEL, NSCoder coder) {
    coder.encodeObject_forKey(self.valueClass().description(), valueClassKey());
    const id value = self.transformedValue();
    if (value.conformsToProtocol("NSCoding"_protocol))
        coder.encodeObject_forKey(value, valueKey());
    else
        coder.encodeObject_forKey(value.description(), valueDescriptionKey());
}

bool isTransformedValue(id object) {
    Object* each = object ? runtime::classOf(object.object()) : nullptr;
    while (each && each != TSSRTransformedValue::classObject().object()) each = runtime::superclassOf(each);
    return each != nullptr;
}

// A damaged archive may name the object as its own value, also through others, which would be asked round in
// circles; or put so many inside each other that asking them takes all of the stack.
bool canBeValue(id value, TSSRTransformedValue object) {
    constexpr int most = 256; // inside each other
    int count = 0;
    for (; isTransformedValue(value); value = valueOf(as<TSSRTransformedValue>(value)))
        if (value == object || ++count == most) return false;
    return true;
}

TSSRTransformedValue initWithCoder(TSSRTransformedValue self, SEL, NSCoder coder) {
    Retained<TSSRTransformedValue> made = adopt(superInit(self));
    if (!made) return nil;
    // The class's name, and not the class.
    valueClassOf(made) = retain(coder.decodeObjectForKey(valueClassKey())).leak();
    id value;
    if (coder.containsValueForKey(valueKey()))
        value = coder.decodeObjectForKey(shortValueKey());
    else if (coder.containsValueForKey(valueDescriptionKey()))
        value = coder.decodeObjectForKey(valueDescriptionKey());
    if (canBeValue(value, made)) valueOf(made) = retain(value).leak();
    return made.leak();
}

// ---- Copies

TSSRTransformedValue copyWithZone(TSSRTransformedValue self, SEL selector, void* zone) {
    // Of the receiver's own class, not of its valueClass, which is meant.
    const Class ownClass = self.class_();
    Retained<TSSRTransformedValue> copy = adopt(
        send<TSSRTransformedValue>(ownClass, "allocWithZone:"_sel, zone).initWithClass_value(ownClass, nil));
    if (!copy) return nil;
    id value = self.transformedValue();
    if (value.conformsToProtocol("NSCopying"_protocol))
        value = adopt(send<id>(value, selector, zone)).autorelease();
    copy.setValue_forKey(value, "transformedValue"_ns);
    return copy.leak();
}

const ClassDefinition definition{
    {.name = "TSSRTransformedValue",
     .protocols = {"NSCoding", "NSCopying"},
     .instanceVariables = {instanceVariable<Class>("valueClass"), instanceVariable<id>("transformedValue")},
     .methods = {
         classMethod("transformedValueWithClass:value:", transformedValueWithClass_value),
         instanceMethod("initWithClass:value:", initWithClass_value), instanceMethod("dealloc", dealloc),
         instanceMethod("valueClass", valueClass), instanceMethod("transformedValue", transformedValue),
         instanceMethod("description", description),
         instanceMethod("completeDescription", completeDescription),
         instanceMethod("boolValue", numberOf<BOOL>), instanceMethod("integerValue", numberOf<NSInteger>),
         instanceMethod("intValue", numberOf<int>), instanceMethod("longLongValue", longLongValue),
         instanceMethod("floatValue", numberOf<float>), instanceMethod("doubleValue", numberOf<double>),
         instanceMethod("objectValue", objectValue), instanceMethod("encodeWithCoder:", encodeWithCoder),
         instanceMethod("initWithCoder:", initWithCoder), instanceMethod("copyWithZone:", copyWithZone)}}};

} // namespace

// Not inline, so that who uses the class links the definition.
Class TSSRTransformedValue::classObject() { return "TSSRTransformedValue"_class; }
