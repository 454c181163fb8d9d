// How the examination and the copying of property lists look into the embedded platform's objects, which is
// into their storage wherever no subclass has taken that over.
#pragma once

#include "platform/embedded/foundation/ArrayStorage.h"
#include "platform/embedded/foundation/DictionaryStorage.h"
#include "platform/services/FetchAhead.h"
#include "platform/services/PropertyListKinds.h"

#include "TessarinPlatform/NSPropertyListSerialization.h"

#include <memory>
#include <string>

namespace tessarin::embedded {

// Why an object is no property list of a format, in the platform's wording; empty when it is one.
std::string propertyListDefect(NSObject object, NSPropertyListFormat format);

struct PropertyListStorage {
    static const Object* classOf(NSObject object) { return object.object()->isa; }

    // Objects that live as long as the process, or count references in their own way, tell nothing.
    static bool mayBeShared(NSObject container) {
        return container.object()->references.load(std::memory_order_relaxed) != 1
               || container.object()->isa->countsReferencesItself.load(std::memory_order_relaxed);
    }
    static bool isForeign(NSObject object, PropertyListKind kind) {
        if (kind == PropertyListKind::array) return !hasArrayStorage(object);
        if (kind == PropertyListKind::dictionary) return !hasDictionaryStorage(object);
        return isForeignLeaf(object, kind);
    }

    class Contents {
    public:
        Contents(NSObject container, PropertyListKind kind)
            : Contents(container, kind, isForeign(container, kind)) {}
        Contents(NSObject container, PropertyListKind kind, bool isForeign)
            : container_(container), isDictionary_(kind == PropertyListKind::dictionary) {
            if (isForeign) [[unlikely]]
                fetched_ = std::make_unique<FetchedContents>(container, kind);
        }

        NSObject container() const { return container_; }
        bool isDictionary() const { return isDictionary_; }

        std::size_t count() const {
            if (fetched_) return fetched_->objects.size();
            return countOf(container_,
                           isDictionary_ ? PropertyListKind::dictionary : PropertyListKind::array);
        }

        // The storage is looked at anew each time, in case that it changed.
        bool next(NSObject& key, NSObject& object) {
            if (fetched_) [[unlikely]]
                return nextFetched(key, object);
            if (!isDictionary_) {
                const ArrayStorage& storage = storageOf<ArrayStorage>(container_);
                if (position_ >= storage.count) return false;
                if (position_ + ahead < storage.count) fetchAhead(storage.items[position_ + ahead]);
                object = storage.items[position_++];
                return true;
            }
            const DictionaryStorage& storage = storageOf<DictionaryStorage>(container_);
            while (position_ < storage.size()) {
                if (position_ + ahead < storage.size()) fetchAhead(storage.entry(position_ + ahead).object);
                const DictionaryEntry& entry = storage.entry(position_++);
                if (!entry.key) continue;
                key = entry.key;
                object = entry.object;
                return true;
            }
            return false;
        }

    private:
        // How far ahead of their turn objects are fetched, the beginning of a container's entries with them.
        static constexpr std::size_t ahead = 4;

        bool nextFetched(NSObject& key, NSObject& object) {
            if (position_ == fetched_->objects.size()) return false;
            if (isDictionary_) key = fetched_->keys[position_];
            object = fetched_->objects[position_++];
            return true;
        }

        NSObject container_;
        std::size_t position_ = 0;
        std::unique_ptr<FetchedContents> fetched_;
        bool isDictionary_;
    };

    static bool isForeignLeaf(NSObject object, PropertyListKind kind);
    static Retained<NSObject> newMutableContainer(NSObject source, PropertyListKind kind);
    static NSUInteger countOf(NSObject container, PropertyListKind kind) {
        return kind == PropertyListKind::array ? storageOf<ArrayStorage>(container).count
                                               : storageOf<DictionaryStorage>(container).count();
    }
    static bool mayStay(NSObject leaf, PropertyListKind kind);
    static Retained<NSObject> newLeaf(NSObject leaf, PropertyListKind kind);

    class CopiedContents {
    public:
        CopiedContents(NSObject container, PropertyListKind kind)
            : container_(container), isArray_(kind == PropertyListKind::array) {}

        bool next(NSObject& object) {
            if (position_
                == countOf(container_, isArray_ ? PropertyListKind::array : PropertyListKind::dictionary))
                return false;
            object = isArray_ ? storageOf<ArrayStorage>(container_).items[position_]
                              : storageOf<DictionaryStorage>(container_).entry(position_).object;
            ++position_;
            return true;
        }
        void replace(NSObject object);

    private:
        NSObject container_;
        std::size_t position_ = 0; // a new dictionary has no gaps
        bool isArray_;
    };
};

} // namespace tessarin::embedded
