#include "platform/embedded/foundation/BinaryPropertyListWriter.h"

#include "TessarinPlatform/NSArray.h"
#include "TessarinPlatform/NSData.h"
#include "TessarinPlatform/NSDate.h"
#include "TessarinPlatform/NSDictionary.h"
#include "TessarinPlatform/NSNumber.h"
#include "platform/embedded/foundation/BinaryPropertyListFormat.h"
#include "platform/embedded/foundation/KeyedArchiverUID.h"
#include "platform/embedded/foundation/NumberValue.h"
#include "platform/embedded/foundation/PropertyLists.h"
#include "platform/embedded/foundation/StringStorage.h"
#include "platform/services/ObjectNumbers.h"
#include "platform/services/PropertyListError.h"
#include "platform/services/Utf8.h"

#include <bit>
#include <utility>
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
        PropertyListKind kind;
        std::size_t firstContent = 0;
        std::size_t contentCount = 0;
    };

    template <class BeforeOtherCode>
    std::size_t numberOf(NSObject object, bool mayBeShared, const BeforeOtherCode& beforeOtherCode);
    void holdAll();
    void hold(NSObject object);
    void fetchContents(std::size_t entry);
    void appendObject(const Entry& entry);
    void appendContainer(const Entry& entry);
    void appendNumber(NSNumber number);
    void appendString(NSString string);
    void appendLength(Marker marker, std::uint64_t length);
    void appendSmallestInteger(std::uint64_t value);
    void append(std::uint64_t value, unsigned size);

    std::string document_;
    std::vector<Entry> entries_;        // by number
    std::vector<std::size_t> contents_; // the numbers of those of all containers
    std::vector<std::size_t> values_;   // of the dictionary being fetched
    ObjectNumbers sharedNumbers_;       // of objects that may be met again
    std::vector<std::size_t> shared_;   // their numbers among the entries
    std::vector<Retained<NSObject>> held_;
    bool holds_ = false;
    PropertyListKinds<PropertyListStorage> kinds_;
    unsigned referenceSize_ = 1;
};

// The fewest bytes of 1, 2, 4 and 8 that hold a number.
unsigned smallestSize(std::uint64_t value) {
    if (value <= 0xFF) return 1;
    if (value <= 0xFFFF) return 2;
    return value <= 0xFFFFFFFF ? 4 : 8;
}

