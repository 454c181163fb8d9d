#include "platform/embedded/foundation/PropertyListObjects.h"

#include "TessarinPlatform/NSMutableArray.h"
#include "TessarinPlatform/NSMutableDictionary.h"
#include "TessarinPlatform/NSMutableString.h"
#include "TessarinPlatform/NSNumber.h"

#include <limits>

namespace tessarin::embedded {

NSString PropertyListObjects::newString(bool isKey) const {
    return hasMutableLeaves() && !isKey ? NSString(NSMutableString::alloc()) : NSString::alloc();
}

Retained<NSObject> PropertyListObjects::string(std::string_view utf8, bool isKey) const {
    return adopt(
        newString(isKey).initWithBytes_length_encoding(utf8.data(), utf8.size(), NSUTF8StringEncoding));
}

Retained<NSObject> PropertyListObjects::string(std::u16string_view units, bool isKey) const {
    return adopt(newString(isKey).initWithCharacters_length(units.data(), units.size()));
}

Retained<NSObject> PropertyListObjects::data(std::string_view bytes) const {
    const Class dataClass = hasMutableLeaves() ? "NSMutableData"_class : "NSData"_class;
    const void* const start = bytes.data();
    const NSUInteger length = bytes.size();
    return retain<NSObject>(send<NSData>(dataClass, "dataWithBytes:length:"_sel, start, length));
}

Retained<NSObject> PropertyListObjects::integer(std::int64_t value) {
    return retain<NSObject>(NSNumber::numberWithLongLong(value));
}

Retained<NSObject> PropertyListObjects::unsignedInteger(std::uint64_t value) {
    constexpr std::uint64_t largestSigned = std::numeric_limits<std::int64_t>::max();
    if (value <= largestSigned) return integer(static_cast<std::int64_t>(value));
    return retain<NSObject>(NSNumber::numberWithUnsignedLongLong(value));
}

Retained<NSObject> PropertyListObjects::array(std::span<const Retained<NSObject>> items) const {
    static_assert(sizeof(Retained<NSObject>)
                  == sizeof(NSObject)); // so that a run of one is a run of the other
    const NSObject* const objects = items.data();
    const NSArray array = hasMutableContainers() ? NSArray(NSMutableArray::alloc()) : NSArray::alloc();
    return adopt(array.initWithObjects_count(objects, items.size()));
}

Retained<NSObject> PropertyListObjects::dictionary(std::span<const Retained<NSObject>> keysAndValues) const {
    Retained<NSMutableDictionary> dictionary =
        adopt(NSMutableDictionary::alloc().initWithCapacity(keysAndValues.size() / 2));
    for (std::size_t index = 0; index < keysAndValues.size(); index += 2)
        dictionary.setObject_forKey(keysAndValues[index + 1], keysAndValues[index]);
    if (hasMutableContainers()) return dictionary;
    return adopt(NSObject(dictionary.copy()));
}

} // namespace tessarin::embedded
