#include "platform/embedded/foundation/KeyedArchiverUID.h"

#include "TessarinPlatform/NSString.h"
#include "platform/embedded/runtime/BuiltInClass.h"

namespace tessarin::embedded {
namespace {

struct UIDStorage {
    std::uint32_t value = 0;
};

UIDStorage& storageOf(NSObject uid) { return embedded::storageOf<UIDStorage>(uid); }

BOOL isEqual(NSObject self, SEL, NSObject other) {
    return self == other || keyedArchiverUID(other) == storageOf(self).value;
}
NSUInteger hash(NSObject self, SEL) { return storageOf(self).value; }

NSString description(NSObject self, SEL) {
    return NSString("<CFKeyedArchiverUID " + addressText(self)
                    + ">{value = " + std::to_string(storageOf(self).value) + "}");
}

} // namespace

Retained<NSObject> newKeyedArchiverUID(std::uint32_t value) {
    Retained<NSObject> uid = adopt(NSObject(createInstance("CFKeyedArchiverUID"_class)));
    storageOf(uid).value = value;
    return uid;
}

void setKeyedArchiverUID(NSObject uid, std::uint32_t value) { storageOf(uid).value = value; }

std::optional<std::uint32_t> keyedArchiverUID(NSObject object) {
    if (!object || object.object()->isa != "CFKeyedArchiverUID"_class.object()) return {};
    return storageOf(object).value;
}

ClassDescription describeKeyedArchiverUID() {
    return {.name = "CFKeyedArchiverUID",
            .superclass = "NSObject",
            .storage = storageLayout<UIDStorage>(),
            .methods = {instanceMethod("isEqual:", isEqual), instanceMethod("hash", hash),
                        instanceMethod("description", description)}};
}

} // namespace tessarin::embedded
