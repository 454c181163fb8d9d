#include "platform/embedded/foundation/BinaryPropertyListReader.h"

#include "TessarinPlatform/AutoreleasePool.h"
#include "TessarinPlatform/NSDate.h"
#include "platform/embedded/foundation/BinaryPropertyListFormat.h"
#include "platform/embedded/foundation/KeyedArchiverUID.h"
#include "platform/embedded/foundation/PropertyListObjects.h"
#include "platform/services/PropertyListError.h"

#include <bit>
#include <limits>
#include <vector>

namespace tessarin::embedded {
namespace {

using namespace binaryPropertyList;

// How many references may be followed beyond those of a document that shares nothing. Where each place has
// its own mutable containers, a small document can stand for a list that no memory holds.
constexpr std::size_t mostSharedReferences = std::size_t{1} << 20;
// How many bytes of strings and data may be made of a document: of places that share one, or of objects that
// lie over each other, each gets its own.
constexpr std::size_t leafBytesPerByte = 16;
constexpr std::size_t leafBytesOfAny = std::size_t{4} << 20;

class Reader {
public:
    Reader(std::string_view document, NSPropertyListMutabilityOptions mutability)
        : document_(document), objects_(mutability) {}

    Retained<NSObject> read();

private:
    // A container whose contents are being read.
    struct OpenContainer {
        std::uint64_t number;
        std::size_t references; // where the numbers of its contents stand
        std::size_t contentCount;
        std::size_t read; // of the contents
        bool isDictionary;
    };
    // A place in the document, behind the object's first byte.
    struct Header {
        Marker marker;
        std::uint8_t low;
        std::size_t position;
    };

    void readTrailer();
    Header headerOf(std::uint64_t number);
    void readObject(std::uint64_t number);
    void openContainer(std::uint64_t number, const Header& header);
    void readNextContent();
    void closeContainer();
    Retained<NSObject> leaf(const Header& header);
    Retained<NSObject> integerAt(const Header& header);
    Retained<NSObject> realAt(const Header& header);
    Retained<NSObject> stringAt(Header header);
    Retained<NSObject> uidAt(const Header& header);

    bool isKeyPlace() const;
    std::uint64_t bigEndian(std::size_t position, std::size_t size) const;
    std::size_t lengthAt(Header& header, std::size_t unitSize);
    std::size_t leafLengthAt(Header& header, std::size_t unitSize);
    [[noreturn]] void fail(const std::string& text) const;

