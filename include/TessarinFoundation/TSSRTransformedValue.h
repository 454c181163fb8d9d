// The result of a value transformation together with the class that it belongs with, as one object that can
// be archived and copied.
//
// It hands the value out through the usual accessors, so that it can stand wherever a number or an object
// value is read. It does not change once made and may be read on any thread as far as its value may.
//
//   TSSRTransformedValue gain = TSSRTransformedValue::transformedValueWithClass_value(
//       NSNumber::classObject(), NSNumber::numberWithInt(5));
//   gain.intValue();            // 5
//   gain.completeDescription(); // Transformed value '5' of class 'NSNumber'.
//
// In an archive (keyed coders only; any other raises, which passes through) it stands under these keys:
//
//   TSSRValueTransformerValueClass                   the description of the value class, that is, its name
//   TSSRValueTransformerTransformedValue             the value, when it conforms to NSCoding
//   TSSRValueTransformerTransformedValueDescription  the value's description otherwise, nil for nil
//   TSRValueTransformerTransformedValue              never written. It is read as the value where the second
//                                                    key is present: a letter short, which is meant
//
// So a value that conforms to NSCoding comes back as nil, unless the archive carries the shorter key; any
// other comes back as its description. The value class comes back as the string that was written.
#pragma once

#include "TessarinPlatform/detail/LibraryAnchor.h"

#if defined(__OBJC__)

#    import <Foundation/NSObject.h>
#    import <Foundation/NSString.h>

TESSARIN_DEFINED_AT_RUN_TIME
@interface TSSRTransformedValue : NSObject <NSCoding, NSCopying> {
    Class valueClass;
    id transformedValue;
}

@property (readonly) Class valueClass;
@property (readonly) id transformedValue;

+ (id)transformedValueWithClass:(Class)valueClass value:(id)value;
- (id)initWithClass:(Class)valueClass value:(id)value;

- (NSString*)completeDescription;

- (BOOL)boolValue;
- (NSInteger)integerValue;
- (int)intValue;
- (long long)longLongValue;
- (float)floatValue;
- (double)doubleValue;
- (id)objectValue;

@end

#else

#    include "TessarinPlatform/NSCoder.h"

class TSSRTransformedValue
    : public tessarin::Handle<TSSRTransformedValue, "TSSRTransformedValue", tessarin::NSObject> {
public:
    using Handle::Handle;

    TESSARIN_EXPORT static tessarin::Class classObject();
    [[nodiscard]] static TSSRTransformedValue alloc() { return TSSRTransformedValue(classObject().alloc()); }

    // Either may be nil. The value is retained, not copied. Autoreleased.
    static TSSRTransformedValue transformedValueWithClass_value(tessarin::Class valueClass,
                                                                tessarin::NSObject value) {
        using namespace tessarin;
        return send<TSSRTransformedValue>(classObject(), "transformedValueWithClass:value:"_sel, valueClass,
                                          value);
    }
    // The same for the caller to own; nil when the superclass's init fails.
    [[nodiscard]] TSSRTransformedValue initWithClass_value(tessarin::Class valueClass,
                                                           tessarin::NSObject value) const {
        using namespace tessarin;
        return send<TSSRTransformedValue>(*this, "initWithClass:value:"_sel, valueClass, value);
    }
    // As the archive says; a nil coder gives an object without class and value. A value that is the object
    // itself, also through other transformed values, or in which 256 of them are inside each other, is left
    // out.
    [[nodiscard]] TSSRTransformedValue initWithCoder(tessarin::NSCoder coder) const {
        using namespace tessarin;
        return send<TSSRTransformedValue>(*this, "initWithCoder:"_sel, coder);
    }
    // A nil coder takes nothing.
    void encodeWithCoder(tessarin::NSCoder coder) const {
        using namespace tessarin;
        send<void>(*this, "encodeWithCoder:"_sel, coder);
    }

    // The class that the value belongs with; after decoding the class's name, an NSString. Both live as long
    // as the receiver.
    tessarin::id valueClass() const {
        using namespace tessarin;
        return send<tessarin::id>(*this, "valueClass"_sel);
    }
    tessarin::id transformedValue() const {
        using namespace tessarin;
        return send<tessarin::id>(*this, "transformedValue"_sel);
    }

    // description, which every object answers, is the value's own: nil for a nil value.
    // "Transformed value '5' of class 'NSNumber'.", with (null) for what is nil.
    tessarin::NSString completeDescription() const {
        using namespace tessarin;
        return send<NSString>(*this, "completeDescription"_sel);
    }

    // What the value answers to the same message. A value that does not respond to it counts as YES or 1, a
    // nil value as NO or 0.
    bool boolValue() const {
        using namespace tessarin;
        return send<BOOL>(*this, "boolValue"_sel) != NO;
    }
    tessarin::NSInteger integerValue() const {
        using namespace tessarin;
        return send<NSInteger>(*this, "integerValue"_sel);
    }
    int intValue() const {
        using namespace tessarin;
        return send<int>(*this, "intValue"_sel);
    }
    // The value's integerValue when it responds to longLongValue, its longValue when it responds to that
    // alone; this is meant.
    long long longLongValue() const {
        using namespace tessarin;
        return send<long long>(*this, "longLongValue"_sel);
    }
    float floatValue() const {
        using namespace tessarin;
        return send<float>(*this, "floatValue"_sel);
    }
    double doubleValue() const {
        using namespace tessarin;
        return send<double>(*this, "doubleValue"_sel);
    }
    // The value's objectValue when it responds to that, the value itself otherwise.
    tessarin::id objectValue() const {
        using namespace tessarin;
        return send<tessarin::id>(*this, "objectValue"_sel);
    }

    // copy, which every object answers: a new object of the receiver's class whose valueClass is the
    // receiver's own class, whatever the receiver's valueClass is; this is meant. A value that conforms to
    // NSCopying is copied, any other shared.
};

#endif
