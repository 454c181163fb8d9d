#include "TessarinPlatform/KeyOrder.h"

#include "platform/embedded/foundation/DictionaryStorage.h"
#include "platform/embedded/foundation/PlainStringOrder.h"

namespace tessarin {

using namespace embedded;

std::optional<std::vector<NSObject>> objectsInOrderOfKeys(NSDictionary dictionary) {
    const Object* const classObject = runtime::classOf(dictionary.object());
    if (classObject != "NSDictionary"_class.object() && classObject != "NSMutableDictionary"_class.object())
        return std::nullopt;
    const DictionaryStorage& storage = storageOf<DictionaryStorage>(dictionary);
    PlainStringOrder keys(storage.count());
    std::vector<NSObject> objects;
    objects.reserve(storage.count());
    for (std::size_t index = storage.nextEntry(0); index != DictionaryStorage::notFound;
         index = storage.nextEntry(index + 1)) {
        if (!keys.add(storage.entry(index).key)) return std::nullopt;
        objects.push_back(storage.entry(index).object);
    }
    std::vector<NSObject> ordered;
    ordered.reserve(objects.size());
    for (const std::size_t position : keys.ascending()) ordered.push_back(objects[position]);
    return ordered;
}

} // namespace tessarin
