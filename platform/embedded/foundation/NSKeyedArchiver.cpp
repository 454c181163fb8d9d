// NSKeyedArchiver. An archive is built as a property list, which is written when the archiver is finished.
#include "TessarinPlatform/NSKeyedArchiver.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/NSLog.h"
#include "TessarinPlatform/NSMutableArray.h"
#include "TessarinPlatform/NSMutableDictionary.h"
#include "TessarinPlatform/NSNumber.h"
#include "platform/embedded/foundation/BinaryPropertyListWriter.h"
#include "platform/embedded/foundation/KeyedArchiveFormat.h"
#include "platform/embedded/foundation/KeyedArchiverUID.h"
#include "platform/embedded/foundation/KeyedCoding.h"
#include "platform/embedded/foundation/XMLPropertyListWriter.h"
#include "platform/services/ObjectNumbers.h"
#include "platform/services/PropertyListError.h"

#include <limits>
#include <unordered_map>

namespace tessarin::embedded {
namespace {

using namespace keyedArchive;

// An object that was met. It is kept, so that no other can come to lie where it lay.
struct Met {
    Retained<NSObject> object;
    Retained<NSObject> reference; // to nil as long as the object was met conditionally only
    bool isEncoded = false;
};

struct ArchiverStorage {
    Retained<NSMutableData> data;
    NSPropertyListFormat format = NSPropertyListBinaryFormat_v1_0;
    bool isFinished = false;
    Retained<NSMutableArray> objects;
    Retained<NSMutableDictionary> top;
    Retained<NSObject> nilReference;
    std::vector<NSMutableDictionary> open; // what the objects being encoded have encoded, the innermost last
    ObjectNumbers metNumbers;
    std::vector<Met> met; // by these numbers
    std::unordered_map<Object*, Retained<NSObject>> classReferences;
};

ArchiverStorage& storageOf(NSKeyedArchiver archiver) {
    return embedded::storageOf<ArchiverStorage>(archiver);
}

void checkUnfinished(NSKeyedArchiver self, SEL selector) {
    if (storageOf(self).isFinished)
        raiseFrom(NSInvalidArchiveOperationException(), self, selector,
                  "archive already finished, cannot encode anything more");
}

// ---- Objects

// The index of the next object, as a reference holds it.
std::uint32_t nextNumber(const ArchiverStorage& storage) {
    const NSUInteger count = storage.objects.count();
    if (count > std::numeric_limits<std::uint32_t>::max())
        tessarin::raise(NSInvalidArchiveOperationException(), "too many objects for one archive"_ns);
    return static_cast<std::uint32_t>(count);
}

NSObject referenceToClass(ArchiverStorage& storage, Class archivedClass) {
    Retained<NSObject>& reference = storage.classReferences[archivedClass.object()];
    if (reference) return reference;
    const Retained<NSMutableArray> names = adopt(NSMutableArray::alloc().init());
    for (Object* each = archivedClass.object(); each; each = runtime::superclassOf(each))
        names.addObject(NSString(runtime::className(each)));
    const Retained<NSMutableDictionary> description = adopt(NSMutableDictionary::alloc().init());
    description.setObject_forKey(names.objectAtIndex(0), classNameKey());
    description.setObject_forKey(names, classesKey());
    reference = newKeyedArchiverUID(nextNumber(storage));
    storage.objects.addObject(description);
    return reference;
}

// Whether an object stands in the archive as it is.
bool isLeaf(NSObject object, Class archivedClass) {
    if (archivedClass == NSString::classObject()) return !object.isEqual(nullText());
    return archivedClass == NSNumber::classObject() || archivedClass == NSData::classObject();
}

// Encodes an object by sending it encodeWithCoder:.
void encodeContents(NSKeyedArchiver self, SEL selector, NSObject object, Class archivedClass) {
    ArchiverStorage& storage = storageOf(self);
    if (storage.open.size() == deepest)
        raiseFrom(NSInvalidArchiveOperationException(), self, selector,
                  "objects inside each other more than " + std::to_string(deepest) + " deep");
    struct Opened {
        std::vector<NSMutableDictionary>& open;
        ~Opened() { open.pop_back(); }
    };
    const NSMutableDictionary contents = storage.objects.lastObject();
    storage.open.push_back(contents);
    const Opened opened{storage.open};
    send<void>(object, "encodeWithCoder:"_sel, self);
    contents.setObject_forKey(referenceToClass(storage, archivedClass), classKey());
}

// The number of an object that is met.
std::size_t meet(ArchiverStorage& storage, NSObject object) {
    const std::size_t number = storage.metNumbers.numberOf(object);
    if (number == storage.met.size()) storage.met.push_back({retain(object), newKeyedArchiverUID(0)});
    return number;
}

// Takes an object that could not be encoded for one that was met conditionally only, so that what refers to
// it refers to nil, and it may be encoded again.
class Encoding {
public:
    Encoding(ArchiverStorage& storage, std::size_t number) : storage_(storage), number_(number) {
        met().isEncoded = true;
    }
    Encoding(const Encoding&) = delete;
    Encoding& operator=(const Encoding&) = delete;
    ~Encoding() {
        if (isDone) return;
        met().isEncoded = false;
        setKeyedArchiverUID(met().reference, 0);
    }

