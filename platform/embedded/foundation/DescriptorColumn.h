// One of the descriptors that items are sorted by, and the items' values for its key.
#pragma once

#include "platform/embedded/foundation/KeyComparison.h"
#include "platform/embedded/foundation/NumberValue.h"
#include "platform/embedded/foundation/StringStorage.h"

#include <optional>
#include <vector>

namespace tessarin::embedded {

// A value is fetched once, when it is first needed, and kept: fetching and comparing are the items' own code.
// Items go by their indexes in a list that outlives the column.
class DescriptorColumn {
public:
    DescriptorColumn(NSSortDescriptor descriptor, const std::vector<NSObject>& items);

    NSComparisonResult compare(std::size_t left, std::size_t right);

    // Writes ranks of the wanted items, of which there is one at least: lower ranks come before higher ones,
    // and items of equal rank are to be compared, unless the ranks say all. False where there are no ranks,
    // since something else has to be asked how the values compare.
    bool rank(const std::vector<std::size_t>& wanted, std::vector<std::uint64_t>& ranks);
    bool ranksSayAll() const { return ranksSayAll_; }

private:
    // What the platform compares itself, so that no message is needed: its own strings, of ASCII, and
    // numbers. Neither can be changed meanwhile.
    enum class Kind { others, texts, numbers };

    struct Value {
        Retained<NSObject> object;
        bool isFetched = false;
    };

    static Kind kindOf(NSObject value);
    NSObject value(std::size_t index);

    StringView text(std::size_t index) const {
        return storageOf<StringStorage>(values_[index].object).view();
    }
    const NumberValue& number(std::size_t index) const {
        return storageOf<NumberValue>(values_[index].object);
    }

    NSSortDescriptor descriptor_;
    const std::vector<NSObject>& items_;
    std::optional<KeyComparison> comparison_;
    Kind kind_ = Kind::others; // of all that were ranked
    bool ranksSayAll_ = false; // so that items of equal rank are the same
    std::vector<Value> values_;
};

} // namespace tessarin::embedded
