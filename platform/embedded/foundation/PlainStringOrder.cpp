#include "platform/embedded/foundation/PlainStringOrder.h"

#include "platform/embedded/foundation/StringComparison.h"
#include "platform/embedded/runtime/StoredKind.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace tessarin::embedded {
namespace {

// The first bytes of a text as a number, which decides most comparisons.
std::uint64_t beginningOf(StringView text) {
    std::array<std::uint8_t, sizeof(std::uint64_t)> bytes{};
    std::copy_n(text.narrow(), std::min(text.length(), bytes.size()), bytes.begin());
    std::uint64_t beginning = 0;
    for (const std::uint8_t byte : bytes) beginning = beginning << 8 | byte;
    return beginning;
}

std::size_t commonPrefixLength(std::span<const StringView> texts) {
    if (texts.empty()) return 0;
    const std::uint8_t* const first = texts[0].narrow();
    std::size_t length = texts[0].length();
    for (const StringView text : texts) {
        const std::uint8_t* const own = text.narrow();
        if (text.length() >= length && std::memcmp(first, own, length) == 0) continue; // as is most often so
        length = static_cast<std::size_t>(
            std::mismatch(first, first + std::min(length, text.length()), own).first - first);
    }
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
