// The objects of a binary property list that hold no others.
#pragma once

#include "platform/embedded/foundation/BinaryPropertyListDocument.h"
#include "platform/embedded/foundation/PropertyListObjects.h"

namespace tessarin::embedded {

// Makes them, and keeps count of the bytes of its strings and data: of places that share one, or of objects
// that lie over each other, each may get its own. A document that makes too much of them is refused.
class BinaryPropertyListLeaves {
public:
    using Header = BinaryPropertyListDocument::Header;

    // Both are used for as long as this is.
    BinaryPropertyListLeaves(const BinaryPropertyListDocument& document, const PropertyListObjects& objects)
        : document_(document), objects_(objects) {}

    // The object that a header is of, which is no container's; never nil.
    Retained<NSObject> make(Header header, bool isKey);

    std::size_t byteCount() const { return byteCount_; }
    // Counts bytes as if they had been made; false where those would be too many.
    bool count(std::size_t bytes);

private:
    Retained<NSObject> newInteger(Header header) const;
    Retained<NSObject> newReal(Header header) const;
    Retained<NSObject> newUid(Header header) const;
    Retained<NSObject> newAsciiString(Header header, bool isKey);
    Retained<NSObject> newUtf16String(Header header, bool isKey);
    Retained<NSObject> newData(Header header);
    std::size_t lengthAt(Header& header, std::size_t unitSize);

    const BinaryPropertyListDocument& document_;
    const PropertyListObjects& objects_;
    std::size_t byteCount_ = 0;
};

} // namespace tessarin::embedded
