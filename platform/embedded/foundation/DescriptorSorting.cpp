#include "platform/embedded/foundation/DescriptorSorting.h"

#include "platform/embedded/foundation/ArrayStorage.h"
#include "platform/embedded/foundation/KeyComparison.h"
#include "platform/embedded/foundation/NumberValue.h"
#include "platform/embedded/foundation/PlainStringOrder.h"
#include "platform/embedded/foundation/StableSort.h"

#include <algorithm>
#include <bit>
#include <optional>

namespace tessarin::embedded {
namespace {

// A number that orders most numbers: lower ranks mean lower values, equal ones nothing, unless both are exact
// as doubles.
std::uint64_t rankOf(const NumberValue& number) {
    constexpr std::uint64_t sign = std::uint64_t{1} << 63;
    const double value = number.toDouble() + 0.0; // no negative zero
    if (value != value) return sign - 1;          // between the negative numbers and zero
    const auto bits = std::bit_cast<std::uint64_t>(value);
    return (bits & sign) != 0 ? ~bits : bits | sign;
}

bool isExactAsDouble(const NumberValue& number) {
    constexpr std::int64_t largest = std::int64_t{1} << 53;
    return number.isReal()
           || (number.kind != NumberKind::uint64 && number.integer >= -largest && number.integer <= largest);
}

// One descriptor, and the items' values for its key.
class Column {
public:
    explicit Column(NSSortDescriptor descriptor) : descriptor_(descriptor) {
        // One that compares in a way of its own is asked about each pair.
        if (answersWith(descriptor, "compareObject:toObject:"_sel, compareObject_toObject))
            comparison_.emplace(descriptor);
    }

    NSComparisonResult compare(const std::vector<NSObject>& items, std::size_t left, std::size_t right) {
        if (!comparison_) return descriptor_.compareObject_toObject(items[left], items[right]);
        if (ranksSayAll_) return NSOrderedSame;
        if (values_.empty()) values_.resize(items.size());
        const NSObject leftValue = value(items, left);
        const NSObject rightValue = value(items, right);
        if (kind_ == Kind::texts) return comparison_->directed(compareUnits(text(left), text(right)));
        if (kind_ == Kind::numbers) return comparison_->directed(compareNumbers(number(left), number(right)));
        return comparison_->compare(leftValue, rightValue);
    }

    // Ranks for the items, lower ones before higher ones; those of equal rank are to be compared. Fetches all
    // values, which is for the first descriptor, by which every item is compared.
    std::vector<std::uint64_t> ranks(const std::vector<NSObject>& items) {
        std::vector<std::uint64_t> ranks(items.size());
        if (!comparison_) return ranks;
        values_.resize(items.size());
        for (std::size_t index = 0; index < items.size(); ++index) value(items, index);
        kind_ = kindOfValues();
        if (kind_ == Kind::texts) ranks = ranksOfValues();
        if (kind_ == Kind::numbers) rankNumbers(ranks);
        if (!comparison_->isAscending())
            for (std::uint64_t& rank : ranks) rank = ~rank;
        return ranks;
    }

private:
    // What the platform compares itself, so that no message is needed: its own strings, of ASCII, and
    // numbers. Neither can be changed meanwhile.
    enum class Kind { others, texts, numbers };

    struct Value {
        Retained<NSObject> object;
        bool isFetched = false;
    };

    NSObject value(const std::vector<NSObject>& items, std::size_t index) {
        Value& value = values_[index];
        if (!value.isFetched) {
            value.object = retain(comparison_->valueOf(items[index]));
            value.isFetched = true;
        }
        return value.object;
    }

    Kind kindOfValues() const {
        if (comparison_->selector() != "compare:"_sel) return Kind::others;
        const Object* const texts = "NSString"_class.object();
        const Object* const numbers = "NSNumber"_class.object();
        bool areTexts = true;
        bool areNumbers = true;
        for (std::size_t index = 0; index < values_.size() && (areTexts || areNumbers); ++index) {
            const Object* const classObject = runtime::classOf(values_[index].object.object());
            areTexts = areTexts && classObject == texts && isAscii(text(index));
            areNumbers = areNumbers && classObject == numbers;
        }
        return areTexts ? Kind::texts : areNumbers ? Kind::numbers : Kind::others;
    }

    std::vector<std::uint64_t> ranksOfValues() const {
        std::vector<StringView> texts;
        texts.reserve(values_.size());
        for (std::size_t index = 0; index < values_.size(); ++index) texts.push_back(text(index));
        return ranksOfTexts(texts);
    }

    void rankNumbers(std::vector<std::uint64_t>& ranks) {
        ranksSayAll_ = true;
        for (std::size_t index = 0; index < ranks.size(); ++index) {
            ranks[index] = rankOf(number(index));
            ranksSayAll_ = ranksSayAll_ && isExactAsDouble(number(index));
        }
    }

    StringView text(std::size_t index) const {
        return storageOf<StringStorage>(values_[index].object).view();
    }
    const NumberValue& number(std::size_t index) const {
        return storageOf<NumberValue>(values_[index].object);
    }

    NSSortDescriptor descriptor_;
    std::optional<KeyComparison> comparison_;
    Kind kind_ = Kind::others;
    bool ranksSayAll_ = false;  // so that items of equal rank are the same
    std::vector<Value> values_; // of all items, once one was needed
};

struct Place {
    std::uint64_t rank;
    std::size_t index; // of the item
};

} // namespace

void sortItems(std::vector<NSObject>& items, NSArray descriptors) {
    if (items.size() < 2 || descriptors.count() == 0) return;
    const Retained<NSArray> kept = adopt(NSArray(descriptors.copy()));
    std::vector<Column> columns;
    for (const NSObject descriptor : ArrayItems(kept)) columns.emplace_back(as<NSSortDescriptor>(descriptor));

    const std::vector<std::uint64_t> ranks = columns.front().ranks(items);
    std::vector<Place> places(items.size());
    for (std::size_t index = 0; index < items.size(); ++index) places[index] = {ranks[index], index};
    stableSort(places, [&](const Place& left, const Place& right) {
        if (left.rank != right.rank) return left.rank > right.rank;
        for (Column& column : columns)
            if (const auto result = column.compare(items, left.index, right.index); result != NSOrderedSame)
                return result > NSOrderedSame;
        return false;
    });

    std::vector<NSObject> sorted(items.size());
    for (std::size_t index = 0; index < items.size(); ++index) sorted[index] = items[places[index].index];
    items = std::move(sorted);
}

} // namespace tessarin::embedded
