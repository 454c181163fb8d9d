#include "platform/embedded/foundation/ArchivedKeys.h"

#include "TessarinPlatform/Exceptions.h"
#include "TessarinPlatform/NSDate.h"
#include "TessarinPlatform/NSMutableData.h"
#include "TessarinPlatform/NSMutableDictionary.h"
#include "TessarinPlatform/NSMutableIndexSet.h"
#include "TessarinPlatform/NSMutableString.h"
#include "TessarinPlatform/NSNumber.h"
#include "TessarinPlatform/Retained.h"
#include "platform/embedded/foundation/ArrayStorage.h"
#include "platform/embedded/foundation/DictionaryStorage.h"
#include "platform/embedded/foundation/IndexSetStorage.h"
#include "platform/embedded/foundation/KeyedCoding.h"
#include "platform/embedded/runtime/StoredKind.h"

#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tessarin::embedded {
namespace {

bool isContainer(NSObject object) { return kindOf<NSArray>(object) || kindOf<NSDictionary>(object); }

// What the copy that a dictionary makes of its key takes; an object that cannot change is its own copy.
std::size_t bytesOfCopy(NSObject key) {
    if (const auto string = kindOf<NSMutableString>(key)) return 2 * string.length();
    if (const auto data = kindOf<NSMutableData>(key)) return data.length();
    if (const auto array = kindOf<NSMutableArray>(key)) return sizeof(NSObject) * array.count();
    if (const auto dictionary = kindOf<NSMutableDictionary>(key))
        return 4 * sizeof(NSObject) * dictionary.count();
    if (const auto set = storedKindOf<NSMutableIndexSet>(key)) return storageOf(set).byteCount();
    return 0;
}

// Looks through all that keys consist of, each object once.
class Constituents {
public:
    explicit Constituents(NSCoder coder) : coder_(coder) {}

    void look(NSObject key) {
        add(key);
        for (; next_ < containers_.size(); ++next_) {
            const NSObject container = containers_[next_];
            if (const auto array = kindOf<NSArray>(container))
                lookAtItems(array);
            else
                lookAtEntries(NSDictionary(container));
        }
    }

private:
    void lookAtItems(NSArray array) {
        // A copy: the items are asked what they are, and an application's own may edit the array.
        const ArrayItems items(array);
        const Retained<NSArray> kept = newArray(items.data(), items.size());
        for (const NSObject item : ArrayItems(kept)) add(item);
    }
    void lookAtEntries(NSDictionary dictionary) {
        for (const DictionaryEntries::Entry& entry : DictionaryEntries(dictionary)) {
            // To compare two such dictionaries is to look for equal keys among containers, level by level.
            if (isContainer(entry.key))
                raise(NSInvalidUnarchiveOperationException(),
                      "a dictionary whose keys are containers inside a key of another"_ns);
            add(entry.object);
        }
    }
    void add(NSObject object) {
        checkCopyOfDecoded(coder_, 1);
        if (isContainer(object) && seen_.insert(object.object()).second)
            containers_.push_back(retain(object));
    }

    NSCoder coder_;
    // As they were found, kept: nobody else need keep what an application's own array answers.
    std::vector<Retained<NSObject>> containers_;
    std::size_t next_ = 0;
    std::unordered_set<Object*> seen_;
};

} // namespace

void checkArchivedKeys(NSCoder coder, std::span<const NSObject> keys) {
    Constituents constituents(coder);
    std::unordered_map<NSUInteger, std::size_t> keysWithHash;
    for (const NSObject key : keys) {
        checkCopyOfDecoded(coder, bytesOfCopy(key));
        if (kindOf<NSString>(key) || kindOf<NSNumber>(key) || kindOf<NSDate>(key)) continue;
        // Every other kind hashes a part of itself, so that any number of keys may have the same hash.
        checkCopyOfDecoded(coder, keysWithHash[key.hash()]++);
        constituents.look(key);
    }
}

} // namespace tessarin::embedded
