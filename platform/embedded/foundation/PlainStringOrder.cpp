#include "platform/embedded/foundation/PlainStringOrder.h"

#include "platform/embedded/foundation/StringComparison.h"
#include "platform/embedded/runtime/StoredKind.h"

#include <algorithm>

namespace tessarin::embedded {
namespace {

// The first bytes of a text as a number, which decides most comparisons.
std::uint64_t beginningOf(StringView text) {
    std::uint64_t beginning = 0;
    for (std::size_t index = 0; index < sizeof beginning; ++index)
        beginning = beginning << 8 | (index < text.length() ? text.narrow()[index] : 0U);
    return beginning;
}

std::size_t commonPrefixLength(std::span<const StringView> texts) {
    if (texts.empty()) return 0;
    const std::uint8_t* const first = texts[0].narrow();
    std::size_t length = texts[0].length();
    for (const StringView text : texts)
        length = static_cast<std::size_t>(
            std::mismatch(first, first + std::min(length, text.length()), text.narrow()).first - first);
    return length;
}

} // namespace

std::vector<std::uint64_t> ranksOfTexts(std::span<const StringView> texts) {
    const std::size_t common = commonPrefixLength(texts);
    std::vector<std::uint64_t> ranks;
    ranks.reserve(texts.size());
    for (const StringView text : texts) ranks.push_back(beginningOf(text.from(common)));
    return ranks;
}

bool PlainStringOrder::add(NSObject object) {
    const auto string = storedKindOf<NSString>(object);
    if (!string || !comparesCanonically(string)) return false;
    const StringStorage* const storage = directStorage(string);
    if (!storage || !isAscii(storage->view())) return false;
    texts_.push_back(storage->view());
    return true;
}

std::vector<std::size_t> PlainStringOrder::ascending() const {
    struct Key {
        std::uint64_t rank;
        std::size_t position;
    };
    const std::vector<std::uint64_t> ranks = ranksOfTexts(texts_);
    std::vector<Key> keys;
    keys.reserve(texts_.size());
    for (std::size_t position = 0; position < texts_.size(); ++position)
        keys.push_back({ranks[position], position});
    std::sort(keys.begin(), keys.end(), [&](const Key& left, const Key& right) {
        if (left.rank != right.rank) return left.rank < right.rank;
        const NSComparisonResult order = compareUnits(texts_[left.position], texts_[right.position]);
        return order != NSOrderedSame ? order == NSOrderedAscending : left.position < right.position;
    });
    std::vector<std::size_t> positions;
    positions.reserve(keys.size());
    for (const Key& key : keys) positions.push_back(key.position);
    return positions;
}

} // namespace tessarin::embedded
