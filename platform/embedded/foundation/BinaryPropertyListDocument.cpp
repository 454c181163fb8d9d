#include "platform/embedded/foundation/BinaryPropertyListDocument.h"

#include "platform/services/PropertyListError.h"

#include <string>

namespace tessarin::embedded {

using namespace binaryPropertyList;

BinaryPropertyListDocument::BinaryPropertyListDocument(std::string_view bytes) : bytes_(bytes) {
    const auto refuse = [](const char* text, std::size_t offset) {
        throw PropertyListProblem(std::string(text) + " at offset " + std::to_string(offset));
    };
    // The last character is a minor version, which has never made a difference.
    if (!bytes.starts_with(magic.substr(0, magic.size() - 1)))
        refuse("Binary property list of an unknown version", 6);
    if (bytes.size() < magic.size() + trailerSize)
        refuse("Binary property list that is too short and ends", bytes.size());
    const std::size_t start = bytes.size() - trailerSize;
    trailer_ = {static_cast<std::uint8_t>(bytes[start + 6]), static_cast<std::uint8_t>(bytes[start + 7]),
                bigEndian(start + 8, 8), bigEndian(start + 16, 8), bigEndian(start + 24, 8)};
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

std::uint64_t BinaryPropertyListDocument::longLengthAt(Header& header) const {
    if (!holds(header.position, 1)) fail("Length that is missing");
    const auto byte = static_cast<unsigned char>(bytes_[header.position++]);
    const std::size_t size = std::size_t{1} << (byte & 0xF);
    if (byte >> 4 != integer || size > 8) fail("Length that is no integer");
    if (!holds(header.position, size)) fail("Length that is cut off");
    const std::uint64_t length = bigEndian(header.position, size);
    header.position += size;
    return length;
}

void BinaryPropertyListDocument::fail(const char* text) const {
    throw PropertyListProblem(std::string(text) + " in object " + std::to_string(current_) + " at offset "
                              + std::to_string(offset_));
}

} // namespace tessarin::embedded
