// The four kinds of archives of a TSSRTransformedValue.
#include "Samples.h"

#include "TessarinFoundation/TSSRTransformedValue.h"

namespace tessarin::interop {
namespace {

NSObject newInstance(Class ofClass) {
    return adopt(send<NSObject>(ofClass.alloc(), "init"_sel)).autorelease();
}

// Does not conform to NSCoding, so that its description is written.
Class plainClass() {
    static const ClassDefinition definition{
        {.name = "PlainValue",
         .methods = {instanceMethod(
             "description", +[](NSObject, SEL) { return "a plain value"_ns; })}}};
    return definition.classObject();
}

// Writes what a TSSRTransformedValue never writes itself: the value under the key that is a letter short.
void encodeWithShorterKey(NSObject, SEL, NSCoder coder) {
    coder.encodeObject_forKey("NSNumber"_ns, "TSSRValueTransformerValueClass"_ns);
    coder.encodeObject_forKey("ignored"_ns, "TSSRValueTransformerTransformedValue"_ns);
    coder.encodeObject_forKey("restored"_ns, "TSRValueTransformerTransformedValue"_ns);
}
Class shorterKeyClass() {
    static const auto archivedClass = +[](NSObject, SEL) { return TSSRTransformedValue::classObject(); };
    static const ClassDefinition definition{
        {.name = "ValueWithShorterKey",
         .superclass = "TSSRTransformedValue",
         .methods = {instanceMethod("encodeWithCoder:", encodeWithShorterKey),
                     instanceMethod("classForCoder", archivedClass),
                     instanceMethod("classForKeyedArchiver", archivedClass)}}};
    return definition.classObject();
}

NSObject withValue(NSObject value) {
    return TSSRTransformedValue::transformedValueWithClass_value(NSNumber::classObject(), value);
}
NSObject conforming() { return withValue(NSNumber::numberWithInt(5)); }
NSObject notConforming() { return withValue(newInstance(plainClass())); }
NSObject empty() { return withValue(nil); }
NSObject withShorterKey() { return newInstance(shorterKeyClass()); }

bool isReadWith(NSObject read, NSObject value) {
    const auto transformed = kindOf<TSSRTransformedValue>(read);
    return "NSNumber"_ns.isEqual(transformed.valueClass())
           && isEqualOrNil(transformed.transformedValue(), value);
}

} // namespace

std::vector<Sample> transformedValueSamples() {
    const auto asNil = [](NSObject read, NSObject) { return isReadWith(read, nil); };
    return {{"transformed-value", conforming, asNil}, // the value is lost, which is meant
            {"transformed-value-described", notConforming,
             [](NSObject read, NSObject) { return isReadWith(read, "a plain value"_ns); }},
            {"transformed-value-nil", empty, asNil},
            {"transformed-value-shorter-key", withShorterKey,
             [](NSObject read, NSObject) { return isReadWith(read, "restored"_ns); }}};
}

} // namespace tessarin::interop
