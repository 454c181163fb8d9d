// A binary property list as bytes: where its objects are, how long, and to what they refer.
#pragma once

#include "platform/embedded/foundation/BinaryPropertyListFormat.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tessarin::embedded {

// Whatever a document says is checked before it is believed. What is wrong is thrown as a PropertyListProblem
// that names the object by its number and the place by its offset.
class BinaryPropertyListDocument {
public:
    // An object's first byte, and the position behind it.
    struct Header {
        binaryPropertyList::Marker marker;
        std::uint8_t low;
        std::size_t position;

        bool isContainer() const {
            return marker == binaryPropertyList::array || marker == binaryPropertyList::dictionary;
        }
        bool isString() const {
            return marker == binaryPropertyList::asciiString || marker == binaryPropertyList::utf16String;
        }
    };

    explicit BinaryPropertyListDocument(std::string_view bytes);

    std::size_t size() const { return bytes_.size(); }
    std::size_t objectCount() const { return trailer_.objectCount; }
    std::uint64_t topObject() const { return trailer_.topObject; }
    std::size_t referenceSize() const { return trailer_.referenceSize; }

    // The number of the object that a container refers to at a position within it.
    std::uint64_t referenceAt(std::size_t position, std::uint64_t container) {
        current_ = container;
        offset_ = position;
        const std::uint64_t number = bigEndian(position, trailer_.referenceSize);
        if (number >= trailer_.objectCount) [[unlikely]]
            fail("Reference to an object that is not there");
        return number;
    }

    Header headerOf(std::uint64_t number) {
        current_ = number;
        offset_ = trailer_.offsetTableStart + number * trailer_.offsetSize; // of its entry in the table
        const std::uint64_t offset = bigEndian(offset_, trailer_.offsetSize);
        if (offset < binaryPropertyList::magic.size() || offset >= trailer_.offsetTableStart) [[unlikely]]
            fail("Offset outside of the objects");
        offset_ = offset;
        const auto byte = static_cast<unsigned char>(bytes_[offset]);
        return {static_cast<binaryPropertyList::Marker>(byte >> 4), static_cast<std::uint8_t>(byte & 0xF),
                offset + 1};
    }

    // The length of an object whose units take that many bytes, all of which are in the document. The
    // header's position then is that of the first unit.
    std::size_t lengthAt(Header& header, std::size_t unitSize) const {
        std::uint64_t length = header.low;
        if (length == binaryPropertyList::lengthFollows) length = longLengthAt(header);
        // The first test keeps the product from going round.
        const std::uint64_t available = trailer_.offsetTableStart - header.position;
        if (length > available || length * unitSize > available) [[unlikely]]
            fail("Length beyond the end of the objects");
        return length;
    }

    // A container's entries or items: how many, and where the references to them are. Those of an array are
    // all values.
    struct Contents {
        std::size_t count;
        std::size_t keys;
        std::size_t values;
        std::size_t end;
    };
    Contents contentsOf(Header header) const {
        const bool isDictionary = header.marker == binaryPropertyList::dictionary;
        const std::size_t size = trailer_.referenceSize;
        const std::size_t count = lengthAt(header, isDictionary ? 2 * size : size);
        const std::size_t values = header.position + (isDictionary ? count * size : 0);
        return {count, header.position, values, values + count * size};
    }

    // Whether that many bytes from a position on belong to the objects.
    bool holds(std::size_t position, std::size_t count) const {
        return count <= trailer_.offsetTableStart - position;
    }
    std::string_view bytes(std::size_t position, std::size_t count) const {
        return bytes_.substr(position, count);
    }
    // A number of 1 to 8 bytes, which begin before the trailer or are one of its last three fields: there are
    // eight bytes from there on.
    std::uint64_t bigEndian(std::size_t position, std::size_t size) const {
        const char* const bytes = bytes_.data() + position;
        const auto byte = [&](int index) { return std::uint64_t{static_cast<unsigned char>(bytes[index])}; };
        // One load, and one instruction that turns it round.
        const std::uint64_t all = byte(0) << 56 | byte(1) << 48 | byte(2) << 40 | byte(3) << 32
                                  | byte(4) << 24 | byte(5) << 16 | byte(6) << 8 | byte(7);
        return all >> 8 * (8 - size);
    }

    // Refuses the document for the object or the reference that was looked at last.
    [[noreturn, gnu::cold]] void fail(const char* text) const;

private:
    std::uint64_t longLengthAt(Header& header) const;

    std::string_view bytes_;
    binaryPropertyList::Trailer trailer_{};
    std::uint64_t current_ = 0; // the number of the object that was looked at last
    std::uint64_t offset_ = 0;
};

} // namespace tessarin::embedded
