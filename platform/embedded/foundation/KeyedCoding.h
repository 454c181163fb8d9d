// How the platform's own classes archive themselves: as it is laid down for keyed archives where the coder is
// a keyed archiver, and in the operations of NSCoder for any other coder that allows keys.
#pragma once

#include "TessarinPlatform/NSKeyedArchiver.h"
#include "TessarinPlatform/NSKeyedUnarchiver.h"
#include "platform/embedded/runtime/BuiltInClass.h"

#include <span>
#include <string_view>
#include <vector>

namespace tessarin::embedded {

// Raises unless the coder allows keyed coding.
void requireKeys(NSCoder coder, NSObject self, SEL selector);

// The items of a container. Those that are decoded live as long as the coder, or the innermost autorelease
// pool, does; a coder without them gives none. An item that is nil raises.
struct ItemsKey {
    NSString archived;        // of all items, in a keyed archive
    std::string_view counted; // of one, before its index, with any other coder
};
inline ItemsKey objectsOfContainer() { return {"NS.objects"_ns, "NS.object."}; }
inline ItemsKey keysOfContainer() { return {"NS.keys"_ns, "NS.key."}; }
void encodeItems(NSCoder coder, std::span<const NSObject> items, const ItemsKey& key);
std::vector<NSObject> decodeItems(NSCoder coder, const ItemsKey& key);

// The text of a string object. What is no text raises.
void encodeText(NSCoder coder, NSString text);
NSString decodeText(NSCoder coder);

// To be asked before that many bytes of an archive are copied or looked through: many objects may refer to
// the same bytes. Raises when it comes to more than any sound archive of the size asks for.
void checkCopyOfDecoded(NSCoder coder, std::size_t bytes);

// NSKeyedArchiver's and NSKeyedUnarchiver's part in it. A property list is written into the object being
// encoded as it is, not by reference.
void archiveItems(NSKeyedArchiver archiver, std::span<const NSObject> items, NSString key);
void archivePropertyList(NSKeyedArchiver archiver, NSObject propertyList, NSString key);
std::vector<NSObject> unarchiveItems(NSKeyedUnarchiver unarchiver, NSString key);
NSObject unarchivePropertyList(NSKeyedUnarchiver unarchiver, NSString key);
void chargeCopy(NSKeyedUnarchiver unarchiver, std::size_t bytes);

// What an object is archived as whose class stands for a family of classes: the family's public class.
template <class Public>
Class classForCoderOf(NSObject, SEL) {
    return Public::classObject();
}

} // namespace tessarin::embedded
