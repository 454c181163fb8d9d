// Index sets in keyed archives, in the platform's own form: the number of runs; of one run its first index
// and its length; of several the same of all, one after another, as bytes. A number is in groups of seven
// bits, the lowest first, and the top bit of a byte says that another group follows.
#include "platform/embedded/foundation/DataStorage.h"
#include "platform/embedded/foundation/IndexSetStorage.h"
#include "platform/embedded/foundation/KeyedCoding.h"

#include "TessarinPlatform/NSCoder.h"
#include "TessarinPlatform/NSException.h"

namespace tessarin::embedded {
namespace {

NSString countKey() { return "NSRangeCount"_ns; }
NSString locationKey() { return "NSLocation"_ns; }
NSString lengthKey() { return "NSLength"_ns; }
NSString dataKey() { return "NSRangeData"_ns; }

void appendNumber(std::vector<std::byte>& bytes, std::uint64_t number) {
    for (; number >= 0x80; number >>= 7) bytes.push_back(static_cast<std::byte>(number | 0x80));
    bytes.push_back(static_cast<std::byte>(number));
}

// The number at the start of the bytes, which it is taken off; nothing where there is none, or one that is
// too large.
std::optional<std::uint64_t> takeNumber(std::span<const std::byte>& bytes) {
    std::uint64_t number = 0;
    for (unsigned shift = 0; shift < 64 && !bytes.empty(); shift += 7) {
        const auto byte = std::to_integer<std::uint64_t>(bytes.front());
        bytes = bytes.subspan(1);
        const std::uint64_t group = byte & 0x7F;
        if (group << shift >> shift != group) return {};
        number |= group << shift;
        if (byte < 0x80) return number;
    }
    return {};
}

void encodeWithCoder(NSIndexSet self, SEL selector, NSCoder coder) {
    requireKeys(coder, self, selector);
    const IndexSetStorage& storage = storageOf(self);
    std::int64_t runCount = 0;
    std::vector<std::byte> bytes;
    for (auto run = storage.runFrom(0); run; run = storage.runFrom(run->last + 1), ++runCount) {
        appendNumber(bytes, run->first);
        appendNumber(bytes, run->last - run->first + 1);
    }
    coder.encodeInt64_forKey(runCount, countKey());
    if (runCount == 1) {
        const IndexRange run = *storage.runFrom(0);
        coder.encodeInt64_forKey(static_cast<std::int64_t>(run.first), locationKey());
        coder.encodeInt64_forKey(static_cast<std::int64_t>(run.last - run.first + 1), lengthKey());
    } else if (runCount > 1) {
        coder.encodeObject_forKey(newData(bytes), dataKey());
    }
}

// Whether it is a run of indexes that lies behind those that the set has.
bool addRun(IndexSetStorage& storage, std::uint64_t first, std::uint64_t length) {
    constexpr auto end = static_cast<std::uint64_t>(NSNotFound);
    if (length == 0 || first >= end || length > end - first) return false;
    if (storage.count() > 0 && first <= storage.last()) return false;
    storage.add(IndexRange{first, first + length - 1});
    return true;
}

bool readRuns(IndexSetStorage& storage, NSCoder coder) {
    const std::int64_t runCount = coder.decodeInt64ForKey(countKey());
    if (runCount == 1)
        return addRun(storage, static_cast<std::uint64_t>(coder.decodeInt64ForKey(locationKey())),
                      static_cast<std::uint64_t>(coder.decodeInt64ForKey(lengthKey())));
    if (runCount < 0) return false;
    if (runCount == 0) return true;
    std::span<const std::byte> bytes = bytesOf(kindOf<NSData>(coder.decodeObjectForKey(dataKey())));
    // In the set a run of two bytes may take some sixty. A good half of it is charged, since a sound archive
    // may be little else than one large set, and has 16 for each of its bytes.
    checkCopyOfDecoded(coder, 16 * bytes.size());
    for (std::int64_t run = 0; run < runCount; ++run) {
        const auto first = takeNumber(bytes);
        const auto length = takeNumber(bytes);
        if (!first || !length || !addRun(storage, *first, *length)) return false;
    }
    return bytes.empty();
}

NSIndexSet initWithCoder(NSIndexSet self, SEL selector, NSCoder coder) {
    Retained<NSIndexSet> owned = adopt(self);
    requireKeys(coder, self, selector);
    IndexSetStorage read;
    if (!readRuns(read, coder))
        raiseFrom(NSInvalidUnarchiveOperationException(), self, selector, "the archive holds no index set");
    storageOf(self) = std::move(read);
    return owned.leak();
}

} // namespace

std::vector<MethodRow> indexSetCodingMethods() {
    return {instanceMethod("encodeWithCoder:", encodeWithCoder),
            instanceMethod("initWithCoder:", initWithCoder)};
}

} // namespace tessarin::embedded
