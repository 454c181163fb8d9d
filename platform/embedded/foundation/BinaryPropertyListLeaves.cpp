#include "platform/embedded/foundation/BinaryPropertyListLeaves.h"

#include "platform/embedded/foundation/KeyedArchiverUID.h"
#include "platform/services/Utf8.h"

#include <bit>
#include <limits>
#include <string>

namespace tessarin::embedded {
namespace {

constexpr std::size_t bytesPerByte = 16; // of the document
constexpr std::size_t bytesOfAny = std::size_t{4} << 20;

} // namespace

using namespace binaryPropertyList;

bool BinaryPropertyListLeaves::count(std::size_t bytes) {
    const std::size_t most = bytesPerByte * document_.size() + bytesOfAny;
    if (bytes > most - byteCount_) return false;
    byteCount_ += bytes;
    return true;
}

std::size_t BinaryPropertyListLeaves::lengthAt(Header& header, std::size_t unitSize) {
    const std::size_t length = document_.lengthAt(header, unitSize);
    if (!count(unitSize * length)) document_.fail("Too many copies of shared strings and data");
    return length;
}

Retained<NSObject> BinaryPropertyListLeaves::make(Header header, bool isKey) {
    switch (header.marker) {
    case simple:
        if (header.low == falseByte || header.low == trueByte)
            return PropertyListObjects::boolean(header.low == trueByte);
        break;
    case integer:
        return newInteger(header);
    case real:
    case date:
        return newReal(header);
    case data:
        return newData(header);
    case asciiString:
        return newAsciiString(header, isKey);
    case utf16String:
        return newUtf16String(header, isKey);
    case uid:
        return newUid(header);
    default:
        break;
    }
    document_.fail("Unknown kind of object");
}

Retained<NSObject> BinaryPropertyListLeaves::newInteger(Header header) const {
    const std::size_t size = std::size_t{1} << header.low;
    if (header.low > 4) document_.fail("Integer of a wrong size");
    if (!document_.holds(header.position, size)) document_.fail("Integer that is cut off");
    if (size < 8) return PropertyListObjects::unsignedInteger(document_.bigEndian(header.position, size));
    const std::uint64_t high = document_.bigEndian(header.position, 8);
    if (size == 8) return PropertyListObjects::integer(static_cast<std::int64_t>(high));
    const std::uint64_t low = document_.bigEndian(header.position + 8, 8);
    if (high == 0) return PropertyListObjects::unsignedInteger(low);
    const auto value = static_cast<std::int64_t>(low);
    if (high == ~std::uint64_t{0} && value < 0) return PropertyListObjects::integer(value);
    document_.fail("Integer out of range");
}

Retained<NSObject> BinaryPropertyListLeaves::newReal(Header header) const {
    const auto byte = static_cast<std::uint8_t>(header.marker << 4 | header.low);
    const std::size_t size = byte == floatByte ? 4 : 8;
    if (byte != floatByte && byte != doubleByte && byte != dateByte)
        document_.fail("Real or date of a wrong size");
    if (!document_.holds(header.position, size)) document_.fail("Real or date that is cut off");
    const std::uint64_t bits = document_.bigEndian(header.position, size);
    if (byte == floatByte)
        return PropertyListObjects::singleReal(std::bit_cast<float>(static_cast<std::uint32_t>(bits)));
    const auto value = std::bit_cast<double>(bits);
    if (byte == dateByte) return PropertyListObjects::date(value);
    return PropertyListObjects::real(value);
}

// As on the platform, any number of bytes that makes 32 bits.
Retained<NSObject> BinaryPropertyListLeaves::newUid(Header header) const {
    const std::size_t size = std::size_t{header.low} + 1;
    if (size > 8) document_.fail("UID of a wrong size");
    if (!document_.holds(header.position, size)) document_.fail("UID that is cut off");
    const std::uint64_t value = document_.bigEndian(header.position, size);
    if (value > std::numeric_limits<std::uint32_t>::max()) document_.fail("UID out of range");
    return newKeyedArchiverUID(static_cast<std::uint32_t>(value));
}

Retained<NSObject> BinaryPropertyListLeaves::newAsciiString(Header header, bool isKey) {
    const std::size_t length = lengthAt(header, 1);
    const std::string_view text = document_.bytes(header.position, length);
    if (!utf8::isAscii(text)) document_.fail("String that is no ASCII");
    return objects_.asciiString(text, isKey);
}

Retained<NSObject> BinaryPropertyListLeaves::newUtf16String(Header header, bool isKey) {
    const std::size_t length = lengthAt(header, 2);
    std::u16string units(length, u'\0');
    for (std::size_t index = 0; index < length; ++index)
        units[index] = static_cast<char16_t>(document_.bigEndian(header.position + 2 * index, 2));
    return objects_.string(units, isKey);
}

Retained<NSObject> BinaryPropertyListLeaves::newData(Header header) {
    const std::size_t length = lengthAt(header, 1);
    return objects_.data(document_.bytes(header.position, length));
}

} // namespace tessarin::embedded
