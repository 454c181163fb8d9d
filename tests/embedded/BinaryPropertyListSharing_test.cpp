// Binary property lists in which objects stand in several places: dictionaries of the same keys, equal keys,
// and documents that stand for more than they hold.
#include "PlatformTest.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tessarin::testing {
namespace {

class BinaryPropertyListSharingTest : public PlatformTest {};

std::string number(std::uint64_t value, unsigned size) {
    std::string result;
    for (unsigned byte = size; byte-- > 0;)
        result.push_back(static_cast<char>(static_cast<unsigned char>(value >> 8 * byte)));
    return result;
}

using References = std::vector<std::uint64_t>;

// A container's object: its marker, the number of its entries, the numbers of what it holds in two bytes
// each.
std::string container(unsigned marker, std::uint64_t count, const References& contents) {
    std::string object = number(marker << 4 | 0xF, 1) + number(0x12, 1) + number(count, 4);
    for (const std::uint64_t content : contents) object += number(content, 2);
    return object;
}
std::string array(const References& items) { return container(0xA, items.size(), items); }
std::string dictionary(References keys, const References& values) {
    const std::size_t count = keys.size();
    keys.insert(keys.end(), values.begin(), values.end());
    return container(0xD, count, keys);
}
std::string letter(char text) { return std::string("\x51") + text; }

// The document of these objects, the first of which is the property list. The last one has some further
// numbers as well.
std::string document(const std::vector<std::string>& objects, std::uint64_t furtherNumbers = 0) {
    std::string result = "bplist00", offsets;
    for (const std::string& object : objects) {
        offsets += number(result.size(), 4);
        result += object;
    }
    const std::uint64_t tableStart = result.size();
    for (std::uint64_t further = 0; further < furtherNumbers; ++further)
        offsets += number(tableStart - objects.back().size(), 4);
    return result + offsets + std::string(6, '\0') + number(4, 1) + number(2, 1)
           + number(objects.size() + furtherNumbers, 8) + number(0, 8) + number(tableStart, 8);
}

constexpr NSPropertyListMutabilityOptions everyOption[] = {
    NSPropertyListImmutable, NSPropertyListMutableContainers, NSPropertyListMutableContainersAndLeaves};

id readWith(const std::string& document, NSPropertyListMutabilityOptions options, NSError* error = nullptr) {
    return NSPropertyListSerialization::propertyListWithData_options_format_error(
        NSData::dataWithBytes_length(document.data(), document.size()), options, nullptr, error);
}

std::string refusal(const std::string& document, NSPropertyListMutabilityOptions options) {
    NSError error;
    if (readWith(document, options, &error)) return "(read)";
    return text(error.userInfo().objectForKey(NSDebugDescriptionErrorKey()));
}

TEST_F(BinaryPropertyListSharingTest, DictionariesOfTheSameKeysHoldTheirOwnValues) {
    for (const std::uint64_t keyCount : {1u, 5u, 8u, 9u, 100u}) {
        constexpr std::uint64_t rows = 5;
        std::vector<std::string> objects(1);
        References rowNumbers, keys;
        for (std::uint64_t key = 0; key < keyCount; ++key) {
            keys.push_back(objects.size());
            objects.push_back("\x54k" + std::to_string(100 + key));
        }
        for (std::uint64_t row = 0; row < rows; ++row) {
            References values;
            for (std::uint64_t key = 0; key < keyCount; ++key) {
                values.push_back(objects.size());
                objects.push_back("\x11" + number(1000 * row + key, 2));
            }
            rowNumbers.push_back(objects.size());
            objects.push_back(dictionary(keys, values));
        }
        objects[0] = array(rowNumbers);
        for (const auto options : everyOption) {
            const auto list = as<NSArray>(readWith(document(objects), options));
            ASSERT_EQ(list.count(), rows);
            for (std::uint64_t row = 0; row < rows; ++row) {
                const auto each = as<NSDictionary>(list.objectAtIndex(row));
                ASSERT_EQ(each.count(), keyCount);
                for (std::uint64_t key = 0; key < keyCount; ++key) {
                    const NSString name("k" + std::to_string(100 + key));
                    EXPECT_EQ(as<NSNumber>(each.objectForKey(name)).unsignedLongLongValue(),
                              1000 * row + key);
                }
                EXPECT_EQ(each.objectForKey("another"_ns), NSObject());
            }
        }
    }
}

TEST_F(BinaryPropertyListSharingTest, MutableDictionariesOfTheSameKeysChangeOneByOne) {
    const std::string rows =
        document({array({1, 2, 2}), dictionary({3}, {4}), dictionary({3}, {4}), letter('k'), letter('v')});
    const auto list = as<NSArray>(readWith(rows, NSPropertyListMutableContainers));
    const auto first = as<NSMutableDictionary>(list.objectAtIndex(0));
    for (const char key : std::string("abcdefghij"))
        first.setObject_forKey("new"_ns, NSString(std::string(1, key)));
    first.removeObjectForKey("k"_ns);
    EXPECT_EQ(first.count(), 10u);
    for (const NSUInteger other : {1u, 2u})
        EXPECT_TRUE(
            list.objectAtIndex(other).isEqual(NSDictionary::dictionaryWithObject_forKey("v"_ns, "k"_ns)));
}

TEST_F(BinaryPropertyListSharingTest, TheLastOfEqualKeysCountsInEveryDictionary) {
    const std::vector<std::string> objects = {array({1, 2, 3}),
                                              dictionary({4, 5, 4}, {6, 7, 8}),
                                              dictionary({4, 5, 4}, {8, 7, 6}),
                                              dictionary({5}, {9}),
                                              letter('k'),
                                              letter('k'),
                                              letter('a'),
                                              letter('b'),
                                              letter('c'),
                                              letter('d')};
    for (const auto options : everyOption) {
        const auto list = as<NSArray>(readWith(document(objects), options));
        const std::string expected = "cad";
        for (NSUInteger index = 0; index < 3; ++index) {
            const auto each = as<NSDictionary>(list.objectAtIndex(index));
            EXPECT_EQ(each.count(), 1u);
            EXPECT_EQ(text(each.objectForKey("k"_ns)), expected.substr(index, 1));
        }
    }
}

// What the dictionary leaves out stands for itself elsewhere.
TEST_F(BinaryPropertyListSharingTest, AValueOfAnEqualKeyIsStillThereInItsOtherPlaces) {
    const std::string list = document({array({1, 3, 6, 5}), dictionary({2, 5}, {3, 4}), letter('k'),
                                       array({4}), letter('v'), letter('k'), dictionary({5}, {3})});
    const NSArray expected =
        NSArray::arrayOf(NSDictionary::dictionaryWithObject_forKey("v"_ns, "k"_ns), NSArray::arrayOf("v"_ns),
                         NSDictionary::dictionaryWithObject_forKey(NSArray::arrayOf("v"_ns), "k"_ns), "k"_ns);
    for (const auto options : everyOption)
        EXPECT_TRUE(as<NSObject>(readWith(list, options)).isEqual(expected));
}

// A value may be a container that has equal keys itself, whether it counts or not.
TEST_F(BinaryPropertyListSharingTest, ValuesOfEqualKeysMayHoldEqualKeys) {
    const std::string list =
        document({dictionary({1, 2, 1, 3}, {4, 5, 5, 4}), letter('k'), letter('l'), letter('k'),
                  dictionary({1, 3}, {6, 7}), array({8}), letter('a'), array({8, 6}), letter('b')});
    const NSArray inner = NSArray::arrayOf("b"_ns, "a"_ns);
    const NSMutableDictionary expected = NSMutableDictionary::dictionary();
    expected.setObject_forKey(NSDictionary::dictionaryWithObject_forKey(inner, "k"_ns), "k"_ns);
    expected.setObject_forKey(NSArray::arrayOf("b"_ns), "l"_ns);
    for (const auto options : everyOption)
        EXPECT_TRUE(as<NSObject>(readWith(list, options)).isEqual(expected));
}

TEST_F(BinaryPropertyListSharingTest, AMissingValueOfAnEqualKeyIsRefused) {
    const std::string list = document(
        {dictionary({1, 1, 2}, {3, 4, 9}), letter('k'), letter('l'), dictionary({1, 1}, {2, 2}), array({3})});
    for (const auto options : everyOption)
        EXPECT_EQ(refusal(list, options).find("Reference to an object that is not there in object 0"), 0u);
}

TEST_F(BinaryPropertyListSharingTest, DictionariesInsideEachOtherMayHaveTheSameKeys) {
    const std::string list = document(
        {dictionary({2}, {1}), dictionary({2}, {3}), letter('k'), dictionary({2}, {4}), letter('v')});
    const auto nested = [](NSObject inner) {
        return NSDictionary::dictionaryWithObject_forKey(inner, "k"_ns);
    };
    for (const auto options : everyOption)
        EXPECT_TRUE(as<NSObject>(readWith(list, options)).isEqual(nested(nested(nested("v"_ns)))));
}

TEST_F(BinaryPropertyListSharingTest, AValueThatIsMissingInADictionaryOfTheSameKeysIsRefused) {
    const std::string list =
        document({array({1, 2}), dictionary({3}, {4}), dictionary({3}, {5}), letter('k'), letter('v')});
    for (const auto options : everyOption)
        EXPECT_EQ(refusal(list, options).find("Reference to an object that is not there in object 2"), 0u);
}

// ---- Documents that stand for more than they hold

// A list that holds some letters, 1048 times the same 1000 letters, and some times the same three. Each
// further letter adds one reference to what is followed and two bytes to the document, each further three add
// four references and two bytes.
struct ListOfCopies {
    std::size_t letters;
    std::size_t threes;