std::string Writer::write(NSObject propertyList) {
    numberOf(propertyList, true, [&] { hold(propertyList); });
    for (std::size_t entry = 0; entry < entries_.size(); ++entry)
        if (isContainer(entries_[entry].kind)) fetchContents(entry);
    referenceSize_ = smallestSize(entries_.size());
    document_ = magic;
    std::vector<std::uint64_t> offsets;
    offsets.reserve(entries_.size());
    for (const Entry& entry : entries_) {
        offsets.push_back(document_.size());
        if (PropertyListStorage::isForeign(entry.object, entry.kind)) holdAll();
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

// The number of an object, which is the next one for an object that was not met before. What has a single
// owner is met once.
template <class BeforeOtherCode>
std::size_t Writer::numberOf(NSObject object, bool mayBeShared, const BeforeOtherCode& beforeOtherCode) {
    if (mayBeShared) {
        const std::size_t number = sharedNumbers_.numberOf(object);
        if (number < shared_.size()) return shared_[number];
        shared_.push_back(entries_.size());
    }
    entries_.push_back({object, kinds_.of(object, beforeOtherCode)});
    return entries_.size() - 1;
}

// Other code that is asked for what an object holds, or for its class, may empty the containers that it
// stands in, and may keep what it answers no longer than the next question. From then on everything is held
// until it is written.
void Writer::holdAll() {
    if (std::exchange(holds_, true)) return;
    for (const Entry& entry : entries_) held_.push_back(retain(entry.object));
}

void Writer::hold(NSObject object) {
    holdAll();
    held_.push_back(retain(object));
}

void Writer::fetchContents(std::size_t entry) {
    const NSObject container = entries_[entry].object;
    const PropertyListKind kind = entries_[entry].kind;
    const std::size_t first = contents_.size();
    const bool isForeign = PropertyListStorage::isForeign(container, kind);
    if (isForeign) holdAll();
    NSObject key, object;
    // Neither is held by what it stands in once other code has run.
    const auto holdBoth = [&] {
        hold(object);
        if (key) hold(key);
    };
    const auto number = [&](NSObject content) {
        return numberOf(content, holds_ || PropertyListStorage::mayBeShared(content), holdBoth);
    };
    values_.clear();
    PropertyListStorage::Contents contents(container, kind, isForeign);
    while (contents.next(key, object)) {
        if (holds_) holdBoth();
        if (kind == PropertyListKind::dictionary) {
            contents_.push_back(number(key));
            values_.push_back(number(object));
        } else {
            contents_.push_back(number(object));
        }
    }
    contents_.insert(contents_.end(), values_.begin(), values_.end());
    entries_[entry].firstContent = first;
    entries_[entry].contentCount = contents_.size() - first;
}

void Writer::appendObject(const Entry& entry) {
    switch (entry.kind) {
    case PropertyListKind::string:
        return appendString(as<NSString>(entry.object));
    case PropertyListKind::number:
        return appendNumber(as<NSNumber>(entry.object));
    case PropertyListKind::date:
        append(dateByte, 1);
        return append(std::bit_cast<std::uint64_t>(as<NSDate>(entry.object).timeIntervalSinceReferenceDate()),
                      8);
    case PropertyListKind::data: {
        const auto bytes = as<NSData>(entry.object);
        appendLength(data, bytes.length());
        document_.append(static_cast<const char*>(bytes.bytes()), bytes.length());
        return;
    }
    case PropertyListKind::uid:
        if (const auto reference = keyedArchiverUID(entry.object)) {
            const unsigned size = smallestSize(*reference);
            append(uid << 4 | (size - 1), 1);
            return append(*reference, size);
        }
        break;
    case PropertyListKind::array:
    case PropertyListKind::dictionary:
        return appendContainer(entry);
    case PropertyListKind::other:
        break;
    }
    throw PropertyListProblem("An object changed while it was written");
}

void Writer::appendContainer(const Entry& entry) {
    const bool isArray = entry.kind == PropertyListKind::array;
    appendLength(isArray ? array : dictionary, isArray ? entry.contentCount : entry.contentCount / 2);
    for (std::size_t index = 0; index < entry.contentCount; ++index)
        append(contents_[entry.firstContent + index], referenceSize_);
}

void Writer::appendNumber(NSNumber number) {
    const NumberValue value = valueInPropertyList(number);
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
    const Contents text = contentsOf(string);
    const bool isASCII = text.visit([](auto units) { return utf8::isAscii(units.data(), units.size()); });
    appendLength(isASCII ? asciiString : utf16String, text.length());
    if (isASCII && !text.isWide())
        document_.append(reinterpret_cast<const char*>(text.narrow()), text.length());
    else
        text.visit([&](auto units) {
            for (const char16_t unit : units) append(unit, isASCII ? 1 : 2);
        });
}

void Writer::appendLength(Marker marker, std::uint64_t length) {
    const auto kind = static_cast<std::uint64_t>(marker) << 4;
    if (length < lengthFollows) return append(kind | length, 1);
    append(kind | lengthFollows, 1);
    appendSmallestInteger(length);
}

void Writer::append(std::uint64_t value, unsigned size) {
    char bytes[sizeof value];
    for (unsigned byte = 0; byte < size; ++byte)
        bytes[byte] = static_cast<char>(static_cast<unsigned char>(value >> 8 * (size - 1 - byte)));
    document_.append(bytes, size);
}

} // namespace

std::string writeBinaryPropertyList(NSObject propertyList) { return Writer().write(propertyList); }

} // namespace tessarin::embedded
