// The containers of a copied property list have room for their contents behind them: one request for each.
#include "../MemoryRequests.h"
#include "PlatformTest.h"

#include "TessarinFoundation/NSPropertyListSerialization+TessarinExtensions.h"

namespace tessarin::testing {
namespace {

class PropertyListCopyMemoryTest : public PlatformTest {
protected:
    // As many records of two containers.
    static Retained<NSObject> newRecords(int count) {
        const AutoreleasePool pool;
        const NSMutableArray list = NSMutableArray::array();
        for (int index = 0; index < count; ++index) {
            const NSMutableDictionary record = NSMutableDictionary::dictionary();
            record.setObject_forKey(NSNumber::numberWithLongLong(index), "number"_ns);
            record.setObject_forKey(NSArray::arrayOf("a"_ns, "b"_ns), "tags"_ns);
            list.addObject(record);
        }
        return retain<NSObject>(list);
    }
    static std::size_t requestsToCopy(int count) {
        const Retained<NSObject> records = newRecords(count);
        bool isCopied = false;
        const std::size_t requests = requestsOf([&] {
            const AutoreleasePool pool;
            isCopied = bool(tessarin_propertyListWithMutableContainers_error(records, nullptr));
        });
        EXPECT_TRUE(isCopied);
        return requests;
    }
};

TEST_F(PropertyListCopyMemoryTest, EveryContainerTakesOneRequest) {
    EXPECT_EQ(requestsToCopy(200) - requestsToCopy(100), 2u * 100);
}

} // namespace
} // namespace tessarin::testing
