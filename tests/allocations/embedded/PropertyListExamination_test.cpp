// Whether something is a property list is found out without asking for memory, as long as every container has
// one owner and no more than 64 are inside each other.
#include "../MemoryRequests.h"
#include "Records.h"

namespace tessarin::testing {
namespace {

class PropertyListExaminationMemoryTest : public PlatformTest {
protected:
    // Arrays inside each other, each with a single owner.
    static Retained<NSObject> newNest(int levels) {
        const AutoreleasePool pool;
        NSArray nest = NSArray::arrayOf("a"_ns);
        for (int level = 1; level < levels; ++level)
            nest = NSArray::arrayOf(nest, NSNumber::numberWithDouble(0.5), NSDate::date());
        return retain<NSObject>(nest);
    }
    static std::size_t requestsToExamine(NSObject object) {
        bool isValid = false;
        const std::size_t requests = requestsOf([&] {
            isValid = NSPropertyListSerialization::propertyList_isValidForFormat(
                object, NSPropertyListBinaryFormat_v1_0);
        });
        EXPECT_TRUE(isValid);
        return requests;
    }
};

TEST_F(PropertyListExaminationMemoryTest, ContainersOfOneOwnerTakeNone) {
    const Retained<NSObject> nest = newNest(64);
    EXPECT_EQ(requestsToExamine(nest), 0u);
}

TEST_F(PropertyListExaminationMemoryTest, RecordsTakeNone) {
    const Retained<NSObject> records = newRecords(1000);
    EXPECT_EQ(requestsToExamine(records), 0u);
}

TEST_F(PropertyListExaminationMemoryTest, DeeperContainersTakeSome) {
    const Retained<NSObject> nest = newNest(65);
    EXPECT_GT(requestsToExamine(nest), 0u);
}

} // namespace
} // namespace tessarin::testing
