#include "platform/embedded/runtime/Selectors.h"

#include <cstring>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tessarin {
namespace {

// Made on first use and never destroyed: selectors are needed before the first static object and after the
// last.
class SelectorTable {
public:
    SEL find(std::string_view name) {
        std::shared_lock reading(mutex_);
        const auto found = selectors_.find(name);
        return found != selectors_.end() ? found->second : nullptr;
    }

    SEL selectorNamed(std::string_view name) {
        if (const SEL selector = find(name)) return selector;
        std::unique_lock writing(mutex_);
        if (const auto found = selectors_.find(name); found != selectors_.end()) return found->second;
        const SEL selector = append(name);
        selectors_.emplace(std::string_view(selector->name, name.size()), selector);
        return selector;
    }

private:
    static constexpr std::size_t recordsPerBlock = 256;

    SEL append(std::string_view name) {
        auto copy = std::make_unique<char[]>(name.size() + 1);
        std::memcpy(copy.get(), name.data(), name.size());
        if (used_ == recordsPerBlock || blocks_.empty()) {
            blocks_.push_back(std::make_unique<SelectorRecord[]>(recordsPerBlock));
            used_ = 0;
        }
        SelectorRecord* record = &blocks_.back()[used_++];
        record->name = names_.emplace_back(std::move(copy)).get();
        return record;
    }

    std::shared_mutex mutex_;
    std::unordered_map<std::string_view, SEL> selectors_;
    std::vector<std::unique_ptr<SelectorRecord[]>> blocks_;
    std::vector<std::unique_ptr<char[]>> names_;
    std::size_t used_ = 0;
};

SelectorTable& selectorTable() {
    static auto* table = new SelectorTable;
    return *table;
}

} // namespace

SEL embedded::findSelector(std::string_view name) { return selectorTable().find(name); }

namespace runtime {

SEL registerSelector(const char* name) { return selectorTable().selectorNamed(name); }

const char* selectorName(SEL selector) { return selector ? selector->name : "(null)"; }

} // namespace runtime
} // namespace tessarin
