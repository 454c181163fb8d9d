// Containers in containers: equality and descriptions.
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

class NestedContainersTest : public PlatformTest {
protected:
    static NSObject nested(int depth, NSObject innermost) {
        NSObject container = innermost;
        for (int level = 0; level < depth; ++level) {
            container = level % 2 == 0 ? static_cast<NSObject>(NSArray::arrayOf("x"_ns, container))
                                       : NSDictionary::dictionaryWithObject_forKey(container, "k"_ns);
        }
        return container;
    }
};

TEST_F(NestedContainersTest, EqualWhereTheyHoldEqualObjects) {
    EXPECT_TRUE(nested(100, "a"_ns).isEqual(nested(100, NSMutableString::stringWithString("a"_ns))));
    EXPECT_FALSE(nested(100, "a"_ns).isEqual(nested(100, "b"_ns)));
    EXPECT_FALSE(nested(100, "a"_ns).isEqual(nested(99, "a"_ns)));
    EXPECT_FALSE(nested(100, NSArray::array()).isEqual(nested(100, NSDictionary::dictionary())));
}

TEST_F(NestedContainersTest, DictionariesWithContainersForKeysAreCompared) {
    // All keys have the same hash where an array hashes as its count, so that several have to be tried.
    const auto withKeys = [](const std::vector<const char*>& letters) {
        const NSMutableDictionary dictionary = NSMutableDictionary::dictionary();
        for (const char* letter : letters)
            dictionary.setObject_forKey(NSString(letter),
                                        NSArray::arrayOf(NSArray::arrayOf(NSString(letter))));
        return dictionary;
    };
    EXPECT_TRUE(withKeys({"a", "b", "c"}).isEqual(withKeys({"c", "a", "b"})));
    EXPECT_FALSE(withKeys({"a", "b", "c"}).isEqual(withKeys({"a", "b", "d"})));
}

TEST_F(NestedContainersTest, MutableAndImmutableContainersAreEqual) {
    const NSMutableArray array = NSMutableArray::array();
    array.addObject(NSMutableDictionary::dictionaryWithDictionary(NSDictionary::dictionary()));
    EXPECT_TRUE(array.isEqual(NSArray::arrayOf(NSDictionary::dictionary())));
}

TEST_F(NestedContainersTest, PartsThatDifferedWithinAKeyDifferAsObjectsToo) {
    const NSArray p = NSArray::arrayOf("p"_ns), q = NSArray::arrayOf("q"_ns);
    const NSMutableDictionary left = NSMutableDictionary::dictionary();
    left.setObject_forKey(p, NSArray::arrayOf(p));
    left.setObject_forKey("x"_ns, NSArray::arrayOf(q));
    // The key that is tried first compares p with q, as the objects of the right key do.
    const NSMutableDictionary right = NSMutableDictionary::dictionary();
    right.setObject_forKey("x"_ns, NSArray::arrayOf(q));
    right.setObject_forKey(q, NSArray::arrayOf(p));
    EXPECT_FALSE(left.isEqual(right));
}

} // namespace
} // namespace tessarin::testing
