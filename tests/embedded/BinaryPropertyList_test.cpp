// Property lists in binary form: the bytes that are written, and what readers make of damaged ones.
#include "PlatformTest.h"

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <limits>
#include <string>

namespace tessarin::testing {
namespace {

class BinaryPropertyListTest : public PlatformTest {};

std::string written(NSObject propertyList) {
    const NSData data = NSPropertyListSerialization::dataWithPropertyList_format_options_error(
        propertyList, NSPropertyListBinaryFormat_v1_0, 0, nullptr);
    return {static_cast<const char*>(data.bytes()), data.length()};
}

id readWith(const std::string& document, NSPropertyListMutabilityOptions options, NSError* error = nullptr) {
    return NSPropertyListSerialization::propertyListWithData_options_format_error(
        NSData::dataWithBytes_length(document.data(), document.size()), options, nullptr, error);
}

std::string bytes(std::initializer_list<unsigned> values) {
    std::string result;
    for (const unsigned value : values) result.push_back(static_cast<char>(value));
    return result;
}

std::string number(std::uint64_t value, unsigned size) {
    std::string result;
    for (unsigned byte = size; byte-- > 0;)
        result.push_back(static_cast<char>(static_cast<unsigned char>(value >> 8 * byte)));
    return result;
}

// A document with one-byte references, whose offsets are those of the objects unless a test damages them.
std::string document(const std::vector<std::string>& objects, std::uint64_t topObject = 0) {
    std::string result = "bplist00", offsets;
    for (const std::string& object : objects) {
        offsets += number(result.size(), 2);
        result += object;
    }
    const std::uint64_t tableStart = result.size();
    return result + offsets + std::string(6, '\0') + bytes({2, 1}) + number(objects.size(), 8)
           + number(topObject, 8) + number(tableStart, 8);
}

// What an error says of a document that is refused, (read) when it is not.
std::string refusal(const std::string& damaged) {
    NSError error;
    if (readWith(damaged, NSPropertyListImmutable, &error)) return "(read)";
    EXPECT_EQ(text(error.domain()), "NSCocoaErrorDomain");
    EXPECT_EQ(error.code(), 3840);
    return text(error.userInfo().objectForKey(NSDebugDescriptionErrorKey()));
}

TEST_F(BinaryPropertyListTest, WritesASmallIntegerToTheByte) {
    EXPECT_EQ(written(NSNumber::numberWithInt(1)), "bplist00" + bytes({0x10, 1, 8}) + std::string(6, '\0')
                                                       + bytes({1, 1}) + number(1, 8) + number(0, 8)
                                                       + number(10, 8));
}

TEST_F(BinaryPropertyListTest, WritesIntegersInTheFewestBytes) {
    const auto object = [](NSNumber value) {
        const std::string all = written(value);
        return all.substr(8, all.size() - 8 - 1 - 32);
    };
    EXPECT_EQ(object(NSNumber::numberWithInt(255)), bytes({0x10, 0xFF}));
    EXPECT_EQ(object(NSNumber::numberWithInt(256)), bytes({0x11, 1, 0}));
    EXPECT_EQ(object(NSNumber::numberWithLong(65536)), bytes({0x12, 0, 1, 0, 0}));
    EXPECT_EQ(object(NSNumber::numberWithLongLong(1LL << 32)), bytes({0x13}) + number(1ULL << 32, 8));
    EXPECT_EQ(object(NSNumber::numberWithInt(-1)), bytes({0x13}) + number(~std::uint64_t{0}, 8));
    EXPECT_EQ(object(NSNumber::numberWithUnsignedLongLong(~0ULL)),
              bytes({0x14}) + number(0, 8) + number(~std::uint64_t{0}, 8));
}

TEST_F(BinaryPropertyListTest, WritesTheOtherLeavesInTheirForms) {
    const auto object = [](NSObject value) {
        const std::string all = written(value);
        return all.substr(8, all.size() - 8 - 1 - 32);
    };
    EXPECT_EQ(object(NSNumber::numberWithBool(false)), bytes({0x08}));
    EXPECT_EQ(object(NSNumber::numberWithBool(true)), bytes({0x09}));
    EXPECT_EQ(object(NSNumber::numberWithFloat(1.0F)), bytes({0x22, 0x3F, 0x80, 0, 0}));
    EXPECT_EQ(object(NSNumber::numberWithDouble(1.0)), bytes({0x23, 0x3F, 0xF0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(object(NSDate::dateWithTimeIntervalSinceReferenceDate(1.0)),
              bytes({0x33, 0x3F, 0xF0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(object("ab"_ns), bytes({0x52, 'a', 'b'}));
    EXPECT_EQ(object(u"\u20ac"_ns), bytes({0x61, 0x20, 0xAC}));
    EXPECT_EQ(object("fifteen letters"_ns), bytes({0x5F, 0x10, 0x0F}) + "fifteen letters");
    EXPECT_EQ(object(NSData::dataWithBytes_length("x", 1)), bytes({0x41, 'x'}));
}

// The references of keyed archives, of any number of bytes that makes 32 bits, come back in the fewest.
TEST_F(BinaryPropertyListTest, UIDsPassThrough) {
    const auto rewritten = [](const std::string& uid) {
        const std::string all = written(readWith(document({uid}), NSPropertyListMutableContainersAndLeaves));
        return all.substr(8, all.size() - 8 - 1 - 32);
    };
    EXPECT_EQ(rewritten(bytes({0x80, 0})), bytes({0x80, 0}));
    EXPECT_EQ(rewritten(bytes({0x80, 255})), bytes({0x80, 255}));
    EXPECT_EQ(rewritten(bytes({0x81, 1, 2})), bytes({0x81, 1, 2}));
    EXPECT_EQ(rewritten(bytes({0x82, 1, 2, 3})), bytes({0x83, 0, 1, 2, 3}));
    EXPECT_EQ(rewritten(bytes({0x83}) + number(0xFFFFFFFF, 4)), bytes({0x83}) + number(0xFFFFFFFF, 4));
    EXPECT_EQ(rewritten(bytes({0x84}) + number(0xFFFFFFFF, 5)), bytes({0x83}) + number(0xFFFFFFFF, 4));
    EXPECT_EQ(rewritten(bytes({0x87}) + number(1, 8)), bytes({0x80, 1}));
}

TEST_F(BinaryPropertyListTest, EveryValueComesBackEqual) {
    const char16_t loneSurrogate[] = {u'a', 0xD800, 0};
    const NSArray values =
        NSArray::arrayOf(NSNumber::numberWithLongLong(std::numeric_limits<long long>::min()),
                         NSNumber::numberWithUnsignedLongLong(~0ULL), NSNumber::numberWithFloat(0.1F),
                         NSNumber::numberWithDouble(0.1), NSNumber::numberWithBool(true), ""_ns, "text"_ns,
                         u"\u00e9\U0001F600"_ns, NSString(std::u16string_view(loneSurrogate, 3)),
                         NSData::data(), NSDate::dateWithTimeIntervalSinceReferenceDate(0.123456789),
                         NSArray::array(), NSDictionary::dictionaryWithObject_forKey("v"_ns, "k"_ns));
    const NSArray read = readWith(written(values), NSPropertyListImmutable);
    EXPECT_TRUE(read.isEqual(values));
    EXPECT_EQ(as<NSNumber>(read.objectAtIndex(2)).objCType()[0], 'f');
    EXPECT_EQ(as<NSNumber>(read.objectAtIndex(4)).objCType()[0], 'c');
}

TEST_F(BinaryPropertyListTest, LargeListsTakeWiderReferencesAndOffsets) {
    const Retained<NSMutableArray> values = adopt(NSMutableArray::alloc().init());
    for (int value = 0; value < 70000; ++value) values.addObject(NSString("item " + std::to_string(value)));
    EXPECT_TRUE(as<NSObject>(readWith(written(values), NSPropertyListImmutable)).isEqual(values));
}

TEST_F(BinaryPropertyListTest, ASharedObjectIsWrittenOnceAndReadAsOne) {
    const NSArray inner = NSArray::arrayOf("x"_ns);
    const std::string all = written(NSArray::arrayOf(inner, inner));
    EXPECT_EQ(all[8], '\xA2');
    const NSArray read = readWith(all, NSPropertyListImmutable);
    EXPECT_EQ(read.objectAtIndex(0), read.objectAtIndex(1));
}

TEST_F(BinaryPropertyListTest, MutableContainersAreEachPlacesOwn) {
    const NSArray inner = NSArray::arrayOf("x"_ns);
    const NSArray read = readWith(written(NSArray::arrayOf(inner, inner)), NSPropertyListMutableContainers);
    const NSMutableArray first = read.objectAtIndex(0), second = read.objectAtIndex(1);
    EXPECT_NE(first, second);
    EXPECT_EQ(first.objectAtIndex(0), second.objectAtIndex(0)); // an immutable string is still shared
    first.addObject("y"_ns);
    EXPECT_EQ(second.count(), 1u);
}

TEST_F(BinaryPropertyListTest, LeavesAreMutableWhereThatIsAskedAndKeysNever) {
    const NSDictionary read =
        readWith(written(NSDictionary::dictionaryWithObject_forKey("value"_ns, "key"_ns)),
                 NSPropertyListMutableContainersAndLeaves);
    EXPECT_TRUE(as<NSObject>(read.objectForKey("key"_ns)).isKindOfClass("NSMutableString"_class));
    EXPECT_FALSE(as<NSObject>(read.allKeys().objectAtIndex(0)).isKindOfClass("NSMutableString"_class));
}

TEST_F(BinaryPropertyListTest, RefusesWhatIsDamaged) {
    const std::string one = bytes({0x10, 1});
    const auto patched = [&](std::size_t fromEnd, const std::string& with) {
        std::string result = document({bytes({0xA1, 1}), one});
        return result.replace(result.size() - fromEnd, with.size(), with);
    };
    const std::pair<std::string, std::string> damaged[] = {
        {"bplist00", "too short"},
        {patched(26, bytes({0})), "size of offsets"},
        {patched(26, bytes({9})), "size of offsets"},
        {patched(25, bytes({0})), "size of references"},
        {patched(25, bytes({9})), "size of references"},
        {patched(24, number(0, 8)), "number of objects"},
        {patched(24, number(3, 8)), "number of objects"},
        {patched(24, number(~0ULL, 8)), "number of objects"},
        {patched(16, number(2, 8)), "top object"},
        {patched(16, number(~0ULL, 8)), "top object"},
        {patched(8, number(0, 8)), "Offset table"},
        {patched(8, number(8, 8)), "Offset table"},
        {patched(8, number(1000, 8)), "Offset table"},
        {patched(8, number(~0ULL, 8)), "Offset table"},
        {patched(36, number(7, 2)), "Offset outside"},
        {patched(36, number(60000, 2)), "Offset outside"},
        {document({bytes({0xA1, 2}), one}), "not there"},
        {document({bytes({0xA1, 0})}), "Container inside itself"},
        {document({bytes({0xA1, 1}), bytes({0xA1, 0})}), "Container inside itself"},
        {document({bytes({0xD1, 1, 0}), bytes({0x51, 'k'})}), "Container inside itself"},
        {document({bytes({0xAE, 1}), one}), "Length beyond"},
        {document({bytes({0xAF, 0x13}) + number(~0ULL, 8), one}), "Length beyond"},
        {document({bytes({0xAF, 0x14}) + std::string(16, '\0')}), "no integer"},
        {document({bytes({0xAF, 0x23}) + number(1, 8)}), "no integer"},
        {document({bytes({0xAF, 0x13, 0})}), "Length that is cut off"},
        {document({bytes({0xAF})}), "Length that is missing"},
        {document({bytes({0xD8, 1, 1}), one}), "Length beyond"},
        {document({bytes({0xD1, 1, 1}), one}), "no string"},
        {document({bytes({0xD1, 1, 2}), bytes({0xA0}), one}), "no string"},
        {document({bytes({0x13, 1, 2})}), "Integer that is cut off"},
        {document({bytes({0x15}) + std::string(32, '\0')}), "Integer of a wrong size"},
        {document({bytes({0x14}) + number(1, 8) + number(0, 8)}), "Integer out of range"},
        {document({bytes({0x14}) + number(~0ULL, 8) + number(0, 8)}), "Integer out of range"},
        {document({bytes({0x21, 0, 0})}), "wrong size"},
        {document({bytes({0x23, 0, 0})}), "cut off"},
        {document({bytes({0x32, 0, 0, 0, 0})}), "wrong size"},
        {document({bytes({0x4F, 0x12}) + number(0xFFFFFFFF, 4)}), "Length beyond"},
        {document({bytes({0x51, 0xE9})}), "no ASCII"},
        {document({bytes({0x5F, 0x12}) + number(0xFFFFFFFF, 4)}), "Length beyond"},
        {document({bytes({0x6F, 0x13}) + number(1ULL << 63, 8)}), "Length beyond"},
        {document({bytes({0x87, 0, 0})}), "UID that is cut off"},
        {document({bytes({0x88}) + std::string(9, '\0')}), "UID of a wrong size"},
        {document({bytes({0x8F}) + std::string(16, '\0')}), "UID of a wrong size"},
        {document({bytes({0x84, 1, 0, 0, 0, 0})}), "UID out of range"},
        {document({bytes({0x87}) + number(~0ULL, 8)}), "UID out of range"},
        {document({bytes({0xD1, 1, 1}), bytes({0x80, 1})}), "no string"},
        {document({bytes({0x00})}), "Unknown kind"},
        {document({bytes({0x0F})}), "Unknown kind"},
        {document({bytes({0x70})}), "Unknown kind"},
        {document({bytes({0xC0})}), "Unknown kind"},
        {document({bytes({0xF0})}), "Unknown kind"},
    };
    for (const auto& [bytesOfIt, expected] : damaged)
        EXPECT_NE(refusal(bytesOfIt).find(expected), std::string::npos)
            << "expected: " << expected << "\nrefusal: " << refusal(bytesOfIt);
}

// Whatever a single byte says, the answer is a list or an error.
TEST_F(BinaryPropertyListTest, NoSingleByteDoesHarm) {
    const std::string whole = written(NSArray::arrayOf(
        "text"_ns, u"\u20ac"_ns, NSNumber::numberWithDouble(0.5), NSNumber::numberWithInt(300),
        NSDictionary::dictionaryWithObject_forKey(NSData::dataWithBytes_length("abc", 3), "key"_ns)));
    std::size_t read = 0;
    for (std::size_t position = 0; position < whole.size(); ++position)
        for (unsigned value = 0; value < 256; value += 5) {
            std::string damaged = whole;
            damaged[position] = static_cast<char>(value);
            const AutoreleasePool pool;
            if (refusal(damaged) == "(read)") ++read;
        }
    EXPECT_GT(read, 0u);
}

TEST_F(BinaryPropertyListTest, Reads512LevelsAndRefusesMore) {
    NSArray nested = NSArray::array();
    for (int level = 1; level < 512; ++level) nested = NSArray::arrayOf(nested);
    EXPECT_EQ(refusal(written(nested)), "(read)");
    EXPECT_NE(refusal(written(NSArray::arrayOf(nested))).find("512"), std::string::npos);
}

TEST_F(BinaryPropertyListTest, AMillionLevelsAreWrittenAndRefused) {
    Retained<NSArray> nested = retain(NSArray::array());
    for (int level = 1; level < 1000000; ++level) {
        const AutoreleasePool pool;
        nested = retain(NSArray::arrayOf(NSArray(nested)));
    }
    const std::string document = written(nested);
    EXPECT_GT(document.size(), 1000000u);
    EXPECT_NE(refusal(document).find("512"), std::string::npos);
}

TEST_F(BinaryPropertyListTest, ListsThatDoubleAtEachLevelEndInTime) {
    NSArray doubled = NSArray::arrayOf("x"_ns);
    for (int level = 0; level < 100; ++level) doubled = NSArray::arrayOf(doubled, doubled);
    const std::string document = written(doubled);
    EXPECT_TRUE(readWith(document, NSPropertyListImmutable));
    NSError error;
    EXPECT_FALSE(readWith(document, NSPropertyListMutableContainers, &error));
    EXPECT_EQ(error.code(), 3840);
}

TEST_F(BinaryPropertyListTest, CopiesOfOneLongStringHaveALimit) {
    const auto shared = [](std::uint64_t places, std::uint64_t length) {
        return document({bytes({0xAF, 0x12}) + number(places, 4) + std::string(places, '\1'),
                         bytes({0x5F, 0x12}) + number(length, 4) + std::string(length, 'a')});
    };
    const auto leaves = NSPropertyListMutableContainersAndLeaves;
    EXPECT_EQ(as<NSArray>(readWith(shared(4000, 1000), leaves)).count(), 4000u);
    NSError error;
    EXPECT_FALSE(readWith(shared(20'000, 20'000), leaves, &error));
    EXPECT_EQ(error.code(), 3840);
    EXPECT_NE(text(error.userInfo().objectForKey(NSDebugDescriptionErrorKey())).find("Too many copies"),
              std::string::npos);
    EXPECT_EQ(as<NSArray>(readWith(shared(20'000, 20'000), NSPropertyListMutableContainers)).count(),
              20'000u);
}

} // namespace
} // namespace tessarin::testing
