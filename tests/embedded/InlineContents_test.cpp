// Mutable copies keep their first items and entries behind them, and move them when there are more. They are
// used about the sizes at which that happens.
#include "PlatformTest.h"

#include "TessarinFoundation/NSPropertyListSerialization+TessarinExtensions.h"

#include <map>
#include <string>
#include <vector>

namespace tessarin::testing {
namespace {

constexpr int sizes[] = {0, 1, 8, 9, 16, 17, 32, 33};

class InlineContentsTest : public PlatformTest {
protected:
    static NSArray numbers(int count) {
        std::vector<NSObject> items;
        for (int number = 0; number < count; ++number) items.push_back(NSNumber::numberWithInt(number));
        return NSArray::arrayWithObjects_count(items.data(), items.size());
    }
    static NSDictionary numbersByName(int count) {
        const NSMutableDictionary entries = NSMutableDictionary::dictionary();
        for (int number = 0; number < count; ++number)
            entries.setObject_forKey(NSNumber::numberWithInt(number), NSString(std::to_string(number)));
        return NSDictionary::dictionaryWithDictionary(entries);
    }
    static NSObject copyOf(NSObject propertyList) {
        return tessarin_propertyListWithMutableContainers_error(propertyList, nullptr);
    }
    static NSObject readBack(NSObject propertyList) {
        const NSData document = NSPropertyListSerialization::dataWithPropertyList_format_options_error(
            propertyList, NSPropertyListBinaryFormat_v1_0, 0, nullptr);
        return NSPropertyListSerialization::propertyListWithData_options_format_error(
            document, NSPropertyListMutableContainers, nullptr, nullptr);
    }

    static void edit(NSMutableArray array, int count) {
        std::vector<int> expected;
        for (int number = 0; number < count; ++number) expected.push_back(number);
        const auto expectItems = [&] {
            std::vector<int> items;
            for (const NSObject item : array) items.push_back(as<NSNumber>(item).intValue());
            EXPECT_EQ(items, expected) << "of " << count;
        };
        expectItems();
        array.insertObject_atIndex(NSNumber::numberWithInt(-1), 0);
        expected.insert(expected.begin(), -1);
        expectItems();
        array.removeLastObject();
        expected.pop_back();
        array.addObjectsFromArray(array);
        const std::vector<int> half = expected;
        expected.insert(expected.end(), half.begin(), half.end());
        expectItems();
        array.removeAllObjects();
        array.addObject(NSNumber::numberWithInt(7));
        expected = {7};
        expectItems();
    }

    static void edit(NSMutableDictionary dictionary, int count) {
        std::map<std::string, int> expected;
        for (int number = 0; number < count; ++number) expected[std::to_string(number)] = number;
        const auto expectEntries = [&] {
            std::map<std::string, int> entries;
            for (const NSObject key : dictionary.allKeys())
                entries[text(as<NSString>(key))] = as<NSNumber>(dictionary.objectForKey(key)).intValue();
            EXPECT_EQ(entries, expected) << "of " << count;
        };
        const auto set = [&](int number) {
            dictionary.setObject_forKey(NSNumber::numberWithInt(number), NSString(std::to_string(number)));
            expected[std::to_string(number)] = number;
        };
        expectEntries();
        // As many as there were again, each in the place of one that goes: the removed ones are closed up.
        for (int number = 0; number < count; ++number) {
            dictionary.removeObjectForKey(NSString(std::to_string(number)));
            expected.erase(std::to_string(number));
            set(100 + number);
        }
        expectEntries();
        for (int number = 200; number < 220; ++number) set(number);
        expectEntries();
        dictionary.removeAllObjects();
        expected.clear();
        expectEntries();
        set(7);
        expectEntries();
    }
};

TEST_F(InlineContentsTest, AMutableCopyOfAnArrayIsEdited) {
    for (const int size : sizes) edit(adopt(NSMutableArray(numbers(size).mutableCopy())), size);
}

TEST_F(InlineContentsTest, AnArrayOfACopiedPropertyListIsEdited) {
    for (const int size : sizes) edit(as<NSMutableArray>(copyOf(numbers(size))), size);
}

TEST_F(InlineContentsTest, AnArrayThatWasReadIsEdited) {
    for (const int size : sizes) edit(as<NSMutableArray>(readBack(numbers(size))), size);
}

TEST_F(InlineContentsTest, ADictionaryOfACopiedPropertyListIsEdited) {
    for (const int size : sizes) edit(as<NSMutableDictionary>(copyOf(numbersByName(size))), size);
}

TEST_F(InlineContentsTest, ADictionaryThatWasReadIsEdited) {
    for (const int size : sizes) edit(as<NSMutableDictionary>(readBack(numbersByName(size))), size);
}

// Nobody should, but nothing is lost.
TEST_F(InlineContentsTest, AMutableCopyThatIsInitialisedOnceMoreKeepsItsItems) {
    const Retained<NSMutableArray> array = adopt(NSMutableArray(numbers(2).mutableCopy()));
    const std::vector<NSObject> further(5, "further"_ns);
    EXPECT_TRUE(NSObject(array.initWithObjects_count(further.data(), further.size())) == array);
    EXPECT_TRUE(array.objectAtIndex(0).isEqual(NSNumber::numberWithInt(0)));
    EXPECT_TRUE(array.objectAtIndex(1).isEqual(NSNumber::numberWithInt(1)));
}

} // namespace
} // namespace tessarin::testing
