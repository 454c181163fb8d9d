#include "platform/embedded/foundation/BinaryPropertyListWriter.h"

#include "TessarinPlatform/NSArray.h"
#include "TessarinPlatform/NSData.h"
#include "TessarinPlatform/NSDate.h"
#include "TessarinPlatform/NSDictionary.h"
#include "TessarinPlatform/NSNumber.h"
#include "platform/embedded/foundation/BinaryPropertyListFormat.h"
#include "platform/embedded/foundation/KeyedArchiverUID.h"
#include "platform/embedded/foundation/NumberValue.h"
#include "platform/embedded/foundation/StringStorage.h"
#include "platform/services/ObjectNumbers.h"
#include "platform/services/PropertyListError.h"

#include <algorithm>
#include <bit>
#include <vector>

namespace tessarin::embedded {
namespace {

using namespace binaryPropertyList;

class Writer {
public:
    std::string write(NSObject propertyList);

private:
    // An object of the document. The contents of a container (of a dictionary first all keys, then all
    // values) are fetched once, since they might be made anew each time.
    struct Entry {
        NSObject object;
        std::size_t firstContent;
        std::size_t contentCount;
        bool isContainer;
    };

    void number(NSObject propertyList);
    void fetchContents(Entry& entry);
    void appendObject(const Entry& entry);
    void appendNumber(NSNumber number);
    void appendString(NSString string);
    void appendLength(Marker marker, std::uint64_t length);
    void appendSmallestInteger(std::uint64_t value);
    void append(std::uint64_t value, unsigned size);

    std::string document_;
    std::vector<Entry> entries_;
    std::vector<NSObject> contents_; // of all containers
    ObjectNumbers numbers_;
    unsigned referenceSize_ = 1;
};

// The fewest bytes of 1, 2, 4 and 8 that hold a number.
unsigned smallestSize(std::uint64_t value) {
    if (value <= 0xFF) return 1;
    if (value <= 0xFFFF) return 2;
    return value <= 0xFFFFFFFF ? 4 : 8;
}

std::string Writer::write(NSObject propertyList) {
    number(propertyList);
    referenceSize_ = smallestSize(entries_.size());
    document_ = magic;
    std::vector<std::uint64_t> offsets;
    offsets.reserve(entries_.size());
    for (const Entry& entry : entries_) {
        offsets.push_back(document_.size());
        appendObject(entry);
    }
    const std::uint64_t tableStart = document_.size();
    const unsigned offsetSize = smallestSize(tableStart);
    for (const std::uint64_t offset : offsets) append(offset, offsetSize);
    append(0, 6); // nothing, and the sort version
    append(offsetSize, 1);
    append(referenceSize_, 1);
    append(entries_.size(), 8);
    append(0, 8); // the top object
    append(tableStart, 8);
    return std::move(document_);
}

// Gives every object its number, a container's before those of its contents.
void Writer::number(NSObject propertyList) {
    std::vector<NSObject> pending{propertyList};
    while (!pending.empty()) {
        const NSObject object = pending.back();
        pending.pop_back();
        if (numbers_.numberOf(object) < entries_.size()) continue;
        Entry entry{object, contents_.size(), 0, false};
        fetchContents(entry);
        entries_.push_back(entry);
        pending.insert(pending.end(), contents_.rbegin(),
                       contents_.rbegin() + static_cast<std::ptrdiff_t>(entry.contentCount));
    }
}

void Writer::fetchContents(Entry& entry) {
    if (const auto array = kindOf<NSArray>(entry.object)) {
        for (const NSObject item : array) contents_.push_back(item);
        entry.isContainer = true;
    } else if (const auto dictionary = kindOf<NSDictionary>(entry.object)) {
        for (const NSObject key : dictionary) contents_.push_back(key);
        const std::size_t end = contents_.size();
        for (std::size_t index = entry.firstContent; index < end; ++index)
            contents_.push_back(dictionary.objectForKey(contents_[index]));
        entry.isContainer = true;
    }
    entry.contentCount = contents_.size() - entry.firstContent;
}

void Writer::appendObject(const Entry& entry) {
    if (entry.isContainer) {
        const bool isArray = entry.object.isKindOfClass(NSArray::classObject());
        appendLength(isArray ? array : dictionary, isArray ? entry.contentCount : entry.contentCount / 2);
        for (std::size_t index = 0; index < entry.contentCount; ++index)
            append(numbers_.numberOf(contents_[entry.firstContent + index]), referenceSize_);
    } else if (const auto string = kindOf<NSString>(entry.object)) {
        appendString(string);
    } else if (const auto number = kindOf<NSNumber>(entry.object)) {
        appendNumber(number);
    } else if (const auto instant = kindOf<NSDate>(entry.object)) {
        append(dateByte, 1);
        append(std::bit_cast<std::uint64_t>(instant.timeIntervalSinceReferenceDate()), 8);
    } else if (const auto bytes = kindOf<NSData>(entry.object)) {
        appendLength(data, bytes.length());
        document_.append(static_cast<const char*>(bytes.bytes()), bytes.length());
    } else if (const auto reference = keyedArchiverUID(entry.object)) {
        const unsigned size = smallestSize(*reference);
        append(uid << 4 | (size - 1), 1);
        append(*reference, size);
    } else {
        throw PropertyListProblem("An object changed while it was written");
    }
}

void Writer::appendNumber(NSNumber number) {
    const NumberValue value = valueOf(number);
    switch (value.kind) {
    case NumberKind::boolean:
        append(value.integer != 0 ? trueByte : falseByte, 1);
        break;
    case NumberKind::float32:
        append(floatByte, 1);
        append(std::bit_cast<std::uint32_t>(value.toFloat()), 4);
        break;
    case NumberKind::float64:
        append(doubleByte, 1);
        append(std::bit_cast<std::uint64_t>(value.real), 8);
        break;
    case NumberKind::uint64:
        // 16 bytes, since 8 are read with a sign.
        append(integer << 4 | 4, 1);
        append(0, 8);
        append(static_cast<std::uint64_t>(value.integer), 8);
        break;
    case NumberKind::int32:
    case NumberKind::int64:
        appendSmallestInteger(static_cast<std::uint64_t>(value.integer));
        break;
    }
}

// Fewer than 8 bytes are read without a sign, so that a negative number takes 8.
void Writer::appendSmallestInteger(std::uint64_t value) {
    const unsigned size = smallestSize(value);
    append(integer << 4 | static_cast<unsigned>(std::countr_zero(size)), 1);
    append(value, size);
}

void Writer::appendString(NSString string) {
    contentsOf(string).visit([this](auto units) {
        if (std::ranges::all_of(units, [](char16_t unit) { return unit < 0x80; })) {
            appendLength(asciiString, units.size());
            document_.append(units.begin(), units.end());
        } else {
            appendLength(utf16String, units.size());
            for (const char16_t unit : units) append(unit, 2);
        }
    });
}

void Writer::appendLength(Marker marker, std::uint64_t length) {
    const auto kind = static_cast<std::uint64_t>(marker) << 4;
    if (length < lengthFollows) return append(kind | length, 1);
    append(kind | lengthFollows, 1);
    appendSmallestInteger(length);
}

void Writer::append(std::uint64_t value, unsigned size) {
    for (unsigned byte = size; byte-- > 0;)
        document_.push_back(static_cast<char>(static_cast<unsigned char>(value >> 8 * byte)));
}

} // namespace

std::string writeBinaryPropertyList(NSObject propertyList) { return Writer().write(propertyList); }

} // namespace tessarin::embedded
