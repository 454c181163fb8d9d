// The containers of a copied property list have room for their contents behind them: one request for each.
#include "../MemoryRequests.h"
#include "Records.h"

#include "TessarinFoundation/NSPropertyListSerialization+TessarinExtensions.h"

namespace tessarin::testing {
namespace {

class PropertyListCopyMemoryTest : public PlatformTest {
protected:
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
