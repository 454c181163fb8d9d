// The hash of strings: SipHash-1-3 with a key that is random in each process. Texts come from outside, and
// whoever writes them must not be able to choose many that hash alike.
#include "platform/embedded/foundation/StringStorage.h"
#include "platform/services/HashSeed.h"

#include <bit>
#include <utility>

namespace tessarin::embedded {
namespace {

class SipHash {
public:
    explicit SipHash(HashSeed key)
        : v0_(key.first ^ 0x736F6D6570736575),
          v1_(key.second ^ 0x646F72616E646F6D),
          v2_(key.first ^ 0x6C7967656E657261),
          v3_(key.second ^ 0x7465646279746573) {}

    void add(std::uint64_t word) {
        v3_ ^= word;
        mix();
        v0_ ^= word;
    }
    std::uint64_t finish() {
        v2_ ^= 0xFF;
        for (int round = 0; round < 3; ++round) mix();
        return v0_ ^ v1_ ^ v2_ ^ v3_;
    }

private:
    void mix() {
        v0_ += v1_;
        v2_ += v3_;
        v1_ = std::rotl(v1_, 13) ^ v0_;
        v3_ = std::rotl(v3_, 16) ^ v2_;
        v0_ = std::rotl(v0_, 32);
        v2_ += v1_;
        v0_ += v3_;
        v1_ = std::rotl(v1_, 17) ^ v2_;
        v3_ = std::rotl(v3_, 21) ^ v0_;
        v2_ = std::rotl(v2_, 32);
    }

    std::uint64_t v0_, v1_, v2_, v3_;
};

// Several units as one number, the first lowest, whatever the machine's byte order and the units' own width.
template <int bitsPerUnit, class Unit, std::size_t... Index>
std::uint64_t packed(const Unit* units, std::index_sequence<Index...>) {
    return ((std::uint64_t{units[Index]} << (bitsPerUnit * Index)) | ...);
}

template <int bitsPerUnit, class Unit>
std::uint64_t hashUnits(std::span<const Unit> units, HashSeed key) {
    constexpr std::size_t block = 64 / bitsPerUnit;
    SipHash hash(key);
    const Unit* next = units.data();
    std::size_t left = units.size();
    for (; left >= block; left -= block, next += block)
        hash.add(packed<bitsPerUnit>(next, std::make_index_sequence<block>()));
    // The last word has room for the length, which tells zeros at the end from none.
    std::uint64_t last = std::uint64_t{units.size()} << 56;
    for (std::size_t index = 0; index < left; ++index)
        last |= std::uint64_t{next[index]} << (bitsPerUnit * index);
    hash.add(last);
    return hash.finish();
}

} // namespace

std::size_t hashOf(StringView units) {
    const HashSeed& key = hashSeed();
    const std::uint64_t hash = units.visit([&]<class Unit>(std::span<const Unit> span) {
        if constexpr (sizeof(Unit) > 1) {
            // Another key, since the same bytes are another text.
            if (!fitsNarrow(span)) return hashUnits<16>(span, {~key.first, key.second});
        }
        return hashUnits<8>(span, key);
    });
    return hash == 0 ? 1 : static_cast<std::size_t>(hash);
}

} // namespace tessarin::embedded
