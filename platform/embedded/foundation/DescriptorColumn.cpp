#include "platform/embedded/foundation/DescriptorColumn.h"

#include "platform/embedded/foundation/PlainStringOrder.h"

#include <bit>

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

} // namespace

DescriptorColumn::DescriptorColumn(NSSortDescriptor descriptor, const std::vector<NSObject>& items)
    : descriptor_(descriptor), items_(items) {
    // One that compares in a way of its own is asked about each pair.
    if (answersWith(descriptor, "compareObject:toObject:"_sel, compareObject_toObject))
        comparison_.emplace(descriptor);
}

NSComparisonResult DescriptorColumn::compare(std::size_t left, std::size_t right) {
    if (!comparison_) return descriptor_.compareObject_toObject(items_[left], items_[right]);
    if (kind_ == Kind::texts) return comparison_->directed(compareUnits(text(left), text(right)));
    if (kind_ == Kind::numbers) return comparison_->directed(compareNumbers(number(left), number(right)));
    if (values_.empty()) values_.resize(items_.size());
    const NSObject leftValue = value(left);
    return comparison_->compare(leftValue, value(right));
}

bool DescriptorColumn::rank(const std::vector<std::size_t>& wanted, std::vector<std::uint64_t>& ranks) {
    if (!comparison_ || comparison_->selector() != "compare:"_sel) return false;
    values_.resize(items_.size());
    std::vector<StringView> texts;
    kind_ = kindOf(value(wanted.front()));
    ranksSayAll_ = kind_ == Kind::numbers;
    for (const std::size_t index : wanted) {
        const NSObject fetched = value(index);
        if (kind_ != kindOf(fetched)) kind_ = Kind::others;
        if (kind_ == Kind::texts) texts.push_back(text(index));
        if (kind_ != Kind::numbers) continue;
        ranks[index] = rankOf(number(index));
        ranksSayAll_ = ranksSayAll_ && isExactAsDouble(number(index));
    }
    if (kind_ == Kind::others) return false;
    if (kind_ == Kind::texts) {
        const std::vector<std::uint64_t> ranksInOrder = ranksOfTexts(texts);
        for (std::size_t position = 0; position < wanted.size(); ++position)
            ranks[wanted[position]] = ranksInOrder[position];
    }
    if (!comparison_->isAscending())
        for (const std::size_t index : wanted) ranks[index] = ~ranks[index];
    return true;
}

DescriptorColumn::Kind DescriptorColumn::kindOf(NSObject value) {
    if (!value) return Kind::others;
    const Object* const classObject = value.object()->isa;
    if (classObject == "NSNumber"_class.object()) return Kind::numbers;
    const bool isText =
        classObject == "NSString"_class.object() && isAscii(storageOf<StringStorage>(value).view());
    return isText ? Kind::texts : Kind::others;
}

NSObject DescriptorColumn::value(std::size_t index) {
    Value& value = values_[index];
    if (!value.isFetched) {
        value.object = retain(comparison_->valueOf(items_[index]));
        value.isFetched = true;
    }
    return value.object;
}

} // namespace tessarin::embedded
