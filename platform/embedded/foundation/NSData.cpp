#include "platform/embedded/foundation/DataStorage.h"
#include "platform/embedded/foundation/FileContents.h"
#include "platform/embedded/foundation/FileSystemPath.h"
#include "platform/embedded/foundation/KeyedCoding.h"
#include "platform/embedded/foundation/RangeCheck.h"

#include "TessarinPlatform/NSException.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

namespace tessarin::embedded {
namespace {

DataStorage& storageOf(NSData data) { return embedded::storageOf<DataStorage>(data); }

std::span<const std::byte> span(const void* bytes, NSUInteger length) {
    return {static_cast<const std::byte*>(bytes), length};
}

const void* bytes(NSData self, SEL) { return storageOf(self).bytes; }
NSUInteger length(NSData self, SEL) { return storageOf(self).length; }

// ---- Making

NSData initWithBytes_length(NSData self, SEL, const void* bytes, NSUInteger length) {
    Retained<NSData> owned = adopt(self);
    storageOf(self).append(span(bytes, length));
    return owned.leak();
}

NSData initialize(NSObject data, std::span<const std::byte> bytes) {
    return send<NSData>(data, "initWithBytes:length:"_sel, static_cast<const void*>(bytes.data()),
                        static_cast<NSUInteger>(bytes.size()));
}

id makeData(Class self, std::span<const std::byte> bytes) {
    if (self == NSData::classObject()) return newData(bytes).autorelease();
    return adopt(initialize(self.alloc(), bytes)).autorelease();
}

id data(Class self, SEL) { return makeData(self, {}); }

id dataWithBytes_length(Class self, SEL, const void* bytes, NSUInteger length) {
    return makeData(self, span(bytes, length));
}

id dataWithData(Class self, SEL, NSData other) { return makeData(self, bytesOf(other)); }

std::optional<std::vector<std::byte>> contentsOfFile(NSString path) {
    const auto file = fileSystemPath(path);
    return file ? readFile(*file) : std::nullopt;
}

id dataWithContentsOfFile(Class self, SEL, NSString path) {
    const auto contents = contentsOfFile(path);
    return contents ? makeData(self, *contents) : id();
}

NSData initWithData(NSData self, SEL, NSData other) { return initialize(self, bytesOf(other)); }

NSData initWithContentsOfFile(NSData self, SEL, NSString path) {
    Retained<NSData> owned = adopt(self);
    const auto contents = contentsOfFile(path);
    return contents ? initialize(owned.leak(), *contents) : NSData();
}

// ---- Copying

// A mutable data object answers copyWithZone: itself; every other cannot change.
NSData copyWithZone(NSData self, SEL, void*) { return retain(self).leak(); }

NSObject mutableCopyWithZone(NSData self, SEL, void*) {
    return initialize("NSMutableData"_class.alloc(), bytesOf(self));
}

// ---- Archiving

Class classForCoder(NSData self, SEL) {
    const Class mutableClass = "NSMutableData"_class;
    return self.isKindOfClass(mutableClass) ? mutableClass : NSData::classObject();
}

void encodeWithCoder(NSData self, SEL, NSCoder coder) {
    coder.encodeBytes_length_forKey(static_cast<const std::uint8_t*>(self.bytes()), self.length(),
                                    "NS.data"_ns);
}

NSData initWithCoder(NSData self, SEL, NSCoder coder) {
    Retained<NSData> owned = adopt(self);
    NSUInteger length = 0;
    const std::uint8_t* const bytes = coder.decodeBytesForKey_returnedLength("NS.data"_ns, &length);
    checkCopyOfDecoded(coder, length);
    return initialize(owned.leak(), span(bytes, length));
}

// ---- Reading

void checkRange(NSData self, SEL selector, NSRange range) {
    const NSUInteger length = self.length();
    if (isWithin(range, length)) return;
    raiseFrom(NSRangeException(), self, selector,
              "range {" + std::to_string(range.location) + ", " + std::to_string(range.length)
                  + "} exceeds data length " + std::to_string(length));
}

NSData subdataWithRange(NSData self, SEL selector, NSRange range) {
    checkRange(self, selector, range);
    return newData(bytesOf(self).subspan(range.location, range.length)).autorelease();
}

void getBytes_range(NSData self, SEL selector, void* buffer, NSRange range) {
    checkRange(self, selector, range);
    if (range.length > 0)
        std::memcpy(buffer, static_cast<const std::byte*>(self.bytes()) + range.location, range.length);
}

// No more than there is.
void getBytes_length(NSData self, SEL selector, void* buffer, NSUInteger length) {
    getBytes_range(self, selector, buffer, {0, std::min(length, self.length())});
}

// Whether no subclass has taken the primitive operations.
bool hasDataStorage(NSData data) {
    return answersWith(data, "bytes"_sel, bytes) && answersWith(data, "length"_sel, length);
}

BOOL isEqualToData(NSData self, SEL, NSData other) {
    if (self == other) return YES;
    if (!other) return NO;
    // An application's own data is asked first, since its code may edit the other.
    const bool isOtherFirst = hasDataStorage(self);
    const std::span first = bytesOf(isOtherFirst ? other : self);
    const std::span second = bytesOf(isOtherFirst ? self : other);
    return std::equal(first.begin(), first.end(), second.begin(), second.end()) ? YES : NO;
}

BOOL isEqual(NSData self, SEL selector, NSObject other) {
    return isEqualToData(self, selector, kindOf<NSData>(other));
}

// Of the first bytes only, as on the platform, so that hashing a long run costs no more than a short one.
NSUInteger hash(NSData self, SEL) {
    constexpr std::size_t hashedLength = 80;
    const std::span all = bytesOf(self);
    std::uint64_t result = 14695981039346656037u ^ all.size();
    for (const std::byte byte : all.first(std::min(all.size(), hashedLength)))
        result = (result ^ std::to_integer<std::uint64_t>(byte)) * 1099511628211u;
    return static_cast<NSUInteger>(result);
}

// Hexadecimal digits, a blank after every fourth byte: <48656c6c 6f>.
NSString description(NSData self, SEL) {
    const std::span all = bytesOf(self);
    std::string text("<");
    text.reserve(2 + 9 * (all.size() / 4 + 1));
    for (std::size_t index = 0; index < all.size(); ++index) {
        if (index > 0 && index % 4 == 0) text += ' ';
        const auto value = std::to_integer<unsigned>(all[index]);
        text += "0123456789abcdef"[value >> 4];
        text += "0123456789abcdef"[value & 0xF];
    }
    return NSString(text + '>');
}

BOOL writeToFile_atomically(NSData self, SEL, NSString path, BOOL atomically) {
    const auto file = fileSystemPath(path);
    if (!file) return NO;
    return atomically != NO ? writeFileAtomically(*file, bytesOf(self)) : writeFile(*file, bytesOf(self));
}

} // namespace

DataStorage::~DataStorage() {
    if (capacity > 0) std::free(bytes);
}

void DataStorage::reserve(NSUInteger wanted) {
    if (wanted <= capacity) return;
    const NSUInteger grown = std::max(wanted, length == 0 ? wanted : capacity + capacity / 2);
    void* memory = std::realloc(bytes, grown);
    if (!memory) throw std::bad_alloc();
    bytes = static_cast<std::byte*>(memory);
    capacity = grown;
}

void DataStorage::resize(NSUInteger wanted) {
    reserve(wanted);
    if (wanted > length) std::memset(bytes + length, 0, wanted - length);
    length = wanted;
}

void DataStorage::append(std::span<const std::byte> added) {
    if (added.empty()) return;
    if (added.size() > std::numeric_limits<NSUInteger>::max() - length) throw std::bad_alloc();
    // Making room may move the bytes.
    const bool isOwn = length > 0 && added.data() >= bytes && added.data() < bytes + length;
    const auto offset = isOwn ? added.data() - bytes : 0;
    reserve(length + added.size());
    std::memcpy(bytes + length, isOwn ? bytes + offset : added.data(), added.size());
    length += added.size();
}

Retained<NSData> newData(std::span<const std::byte> bytes) {
    const auto [data, storage, space] = createInstanceWith<DataStorage>("NSData"_class, bytes.size());
    storage.bytes = static_cast<std::byte*>(space);
    storage.length = bytes.size();
    std::copy(bytes.begin(), bytes.end(), storage.bytes);
    return adopt(NSData(data));
}

ClassDescription describeNSData() {
    return {
        .name = "NSData",
        .superclass = "NSObject",
        .protocols = {"NSCoding", "NSCopying", "NSMutableCopying"},
        .storage = storageLayout<DataStorage>(),
        .methods = {classMethod("data", data),
                    classMethod("dataWithBytes:length:", dataWithBytes_length),
                    classMethod("dataWithData:", dataWithData),
                    classMethod("dataWithContentsOfFile:", dataWithContentsOfFile),
                    instanceMethod("initWithBytes:length:", initWithBytes_length),
                    instanceMethod("initWithData:", initWithData),
                    instanceMethod("initWithContentsOfFile:", initWithContentsOfFile),
                    instanceMethod("copyWithZone:", copyWithZone),
                    instanceMethod("mutableCopyWithZone:", mutableCopyWithZone),
                    instanceMethod("classForCoder", classForCoder),
                    instanceMethod("encodeWithCoder:", encodeWithCoder),
                    instanceMethod("initWithCoder:", initWithCoder),
                    instanceMethod("bytes", bytes),
                    instanceMethod("length", length),
                    instanceMethod("subdataWithRange:", subdataWithRange),
                    instanceMethod("getBytes:length:", getBytes_length),
                    instanceMethod("getBytes:range:", getBytes_range),
                    instanceMethod("isEqualToData:", isEqualToData),
                    instanceMethod("isEqual:", isEqual),
                    instanceMethod("hash", hash),
                    instanceMethod("description", description),
                    instanceMethod("writeToFile:atomically:", writeToFile_atomically)},
    };
}

} // namespace tessarin::embedded
