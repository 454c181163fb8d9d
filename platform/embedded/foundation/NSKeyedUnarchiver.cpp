// NSKeyedUnarchiver. The property list of the archive is read as a whole; objects are made when they are
// first asked for. Everything in it may be wrong.
#include "TessarinPlatform/NSKeyedUnarchiver.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/NSDate.h"
#include "TessarinPlatform/NSMutableDictionary.h"
#include "TessarinPlatform/NSNumber.h"
#include "TessarinPlatform/NSURL.h"
#include "platform/embedded/foundation/ArrayStorage.h"
#include "platform/embedded/foundation/KeyedArchiveFormat.h"
#include "platform/embedded/foundation/KeyedArchiverUID.h"
#include "platform/embedded/foundation/KeyedCoding.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <optional>
#include <unordered_map>

namespace tessarin::embedded {
namespace {

using namespace keyedArchive;

enum class Progress : unsigned char {
    none,
    isInitialised, // the object was allocated and has been sent initWithCoder:
    isReferredTo,  // likewise, and another object has got hold of it meanwhile
    done,
};

struct Decoded {
    Retained<NSObject> object;
    Progress progress = Progress::none;
};

// An object that is sent initWithCoder:.
struct Open {
    std::size_t number;
    NSDictionary contents;
};

struct UnarchiverStorage {
    Retained<NSArray> objects;
    Retained<NSDictionary> top;
    bool isFinished = false;
    std::vector<Decoded> decoded; // by number; what stands in the archive as it is stays out of it
    std::vector<Open> open;       // the innermost last
    std::unordered_map<std::size_t, Class> classes;
    // What containers may yet have of items, and objects of copied bytes. Each item of a sound archive takes
    // at least a byte of its own. Equal texts may stand in it once for many objects, so there is more of
    // bytes.
    std::size_t itemsLeft = 0;
    std::size_t copiesLeft = 0;
};

constexpr std::size_t copiesPerByte = 16;
constexpr std::size_t copiesOfAny = std::size_t{1} << 22;

UnarchiverStorage& storageOf(NSKeyedUnarchiver unarchiver) {
    return embedded::storageOf<UnarchiverStorage>(unarchiver);
}

[[noreturn]] void refuse(NSKeyedUnarchiver self, SEL selector, const std::string& reason) {
    raiseFrom(NSInvalidUnarchiveOperationException(), self, selector, reason);
}

void checkUnfinished(NSKeyedUnarchiver self, SEL selector) {
    if (storageOf(self).isFinished)
        refuse(self, selector, "unarchive already finished, cannot decode anything more");
}

// ---- References

bool isOf(NSObject object, Class classObject) { return object && object.isKindOfClass(classObject); }

// What a reference refers to, in either of its forms; nothing for any other value.
std::optional<std::uint64_t> numberOfReference(NSObject value) {
    if (const auto uid = keyedArchiverUID(value)) return *uid;
    const auto dictionary = kindOf<NSDictionary>(value);
    if (dictionary.count() != 1) return {};
    const auto number = kindOf<NSNumber>(dictionary.objectForKey(uidKey()));
    if (!number || number.longLongValue() < 0) return {};
    return static_cast<std::uint64_t>(number.longLongValue());
}

std::size_t numberOf(NSKeyedUnarchiver self, SEL selector, NSObject value) {
    const auto number = numberOfReference(value);
    if (!number) refuse(self, selector, "a value that is no object where one is wanted");
    if (*number >= storageOf(self).objects.count())
        refuse(self, selector, "a reference to an object that is not there");
    return static_cast<std::size_t>(*number);
}

// ---- Objects

Class classOf(NSKeyedUnarchiver self, SEL selector, NSDictionary contents) {
    UnarchiverStorage& storage = storageOf(self);
    const NSObject reference = contents.objectForKey(classKey());
    if (!reference) refuse(self, selector, "an object without a class");
    const std::size_t number = numberOf(self, selector, reference);
    Class& known = storage.classes[number];
    if (known) return known;
    const auto description = kindOf<NSDictionary>(storage.objects.objectAtIndex(number));
    const auto name = kindOf<NSString>(description.objectForKey(classNameKey()));
    if (!name) refuse(self, selector, "a class without a name");
    const std::string text(name);
    known = Class(NSObject(runtime::lookUpClass(text.c_str())));
    if (!known)
        refuse(self, selector,
               "cannot decode object of class (" + text
                   + "); the class may be defined in source code or a library that is not linked");
    return known;
}

// Whether an object is of the platform's own that refer to others. One that contained itself would send its
// own operations round in circles.
bool isContainer(NSObject object) {
    return isOf(object, NSArray::classObject()) || isOf(object, NSDictionary::classObject())
           || isOf(object, NSURL::classObject()) || isOf(object, NSString::classObject());
}

// An object refers to one that it is inside of. It gets the allocated one, which is what an object with a way
// back to its owner needs; but containers inside each other alone never end.
NSObject objectBeingInitialised(NSKeyedUnarchiver self, SEL selector, std::size_t number) {
    UnarchiverStorage& storage = storageOf(self);
    bool hasContainersOnly = true;
    for (auto each = storage.open.rbegin(); each != storage.open.rend(); ++each) {
        hasContainersOnly = hasContainersOnly && isContainer(storage.decoded[each->number].object);
        if (each->number == number) break;
    }
    if (hasContainersOnly) refuse(self, selector, "a container inside itself");
    storage.decoded[number].progress = Progress::isReferredTo;
    return storage.decoded[number].object;
}

NSObject initialisedObject(NSKeyedUnarchiver self, SEL selector, std::size_t number, NSDictionary contents) {
    UnarchiverStorage& storage = storageOf(self);
    Decoded& decoded = storage.decoded[number];
    if (storage.open.size() == deepest)
        refuse(self, selector, "objects inside each other more than " + std::to_string(deepest) + " deep");
    const Class objectClass = classOf(self, selector, contents);
    // Asked beforehand, since not every class can release an instance that was never initialised.
    if (!objectClass.instancesRespondToSelector("initWithCoder:"_sel))
        raise(NSInvalidArgumentException(), NSString("-[" + std::string(objectClass.description())
                                                     + " initWithCoder:]: unrecognized selector"));
    Retained<NSObject> allocated = adopt(static_cast<NSObject>(objectClass.alloc()));

    // Kept as long as it is being initialised, whatever the initialiser does to its own reference.
    decoded.object = retain(static_cast<NSObject>(allocated));
    decoded.progress = Progress::isInitialised;
    storage.open.push_back({number, contents});
    struct Initialising {
        UnarchiverStorage& storage;
        Decoded& decoded;
        ~Initialising() {
            storage.open.pop_back();
            if (decoded.progress == Progress::done) return;
            decoded.progress = Progress::none;
            decoded.object.reset();
        }
    };
    const Initialising initialising{storage, decoded};
    Retained<NSObject> initialised =
        adopt(static_cast<NSObject>(send<id>(allocated.leak(), "initWithCoder:"_sel, self)));
    if (initialised != decoded.object && decoded.progress == Progress::isReferredTo)
        refuse(self, selector, "an object that others refer to was replaced while it was initialised");
    decoded.object = std::move(initialised);
    decoded.progress = Progress::done;
    return decoded.object;
}

// Belongs to the unarchiver.
NSObject objectNumbered(NSKeyedUnarchiver self, SEL selector, std::size_t number) {
    if (number == 0) return nil;
    UnarchiverStorage& storage = storageOf(self);
    const Decoded& decoded = storage.decoded[number];
    if (decoded.progress == Progress::done) return decoded.object;
    if (decoded.progress != Progress::none) return objectBeingInitialised(self, selector, number);
    const NSObject value = storage.objects.objectAtIndex(number);
    if (const auto contents = kindOf<NSDictionary>(value))
        return initialisedObject(self, selector, number, contents);
    // Dates too, as other software writes them.
    const bool isLeaf = isOf(value, NSString::classObject()) || isOf(value, NSNumber::classObject())
                        || isOf(value, NSData::classObject()) || isOf(value, NSDate::classObject());
    if (!isLeaf) refuse(self, selector, "a value that is no object where one is wanted");
    return value;
}

// ---- Values

// What a key has in the object that is being decoded; nil where there is none.
NSObject valueOf(NSKeyedUnarchiver self, SEL selector, NSString key) {
    checkUnfinished(self, selector);
    const UnarchiverStorage& storage = storageOf(self);
    const NSDictionary contents = storage.open.empty() ? storage.top : storage.open.back().contents;
    return contents.objectForKey(escapedKey(key, self, selector));
}

// The value as one of a class; nil where there is none.
template <class T>
T valueOfKind(NSKeyedUnarchiver self, SEL selector, NSString key) {
    const NSObject value = valueOf(self, selector, key);
    if (value && !isOf(value, T::classObject()))
        refuse(self, selector, "value for key (" + std::string(key) + ") is of another kind");
    return T(value);
}

BOOL containsValue(NSKeyedUnarchiver self, SEL selector, NSString key) {
    return valueOf(self, selector, key) ? YES : NO;
}

id decodeObject(NSKeyedUnarchiver self, SEL selector, NSString key) {
    const NSObject value = valueOf(self, selector, key);
    if (!value) return nil;
    return retain(objectNumbered(self, selector, numberOf(self, selector, value))).autorelease();
}

BOOL decodeBool(NSKeyedUnarchiver self, SEL selector, NSString key) {
    return valueOfKind<NSNumber>(self, selector, key).boolValue() ? YES : NO;
}

template <class Integer>
Integer decodeInteger(NSKeyedUnarchiver self, SEL selector, NSString key) {
    const std::int64_t value = valueOfKind<NSNumber>(self, selector, key).longLongValue();
    if (value < std::numeric_limits<Integer>::min() || value > std::numeric_limits<Integer>::max())
        raiseFrom(NSRangeException(), self, selector,
                  "value (" + std::to_string(value) + ") for key (" + std::string(key)
                      + ") too large to fit in " + std::to_string(8 * sizeof(Integer)) + "-bit integer");
    return static_cast<Integer>(value);
}

float decodeFloat(NSKeyedUnarchiver self, SEL selector, NSString key) {
    return valueOfKind<NSNumber>(self, selector, key).floatValue();
}
double decodeDouble(NSKeyedUnarchiver self, SEL selector, NSString key) {
    return valueOfKind<NSNumber>(self, selector, key).doubleValue();
}

const std::uint8_t* decodeBytes(NSKeyedUnarchiver self, SEL selector, NSString key, NSUInteger* length) {
    const auto data = valueOfKind<NSData>(self, selector, key);
    if (length) *length = data.length();
    return static_cast<const std::uint8_t*>(data.bytes());
}

BOOL allowsKeyedCoding(NSKeyedUnarchiver, SEL) { return YES; }

// ---- From beginning to end

std::string firstBytes(NSData data) {
    std::string text;
    const auto* const bytes = static_cast<const unsigned char*>(data.bytes());
    for (NSUInteger index = 0; index < std::min<NSUInteger>(data.length(), 8); ++index) {
        char byte[8];
        std::snprintf(byte, sizeof byte, "%s0x%02x", index == 0 ? "" : ", ",
                      static_cast<unsigned>(bytes[index]));
        text += byte;
    }
    return text;
}

bool isArchive(NSDictionary archive) {
    const auto version = kindOf<NSNumber>(archive.objectForKey(versionKey()));
    return archiverName().isEqual(archive.objectForKey(archiverKey())) && version
           && version.longLongValue() == keyedArchive::version
           && isOf(archive.objectForKey(topKey()), NSDictionary::classObject())
           && isOf(archive.objectForKey(objectsKey()), NSArray::classObject());
}

NSKeyedUnarchiver initForReading(NSKeyedUnarchiver self, SEL selector, NSData data) {
    Retained<NSKeyedUnarchiver> owned = adopt(self);
    if (!data) raiseFrom(NSInvalidArgumentException(), self, selector, "data is NULL");
    const AutoreleasePool pool;
    const auto archive =
        kindOf<NSDictionary>(NSPropertyListSerialization::propertyListWithData_options_format_error(
            data, NSPropertyListImmutable, nullptr, nullptr));
    if (!isArchive(archive))
        raiseFrom(NSInvalidArgumentException(), self, selector,
                  "incomprehensible archive (" + firstBytes(data) + ")");
    UnarchiverStorage& storage = storageOf(self);
    storage.objects = retain(NSArray(archive.objectForKey(objectsKey())));
    storage.top = retain(NSDictionary(archive.objectForKey(topKey())));
    storage.decoded = std::vector<Decoded>(storage.objects.count());
    storage.itemsLeft = data.length();
    storage.copiesLeft = copiesPerByte * data.length() + copiesOfAny;
    return owned.leak();
}

// What was decoded stays: an object may still hold what decodeBytesForKey:returnedLength: answered.
void finishDecoding(NSKeyedUnarchiver self, SEL) { storageOf(self).isFinished = true; }

id unarchiveObjectWithData(Class self, SEL, NSData data) {
    if (!data) return nil;
    Retained<NSObject> root;
    {
        const AutoreleasePool pool;
        const Retained<NSKeyedUnarchiver> unarchiver =
            adopt(as<NSKeyedUnarchiver>(self.alloc()).initForReadingWithData(data));
        root = retain(static_cast<NSObject>(unarchiver.decodeObjectForKey(rootKey())));
        unarchiver.finishDecoding();
    }
    return root.autorelease();
}

id unarchiveObjectWithFile(Class self, SEL, NSString path) {
    return send<id>(self, "unarchiveObjectWithData:"_sel, NSData::dataWithContentsOfFile(path));
}

} // namespace

std::vector<NSObject> unarchiveItems(NSKeyedUnarchiver unarchiver, NSString key) {
    const SEL selector = "decodeObjectForKey:"_sel;
    const auto references = valueOfKind<NSArray>(unarchiver, selector, key);
    if (!references) refuse(unarchiver, selector, "a container without items");
    UnarchiverStorage& storage = storageOf(unarchiver);
    if (references.count() > storage.itemsLeft)
        refuse(unarchiver, selector, "more items than the archive has room for");
    storage.itemsLeft -= references.count();
    std::vector<NSObject> items;
    items.reserve(references.count());
    for (const NSObject reference : references) {
        items.push_back(objectNumbered(unarchiver, selector, numberOf(unarchiver, selector, reference)));
        if (!items.back()) refuse(unarchiver, selector, "an item of a container that is nil");
    }
    return items;
}

NSObject unarchivePropertyList(NSKeyedUnarchiver unarchiver, NSString key) {
    const SEL selector = "decodeObjectForKey:"_sel;
    const NSObject value = valueOf(unarchiver, selector, key);
    const auto number = numberOfReference(value);
    return number ? objectNumbered(unarchiver, selector, numberOf(unarchiver, selector, value)) : value;
}

void chargeCopy(NSKeyedUnarchiver unarchiver, std::size_t bytes) {
    std::size_t& left = storageOf(unarchiver).copiesLeft;
    if (bytes > left)
        refuse(unarchiver, "decodeObjectForKey:"_sel, "more bytes than the archive has room for");
    left -= bytes;
}

ClassDescription describeNSKeyedUnarchiver() {
    return {
        .name = "NSKeyedUnarchiver",
        .superclass = "NSCoder",
        .storage = storageLayout<UnarchiverStorage>(),
        .methods = {classMethod("unarchiveObjectWithData:", unarchiveObjectWithData),
                    classMethod("unarchiveObjectWithFile:", unarchiveObjectWithFile),
                    instanceMethod("initForReadingWithData:", initForReading),
                    instanceMethod("finishDecoding", finishDecoding),
                    instanceMethod("allowsKeyedCoding", allowsKeyedCoding),
                    instanceMethod("containsValueForKey:", containsValue),
                    instanceMethod("decodeObjectForKey:", decodeObject),
                    instanceMethod("decodeBoolForKey:", decodeBool),
                    instanceMethod("decodeIntForKey:", decodeInteger<int>),
                    instanceMethod("decodeInt32ForKey:", decodeInteger<std::int32_t>),
                    instanceMethod("decodeInt64ForKey:", decodeInteger<std::int64_t>),
                    instanceMethod("decodeIntegerForKey:", decodeInteger<NSInteger>),
                    instanceMethod("decodeFloatForKey:", decodeFloat),
                    instanceMethod("decodeDoubleForKey:", decodeDouble),
                    instanceMethod("decodeBytesForKey:returnedLength:", decodeBytes)},
    };
}

} // namespace tessarin::embedded
