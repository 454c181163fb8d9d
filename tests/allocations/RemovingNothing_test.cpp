// Operations that remove or move nothing ask for no memory.
#include "MemoryRequests.h"
#include "PlatformTest.h"

#include "TessarinFoundation/NSArray+TessarinExtensions.h"
#include "TessarinFoundation/NSMutableArray+TessarinExtensions.h"

namespace tessarin::testing {
namespace {

class RemovingNothingTest : public PlatformTest {
protected:
    const NSArray array_ = NSArray::arrayOf("a"_ns, NSNumber::numberWithInt(1), "c"_ns);
    const NSMutableArray editable_ = NSMutableArray::arrayWithArray(array_);
    const NSMutableArray empty_ = NSMutableArray::array();
    const NSString equalToFirst_ = NSString("a");
};

TEST_F(RemovingNothingTest, RequestsAreCounted) {
    EXPECT_GT(requestsOf([] { adopt(NSMutableArray::alloc().init()).addObject("a"_ns); }), 0u);
    EXPECT_GT(requestsOf([&] { tessarin_arrayByRemovingObject(array_, equalToFirst_); }), 0u);
}

TEST_F(RemovingNothingTest, AnAbsentObject) {
    for (const NSArray array : {array_, NSArray(editable_)}) {
        EXPECT_EQ(requestsOf([&] { tessarin_arrayByRemovingObject(array, "z"_ns); }), 0u);
        EXPECT_EQ(requestsOf([&] { tessarin_arrayByRemovingObject(array, nil); }), 0u);
    }
}

TEST_F(RemovingNothingTest, AnObjectThatIsNotTheSame) {
    for (const NSArray array : {array_, NSArray(editable_)}) {
        EXPECT_EQ(requestsOf([&] { tessarin_arrayByRemovingObjectIdenticalTo(array, empty_); }), 0u);
        EXPECT_EQ(requestsOf([&] { tessarin_arrayByRemovingObjectIdenticalTo(array, nil); }), 0u);
    }
}

TEST_F(RemovingNothingTest, TheEndsOfAnEmptyArray) {
    EXPECT_EQ(requestsOf([&] {
                  tessarin_removeFirstObject(empty_);
                  tessarin_removeLastObject(empty_);
              }),
              0u);
}

TEST_F(RemovingNothingTest, AMoveThatLeadsNowhere) {
    EXPECT_EQ(requestsOf([&] {
                  tessarin_moveObjectFromIndex_toIndex(editable_, 1, 1);
                  tessarin_moveObjectFromIndex_toIndex(editable_, 1, 3);
                  tessarin_moveObjectFromIndex_toIndex(editable_, 3, 1);
              }),
              0u);
}

} // namespace
} // namespace tessarin::testing
