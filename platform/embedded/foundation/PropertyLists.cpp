#include "platform/embedded/foundation/PropertyLists.h"

#include "TessarinPlatform/NSMutableData.h"
#include "TessarinPlatform/PropertyLists.h"
#include "platform/embedded/foundation/DataStorage.h"
#include "platform/embedded/foundation/DateStorage.h"
#include "platform/embedded/foundation/NumberValue.h"
#include "platform/embedded/foundation/StringStorage.h"
#include "platform/services/PropertyListCopy.h"

#include <utility>

namespace tessarin::embedded {
namespace {

Retained<NSObject> newPlainString(NSObject string) {
    if (isPlainString(string)) return retain(string);
    return newString(contentsOf(as<NSString>(string)));
}

bool hasPlainKeys(const DictionaryStorage& storage) {
    for (std::size_t index = 0; index < storage.size(); ++index)
        if (const NSObject key = storage.entry(index).key; key && !isPlainString(key)) return false;
    return true;
}

} // namespace

std::string propertyListDefect(NSObject object, NSPropertyListFormat format) {
    return PropertyListExamination<PropertyListStorage>(format).defectOf(object);
}

bool PropertyListStorage::isForeignLeaf(NSObject object, PropertyListKind kind) {
    const auto isExactly = [&](Class classObject) { return object.object()->isa == classObject.object(); };
    switch (kind) {
    case PropertyListKind::string:
        return !directStorage(as<NSString>(object));
    case PropertyListKind::number:
        return !isExactly(NSNumber::classObject());
    case PropertyListKind::date:
        return !isExactly(NSDate::classObject());
    case PropertyListKind::data:
        return !isExactly(NSData::classObject()) && !isExactly(NSMutableData::classObject());
    default:
        return false;
    }
}

Retained<NSObject> PropertyListStorage::newMutableContainer(NSObject source, PropertyListKind kind) {
    if (kind == PropertyListKind::array) {
        const ArrayItems items{as<NSArray>(source)};
        return newMutableArray(items.data(), items.size());
    }
    if (hasDictionaryStorage(source)) {
        const DictionaryStorage& storage = storageOf<DictionaryStorage>(source);
        if (hasPlainKeys(storage)) {
            Retained<NSMutableDictionary> copy = newMutableDictionaryWithRoom(storage.count());
            storageOf<DictionaryStorage>(copy).copyFrom(as<NSDictionary>(source));
            return copy;
        }
    }
    // Keys of an application's own string class may be equal as plain strings. Then the last counts, as it
    // does in reading.
    const DictionaryEntries entries(as<NSDictionary>(source));
    Retained<NSMutableDictionary> copy = newMutableDictionaryWithRoom(entries.size());
    for (const auto& [key, object] : entries) setEntry(copy, object, newPlainString(key));
    return copy;
}

bool PropertyListStorage::mayStay(NSObject leaf, PropertyListKind kind) {
    const Object* const isa = leaf.object()->isa;
    switch (kind) {
    case PropertyListKind::string:
        return isPlainString(leaf);
    case PropertyListKind::number:
        return isa == NSNumber::classObject().object()
               && storageOf<NumberValue>(leaf).kind != NumberKind::int32;
    case PropertyListKind::date:
        return isa == NSDate::classObject().object();
    case PropertyListKind::data:
        return isa == NSData::classObject().object();
    default:
        return true;
    }
}

Retained<NSObject> PropertyListStorage::newLeaf(NSObject leaf, PropertyListKind kind) {
    switch (kind) {
    case PropertyListKind::string:
        return newPlainString(leaf);
    case PropertyListKind::number: {
        // Integers are 64 bits wide, as they are when they are read.
        const NumberValue value = valueInPropertyList(as<NSNumber>(leaf));
        return newNumber(value.kind == NumberKind::int32 ? NumberValue::ofInt64(value.integer) : value);
    }
    case PropertyListKind::date:
        return newDate(as<NSDate>(leaf).timeIntervalSinceReferenceDate());
    case PropertyListKind::data:
        return newData(bytesOf(as<NSData>(leaf)));
    default:
        return retain(leaf);
    }
}

void PropertyListStorage::CopiedContents::replace(NSObject object) {
    runtime::retain(object.object());
    const std::size_t index = position_ - 1;
    NSObject replaced;
    if (isArray_)
        replaced = std::exchange(storageOf<ArrayStorage>(container_).items[index], object);
    else
        replaced = storageOf<DictionaryStorage>(container_).replaceObject(index, object);
    runtime::release(replaced.object());
}

} // namespace tessarin::embedded

namespace tessarin {

bool isPropertyList(NSObject object, NSPropertyListFormat format) {
    return embedded::propertyListDefect(object, format).empty();
}

id propertyListWithMutableContainers(NSObject propertyList, NSError* error) {
    return copyWithMutableContainers<embedded::PropertyListStorage>(propertyList, error);
}

} // namespace tessarin
