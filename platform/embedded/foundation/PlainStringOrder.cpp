#include "platform/embedded/foundation/PlainStringOrder.h"

#include "platform/embedded/foundation/StringComparison.h"

#include <algorithm>

namespace tessarin::embedded {
namespace {

bool isAscii(StringView text) {
    if (text.isWide()) return false;
    unsigned all = 0;
    for (std::size_t index = 0; index < text.length(); ++index) all |= text.narrow()[index];
    return all < 0x80;
}

// The first bytes of a text as a number, which decides most comparisons.
std::uint64_t beginningOf(StringView text) {
    std::uint64_t beginning = 0;
    for (std::size_t index = 0; index < sizeof beginning; ++index)
        beginning = beginning << 8 | (index < text.length() ? text.narrow()[index] : 0U);
    return beginning;
}

} // namespace

bool PlainStringOrder::add(NSObject object) {
    const Object* const isa = object.object()->isa;
    const bool isString = isa == "NSString"_class.object() || isa == "NSMutableString"_class.object()
                          || object.isKindOfClass(NSString::classObject());
    if (!isString || !comparesCanonically(as<NSString>(object))) return false;
    const StringStorage* const storage = directStorage(as<NSString>(object));
    if (!storage || !isAscii(storage->view())) return false;
    texts_.push_back(storage->view());
    return true;
}

std::size_t PlainStringOrder::commonPrefixLength() const {
    if (texts_.empty()) return 0;
    const std::uint8_t* const first = texts_[0].narrow();
    std::size_t length = texts_[0].length();
    for (const StringView text : texts_)
        length = static_cast<std::size_t>(
            std::mismatch(first, first + std::min(length, text.length()), text.narrow()).first - first);
    return length;
}

std::vector<std::size_t> PlainStringOrder::ascending() const {
    struct Key {
        std::uint64_t beginning;
        std::size_t position;
    };
    // Names that belong together often begin alike; what comes then tells them apart.
    const std::size_t common = commonPrefixLength();
    std::vector<Key> keys;
    keys.reserve(texts_.size());
    for (std::size_t position = 0; position < texts_.size(); ++position)
        keys.push_back({beginningOf(texts_[position].from(common)), position});
    std::sort(keys.begin(), keys.end(), [&](const Key& left, const Key& right) {
        if (left.beginning != right.beginning) return left.beginning < right.beginning;
        const NSComparisonResult order = compareUnits(texts_[left.position], texts_[right.position]);
        return order != NSOrderedSame ? order == NSOrderedAscending : left.position < right.position;
    });
    std::vector<std::size_t> positions;
    positions.reserve(keys.size());
    for (const Key& key : keys) positions.push_back(key.position);
    return positions;
}

} // namespace tessarin::embedded