    std::vector<std::string> objects() const {
        References top(letters, 2);
        top.insert(top.end(), 1048, 1);
        top.push_back(3);
        return {array(top), array(References(1000, 2)), letter('x'), array(References(threes, 4)),
                array({2, 2, 2})};
    }
    std::size_t references() const { return letters + 1048 + 1 + 1048 * 1000 + 4 * threes; }
    // As many references as may be followed.
    std::size_t mostReferences() const { return document(objects()).size() + (std::size_t{1} << 20); }
};

// The smallest that is one reference too large.
ListOfCopies oneTooLarge() {
    ListOfCopies list{1, 0};
    list.threes = (list.mostReferences() - list.references()) / 2 + 1;
    while (list.references() > list.mostReferences() + 1) ++list.letters;
    return list;
}

TEST_F(BinaryPropertyListSharingTest, AsManyCopiesAsThereMayBeAreMade) {
    ListOfCopies most = oneTooLarge();
    ++most.letters;
    ASSERT_EQ(most.references(), most.mostReferences());
    const auto list = as<NSArray>(readWith(document(most.objects()), NSPropertyListMutableContainers));
    ASSERT_EQ(list.count(), most.letters + 1049);
    const auto last = as<NSArray>(list.lastObject());
    EXPECT_EQ(last.count(), most.threes);
    EXPECT_TRUE(last.lastObject().isEqual(NSArray::arrayOf("x"_ns, "x"_ns, "x"_ns)));
    EXPECT_FALSE(NSObject(list.objectAtIndex(1000)) == NSObject(list.objectAtIndex(1001)));
}

TEST_F(BinaryPropertyListSharingTest, TheReferenceThatIsOneTooManyIsNamed) {
    const std::vector<std::string> objects = oneTooLarge().objects();
    std::size_t offset = 8;
    for (std::size_t index = 0; index < 4; ++index) offset += objects[index].size();
    const std::string lastReference = std::to_string(offset + objects[4].size() - 2);
    for (const auto options : {NSPropertyListMutableContainers, NSPropertyListMutableContainersAndLeaves})
        EXPECT_EQ(refusal(document(objects), options),
                  "Too many references to shared objects in object 4 at offset " + lastReference);
    EXPECT_EQ(refusal(document(objects), NSPropertyListImmutable), "(read)");
}

// The same bytes under several numbers are several objects, of which a small document can have many.
TEST_F(BinaryPropertyListSharingTest, ObjectsThatLieOverEachOtherHoldNoMoreThanCopiesMay) {
    // So many lists, each of 50,000 times the same letter.
    const auto listOf = [](std::uint64_t count) {
        References numbers;
        for (std::uint64_t index = 0; index < count; ++index) numbers.push_back(2 + index);
        return document({array(numbers), letter('x'), array(References(50'000, 1))}, count - 1);
    };
    // 22 times 50,000 are fewer than 2^20 and the bytes of the document, 23 times are more.
    for (const auto options : everyOption) {
        EXPECT_EQ(as<NSArray>(readWith(listOf(22), options)).count(), 22u);
        EXPECT_EQ(refusal(listOf(23), options)
                      .find("Too many references to shared objects in object 24 at offset "),
                  0u);
    }
}

// A list in which much is shared, and then something that is refused.
std::string sharedThen(References further, const std::vector<std::string>& furtherObjects) {
    References top(20, 1);
    top.insert(top.end(), further.begin(), further.end());
    std::vector<std::string> objects = {array(top), array(References(1000, 2)), letter('x')};
    objects.insert(objects.end(), furtherObjects.begin(), furtherObjects.end());
    return document(objects);
}

TEST_F(BinaryPropertyListSharingTest, WhatIsWrongInAListThatSharesMuchIsSaidAsInAnyOther) {
    const std::pair<std::string, std::string> lists[] = {
        {sharedThen({3}, {dictionary({2}, {3})}), "Container inside itself in object 3 at offset"},
        {sharedThen({3}, {dictionary({1}, {2})}), "Key that is no string in object "},
        {sharedThen({3}, {dictionary({4}, {2}), "\x10\x01"}), "Key that is no string in object 4 at offset"},
        {sharedThen({3}, {array({4})}), "Reference to an object that is not there in object 3 at offset"},
        {sharedThen({3}, {"\x70"}), "Unknown kind of object in object 3 at offset"}};
    for (const auto& [list, problem] : lists)
        for (const auto options : everyOption) EXPECT_EQ(refusal(list, options).find(problem), 0u) << problem;
}

// A leaf that was met before is known when it is mutable no more than when it is not.
TEST_F(BinaryPropertyListSharingTest, AKeyThatWasMetAsANumberIsNoString) {
    const std::string list = sharedThen({3, 4}, {"\x10\x01", dictionary({3}, {2})});
    const std::string problem = "Key that is no string in object ";
    EXPECT_EQ(refusal(list, NSPropertyListImmutable).find(problem + '4'), 0u);
    EXPECT_EQ(refusal(list, NSPropertyListMutableContainers).find(problem + '4'), 0u);
    EXPECT_EQ(refusal(list, NSPropertyListMutableContainersAndLeaves).find(problem + '3'), 0u);
}

TEST_F(BinaryPropertyListSharingTest, LevelsCountWhereASharedContainerStandsDeepest) {
    // 300 arrays inside each other, and the first of them once more inside `above` others.
    const auto list = [](std::size_t above) {
        std::vector<std::string> chain;
        for (std::uint64_t level = 0; level < 300; ++level)
            chain.push_back(array(level < 299 ? References{4 + level} : References{}));
        for (std::uint64_t level = 0; level < above; ++level)
            chain.push_back(array({level + 1 < above ? 304 + level : 3}));
        return sharedThen({3, 303}, chain);
    };
    // The list itself is a level as well.
    EXPECT_EQ(refusal(list(211), NSPropertyListMutableContainers), "(read)");
    EXPECT_EQ(
        refusal(list(212), NSPropertyListMutableContainers).find("Containers nested more than 512 deep"), 0u);
}

TEST_F(BinaryPropertyListSharingTest, CopiesOfLongLeavesAreCountedInAListThatSharesMuch) {
    // A string of 10,000 letters in each of 1000 places.
    const std::string list = sharedThen(
        {3}, {array(References(1000, 4)), "\x5F\x11" + number(10'000, 2) + std::string(10'000, 'a')});
    EXPECT_EQ(refusal(list, NSPropertyListMutableContainers), "(read)");
    EXPECT_EQ(refusal(list, NSPropertyListMutableContainersAndLeaves)
                  .find("Too many copies of shared strings and data in object 4 at offset"),
              0u);
}

TEST_F(BinaryPropertyListSharingTest, AListThatSharesMuchReadsAsTheSameWithAnyOption) {
    // Each of 12 levels holds the next one twice, at first under two keys.
    std::vector<std::string> objects;
    for (std::uint64_t level = 0; level < 12; ++level)
        objects.push_back(level < 6 ? dictionary({13, 14}, {level + 1, level + 1})
                                    : array({level + 1, level + 1}));
    objects.push_back(array({13, 15}));
    objects.insert(objects.end(), {letter('a'), letter('b'), "\x10\x07"});
    const NSObject immutable = readWith(document(objects), NSPropertyListImmutable);
    ASSERT_TRUE(immutable);
    for (const auto options : everyOption)
        EXPECT_TRUE(as<NSObject>(readWith(document(objects), options)).isEqual(immutable));
}

} // namespace
} // namespace tessarin::testing
