#include "platform/embedded/runtime/BuiltInClass.h"

#include "TessarinPlatform/NSCoder.h"
#include "TessarinPlatform/NSNull.h"
#include "TessarinPlatform/NSString.h"

namespace tessarin::embedded {
namespace {

NSNull sharedNull() {
    static const NSNull shared = [] {
        const NSNull made(createInstance(NSNull::classObject()));
        makeImmortal(made);
        return made;
    }();
    return shared;
}

id null(Class, SEL) { return sharedNull(); }
// There is one only, whichever way it is asked for.
id allocWithZone(Class, SEL, void*) { return sharedNull(); }
NSNull copyWithZone(NSNull self, SEL, void*) { return self; }
// The class says it all.
void encodeWithCoder(NSNull, SEL, NSCoder) {}
NSNull initWithCoder(NSNull self, SEL, NSCoder) { return self; }
NSString description(NSNull, SEL) { return "<null>"_ns; }

} // namespace

ClassDescription describeNSNull() {
    return {
        .name = "NSNull",
        .superclass = "NSObject",
        .protocols = {"NSCoding", "NSCopying"},
        .methods = {classMethod("null", null), classMethod("allocWithZone:", allocWithZone),
                    instanceMethod("copyWithZone:", copyWithZone),
                    instanceMethod("encodeWithCoder:", encodeWithCoder),
                    instanceMethod("initWithCoder:", initWithCoder),
                    instanceMethod("description", description)},
    };
}

} // namespace tessarin::embedded