    bool isDone = false;

private:
    Met& met() const { return storage_.met[number_]; }

    ArchiverStorage& storage_;
    const std::size_t number_;
};

NSObject referenceTo(NSKeyedArchiver self, SEL selector, NSObject object) {
    ArchiverStorage& storage = storageOf(self);
    if (!object) return storage.nilReference;
    const std::size_t number = meet(storage, object);
    const NSObject reference = storage.met[number].reference;
    if (storage.met[number].isEncoded) return reference;
    Encoding encoding(storage, number);
    const Class archivedClass = send<Class>(object, "classForKeyedArchiver"_sel);
    if (isLeaf(object, archivedClass)) {
        // As it is now: a string that looks immutable may be one that its owner goes on editing.
        const Retained<NSObject> copy = adopt(NSObject(object.copy()));
        setKeyedArchiverUID(reference, nextNumber(storage));
        storage.objects.addObject(copy);
    } else {
        const Retained<NSMutableDictionary> contents = adopt(NSMutableDictionary::alloc().init());
        setKeyedArchiverUID(reference, nextNumber(storage));
        storage.objects.addObject(contents);
        encodeContents(self, selector, object, archivedClass);
    }
    encoding.isDone = true;
    return reference;
}

// ---- Values

// Puts a value into what is being encoded.
void put(NSKeyedArchiver self, SEL selector, NSObject value, NSString key) {
    const ArchiverStorage& storage = storageOf(self);
    const NSMutableDictionary contents = storage.open.empty() ? storage.top : storage.open.back();
    const NSString escaped = escapedKey(key, self, selector);
    if (contents.objectForKey(escaped))
        NSLog("*** NSKeyedArchiver warning: replacing existing value for key '%@'; probable duplication of "
              "encoding keys in class hierarchy"_ns,
              key);
    contents.setObject_forKey(value, escaped);
}

void encodeObject(NSKeyedArchiver self, SEL selector, NSObject object, NSString key) {
    checkUnfinished(self, selector);
    put(self, selector, referenceTo(self, selector, object), key);
}

void encodeConditionalObject(NSKeyedArchiver self, SEL selector, NSObject object, NSString key) {
    checkUnfinished(self, selector);
    ArchiverStorage& storage = storageOf(self);
    put(self, selector, object ? storage.met[meet(storage, object)].reference : storage.nilReference, key);
}

template <class Value, NSNumber (*NumberWith)(Value)>
void encodeNumber(NSKeyedArchiver self, SEL selector, Value value, NSString key) {
    checkUnfinished(self, selector);
    put(self, selector, NumberWith(value), key);
}

NSNumber numberWithBool(BOOL value) { return NSNumber::numberWithBool(value != NO); }
NSNumber numberWithInt64(std::int64_t value) { return NSNumber::numberWithLongLong(value); }
NSNumber numberWithInteger(NSInteger value) { return NSNumber::numberWithLongLong(value); }

void encodeBytes(NSKeyedArchiver self, SEL selector, const std::uint8_t* bytes, NSUInteger length,
                 NSString key) {
    checkUnfinished(self, selector);
    put(self, selector, NSData::dataWithBytes_length(bytes, length), key);
}

BOOL allowsKeyedCoding(NSKeyedArchiver, SEL) { return YES; }

// ---- From beginning to end

NSKeyedArchiver initForWriting(NSKeyedArchiver self, SEL, NSMutableData data) {
    ArchiverStorage& storage = storageOf(self);
    storage.data = retain(data);
    storage.objects = adopt(NSMutableArray::alloc().init());
    storage.objects.addObject(nullText());
    storage.top = adopt(NSMutableDictionary::alloc().init());
    storage.nilReference = newKeyedArchiverUID(0);
    return self;
}

NSPropertyListFormat outputFormat(NSKeyedArchiver self, SEL) { return storageOf(self).format; }

void setOutputFormat(NSKeyedArchiver self, SEL selector, NSPropertyListFormat format) {
    if (format != NSPropertyListXMLFormat_v1_0 && format != NSPropertyListBinaryFormat_v1_0)
        raiseFrom(NSInvalidArgumentException(), self, selector,
                  "invalid format (" + std::to_string(format) + ")");
    storageOf(self).format = format;
}

void finishEncoding(NSKeyedArchiver self, SEL selector) {
    ArchiverStorage& storage = storageOf(self);
    if (storage.isFinished) return;
    const Retained<NSMutableDictionary> archive = adopt(NSMutableDictionary::alloc().init());
    archive.setObject_forKey(NSNumber::numberWithInt(version), versionKey());
    archive.setObject_forKey(archiverName(), archiverKey());
    archive.setObject_forKey(storage.top, topKey());
    archive.setObject_forKey(storage.objects, objectsKey());
    try {
        const std::string document = storage.format == NSPropertyListXMLFormat_v1_0
                                         ? writeXMLPropertyList(archive)
                                         : writeBinaryPropertyList(archive);
        storage.data.appendBytes_length(document.data(), document.size());
    } catch (const PropertyListProblem& problem) {
        raiseFrom(NSInvalidArchiveOperationException(), self, selector, problem.what());
    }
    storage.isFinished = true;
}

NSData archivedDataWithRootObject(Class self, SEL, NSObject root) {
    const NSMutableData data = NSMutableData::data();
    const AutoreleasePool pool;
    const Retained<NSKeyedArchiver> archiver =
        adopt(as<NSKeyedArchiver>(self.alloc()).initForWritingWithMutableData(data));
    archiver.encodeObject_forKey(root, rootKey());
    archiver.finishEncoding();
    return data;
}

BOOL archiveRootObject_toFile(Class self, SEL, NSObject root, NSString path) {
    const auto archive = send<NSData>(self, "archivedDataWithRootObject:"_sel, root);
    return archive.writeToFile_atomically(path, true) ? YES : NO;
}

} // namespace

void archiveItems(NSKeyedArchiver archiver, std::span<const NSObject> items, NSString key) {
    const SEL selector = "encodeObject:forKey:"_sel;
    checkUnfinished(archiver, selector);
    const Retained<NSMutableArray> references = adopt(NSMutableArray::alloc().initWithCapacity(items.size()));
    for (const NSObject item : items) references.addObject(referenceTo(archiver, selector, item));
    put(archiver, selector, references, key);
}

void archivePropertyList(NSKeyedArchiver archiver, NSObject propertyList, NSString key) {
    const SEL selector = "encodeObject:forKey:"_sel;
    checkUnfinished(archiver, selector);
    put(archiver, selector, propertyList, key);
}

ClassDescription describeNSKeyedArchiver() {
    return {
        .name = "NSKeyedArchiver",
        .superclass = "NSCoder",
        .storage = storageLayout<ArchiverStorage>(),
        .methods = {classMethod("archivedDataWithRootObject:", archivedDataWithRootObject),
                    classMethod("archiveRootObject:toFile:", archiveRootObject_toFile),
                    instanceMethod("initForWritingWithMutableData:", initForWriting),
                    instanceMethod("outputFormat", outputFormat),
                    instanceMethod("setOutputFormat:", setOutputFormat),
                    instanceMethod("finishEncoding", finishEncoding),
                    instanceMethod("allowsKeyedCoding", allowsKeyedCoding),
                    instanceMethod("encodeObject:forKey:", encodeObject),
                    instanceMethod("encodeConditionalObject:forKey:", encodeConditionalObject),
                    instanceMethod("encodeBool:forKey:", encodeNumber<BOOL, numberWithBool>),
                    instanceMethod("encodeInt:forKey:", encodeNumber<int, NSNumber::numberWithInt>),
                    instanceMethod("encodeInt32:forKey:",
                                   encodeNumber<std::int32_t, NSNumber::numberWithInt>),
                    instanceMethod("encodeInt64:forKey:", encodeNumber<std::int64_t, numberWithInt64>),
                    instanceMethod("encodeInteger:forKey:", encodeNumber<NSInteger, numberWithInteger>),
                    instanceMethod("encodeFloat:forKey:", encodeNumber<float, NSNumber::numberWithFloat>),
                    instanceMethod("encodeDouble:forKey:", encodeNumber<double, NSNumber::numberWithDouble>),
                    instanceMethod("encodeBytes:length:forKey:", encodeBytes)},
    };
}

} // namespace tessarin::embedded
