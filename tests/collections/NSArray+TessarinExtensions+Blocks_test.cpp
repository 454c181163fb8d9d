// Filtering with a block that a compiler has made: Clang with -fblocks.
#include "PlatformTest.h"

#include "TessarinFoundation/NSArray+TessarinExtensions.h"

#if defined(__has_feature)
#    if __has_feature(blocks)

#        include "BlockClasses.h"

namespace tessarin::testing {
namespace {

class CompiledPredicateTest : public PlatformTest {};

TEST_F(CompiledPredicateTest, SeesObjectAndIndex) {
    const NSArray array = NSArray::arrayOf("a"_ns, "bb"_ns, "cc"_ns, "d"_ns);
    const NSUInteger length = 2;
    const NSArray passed = tessarin_arrayWithObjectsPassingTest_options(
        array,
        ^(id object, NSUInteger index, BOOL*) {
          return as<NSString>(object).length() == length || index == 3 ? YES : NO;
        },
        0);
    EXPECT_EQ(texts(passed), (Texts{"bb", "cc", "d"}));
}

TEST_F(CompiledPredicateTest, MayStop) {
    const NSArray passed = tessarin_arrayWithObjectsPassingTest_options(
        NSArray::arrayOf("a"_ns, "b"_ns, "c"_ns),
        ^(id, NSUInteger index, BOOL* stop) {
          *stop = index == 1 ? YES : NO;
          return YES;
        },
        0);
    EXPECT_EQ(texts(passed), (Texts{"a", "b"}));
}

TEST_F(CompiledPredicateTest, ThatIsNilGivesNil) {
    BOOL (^const none)(id, NSUInteger, BOOL*) = nullptr;
    EXPECT_EQ(tessarin_arrayWithObjectsPassingTest_options(NSArray::arrayOf("a"_ns), none, 0), nil);
}

} // namespace
} // namespace tessarin::testing

#    endif
#endif
