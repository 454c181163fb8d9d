// Whether an object is a property list: strings, numbers, booleans, dates, data, the references of keyed
// archives, arrays, and dictionaries with string keys, nested to any depth.
//
// A container may be reached by several ways, but not from itself. Takes time in proportion to what the list
// holds, each container counted once, and no stack. Where every container has a single owner and no more than
// 64 are inside each other, no memory either.
//
// `Platform` says how its containers are looked into:
//
//   static const Object* classOf(NSObject object);
//   static bool mayBeShared(NSObject container);   // false only where it has a single owner
//   static bool isForeign(NSObject container, PropertyListKind kind);   // whether other code has to be asked
//   struct Contents {
//       Contents(NSObject container, PropertyListKind kind, bool isForeign);
//       NSObject container() const;
//       bool isDictionary() const;
//       std::size_t count() const;                  // of the objects, keys aside
//       bool next(NSObject& key, NSObject& object); // the next of them, false at the end; no key in an array
//   };
#pragma once

#include "platform/services/InlineStack.h"
#include "platform/services/ObjectNumbers.h"
#include "platform/services/PropertyListKinds.h"

#include "TessarinPlatform/NSPropertyListSerialization.h"

#include <string>
#include <utility>
#include <vector>

namespace tessarin {

template <class Platform>
class PropertyListExamination {
public:
    explicit PropertyListExamination(NSPropertyListFormat format) : format_(format) {}

    // Why an object is no property list of the format, in the platform's wording; empty when it is one.
    std::string defectOf(NSObject root) {
        if (format_ != NSPropertyListOpenStepFormat && format_ != NSPropertyListXMLFormat_v1_0
            && format_ != NSPropertyListBinaryFormat_v1_0)
            return "there is no such format";
        root_ = root;
        ++objectCount_;
        const PropertyListKind kind = kinds_.of(root, [&] { hold(root); });
        if (!isContainer(kind))
            admitLeaf(root, kind);
        else if (enter(root, kind))
            walk();
        return std::move(defect_);
    }

    // How many objects there are, each container's counted once. Of a sound list, when it has been examined.
    std::size_t objectCount() const { return objectCount_; }

private:
    using Contents = typename Platform::Contents;
    static constexpr std::size_t notNumbered = static_cast<std::size_t>(-1);

    struct Open {
        Open(NSObject container, PropertyListKind kind, bool isForeign, std::size_t containerNumber)
            : contents(container, kind, isForeign), number(containerNumber) {}

        Contents contents;
        std::size_t number; // of a container that may be shared
    };
    // A container that may be met again.
    struct Met {
        NSObject container;
        bool isSound; // left, with everything in it
    };

    bool refuse(std::string defect) {
        defect_ = std::move(defect);
        return false;
    }

    bool admitLeaf(NSObject object, PropertyListKind kind) {
        using enum PropertyListKind;
        const bool isText = kind == string || kind == data;
        if (isText || (kind != other && format_ != NSPropertyListOpenStepFormat)) [[likely]]
            return true;
        if (!object) return refuse("property lists cannot contain NULL");
        return refuse("property lists cannot contain objects of type '" + propertyListTypeName(object) + "'");
    }

    // Opens a container to be walked; false when it is inside itself.
    bool enter(NSObject container, PropertyListKind kind) {
        constexpr const char* recursion = "property lists cannot contain recursive container references";
        if (container == root_ && !open_.isEmpty()) return refuse(recursion);
        const bool isForeign = Platform::isForeign(container, kind);
        if (isForeign) holdAll();
        std::size_t number = notNumbered;
        // What has a single owner is met once. To be inside itself without being the root it would need two:
        // the container that holds it, and the way in.
        if (holds_ || (!open_.isEmpty() && Platform::mayBeShared(container))) {
            number = numbers_.numberOf(container);
            if (number < met_.size()) return met_[number].isSound || refuse(recursion);
            met_.push_back({container, false});
            if (holds_) held_.push_back(retain(container));
        }
        objectCount_ += open_.emplace(container, kind, isForeign, number).contents.count();
        return true;
    }

    // Other code that is asked for a container's contents, or for an object's class, may change or release
    // what is being walked, and may hold what it answers in no way that counts. From then on every container
    // is held and remembered.
    void holdAll() {
        if (std::exchange(holds_, true)) return;
        for (const Met& met : met_) held_.push_back(retain(met.container));
        for (std::size_t level = 0; level < open_.size(); ++level) {
            Open& open = open_[level];
            if (open.number != notNumbered) continue;
            const NSObject container = open.contents.container();
            open.number = numbers_.numberOf(container);
            met_.push_back({container, false});
            held_.push_back(retain(container));
        }
    }

    // The same, with objects that are about to be looked at.
    void hold(NSObject object, NSObject key = nil) {
        holdAll();
        held_.push_back(retain(object));
        if (key) held_.push_back(retain(key));
    }

    void walk() {
        while (!open_.isEmpty()) {
            Open& container = open_.top();
            PropertyListKind kind{};
            if (const NSObject inner = nextContainer(container.contents, kind)) {
                if (!enter(inner, kind)) return;
            } else {
                if (!defect_.empty()) return;
                if (container.number != notNumbered) met_[container.number].isSound = true;
                open_.pop();
            }
        }
    }

    // Passes over leaves, up to the next container inside another, and says its kind; nil at the end and
    // where there is a defect.
    NSObject nextContainer(Contents& contents, PropertyListKind& kind) {
        NSObject key, object;
        while (contents.next(key, object)) {
            const auto holdBoth = [&] { hold(object, key); };
            if (contents.isDictionary() && !kinds_.isString(key, holdBoth)) [[unlikely]] {
                refuse("property list dictionaries may only have keys which are CFStrings, not '"
                       + propertyListTypeName(key) + "'");
                return nil;
            }
            kind = kinds_.of(object, holdBoth);
            if (isContainer(kind)) return object;
            if (!admitLeaf(object, kind)) return nil;
        }
        return nil;
    }

    const NSPropertyListFormat format_;
    NSObject root_;
    PropertyListKinds<Platform> kinds_;
    InlineStack<Open, 64> open_; // the way from the root to the container that is being walked
    ObjectNumbers numbers_;
    std::vector<Met> met_; // by number
    std::vector<Retained<NSObject>> held_;
    bool holds_ = false;
    std::size_t objectCount_ = 0;
    std::string defect_;
};

} // namespace tessarin
