// One message sent to many objects in a row, as in a loop over a collection.
#pragma once

#include "TessarinPlatform/Send.h"

namespace tessarin {
namespace runtime {

#if TESSARIN_PLATFORM_EMBEDDED

// Keeps the method that was found last. A class's cache is replaced when its methods change, and no cache is
// used for a second class or a second time, so that the same cache means the same method.
class RepeatedLookUp {
public:
    Implementation operator()(Object* receiver, SEL selector) {
        MethodCache* const cache = receiver->isa->cache.load(std::memory_order_acquire);
        if (cache == cache_) [[likely]]
            return implementation_;
        const MethodCacheEntry& entry = cache->entryAt(selectorHash(selector));
        // A class that was asked nothing yet has the empty cache, which is shared: it is not kept.
        if (entry.selector.load(std::memory_order_acquire) != selector)
            return lookUpBeyondFirstEntry(receiver, selector);
        cache_ = cache;
        implementation_ = entry.implementation.load(std::memory_order_relaxed);
        return implementation_;
    }

private:
    const MethodCache* cache_ = nullptr;
    Implementation implementation_ = nullptr;
};

#else

// The runtime says nothing of methods that change, so that every object is asked.
class RepeatedLookUp {
public:
    Implementation operator()(Object* receiver, SEL selector) const { return lookUp(receiver, selector); }
};

#endif

} // namespace runtime

// Sends as `send` does, and calls the method that `send` would call, also where a class gets another one or
// an object another class in the middle of the loop. It is faster where objects of the same class follow each
// other. The signature is that of the method without receiver and selector. Of one thread.
//
//   RepeatedMessage<void(NSInteger)> setState{"setState:"_sel};
//   for (const NSObject item : items) setState(item, NSOnState);
template <class Signature>
class RepeatedMessage;

template <class Result, class... Arguments>
class RepeatedMessage<Result(Arguments...)> {
public:
    explicit RepeatedMessage(SEL selector) : selector_(selector) {
        static_assert(!detail::isStructure<Result>,
                      "structures are looked up in another way by some runtimes");
    }

    Result operator()(NSObject receiver, Arguments... arguments) {
        if (!receiver) return Result();
        return detail::call<Result, detail::PassedAs<Arguments>...>(lookUp_(receiver.object(), selector_),
                                                                    receiver, selector_, arguments...);
    }

    // The method that a message to the receiver calls; null for nil.
    Implementation methodOf(NSObject receiver) {
        return receiver ? lookUp_(receiver.object(), selector_) : nullptr;
    }

private:
    SEL selector_;
    runtime::RepeatedLookUp lookUp_;
};

} // namespace tessarin
