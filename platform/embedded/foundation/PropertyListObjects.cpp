#include "platform/embedded/foundation/PropertyListObjects.h"

#include "TessarinPlatform/NSMutableData.h"
#include "platform/embedded/foundation/ArrayStorage.h"
#include "platform/embedded/foundation/DataStorage.h"
#include "platform/embedded/foundation/DictionaryStorage.h"
#include "platform/embedded/foundation/NumberValue.h"
#include "platform/embedded/foundation/StringStorage.h"

namespace tessarin::embedded {

Retained<NSObject> PropertyListObjects::string(std::string_view utf8, bool isKey) const {
    if (isKey || !hasMutableLeaves()) return newStringFromUtf8(utf8);
    return adopt(NSObject(NSMutableString::alloc().initWithBytes_length_encoding(utf8.data(), utf8.size(),
                                                                                 NSUTF8StringEncoding)));
}

Retained<NSObject> PropertyListObjects::string(std::u16string_view units, bool isKey) const {
    if (isKey || !hasMutableLeaves()) return newString(units);
    return adopt(NSObject(NSMutableString::alloc().initWithCharacters_length(units.data(), units.size())));
}

Retained<NSObject> PropertyListObjects::data(std::string_view bytes) const {
    if (!hasMutableLeaves()) return newData(std::as_bytes(std::span(bytes)));
    const void* const start = bytes.data();
    const NSUInteger length = bytes.size();
    return retain(send<NSObject>(NSMutableData::classObject(), "dataWithBytes:length:"_sel, start, length));
}

Retained<NSObject> PropertyListObjects::integer(std::int64_t value) {
    return newNumber(NumberValue::ofInt64(value));
}
Retained<NSObject> PropertyListObjects::unsignedInteger(std::uint64_t value) {
    return newNumber(NumberValue::ofUnsigned(value));
}
Retained<NSObject> PropertyListObjects::boolean(bool value) {
    return newNumber(NumberValue::ofBoolean(value));
}
Retained<NSObject> PropertyListObjects::real(double value) { return newNumber(NumberValue::ofDouble(value)); }
Retained<NSObject> PropertyListObjects::singleReal(float value) {
    return newNumber(NumberValue::ofFloat(value));
}

Retained<NSObject> PropertyListObjects::array(std::span<Retained<NSObject>> items) const {
    if (!hasMutableContainers())
        return newArrayOfNew(items.size(), [&](std::size_t index) { return std::move(items[index]); });
    Retained<NSObject> array = adopt(NSObject(createInstance(NSMutableArray::classObject())));
    ArrayStorage& storage = storageOf<ArrayStorage>(array);
    storage.allocate(items.size());
    for (Retained<NSObject>& item : items) storage.items[storage.count++] = item.leak();
    return array;
}

Retained<NSObject> PropertyListObjects::dictionary(Retained<NSObject>* keys, Retained<NSObject>* values,
                                                   std::size_t count, std::size_t step) const {
    const Class dictionaryClass =
        hasMutableContainers() ? NSMutableDictionary::classObject() : NSDictionary::classObject();
    Retained<NSObject> dictionary = adopt(NSObject(createInstance(dictionaryClass)));
    DictionaryStorage& storage = storageOf<DictionaryStorage>(dictionary);
    storage.reserve(count);
    for (std::size_t index = 0; index < count; ++index) {
        Retained<NSObject>& key = keys[index * step];
        Retained<NSObject>& value = values[index * step];
        const NSUInteger hash = key.hash();
        const std::size_t found = findEntry(as<NSDictionary>(dictionary), key, hash);
        if (found == DictionaryStorage::notFound) {
            storage.append({hash, key.leak(), value.leak()});
        } else {
            const Retained<NSObject> replaced = adopt(storage.replaceObject(found, value.leak()));
        }
    }
    return dictionary;
}

} // namespace tessarin::embedded
