// Archives that ask for more time or memory than their size justifies. Each is refused.
#include "HandMadeArchives.h"

#include "TessarinFoundation/TSSRTransformedValue.h"

namespace tessarin::testing {
namespace {

class KeyedArchiveCostTest : public PlatformTest {
protected:
    static NSObject numbered(std::size_t position) { return reference(static_cast<std::uint32_t>(position)); }
    // Objects that all say the same of themselves, behind a root that is an array of them.
    static NSData archiveOfMany(std::size_t count, NSObject object, NSArray further) {
        const NSMutableArray items = NSMutableArray::array(), objects = NSMutableArray::array();
        for (std::size_t index = 0; index < count; ++index) items.addObject(numbered(index + 2));
        objects.addObject(container(static_cast<std::uint32_t>(count) + 2, items));
        for (std::size_t index = 0; index < count; ++index) objects.addObject(object);
        objects.addObject(classNamed("NSArray"_ns));
        objects.addObjectsFromArray(further);
        return dataOf(archiveOf(objects));
    }
};

TEST_F(KeyedArchiveCostTest, DictionariesWithContainersAsKeysInsideAKeyAreRefused) {
    const NSDictionary inner = NSDictionary::dictionaryWithObject_forKey("v"_ns, NSArray::arrayOf("a"_ns));
    const NSDictionary once =
        NSDictionary::dictionaryWithObject_forKey("v"_ns, NSArray::arrayOf("a"_ns, "b"_ns));
    const NSDictionary twice =
        NSDictionary::dictionaryWithObject_forKey("v"_ns, NSArray::arrayOf("a"_ns, inner));
    EXPECT_EQ(raisedBy(NSKeyedArchiver::archivedDataWithRootObject(once)), "(nothing)");
    EXPECT_NE(raisedBy(NSKeyedArchiver::archivedDataWithRootObject(twice)).find("inside a key"),
              std::string::npos);
}

TEST_F(KeyedArchiveCostTest, TooManyKeysOfOneHashAreRefused) {
    const auto dictionaryOfArrays = [](std::size_t count) {
        const NSMutableArray keys = NSMutableArray::array(), values = NSMutableArray::array();
        const NSMutableArray objects = NSMutableArray::array();
        for (std::size_t index = 0; index < count; ++index) {
            const AutoreleasePool pool;
            const auto last = static_cast<std::uint32_t>(2 * count);
            keys.addObject(numbered(index + 2));
            values.addObject(numbered(0 + last + 2));
            objects.addObject(container(last + 3, NSArray::arrayOf(numbered(count + index + 2))));
        }
        for (std::size_t index = 0; index < count; ++index) {
            const AutoreleasePool pool;
            objects.addObject(NSString(std::to_string(index)));
        }
        objects.addObject("value"_ns);
        objects.addObject(classNamed("NSArray"_ns));
        objects.addObject(classNamed("NSDictionary"_ns));
        objects.insertObject_atIndex(
            dictionaryOf("$class"_ns, numbered(2 * count + 4), "NS.keys"_ns, keys, "NS.objects"_ns, values),
            0);
        return dataOf(archiveOf(objects));
    };
    EXPECT_EQ(raisedBy(dictionaryOfArrays(1000)), "(nothing)");
    EXPECT_NE(raisedBy(dictionaryOfArrays(10'000)).find("more bytes"), std::string::npos);
}

TEST_F(KeyedArchiveCostTest, TooManyCopiesOfOneMutableKeyAreRefused) {
    const std::size_t count = 1000;
    const NSObject one =
        dictionaryOf("$class"_ns, numbered(count + 3), "NS.keys"_ns, NSArray::arrayOf(numbered(count + 4)),
                     "NS.objects"_ns, NSArray::arrayOf(numbered(count + 6)));
    const NSObject longKey =
        dictionaryOf("$class"_ns, numbered(count + 5), "NS.string"_ns, NSString(std::string(100'000, 'x')));
    const NSData archive = archiveOfMany(count, one,
                                         NSArray::arrayOf(classNamed("NSDictionary"_ns), longKey,
                                                          classNamed("NSMutableString"_ns), "value"_ns));
    EXPECT_NE(raisedBy(archive).find("more bytes"), std::string::npos);
}

TEST_F(KeyedArchiveCostTest, TooManyIndexSetsOfTheSameRunsAreRefused) {
    std::string runs;
    const auto append = [&](unsigned value) {
        for (; value >= 0x80; value >>= 7) runs += static_cast<char>(value | 0x80);
        runs += static_cast<char>(value);
    };
    constexpr unsigned runCount = 5000;
    for (unsigned run = 0; run < runCount; ++run) {
        append(100 * run);
        append(1);
    }
    const auto archiveOfSets = [&](std::size_t count) {
        const NSObject one = dictionaryOf("$class"_ns, numbered(count + 3), "NSRangeCount"_ns,
                                          number(runCount), "NSRangeData"_ns, numbered(count + 4));
        return archiveOfMany(count, one,
                             NSArray::arrayOf(classNamed("NSIndexSet"_ns),
                                              NSData::dataWithBytes_length(runs.data(), runs.size())));
    };
    EXPECT_EQ(raisedBy(archiveOfSets(3)), "(nothing)");
    EXPECT_NE(raisedBy(archiveOfSets(1000)).find("more bytes"), std::string::npos);
}

TEST_F(KeyedArchiveCostTest, ALongChainOfRelativeURLsIsRefused) {
    const auto chain = [](std::size_t length) {
        const NSMutableArray items = NSMutableArray::array(), objects = NSMutableArray::array();
        for (std::size_t index = 0; index < length; ++index) {
            items.addObject(numbered(index + 2));
            objects.addObject(dictionaryOf("$class"_ns, numbered(length + 2), "NS.base"_ns,
                                           numbered(index == 0 ? 0 : index + 1), "NS.relative"_ns,
                                           numbered(length + 3)));
        }
        objects.addObject(classNamed("NSURL"_ns));
        objects.addObject("a"_ns);
        objects.addObject(classNamed("NSArray"_ns));
        objects.insertObject_atIndex(container(static_cast<std::uint32_t>(length) + 4, items), 0);
        return dataOf(archiveOf(objects));
    };
    EXPECT_EQ(raisedBy(chain(10)), "(nothing)");
    EXPECT_NE(raisedBy(chain(100)).find("relative to each other"), std::string::npos);
}

TEST_F(KeyedArchiveCostTest, AValueThatIsItsOwnIsLeftOut) {
    const NSData archive = dataOf(archiveOf(
        NSArray::arrayOf(dictionaryOf("$class"_ns, reference(2), "TSSRValueTransformerTransformedValue"_ns,
                                      reference(1), "TSRValueTransformerTransformedValue"_ns, reference(1)),
                         classNamed("TSSRTransformedValue"_ns))));
    const TSSRTransformedValue read = NSKeyedUnarchiver::unarchiveObjectWithData(archive);
    ASSERT_TRUE(static_cast<bool>(read));
    EXPECT_EQ(read.transformedValue(), nil);
    EXPECT_EQ(read.description(), nil);
}

} // namespace
} // namespace tessarin::testing
