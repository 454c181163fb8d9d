#include "platform/embedded/foundation/KeyedCoding.h"

#include "TessarinPlatform/Exceptions.h"
#include "platform/embedded/foundation/StringStorage.h"
#include "platform/embedded/runtime/StoredKind.h"

#include <string>

namespace tessarin::embedded {
namespace {

NSString textKey() { return "NS.string"_ns; }
NSString bytesKey() { return "NS.bytes"_ns; }

NSString keyOfItem(const ItemsKey& key, std::size_t index) {
    return NSString(std::string(key.counted) + std::to_string(index));
}

[[noreturn]] void raiseDamaged(const char* reason) {
    raise(NSInvalidUnarchiveOperationException(), NSString(reason));
}

} // namespace

void requireKeys(NSCoder coder, NSObject self, SEL selector) {
    if (!coder.allowsKeyedCoding())
        raiseFrom(NSInvalidArgumentException(), self, selector, "the coder does not allow keyed coding");
}

void encodeItems(NSCoder coder, std::span<const NSObject> items, const ItemsKey& key) {
    if (const auto archiver = storedKindOf<NSKeyedArchiver>(coder))
        return archiveItems(archiver, items, key.archived);
    for (std::size_t index = 0; index < items.size(); ++index)
        coder.encodeObject_forKey(items[index], keyOfItem(key, index));
}

std::vector<NSObject> decodeItems(NSCoder coder, const ItemsKey& key) {
    if (const auto unarchiver = storedKindOf<NSKeyedUnarchiver>(coder))
        return unarchiveItems(unarchiver, key.archived);
    std::vector<NSObject> items;
    for (NSString each = keyOfItem(key, 0); coder.containsValueForKey(each);
         each = keyOfItem(key, items.size())) {
        items.push_back(coder.decodeObjectForKey(each));
        if (!items.back()) raiseDamaged("a container's item is missing");
    }
    return items;
}

void encodeText(NSCoder coder, NSString text) {
    if (const auto archiver = storedKindOf<NSKeyedArchiver>(coder)) {
        const Retained<NSString> unchanging = newString(contentsOf(text));
        return archivePropertyList(archiver, unchanging, textKey());
    }
    const std::string utf8 = utf8Of(text);
    coder.encodeBytes_length_forKey(reinterpret_cast<const std::uint8_t*>(utf8.data()), utf8.size(),
                                    bytesKey());
}

NSString decodeText(NSCoder coder) {
    NSString text;
    if (const auto unarchiver = storedKindOf<NSKeyedUnarchiver>(coder)) {
        text = kindOf<NSString>(unarchivePropertyList(unarchiver, textKey()));
    } else {
        NSUInteger length = 0;
        const auto* const bytes = coder.decodeBytesForKey_returnedLength(bytesKey(), &length);
        text = NSString(std::string_view(reinterpret_cast<const char*>(bytes), length));
    }
    if (!text) raiseDamaged("a string without text");
    return text;
}

void checkCopyOfDecoded(NSCoder coder, std::size_t bytes) {
    if (const auto unarchiver = storedKindOf<NSKeyedUnarchiver>(coder)) chargeCopy(unarchiver, bytes);
}

} // namespace tessarin::embedded
