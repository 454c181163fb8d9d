#include "platform/embedded/foundation/PropertyListObjects.h"

#include "TessarinPlatform/NSMutableData.h"
#include "platform/embedded/foundation/ArrayStorage.h"
#include "platform/embedded/foundation/DataStorage.h"
#include "platform/embedded/foundation/DateStorage.h"
#include "platform/embedded/foundation/DictionaryStorage.h"
#include "platform/embedded/foundation/NumberValue.h"
#include "platform/embedded/foundation/StringStorage.h"
#include "platform/embedded/runtime/ReferenceCounting.h"
#include "platform/services/Utf8.h"

namespace tessarin::embedded {

Retained<NSObject> PropertyListObjects::string(std::string_view utf8, bool isKey) {
    if (isKey) return key(utf8);
    if (!hasMutableLeaves()) return newStringFromUtf8(utf8);
    return adopt(NSObject(NSMutableString::alloc().initWithBytes_length_encoding(utf8.data(), utf8.size(),
                                                                                 NSUTF8StringEncoding)));
}

Retained<NSObject> PropertyListObjects::key(std::string_view utf8) {
    if (utf8.empty()) return newStringFromUtf8(utf8);
    // Any place would do. Keys of one list mostly differ in these.
    const auto letter = [&](std::size_t index) -> std::size_t {
        return static_cast<unsigned char>(utf8[index]);
    };
    const std::size_t place =
        utf8.size() + 3 * letter(0) + 5 * letter(utf8.size() / 2) + 7 * letter(utf8.size() - 1);
    Retained<NSString>& known = keys_[place % keys_.size()];
    if (known && equalUnits(storageOf<StringStorage>(known).view(), StringView(utf8))) {
        addUnsharedReference(known.object());
        return adopt(NSObject(known));
    }
    Retained<NSString> made = newStringFromUtf8(utf8);
    // Other texts may have bytes that are the units of this one.
    if (utf8::isAscii(utf8)) known = made;
    return made;
}

Retained<NSObject> PropertyListObjects::string(std::u16string_view units, bool isKey) const {
    if (isKey || !hasMutableLeaves()) return newString(units);
    return adopt(NSObject(NSMutableString::alloc().initWithCharacters_length(units.data(), units.size())));
}

Retained<NSObject> PropertyListObjects::asciiString(std::string_view ascii, bool isKey) const {
    if (isKey || !hasMutableLeaves()) return newAsciiString(ascii);
    return adopt(NSObject(NSMutableString::alloc().initWithBytes_length_encoding(ascii.data(), ascii.size(),
                                                                                 NSUTF8StringEncoding)));
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

Retained<NSObject> PropertyListObjects::date(NSTimeInterval sinceReferenceDate) {
    return newDate(sinceReferenceDate);
}

Retained<NSArray> PropertyListObjects::newArray(std::size_t count) const {
    if (hasMutableContainers()) return newMutableArrayWithRoom(count);
    return newArrayWithRoom(count);
}

Retained<NSObject> PropertyListObjects::array(std::span<Retained<NSObject>> items) const {
    Retained<NSArray> array = newArray(items.size());
    ArrayStorage& storage = storageOf<ArrayStorage>(array);
    for (Retained<NSObject>& item : items) storage.items[storage.count++] = item.leak();
    return array;
}

Retained<NSArray> PropertyListObjects::arrayToFill(std::size_t count) const {
    Retained<NSArray> array = newArray(count);
    storageOf<ArrayStorage>(array).fillWithNil(count);
    return array;
}

Retained<NSDictionary> PropertyListObjects::newDictionary(std::size_t count) const {
    if (hasMutableContainers()) return newMutableDictionaryWithRoom(count);
    return newDictionaryWithRoom(count);
}

Retained<NSObject> PropertyListObjects::dictionary(std::span<Retained<NSObject>> keysAndValues) const {
    Retained<NSDictionary> dictionary = newDictionary(keysAndValues.size() / 2);
    DictionaryStorage& storage = storageOf<DictionaryStorage>(dictionary);
    for (std::size_t index = 0; index < keysAndValues.size(); index += 2) {
        Retained<NSObject>& key = keysAndValues[index];
        Retained<NSObject>& value = keysAndValues[index + 1];
        const NSUInteger hash = key.hash();
        const std::size_t found = findEntry(dictionary, key, hash);
        if (found == DictionaryStorage::notFound) {
            storage.append(hash, key.leak(), value.leak());
        } else {
            value = adopt(storage.replaceObject(found, value.leak()));
        }
    }
    return dictionary;
}

Retained<NSDictionary> PropertyListObjects::dictionaryToFill(std::span<Retained<NSObject>> keys) const {
    Retained<NSDictionary> dictionary = newDictionary(keys.size());
    for (Retained<NSObject>& key : keys) {
        const NSUInteger hash = key.hash();
        if (findEntry(dictionary, key, hash) == DictionaryStorage::notFound)
            storageOf<DictionaryStorage>(dictionary).append(hash, key.leak(), nil);
    }
    return dictionary;
}

Retained<NSDictionary> PropertyListObjects::dictionaryToFill(NSDictionary model) const {
    const DictionaryStorage& modelStorage = storageOf<DictionaryStorage>(model);
    Retained<NSDictionary> dictionary = newDictionary(modelStorage.count());
    storageOf<DictionaryStorage>(dictionary).fillWithKeys(modelStorage);
    return dictionary;
}

} // namespace tessarin::embedded
