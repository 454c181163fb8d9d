// Selectors by literal: "count"_sel is registered on first use and is one load afterwards.
#pragma once

#include "TessarinPlatform/Runtime.h"
#include "TessarinPlatform/detail/FixedString.h"

#include <atomic>

namespace tessarin {
namespace detail {

template <FixedString Name>
TESSARIN_OF_EACH_BINARY inline constinit std::atomic<SEL> selectorSlot{nullptr};

} // namespace detail

template <detail::FixedString Name>
inline SEL operator""_sel() {
    SEL selector = detail::selectorSlot<Name>.load(std::memory_order_acquire);
    if (!selector) [[unlikely]] {
        selector = runtime::registerSelector(Name.c_str());
        detail::selectorSlot<Name>.store(selector, std::memory_order_release);
    }
    return selector;
}

} // namespace tessarin
