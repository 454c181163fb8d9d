// NSString: a sequence of 16-bit code units, immutable. The class stands in detail/NSString-class.h, its
// messages in detail/NSString-messages.h; this header holds what goes with it.
#pragma once

#include "TessarinPlatform/detail/NSString-class.h"

namespace tessarin {

// The home directory of the user.
TESSARIN_EXPORT NSString homeDirectory();

namespace detail {

template <FixedString Text>
TESSARIN_OF_EACH_BINARY inline constinit std::atomic<Object*> literalSlot{nullptr};

} // namespace detail

// A constant string, made on first use and kept for the life of the process: "items"_ns, u"\u00e9"_ns.
template <detail::FixedString Text>
inline NSString operator""_ns() {
    Object* string = detail::literalSlot<Text>.load(std::memory_order_acquire);
    if (!string) [[unlikely]] {
        string = runtime::makeConstantString(Text.view());
        // Of two threads that come at once, the string of the first is kept.
        Object* kept = nullptr;
        if (!detail::literalSlot<Text>.compare_exchange_strong(kept, string)) {
            runtime::discardConstantString(string);
            string = kept;
        }
    }
    return NSString(NSObject(string));
}

template <class... Arguments>
NSString NSString::stringWithFormat(NSString format, const Arguments&... arguments) {
    return sendVariadic<NSString>(classObject(), "stringWithFormat:"_sel, format, arguments...);
}

inline NSString NSObject::description() const { return send<NSString>(*this, "description"_sel); }

inline id NSObject::valueForKey(NSString key) const { return send<id>(*this, "valueForKey:"_sel, key); }
inline id NSObject::valueForKeyPath(NSString keyPath) const {
    return send<id>(*this, "valueForKeyPath:"_sel, keyPath);
}
inline void NSObject::setValue_forKey(NSObject value, NSString key) const {
    send<void>(*this, "setValue:forKey:"_sel, value, key);
}

} // namespace tessarin

#include "TessarinPlatform/detail/NSString-messages.h"
