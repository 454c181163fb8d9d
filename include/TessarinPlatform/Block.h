// Blocks: callables in the form in which the platform's operations take them.
//
//   NSIndexSet longOnes = names.indexesOfObjectsWithOptions_passingTest(
//       0, [&](NSString name, NSUInteger, BOOL*) { return name.length() > limit; });
#pragma once

#include "TessarinPlatform/detail/TypeEncoding.h"

#include <memory>
#include <type_traits>
#include <utility>

// What makes a copy of a block an object, in a process that has it.
#if TESSARIN_PLATFORM_NATIVE && !defined(_WIN32)
extern "C" void* _NSConcreteGlobalBlock[32] __attribute__((weak));
#endif

namespace tessarin {
namespace detail {

// What the platform's compilers agree on: a block is a pointer to this. A block of a compiler's may be
// followed by what it captured; one that is made here is followed by where its callable is.
struct BlockDescriptor {
    unsigned long reserved;
    unsigned long size; // of the whole block
};

struct BlockLayout {
    void* isa;
    int flags;
    int reserved;
    void (*invoke)(); // cast to its exact prototype, (block, arguments...), before it is called
    const BlockDescriptor* descriptor;
};

// A block as it is made of a callable. It says of itself that it is global: that it captured nothing that a
// copy would have to keep, so that copying it answers the block itself and releasing it does nothing.
struct CallableBlock : BlockLayout {
    static constexpr int isGlobal = 1 << 28;
    static constexpr BlockDescriptor wholeDescriptor{0, sizeof(BlockLayout)
                                                            + sizeof(void*)}; // of layout and callable

    CallableBlock() : BlockLayout{concreteClass(), isGlobal, 0, nullptr, &wholeDescriptor} {}

    static void* concreteClass() {
#if TESSARIN_PLATFORM_NATIVE && !defined(_WIN32)
        return static_cast<void*>(_NSConcreteGlobalBlock);
#else
        return nullptr;
#endif
    }

    union {
        const void* object;
        void (*function)();
    } callable{nullptr};
};

// Whether a callable can be called with the arguments and its result is, or becomes, the one wanted.
template <class Callable, class Result, class... Arguments>
concept CallableWith = requires(Callable& callable, Arguments... arguments) {
    callable(arguments...);
    requires std::is_void_v<Result> || requires { static_cast<Result>(callable(arguments...)); };
};

} // namespace detail

template <class Signature>
class Block;

// A view of something that can be called, one pointer wide: a block of the platform, or nil. It owns nothing.
//
// Whatever can be called with the arguments (a lambda, a functor, a function) converts to it where a function
// is called that takes a block, and is one until that call returns: the block lies in the caller's frame. It
// is therefore neither kept in a variable nor by the one who receives it; copying it in the platform's way
// does not make it last longer. nullptr, a null function pointer and an empty std::function give nil.
//
// A block of a compiler that has them (Clang with -fblocks, Objective-C) becomes one as it is. What the
// callable throws passes through to the caller of the operation; an operation of a platform that is not ready
// for that may lose what it holds.
//
// The arguments are best declared as `id`: the callable may then take each as a handle of any class.
template <class Result, class... Arguments>
class Block<Result(Arguments...)> {
public:
    constexpr Block() = default; // nil
    constexpr Block(std::nullptr_t) {}

    // The second argument is what the block is made of; the language keeps it until the full expression ends.
    template <class Callable>
    requires(!std::same_as<std::remove_cvref_t<Callable>,
                           Block> && detail::CallableWith<Callable, Result, Arguments...>)
        Block(Callable&& callable, detail::CallableBlock&& block = {}) {
        using Target = std::remove_reference_t<Callable>;
        if constexpr (!std::is_function_v<Target> && std::is_constructible_v<Target, std::nullptr_t>)
            if (callable == nullptr) return;
        if constexpr (std::is_function_v<Target>)
            block.callable.function = reinterpret_cast<void (*)()>(&callable);
        else
            block.callable.object = static_cast<const void*>(std::addressof(callable));
        block.invoke = reinterpret_cast<void (*)()>(&invoke<Target>);
        block_ = &block;
    }

#if defined(__has_feature)
#    if __has_feature(blocks)
    Block(Result (^block)(Arguments...))
        : block_(static_cast<const detail::BlockLayout*>(static_cast<const void*>(block))) {}
#    endif
#endif

    constexpr explicit operator bool() const { return block_ != nullptr; }
    friend constexpr bool operator==(Block left, Block right) { return left.block_ == right.block_; }

    // Calls it. A nil block must not be called.
    TESSARIN_DISPATCHES Result operator()(Arguments... arguments) const {
        using Invoke = Result (*)(const detail::BlockLayout*, Arguments...);
        return reinterpret_cast<Invoke>(block_->invoke)(block_, arguments...);
    }

    // The platform's own pointer to the block.
    constexpr const void* block() const { return block_; }

    static constexpr auto typeEncoding() { return detail::letter('@') + detail::letter('?'); }

private:
    template <class Target>
    static Result invoke(const detail::BlockLayout* block, Arguments... arguments) {
        const auto& made = *static_cast<const detail::CallableBlock*>(block);
        if constexpr (std::is_function_v<Target>)
            return call(*reinterpret_cast<Target*>(made.callable.function), arguments...);
        else
            return call(*static_cast<Target*>(const_cast<void*>(made.callable.object)), arguments...);
    }
    template <class Target>
    static Result call(Target& target, Arguments... arguments) {
        if constexpr (std::is_void_v<Result>)
            target(arguments...);
        else if constexpr (std::is_same_v<Result, BOOL>)
            return static_cast<bool>(target(arguments...)) ? YES : NO; // of a number, not its lowest bits
        else
            return static_cast<Result>(target(arguments...));
    }

    const detail::BlockLayout* block_ = nullptr;
};

} // namespace tessarin
