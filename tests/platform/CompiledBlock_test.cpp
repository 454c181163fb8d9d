// Blocks as a compiler makes them, where it does: Clang with -fblocks.
#include "PlatformTest.h"

#if defined(__has_feature)
#    if __has_feature(blocks)

#        include "BlockClasses.h"

namespace tessarin::testing {
namespace {

using Adding = Block<int(int, int)>;

int callWith(Adding block, int left, int right) { return block ? block(left, right) : -1; }
const void* addressOf(Adding block) { return block.block(); }

class CompiledBlockTest : public PlatformTest {};

TEST_F(CompiledBlockTest, IsCalled) {
    EXPECT_EQ(callWith(
                  ^(int left, int right) {
                    return left + right;
                  },
                  1, 2),
              3);
    const int factor = 10;
    EXPECT_EQ(callWith(
                  ^(int left, int right) {
                    return factor * (left + right);
                  },
                  1, 2),
              30);
}

TEST_F(CompiledBlockTest, PassesThroughAsItIs) {
    int (^const sum)(int, int) = ^(int left, int right) {
      return left + right;
    };
    EXPECT_EQ(addressOf(sum), static_cast<const void*>(sum));
}

TEST_F(CompiledBlockTest, MayBeNil) {
    int (^const none)(int, int) = nullptr;
    EXPECT_EQ(callWith(none, 1, 2), -1);
}

TEST_F(CompiledBlockTest, ReachesTheArray) {
    const NSUInteger limit = 1;
    const NSIndexSet passed =
        NSArray::arrayOf("a"_ns, "bb"_ns)
            .indexesOfObjectsWithOptions_passingTest(0, ^(id object, NSUInteger, BOOL*) {
              return as<NSString>(object).length() > limit ? YES : NO;
            });
    EXPECT_EQ(passed.count(), 1u);
    EXPECT_EQ(passed.firstIndex(), 1u);
}

} // namespace
} // namespace tessarin::testing

#    endif
#endif
