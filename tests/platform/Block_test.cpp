// Callables in the platform's block layout.
#include "PlatformTest.h"

#include "TessarinPlatform/Block.h"

#include <functional>
#include <memory>
#include <stdexcept>

namespace tessarin::testing {
namespace {

using Adding = Block<int(int, int)>;
using Naming = Block<BOOL(id, NSUInteger)>;

static_assert(sizeof(Adding) == sizeof(void*));
static_assert(std::is_trivially_copyable_v<Adding>);
static_assert(detail::encodingOf<Adding>.view() == "@?");
static_assert(!std::is_convertible_v<int, Adding>);
static_assert(!std::is_convertible_v<void (*)(int), Adding>);

// The receivers of blocks: what a method would do with one.
int callWith(Adding block, int left, int right) { return block(left, right); }
int passOn(Adding block, int left, int right) { return callWith(block, left, right); }
bool isNil(Adding block) { return !block; }

int sum(int left, int right) { return left + right; }

class BlockTest : public PlatformTest {};

TEST_F(BlockTest, ALambdaIsOneForTheLengthOfACall) {
    const int factor = 10;
    EXPECT_EQ(callWith([&](int left, int right) { return factor * (left + right); }, 1, 2), 30);
}

TEST_F(BlockTest, AFunctionIsOne) {
    EXPECT_EQ(callWith(sum, 1, 2), 3);
    EXPECT_EQ(callWith(&sum, 1, 2), 3);
}

TEST_F(BlockTest, AFunctorIsOneAndIsNotCopied) {
    struct Counter {
        int calls = 0;
        Counter() = default;
        Counter(const Counter&) = delete;
        Counter& operator=(const Counter&) = delete;
        int operator()(int left, int right) { return ++calls + left + right; }
    } counter;
    EXPECT_EQ(callWith(counter, 1, 2), 4);
    EXPECT_EQ(callWith(counter, 1, 2), 5);
    EXPECT_EQ(counter.calls, 2);
}

TEST_F(BlockTest, AConstantFunctorIsOne) {
    const auto add = [](int left, int right) { return left + right; };
    EXPECT_EQ(callWith(add, 1, 2), 3);
}

TEST_F(BlockTest, IsPassedOn) {
    EXPECT_EQ(passOn([](int left, int right) { return left * right; }, 3, 4), 12);
}

TEST_F(BlockTest, NilIsOneThatIsNot) {
    EXPECT_TRUE(isNil(nullptr));
    EXPECT_TRUE(isNil({}));
    EXPECT_TRUE(Adding() == nullptr);
    EXPECT_TRUE(isNil(static_cast<int (*)(int, int)>(nullptr)));
    EXPECT_TRUE(isNil(std::function<int(int, int)>()));
    EXPECT_FALSE(isNil(sum));
    EXPECT_FALSE(isNil(std::function<int(int, int)>(sum)));
}

TEST_F(BlockTest, TheCallableTakesObjectsAsHandlesOfAnyClass) {
    const auto lengthIs = [](Naming block, NSObject object, NSUInteger length) {
        return block(object, length) != NO;
    };
    const auto test = [](NSString string, NSUInteger length) { return string.length() == length; };
    EXPECT_TRUE(lengthIs(test, "abc"_ns, 3));
    EXPECT_FALSE(lengthIs(test, "abc"_ns, 2));
}

TEST_F(BlockTest, ANumberIsTrueUnlessItIsZero) {
    const auto answer = [](Naming block) { return block(nil, 0); };
    EXPECT_EQ(answer([](id, NSUInteger) { return 256; }), YES);
    EXPECT_EQ(answer([](id, NSUInteger) { return 0; }), NO);
}

TEST_F(BlockTest, ResultsOfEverySizeComeBack) {
    const auto real = [](Block<double(double)> block) { return block(0.25); };
    EXPECT_EQ(real([](double value) { return 2 * value; }), 0.5);
    const auto range = [](Block<NSRange()> block) { return block(); };
    EXPECT_EQ(range([] { return NSRange{3, 4}; }), (NSRange{3, 4}));
    const auto nothing = [](Block<void(int*)> block, int* target) { block(target); };
    int written = 0;
    nothing([](int* target) { return *target = 7; }, &written);
    EXPECT_EQ(written, 7);
}

TEST_F(BlockTest, WhatTheCallableThrowsPassesThrough) {
    EXPECT_THROW(callWith([](int, int) -> int { throw std::runtime_error("x"); }, 1, 2), std::runtime_error);
    EXPECT_THROWS_NAMED(callWith([](int, int) -> int { raise(NSRangeException(), "x"_ns); }, 1, 2),
                        "NSRangeException");
}

// ---- The layout, as a compiler that has blocks knows it

struct CompiledBlock {
    void* isa;
    int flags;
    int reserved;
    int (*invoke)(CompiledBlock*, int, int);
    const unsigned long* descriptor; // 0, then the size
    int captured;
};

TESSARIN_DISPATCHES int callAsCompiled(Adding block) {
    auto* compiled = static_cast<CompiledBlock*>(const_cast<void*>(block.block()));
    EXPECT_EQ(compiled->reserved, 0);
    EXPECT_EQ(compiled->descriptor[0], 0u);
    EXPECT_EQ(compiled->descriptor[1], sizeof(detail::CallableBlock));
    return compiled->invoke(compiled, 1, 2);
}

TEST_F(BlockTest, HasTheLayoutOfACompiledBlock) {
    EXPECT_EQ(callAsCompiled([](int left, int right) { return left + right; }), 3);
}

// Global blocks are left alone by whoever copies and releases.
TEST_F(BlockTest, CopyingItAnswersTheBlockItself) {
    const auto isGlobal = [](Adding block) {
        return (static_cast<const CompiledBlock*>(block.block())->flags & 1 << 28) != 0;
    };
    EXPECT_TRUE(isGlobal(sum));
}

TEST_F(BlockTest, ABlockOfAMethodIsTheOneThatWasSent) {
    static const void* received = nullptr;
    static const ClassDefinition definition{{.name = "TessarinTestBlockReceiver",
                                             .methods = {classMethod(
                                                 "call:", +[](Class, SEL, Adding block) {
                                                     received = block.block();
                                                     return block ? block(3, 4) : -1;
                                                 })}}};
    const auto sendBlock = [](Adding block) {
        const int result = send<int>(definition.classObject(), "call:"_sel, block);
        EXPECT_EQ(received, block.block());
        return result;
    };
    EXPECT_EQ(sendBlock([](int left, int right) { return left * right; }), 12);
    EXPECT_EQ(sendBlock(nil), -1);
}

} // namespace
} // namespace tessarin::testing