    std::string_view document_;
    const PropertyListObjects objects_;
    Trailer trailer_{};
    std::vector<Retained<NSObject>>
        known_;                // what was read before, by number; not what each place has its own of
    std::vector<bool> isOpen_; // by number
    std::vector<OpenContainer> open_;
    std::vector<Retained<NSObject>> items_; // of all open containers
    std::size_t followedCount_ = 0;         // references
    std::size_t leafBytes_ = 0;             // of the strings and data made
    // The number of the object being read and where it lies, for the text of a problem.
    std::uint64_t current_ = 0;
    std::uint64_t offset_ = 0;
};

void Reader::fail(const std::string& text) const {
    throw PropertyListProblem(text + " in object " + std::to_string(current_) + " at offset "
                              + std::to_string(offset_));
}

Retained<NSObject> Reader::read() {
    readTrailer();
    known_.resize(trailer_.objectCount);
    isOpen_.resize(trailer_.objectCount);
    readObject(trailer_.topObject);
    while (!open_.empty()) {
        if (open_.back().read < open_.back().contentCount)
            readNextContent();
        else
            closeContainer();
    }
    return std::move(items_.front());
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

std::uint64_t Reader::bigEndian(std::size_t position, std::size_t size) const {
    std::uint64_t value = 0;
    const char* const bytes = document_.data() + position;
    for (std::size_t index = 0; index < size; ++index)
        value = value << 8 | static_cast<unsigned char>(bytes[index]);
    return value;
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
    if (length > (trailer_.offsetTableStart - header.position) / unitSize)
        fail("Length beyond the end of the objects");
    return length;
}

// The same for strings and data.
std::size_t Reader::leafLengthAt(Header& header, std::size_t unitSize) {
    const std::size_t length = lengthAt(header, unitSize);
    leafBytes_ += unitSize * length;
    if (leafBytes_ > leafBytesPerByte * document_.size() + leafBytesOfAny)
        fail("Too many copies of shared strings and data");
    return length;
}

// Of the objects that readers make: those at the place of a key are never mutable.
bool isString(NSObject object) { return object.object()->isa == NSString::classObject().object(); }

bool Reader::isKeyPlace() const {
    return !open_.empty() && open_.back().isDictionary && open_.back().read <= open_.back().contentCount / 2;
}

// Appends an object to the items, or opens it when it is a container.
void Reader::readObject(std::uint64_t number) {
    if (known_[number]) {
        items_.push_back(known_[number]);
    } else {
        if (isOpen_[number]) fail("Container inside itself");
        const Header header = headerOf(number);
        if (header.marker == array || header.marker == dictionary) {
            if (isKeyPlace()) fail("Key that is no string");
            return openContainer(number, header);
        }
        items_.push_back(leaf(header));
        if (!objects_.hasMutableLeaves()) known_[number] = items_.back();
    }
    if (isKeyPlace() && !isString(items_.back())) fail("Key that is no string");
}

void Reader::openContainer(std::uint64_t number, const Header& header) {
    if (open_.size() == deepestPropertyList) fail("Containers nested more than 512 deep");
    const bool isDictionary = header.marker == dictionary;
    Header behind = header;
    const std::size_t perEntry = isDictionary ? 2 : 1;
    const std::size_t length = lengthAt(behind, perEntry * trailer_.referenceSize);
    open_.push_back({number, behind.position, perEntry * length, 0, isDictionary});
    isOpen_[number] = true;
}

void Reader::readNextContent() {
    OpenContainer& container = open_.back();
    const std::uint64_t number =
        bigEndian(container.references + container.read * trailer_.referenceSize, trailer_.referenceSize);
    ++container.read;
    current_ = container.number;
    offset_ = container.references + (container.read - 1) * trailer_.referenceSize;
    if (number >= trailer_.objectCount) fail("Reference to an object that is not there");
    if (++followedCount_ > document_.size() + mostSharedReferences)
        fail("Too many copies of shared mutable objects");
    readObject(number);
}

void Reader::closeContainer() {
    const OpenContainer container = open_.back();
    open_.pop_back();
    isOpen_[container.number] = false;
    const std::size_t first = items_.size() - container.contentCount;
    const auto contents = std::span(items_).subspan(first);
    const std::size_t keyCount = container.contentCount / 2;
    Retained<NSObject> made =
        container.isDictionary ? objects_.dictionary(contents.data(), contents.data() + keyCount, keyCount, 1)
                               : objects_.array(contents);
    items_.resize(first);
    if (!objects_.hasMutableContainers()) known_[container.number] = made;
    items_.push_back(std::move(made));
}

Retained<NSObject> Reader::leaf(const Header& header) {
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
        return stringAt(header);
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
    if (byte == dateByte) return retain<NSObject>(NSDate::dateWithTimeIntervalSinceReferenceDate(value));
    return PropertyListObjects::real(value);
}

Retained<NSObject> Reader::stringAt(Header header) {
    if (header.marker == asciiString) {
        const std::size_t length = leafLengthAt(header, 1);
        const std::string_view text = document_.substr(header.position, length);
        for (const char character : text)
            if (static_cast<unsigned char>(character) >= 0x80) fail("String that is no ASCII");
        return objects_.string(text, isKeyPlace());
    }
    const std::size_t length = leafLengthAt(header, 2);
    std::u16string units(length, u'\0');
    for (std::size_t index = 0; index < length; ++index)
        units[index] = static_cast<char16_t>(bigEndian(header.position + 2 * index, 2));
    return objects_.string(units, isKeyPlace());
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
    const AutoreleasePool pool; // for the numbers, which would otherwise wait for the caller's
    return Reader(document, mutability).read();
}

} // namespace tessarin::embedded
