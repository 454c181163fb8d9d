#include "platform/embedded/foundation/BinaryPropertyListReader.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "platform/embedded/foundation/BinaryPropertyListFormat.h"
#include "platform/embedded/foundation/KeyedArchiverUID.h"
#include "platform/embedded/foundation/PropertyListObjects.h"
#include "platform/embedded/runtime/ReferenceCounting.h"
#include "platform/services/PropertyListError.h"
#include "platform/services/Utf8.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <utility>
#include <vector>

namespace tessarin::embedded {
namespace {

using namespace binaryPropertyList;

// How many references may be followed beyond those of a document that shares nothing. Where each place has
// its own mutable containers, a small document can stand for a list that no memory holds.
constexpr std::size_t mostSharedReferences = std::size_t{1} << 20;
// So many of them are copied before it is found out whether there would be too many.
constexpr std::size_t copiedUntried = 4096;
// How many bytes of strings and data may be made of a document: of places that share one, or of objects that
// lie over each other, each gets its own.
constexpr std::size_t leafBytesPerByte = 16;
constexpr std::size_t leafBytesOfAny = std::size_t{4} << 20;

class Reader {
public:
    Reader(std::string_view document, NSPropertyListMutabilityOptions mutability)
        : document_(document),
          mutability_(mutability),
          objects_(mutability),
          mostUntried_(objects_.hasMutableContainers() ? document.size() + copiedUntried : mostFollowed()) {}

    Retained<NSObject> read();
    // Fails as reading would, without making copies of what is shared.
    void tryOut();

private:
    // What an object takes, with everything in it.
    struct Extent {
        std::size_t followed = 0; // references
        std::size_t leafBytes = 0;
        std::size_t levels = 0; // of containers inside each other
        bool isString = false;
        bool isSound = false; // read before
    };
    // A container whose contents are being read.
    struct OpenContainer {
        std::uint64_t number = 0;
        std::size_t references = 0; // where the numbers of its contents stand
        std::size_t contentCount = 0;
        std::size_t read = 0; // of the contents
        bool isDictionary = false;
        NSDictionary model; // a dictionary with the same keys, which then are passed over
        // In a trial: what had been taken when it was opened, and how many levels there are inside.
        Extent before = {};
    };
    // A place in the document, behind the object's first byte.
    struct Header {
        Marker marker;
        std::uint8_t low;
        std::size_t position;
    };
    // A dictionary without equal keys, and where the numbers of its keys stand.
    struct Model {
        std::string_view keys;
        NSDictionary dictionary;
    };

    void readTrailer();
    void readAll();
    Header headerOf(std::uint64_t number);
    bool readObject(std::uint64_t number, bool isKey);
    void openContainer(std::uint64_t number, const Header& header);
    bool readContents();
    void closeContainer();
    bool passOver(std::uint64_t number, bool isKey);
    void closeTriedContainer();
    void checkSharing();
    Retained<NSObject> leaf(const Header& header, bool isKey);
    Retained<NSObject> integerAt(const Header& header);
    Retained<NSObject> realAt(const Header& header);
    Retained<NSObject> stringAt(Header header, bool isKey);
    Retained<NSObject> uidAt(const Header& header);

    std::size_t mostFollowed() const { return document_.size() + mostSharedReferences; }
    std::size_t mostLeafBytes() const { return leafBytesPerByte * document_.size() + leafBytesOfAny; }
    std::string_view keysOf(const OpenContainer& container) const;
    Model& modelFor(std::string_view keys);
    std::uint64_t bigEndian(std::size_t position, std::size_t size) const;
    std::size_t lengthAt(Header& header, std::size_t unitSize);
    std::size_t leafLengthAt(Header& header, std::size_t unitSize);
    [[noreturn, gnu::cold]] void fail(const char* text) const;

    // Stands for a container that is open, in the place of an object.
    static inline Object* const openMark = reinterpret_cast<Object*>(alignof(Object));

