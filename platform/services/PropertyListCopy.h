// A copy of a property list whose containers are all mutable: what reading the binary form of it with
// NSPropertyListMutableContainers gives, without the way through the bytes.
//
// A container that stands in several places becomes one of its own in each; a string or data object stays one
// for all its places, and is immutable. Containers nested more than 512 deep are refused, as reading refuses
// them, and so is a list whose shared containers would become 16 times what it holds, and 2^20 more.
// Neither stack nor memory is used beyond that.
//
// Beside what PropertyListExamination.h asks of it, `Platform` says how a copy is made:
//
// - newMutableContainer(source, kind) makes a container of the same items, which the caller owns;
//   countOf(container, kind) is how many there are;
// - mayStay(leaf, kind) says whether the copy may hold the very object; otherwise newLeaf(leaf, kind) makes
//   an immutable one that is equal, which the caller owns;
// - CopiedContents(container, kind) walks a new mutable container: next(object) finds its objects one after
//   the other and answers false at the end, replace(object) puts another in the place of the last found.
#pragma once

#include "TessarinPlatform/AutoreleasePool.h"
#include "platform/services/PropertyListError.h"
#include "platform/services/PropertyListExamination.h"

#include <string>
#include <vector>

namespace tessarin {

template <class Platform>
class PropertyListCopy {
public:
    // Throws PropertyListProblem.
    Retained<NSObject> copyOf(NSObject root, std::size_t objectCount) {
        mostObjects_ = 16 * objectCount + (std::size_t{1} << 20);
        const PropertyListKind kind = kinds_.of(root);
        if (!isContainer(kind)) {
            Retained<NSObject> leaf = changedLeaf(root, kind);
            return leaf ? leaf : retain(root);
        }
        Retained<NSObject> copy = open(root, kind);
        while (!open_.isEmpty()) {
            CopiedContents& contents = open_.top();
            NSObject object;
            if (!contents.next(object))
                open_.pop();
            else
                copyContent(contents, object);
        }
        return copy;
    }

private:
    using CopiedContents = typename Platform::CopiedContents;

    void copyContent(CopiedContents& contents, NSObject object) {
        const PropertyListKind kind = kinds_.of(object);
        if (isContainer(kind)) {
            // The place is taken before the new container is opened, which moves the contents.
            const Retained<NSObject> copy = newContainer(object, kind);
            contents.replace(copy);
            open_.push(CopiedContents(copy, kind));
        } else if (const Retained<NSObject> leaf = changedLeaf(object, kind)) {
            contents.replace(leaf);
        }
    }

    Retained<NSObject> open(NSObject source, PropertyListKind kind) {
        Retained<NSObject> copy = newContainer(source, kind);
        open_.push(CopiedContents(copy, kind));
        return copy;
    }

    Retained<NSObject> newContainer(NSObject source, PropertyListKind kind) {
        if (open_.size() == deepestPropertyList)
            throw PropertyListProblem("Containers nested more than 512 deep");
        Retained<NSObject> copy = Platform::newMutableContainer(source, kind);
        objectCount_ += 1 + Platform::countOf(copy, kind);
        if (objectCount_ > mostObjects_) throw PropertyListProblem("Too many copies of shared containers");
        return copy;
    }

    // What stands for a leaf that may not stand in the copy itself; nil for one that may.
    Retained<NSObject> changedLeaf(NSObject leaf, PropertyListKind kind) {
        if (kind == PropertyListKind::other)
            throw PropertyListProblem("An object changed while it was copied");
        if (Platform::mayStay(leaf, kind)) return {};
        if (kind != PropertyListKind::string && kind != PropertyListKind::data)
            return Platform::newLeaf(leaf, kind);
        const std::size_t number = numbers_.numberOf(leaf);
        if (number == changed_.size()) changed_.push_back({retain(leaf), Platform::newLeaf(leaf, kind)});
        return changed_[number].copy;
    }

    struct Changed {
        Retained<NSObject> original; // so that no other object comes to lie there
        Retained<NSObject> copy;
    };

    PropertyListKinds<Platform> kinds_;
    InlineStack<CopiedContents, 64> open_;
    ObjectNumbers numbers_; // of strings and data that change
    std::vector<Changed> changed_;
    std::size_t objectCount_ = 1;
    std::size_t mostObjects_ = 0;
};

// The whole operation: an autoreleased copy; nil and an error, of the same codes as writing and reading, for
// what is no property list or goes beyond the bounds.
template <class Platform>
id copyWithMutableContainers(NSObject propertyList, NSError* error) {
    if (!propertyList) {
        storeNilPropertyListError(error);
        return nil;
    }
    PropertyListExamination<Platform> examination(NSPropertyListBinaryFormat_v1_0);
    if (const std::string defect = examination.defectOf(propertyList); !defect.empty()) {
        storeInvalidPropertyListError(error, NSPropertyListBinaryFormat_v1_0, defect);
        return nil;
    }
    try {
        Retained<NSObject> copy;
        {
            const AutoreleasePool pool; // for the numbers, which would otherwise wait for the caller's
            copy = PropertyListCopy<Platform>().copyOf(propertyList, examination.objectCount());
        }
        return id(copy.autorelease());
    } catch (const PropertyListProblem& problem) {
        storePropertyListError(error, NSPropertyListReadCorruptError, problem.what());
        return nil;
    }
}

} // namespace tessarin
