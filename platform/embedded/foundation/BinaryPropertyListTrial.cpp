#include "platform/embedded/foundation/BinaryPropertyListTrial.h"

#include "platform/embedded/foundation/BinaryPropertyListLeaves.h"
#include "platform/embedded/foundation/PropertyListObjects.h"
#include "platform/services/PropertyListKinds.h"

#include <algorithm>
#include <vector>

namespace tessarin::embedded {
namespace {

using Header = BinaryPropertyListDocument::Header;

class Trial {
public:
    Trial(const BinaryPropertyListDocument& document, NSPropertyListMutabilityOptions mutability)
        : document_(document),
          objects_(mutability),
          leaves_(document_, objects_),
          extents_(document.objectCount()) {}

    void run();

private:
    // What an object takes, with everything in it.
    struct Extent {
        std::size_t references = 0;
        std::size_t leafBytes = 0;
        std::size_t levels = 0; // of containers inside each other
        bool isOpen = false;    // a container whose contents are being tried
        bool isSound = false;   // tried before
        bool isString = false;
    };
    struct Container {
        std::uint64_t number;
        std::size_t position; // of the next reference
        std::size_t values;   // where those of a dictionary's values begin
        std::size_t end;
        Extent before; // what had been taken when it was opened; its levels are those inside so far
    };

    void tryObject(std::uint64_t number, bool isKey);
    void tryLeaf(std::uint64_t number, const Header& header, bool isKey);
    void open(std::uint64_t number, const Header& header);
    bool passOver(std::uint64_t number, bool isKey);
    void close();

    BinaryPropertyListDocument document_; // its own, which knows what was looked at last
    const PropertyListObjects objects_;
    BinaryPropertyListLeaves leaves_;
    std::vector<Extent> extents_; // by number
    std::vector<Container> open_;
    std::size_t references_ = 0;
};

void Trial::run() {
    tryObject(document_.topObject(), false);
    while (!open_.empty()) {
        Container& container = open_.back();
        if (container.position == container.end) {
            close();
            continue;
        }
        const bool isKey = container.position < container.values;
        const std::uint64_t number = document_.referenceAt(container.position, container.number);
        container.position += document_.referenceSize();
        if (++references_ > mostReferences(document_))
            document_.fail("Too many references to shared objects");
        if (!passOver(number, isKey)) tryObject(number, isKey);
    }
}

void Trial::tryObject(std::uint64_t number, bool isKey) {
    if (extents_[number].isOpen) document_.fail("Container inside itself");
    const Header header = document_.headerOf(number);
    if (isKey && header.isContainer()) document_.fail("Key that is no string");
    if (header.isContainer())
        open(number, header);
    else
        tryLeaf(number, header, isKey);
}

void Trial::tryLeaf(std::uint64_t number, const Header& header, bool isKey) {
    const std::size_t leafBytes = leaves_.byteCount();
    leaves_.make(header, isKey).reset();
    Extent& extent = extents_[number];
    extent = {};
    extent.leafBytes = leaves_.byteCount() - leafBytes;
    extent.isSound = true;
    extent.isString = header.isString();
    if (isKey && !extent.isString) document_.fail("Key that is no string");
}

void Trial::open(std::uint64_t number, const Header& header) {
    if (open_.size() == deepestPropertyList) document_.fail("Containers nested more than 512 deep");
    const BinaryPropertyListDocument::Contents contents = document_.contentsOf(header);
    Extent before;
    before.references = references_;
    before.leafBytes = leaves_.byteCount();
    open_.push_back({number, contents.keys, contents.values, contents.end, before});
    extents_[number].isOpen = true;
}

// Counts a sound object's contents once more without looking at them; false where there is something to be
// found in them.
bool Trial::passOver(std::uint64_t number, bool isKey) {
    const Extent& extent = extents_[number];
    if (!extent.isSound) return false;
    // The leaves that are made are shared unless they are mutable.
    const bool isSharedLeaf = extent.levels == 0 && !objects_.hasMutableLeaves();
    if (isSharedLeaf && isKey && !extent.isString) document_.fail("Key that is no string");
    if ((isKey && !extent.isString) || references_ + extent.references > mostReferences(document_)
        || open_.size() + extent.levels > deepestPropertyList
        || !leaves_.count(objects_.hasMutableLeaves() ? extent.leafBytes : 0))
        return false;
    references_ += extent.references;
    std::size_t& levels = open_.back().before.levels;
    levels = std::max(levels, extent.levels);
    return true;
}

void Trial::close() {
    const Container container = open_.back();
    open_.pop_back();
    Extent& extent = extents_[container.number];
    extent = {};
    extent.references = references_ - container.before.references;
    extent.leafBytes = leaves_.byteCount() - container.before.leafBytes;
    extent.levels = container.before.levels + 1;
    extent.isSound = true;
    if (open_.empty()) return;
    std::size_t& levels = open_.back().before.levels;
    levels = std::max(levels, extent.levels);
}

} // namespace

void tryBinaryPropertyList(const BinaryPropertyListDocument& document,
                           NSPropertyListMutabilityOptions mutability) {
    Trial(document, mutability).run();
}

} // namespace tessarin::embedded