    const std::string_view document_;
    const NSPropertyListMutabilityOptions mutability_;
    const PropertyListObjects objects_;
    const Object* const stringClass_ = NSString::classObject().object();
    Trailer trailer_{};
    // What was read before, by number; null for what each place has its own of. It is held by the items and
    // by the containers made of them.
    std::vector<Object*> known_;
    std::vector<OpenContainer> open_;
    std::vector<Retained<NSObject>> items_; // of all open containers
    // What equal keys have left out of their dictionaries, held since other places may refer to it.
    std::vector<Retained<NSObject>> leftOut_;
    std::array<Model, 16> models_{};
    std::size_t followedCount_ = 0; // references
    std::size_t leafBytes_ = 0;     // of the strings and data made
    std::size_t mostUntried_;       // references that are followed without a trial
    bool isTrial_ = false;
    std::vector<Extent> extents_; // by number, in a trial
    // The number of the object being read and where it lies, for the text of a problem.
    std::uint64_t current_ = 0;
    std::uint64_t offset_ = 0;
};

void Reader::fail(const char* text) const {
    throw PropertyListProblem(std::string(text) + " in object " + std::to_string(current_) + " at offset "
                              + std::to_string(offset_));
}

Retained<NSObject> Reader::read() {
    readTrailer();
    readAll();
    return std::move(items_.front());
}

void Reader::tryOut() {
    isTrial_ = true;
    mostUntried_ = mostFollowed();
    readTrailer();
    extents_.resize(trailer_.objectCount);
    readAll();
}

void Reader::readAll() {
    known_.resize(trailer_.objectCount);
    items_.reserve(std::min<std::size_t>(trailer_.objectCount, 1024));
    readObject(trailer_.topObject, false);
    while (!open_.empty()) {
        if (!readContents()) continue;
        if (isTrial_)
            closeTriedContainer();
        else
            closeContainer();
    }
}

void Reader::readTrailer() {
    const auto refuse = [](const char* text, std::size_t offset) {
        throw PropertyListProblem(std::string(text) + " at offset " + std::to_string(offset));
    };
    // The last character is a minor version, which has never made a difference.
    if (!document_.starts_with(magic.substr(0, magic.size() - 1)))
        refuse("Binary property list of an unknown version", 6);
    if (document_.size() < magic.size() + trailerSize)
        refuse("Binary property list that is too short and ends", document_.size());
    const std::size_t start = document_.size() - trailerSize;
    trailer_ = {static_cast<std::uint8_t>(document_[start + 6]),
                static_cast<std::uint8_t>(document_[start + 7]), bigEndian(start + 8, 8),
                bigEndian(start + 16, 8), bigEndian(start + 24, 8)};
    if (trailer_.offsetSize < 1 || trailer_.offsetSize > 8)
        refuse("Trailer with a wrong size of offsets", start + 6);
    if (trailer_.referenceSize < 1 || trailer_.referenceSize > 8)
        refuse("Trailer with a wrong size of references", start + 7);
    if (trailer_.offsetTableStart <= magic.size() || trailer_.offsetTableStart > start)
        refuse("Offset table outside of the document", start + 24);
    if (trailer_.objectCount == 0
        || trailer_.objectCount > (start - trailer_.offsetTableStart) / trailer_.offsetSize)
        refuse("Trailer with a wrong number of objects", start + 8);
    if (trailer_.topObject >= trailer_.objectCount)
        refuse("Trailer with a top object that is not there", start + 16);
}

// A number of 1 to 8 bytes. There are eight bytes at the position: whatever is read as a number stands before
// the trailer or is one of its last three fields.
std::uint64_t Reader::bigEndian(std::size_t position, std::size_t size) const {
    const char* const bytes = document_.data() + position;
    const auto byte = [&](int index) { return std::uint64_t{static_cast<unsigned char>(bytes[index])}; };
    // One load, and one instruction that turns it round.
    const std::uint64_t all = byte(0) << 56 | byte(1) << 48 | byte(2) << 40 | byte(3) << 32 | byte(4) << 24
                              | byte(5) << 16 | byte(6) << 8 | byte(7);
    return all >> 8 * (8 - size);
}

// The numbers of objects are checked before they come here.
Reader::Header Reader::headerOf(std::uint64_t number) {
    current_ = number;
    offset_ = trailer_.offsetTableStart + number * trailer_.offsetSize; // of its entry in the table
    const std::uint64_t offset = bigEndian(offset_, trailer_.offsetSize);
    if (offset < magic.size() || offset >= trailer_.offsetTableStart) fail("Offset outside of the objects");
    offset_ = offset;
    const auto byte = static_cast<unsigned char>(document_[offset]);
    return {static_cast<Marker>(byte >> 4), static_cast<std::uint8_t>(byte & 0xF), offset + 1};
}

// The length of an object whose units take that many bytes, all of which are in the document.
std::size_t Reader::lengthAt(Header& header, std::size_t unitSize) {
    std::uint64_t length = header.low;
    if (length == lengthFollows) {
        if (header.position >= trailer_.offsetTableStart) fail("Length that is missing");
        const auto byte = static_cast<unsigned char>(document_[header.position++]);
        const std::size_t size = std::size_t{1} << (byte & 0xF);
        if (byte >> 4 != integer || size > 8) fail("Length that is no integer");
        if (size > trailer_.offsetTableStart - header.position) fail("Length that is cut off");
        length = bigEndian(header.position, size);
        header.position += size;
    }
    // The first test keeps the product from going round.
    const std::uint64_t available = trailer_.offsetTableStart - header.position;
    if (length > available || length * unitSize > available) fail("Length beyond the end of the objects");
    return length;
}

// The same for strings and data.
std::size_t Reader::leafLengthAt(Header& header, std::size_t unitSize) {
    const std::size_t length = lengthAt(header, unitSize);
    leafBytes_ += unitSize * length;
    if (leafBytes_ > mostLeafBytes()) fail("Too many copies of shared strings and data");
    return length;
}

// Appends an object that is not known to the items; false where it is a container that has been opened
// instead.
bool Reader::readObject(std::uint64_t number, bool isKey) {
    if (known_[number]) fail("Container inside itself");
    const Header header = headerOf(number);
    if (header.marker == array || header.marker == dictionary) {
        if (isKey) fail("Key that is no string");
        openContainer(number, header);
        return false;
    }
    if (isTrial_) {
        const std::size_t leafBytes = leafBytes_;
        leaf(header, isKey).reset();
        const bool isString = header.marker == asciiString || header.marker == utf16String;
        extents_[number] = {0, leafBytes_ - leafBytes, 0, isString, true};
        if (isKey && !isString) fail("Key that is no string");
        return true;
    }
    items_.push_back(leaf(header, isKey));
    if (!objects_.hasMutableLeaves()) known_[number] = items_.back().object();
    return true;
}

void Reader::openContainer(std::uint64_t number, const Header& header) {
    if (open_.size() == deepestPropertyList) fail("Containers nested more than 512 deep");
    const bool isDictionary = header.marker == dictionary;
    Header behind = header;
    const std::size_t perEntry = isDictionary ? 2 : 1;
    const std::size_t length = lengthAt(behind, perEntry * trailer_.referenceSize);
    OpenContainer& container = open_.emplace_back();
    container.number = number;
    container.references = behind.position;
    container.contentCount = perEntry * length;
    container.isDictionary = isDictionary;
    if (isTrial_) container.before = {followedCount_, leafBytes_};
    known_[number] = openMark;
    // Most dictionaries have the keys of another one. Mutable leaves are each place's own.
    const bool isWithinBounds = followedCount_ + length <= mostFollowed();
    if (!isDictionary || length == 0 || objects_.hasMutableLeaves() || !isWithinBounds) return;
    const std::string_view keys = keysOf(container);
    const Model& model = modelFor(keys);
    if (model.keys != keys) return;
    container.model = model.dictionary;
    container.read = length;
    followedCount_ += length;
}

std::string_view Reader::keysOf(const OpenContainer& container) const {
    return document_.substr(container.references, container.contentCount / 2 * trailer_.referenceSize);
}

// Where a dictionary with such keys is remembered, by the numbers of the first and the last.
Reader::Model& Reader::modelFor(std::string_view keys) {
    const auto last = static_cast<unsigned char>(keys.back());
    const auto first = static_cast<unsigned char>(keys[trailer_.referenceSize - std::size_t{1}]);
    return models_[(first + 5U * last) % models_.size()];
}

// Reads on in the innermost container; false where another one has been opened inside it.
bool Reader::readContents() {
    OpenContainer& container = open_.back();
    while (container.read < container.contentCount) {
        const std::size_t position = container.references + container.read * trailer_.referenceSize;
        const std::uint64_t number = bigEndian(position, trailer_.referenceSize);
        const bool isKey = container.isDictionary && container.read < container.contentCount / 2;
        ++container.read;
        current_ = container.number;
        offset_ = position;
        if (number >= trailer_.objectCount) fail("Reference to an object that is not there");
        if (++followedCount_ > mostUntried_) [[unlikely]]
            checkSharing();
        if (isTrial_) [[unlikely]] {
            if (!passOver(number, isKey) && !readObject(number, isKey)) return false;
            continue;
        }
        Object* const known = known_[number];
        if (known && known != openMark) {
            addUnsharedReference(known);
            items_.push_back(adopt(NSObject(known)));
        } else if (!readObject(number, isKey)) {
            return false;
        }
        // Of the strings that are made, those at the place of a key are never mutable.
        if (isKey && items_.back().object()->isa != stringClass_) fail("Key that is no string");
    }
    return true;
}

void Reader::closeContainer() {
    const OpenContainer& container = open_.back();
    const std::size_t keyCount = container.contentCount / 2;
    const std::size_t itemCount = container.model ? keyCount : container.contentCount;
    const std::size_t first = items_.size() - itemCount;
    const auto contents = std::span(items_).subspan(first);
    Retained<NSObject> made;
    if (!container.isDictionary) {
        made = objects_.array(contents);
    } else if (container.model) {
        made = objects_.dictionary(container.model, contents.data());
    } else {
        made = objects_.dictionary(contents.data(), contents.data() + keyCount, keyCount, 1);
        bool hasEqualKeys = false;
        for (Retained<NSObject>& item : contents) {
            if (!item) continue;
            hasEqualKeys = true;
            leftOut_.push_back(std::move(item));
        }
        if (!hasEqualKeys && keyCount > 0 && !objects_.hasMutableLeaves()) {
            const std::string_view keys = keysOf(container);
            modelFor(keys) = {keys, as<NSDictionary>(made)};
        }
    }
    items_.resize(first);
    known_[container.number] = objects_.hasMutableContainers() ? nullptr : made.object();
    open_.pop_back();
    items_.push_back(std::move(made));
}

// Counts a sound object's contents once more without looking at them; false where there is something to be
// found in them.
bool Reader::passOver(std::uint64_t number, bool isKey) {
    const Extent& extent = extents_[number];
    // The leaves that are made are shared unless they are mutable.
    const std::size_t leafBytes = objects_.hasMutableLeaves() ? extent.leafBytes : 0;
    const bool isSharedLeaf = extent.isSound && extent.levels == 0 && !objects_.hasMutableLeaves();
    if (isSharedLeaf && isKey && !extent.isString) fail("Key that is no string");
    if (!extent.isSound || (isKey && !extent.isString) || followedCount_ + extent.followed > mostFollowed()
        || leafBytes_ + leafBytes > mostLeafBytes() || open_.size() + extent.levels > deepestPropertyList)
        return false;
    followedCount_ += extent.followed;
    leafBytes_ += leafBytes;
    OpenContainer& container = open_.back();
    container.before.levels = std::max(container.before.levels, extent.levels);
    return true;
}

void Reader::closeTriedContainer() {
    const auto [number, before] = std::pair(open_.back().number, open_.back().before);
    open_.pop_back();
    known_[number] = nullptr;
    extents_[number] = {followedCount_ - before.followed, leafBytes_ - before.leafBytes, before.levels + 1,
                        false, true};
    if (open_.empty()) return;
    OpenContainer& outer = open_.back();
    outer.before.levels = std::max(outer.before.levels, before.levels + 1);
}

// A few bytes may stand for a million containers. Before so many are made, only to be refused, what they
// would be is counted, each object's contents once.
void Reader::checkSharing() {
    if (mostUntried_ == mostFollowed()) fail("Too many references to shared objects");
    mostUntried_ = mostFollowed();
    Reader(document_, mutability_).tryOut();
}

Retained<NSObject> Reader::leaf(const Header& header, bool isKey) {
    Header behind = header;
    switch (header.marker) {
    case simple:
        if (header.low == falseByte || header.low == trueByte)
            return PropertyListObjects::boolean(header.low == trueByte);
        break;
    case integer:
        return integerAt(header);
    case real:
    case date:
        return realAt(header);
    case data: {
        const std::size_t length = leafLengthAt(behind, 1);
        return objects_.data(document_.substr(behind.position, length));
    }
    case asciiString:
    case utf16String:
        return stringAt(header, isKey);
    case uid:
        return uidAt(header);
    default:
        break;
    }
    fail("Unknown kind of object");
}

Retained<NSObject> Reader::integerAt(const Header& header) {
    const std::size_t size = std::size_t{1} << header.low;
    if (header.low > 4) fail("Integer of a wrong size");
    if (size > trailer_.offsetTableStart - header.position) fail("Integer that is cut off");
    if (size < 8) return PropertyListObjects::unsignedInteger(bigEndian(header.position, size));
    if (size == 8)
        return PropertyListObjects::integer(static_cast<std::int64_t>(bigEndian(header.position, 8)));
    const std::uint64_t high = bigEndian(header.position, 8);
    const std::uint64_t low = bigEndian(header.position + 8, 8);
    if (high == 0) return PropertyListObjects::unsignedInteger(low);
    const auto value = static_cast<std::int64_t>(low);
    if (high == ~std::uint64_t{0} && value < 0) return PropertyListObjects::integer(value);
    fail("Integer out of range");
}

Retained<NSObject> Reader::realAt(const Header& header) {
    const auto byte = static_cast<std::uint8_t>(header.marker << 4 | header.low);
    const std::size_t size = byte == floatByte ? 4 : 8;
    if (byte != floatByte && byte != doubleByte && byte != dateByte) fail("Real or date of a wrong size");
    if (size > trailer_.offsetTableStart - header.position) fail("Real or date that is cut off");
    const std::uint64_t bits = bigEndian(header.position, size);
    if (byte == floatByte)
        return PropertyListObjects::singleReal(std::bit_cast<float>(static_cast<std::uint32_t>(bits)));
    const auto value = std::bit_cast<double>(bits);
    if (byte == dateByte) return PropertyListObjects::date(value);
    return PropertyListObjects::real(value);
}

Retained<NSObject> Reader::stringAt(Header header, bool isKey) {
    if (header.marker == asciiString) {
        const std::size_t length = leafLengthAt(header, 1);
        const std::string_view text = document_.substr(header.position, length);
        if (!utf8::isAscii(text)) fail("String that is no ASCII");
        return objects_.asciiString(text, isKey);
    }
    const std::size_t length = leafLengthAt(header, 2);
    std::u16string units(length, u'\0');
    for (std::size_t index = 0; index < length; ++index)
        units[index] = static_cast<char16_t>(bigEndian(header.position + 2 * index, 2));
    return objects_.string(units, isKey);
}

// As on the platform, any number of bytes that makes 32 bits.
Retained<NSObject> Reader::uidAt(const Header& header) {
    const std::size_t size = std::size_t{header.low} + 1;
    if (size > 8) fail("UID of a wrong size");
    if (size > trailer_.offsetTableStart - header.position) fail("UID that is cut off");
    const std::uint64_t value = bigEndian(header.position, size);
    if (value > std::numeric_limits<std::uint32_t>::max()) fail("UID out of range");
    return newKeyedArchiverUID(static_cast<std::uint32_t>(value));
}

} // namespace

Retained<NSObject> readBinaryPropertyList(std::string_view document,
                                          NSPropertyListMutabilityOptions mutability) {
    const AutoreleasePool pool; // for mutable data, whose makers autorelease them
    return Reader(document, mutability).read();
}

} // namespace tessarin::embedded
