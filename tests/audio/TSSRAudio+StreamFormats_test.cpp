#include "RecordingArray.h"

#include "TessarinFoundation/TSSRAudio.h"

#include <bit>
#include <limits>
#include <random>

namespace tessarin {

// A rate that is not a number is equal to itself here, and zeros of different sign differ.
static bool operator==(const AudioStreamBasicDescription& left, const AudioStreamBasicDescription& right) {
    return std::bit_cast<std::uint64_t>(left.mSampleRate) == std::bit_cast<std::uint64_t>(right.mSampleRate)
           && left.mFormatID == right.mFormatID && left.mFormatFlags == right.mFormatFlags
           && left.mBytesPerPacket == right.mBytesPerPacket && left.mFramesPerPacket == right.mFramesPerPacket
           && left.mBytesPerFrame == right.mBytesPerFrame && left.mChannelsPerFrame == right.mChannelsPerFrame
           && left.mBitsPerChannel == right.mBitsPerChannel && left.mReserved == right.mReserved;
}

static void PrintTo(const AudioStreamBasicDescription& format, std::ostream* stream) {
    *stream << "{" << format.mSampleRate << ", " << format.mFormatID << ", " << format.mFormatFlags << ", "
            << format.mBytesPerPacket << ", " << format.mFramesPerPacket << ", " << format.mBytesPerFrame
            << ", " << format.mChannelsPerFrame << ", " << format.mBitsPerChannel << ", " << format.mReserved
            << "}";
}

namespace testing {
namespace {

class StreamFormatTest : public PlatformTest {
protected:
    const AudioStreamBasicDescription linearPCM{44100.0, 0x6C70636D, 9, 8, 1, 8, 2, 32, 77};

    // 0.0, 1, 2, ... up to the given number of elements.
    static Retained<NSMutableArray> numbers(NSUInteger count) {
        Retained<NSMutableArray> array = retain(NSMutableArray::array());
        for (NSUInteger index = 0; index < count; ++index)
            array.addObject(index == 0 ? NSNumber::numberWithDouble(0.0)
                                       : NSNumber::numberWithUnsignedInteger(index));
        return array;
    }
    // The field that is read from an element at position 1.
    static AudioFormatID formatIDReadFrom(NSObject element) {
        const Retained<NSMutableArray> array = numbers(9);
        array.replaceObjectAtIndex_withObject(1, element);
        return TSSRASBDFromArray(array).mFormatID;
    }
    static double sampleRateReadFrom(NSObject element) {
        const Retained<NSMutableArray> array = numbers(9);
        array.replaceObjectAtIndex_withObject(0, element);
        return TSSRASBDFromArray(array).mSampleRate;
    }
    static NSArray throughPropertyList(NSArray array, NSPropertyListFormat format) {
        const NSData data =
            NSPropertyListSerialization::dataWithPropertyList_format_options_error(array, format, 0, nullptr);
        return NSPropertyListSerialization::propertyListWithData_options_format_error(
            data, NSPropertyListImmutable, nullptr, nullptr);
    }
};

TEST_F(StreamFormatTest, WritesNineNumbersInTheOrderOfTheFields) {
    const NSArray array = TSSRArrayFromASBD({0.5, 1, 2, 3, 4, 5, 6, 7, 8});
    ASSERT_EQ(array.count(), 9u);
    for (NSUInteger index = 0; index < 9; ++index)
        EXPECT_TRUE(kindOf<NSNumber>(array.objectAtIndex(index))) << index;
    EXPECT_EQ(as<NSNumber>(array.objectAtIndex(0)).doubleValue(), 0.5);
    for (NSUInteger index = 1; index < 9; ++index)
        EXPECT_EQ(as<NSNumber>(array.objectAtIndex(index)).unsignedLongValue(), index);
}

TEST_F(StreamFormatTest, WritesLinearPCMAsADoubleAndAnUnsignedNumber) {
    const NSArray array = TSSRArrayFromASBD(linearPCM);
    EXPECT_EQ(as<NSNumber>(array.objectAtIndex(0)).doubleValue(), 44100.0);
    EXPECT_STREQ(as<NSNumber>(array.objectAtIndex(0)).objCType(), "d");
    EXPECT_EQ(as<NSNumber>(array.objectAtIndex(1)).unsignedLongValue(), 1819304813u);
}

TEST_F(StreamFormatTest, WritesTheSampleRateAsADoubleEvenWhenItIsWhole) {
    EXPECT_STREQ(as<NSNumber>(TSSRArrayFromASBD({}).objectAtIndex(0)).objCType(), "d");
}

TEST_F(StreamFormatTest, WritesFieldsZeroExtended) {
    constexpr UInt32 all = 0xFFFFFFFF;
    const NSArray array = TSSRArrayFromASBD({0, all, all, all, all, all, all, all, all});
    for (NSUInteger index = 1; index < 9; ++index)
        EXPECT_EQ(text(as<NSNumber>(array.objectAtIndex(index)).stringValue()), "4294967295") << index;
}

TEST_F(StreamFormatTest, TheArrayIsImmutable) {
    EXPECT_FALSE(kindOf<NSMutableArray>(TSSRArrayFromASBD(linearPCM)));
}

TEST_F(StreamFormatTest, TheArrayIsAutoreleased) {
    EXPECT_EQ(ownedReferencesOfNew([&] { return TSSRArrayFromASBD(linearPCM); }), 0);
}

TEST_F(StreamFormatTest, ReadsBackTheIdenticalStructureWithItsReservedField) {
    const AudioStreamBasicDescription format = TSSRASBDFromArray(TSSRArrayFromASBD(linearPCM));
    EXPECT_EQ(format, linearPCM);
    EXPECT_EQ(format.mReserved, 77u);
}

TEST_F(StreamFormatTest, ReadsEachPositionIntoItsField) {
    const Retained<NSMutableArray> array = numbers(9);
    array.replaceObjectAtIndex_withObject(0, NSNumber::numberWithDouble(96000.5));
    EXPECT_EQ(TSSRASBDFromArray(array), (AudioStreamBasicDescription{96000.5, 1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST_F(StreamFormatTest, EveryFormatSurvivesWritingAndReading) {
    std::mt19937_64 random(20);
    const auto field = [&] { return static_cast<UInt32>(random()); };
    for (int round = 0; round < 10'000; ++round) {
        const AutoreleasePool pool;
        auto rate = std::bit_cast<double>(random());
        if (rate != rate) rate = 48000.0; // which bits a "not a number" keeps is the processor's matter
        const AudioStreamBasicDescription format{rate,    field(), field(), field(), field(),
                                                 field(), field(), field(), field()};
        ASSERT_EQ(TSSRASBDFromArray(TSSRArrayFromASBD(format)), format);
    }
}

TEST_F(StreamFormatTest, UnusualSampleRatesSurvive) {
    using Limits = std::numeric_limits<double>;
    for (const double rate : {0.0, -0.0, 1.0, -1.0, Limits::infinity(), -Limits::infinity(), Limits::min(),
                              Limits::denorm_min(), Limits::max(), 0.1, 9007199254740993.0}) {
        const AudioStreamBasicDescription format{rate, 0, 0, 0, 0, 0, 0, 0, 0};
        EXPECT_EQ(TSSRASBDFromArray(TSSRArrayFromASBD(format)), format);
    }
}

TEST_F(StreamFormatTest, SurvivesAnXMLPropertyList) {
    const NSArray array = throughPropertyList(TSSRArrayFromASBD(linearPCM), NSPropertyListXMLFormat_v1_0);
    EXPECT_EQ(TSSRASBDFromArray(array), linearPCM);
}

TEST_F(StreamFormatTest, SurvivesABinaryPropertyList) {
    const NSArray array = throughPropertyList(TSSRArrayFromASBD(linearPCM), NSPropertyListBinaryFormat_v1_0);
    EXPECT_EQ(TSSRASBDFromArray(array), linearPCM);
}

TEST_F(StreamFormatTest, ReadsStoredFormats) {
    for (const char* name : {"stream-format.plist", "stream-format-binary.plist"}) {
        const NSData data =
            NSData::dataWithContentsOfFile(NSString(testFile(std::string("data/audio/") + name)));
        ASSERT_TRUE(data) << name;
        const NSArray array = NSPropertyListSerialization::propertyListWithData_options_format_error(
            data, NSPropertyListImmutable, nullptr, nullptr);
        EXPECT_EQ(TSSRASBDFromArray(array), linearPCM) << name;
        EXPECT_TRUE(array.isEqual(TSSRArrayFromASBD(linearPCM))) << name;
    }
}

TEST_F(StreamFormatTest, ReadsTheLow32BitsOfANumber) {
    EXPECT_EQ(formatIDReadFrom(NSNumber::numberWithUnsignedInteger(4294967297)), 1u);
    EXPECT_EQ(formatIDReadFrom(NSNumber::numberWithLongLong(4294967297)), 1u);
    EXPECT_EQ(formatIDReadFrom(NSNumber::numberWithUnsignedLongLong(0xFFFFFFFFFFFFFFFE)), 0xFFFFFFFEu);
}

TEST_F(StreamFormatTest, ReadsEveryUnsignedFieldFromItsLow32Bits) {
    const Retained<NSMutableArray> array = numbers(9);
    for (NSUInteger index = 1; index < 9; ++index)
        array.replaceObjectAtIndex_withObject(
            index, NSNumber::numberWithUnsignedLongLong((7ull << 32) + index * 11));
    EXPECT_EQ(TSSRASBDFromArray(array), (AudioStreamBasicDescription{0.0, 11, 22, 33, 44, 55, 66, 77, 88}));
}

TEST_F(StreamFormatTest, ReadsNumbersOfEveryKindIntoAnUnsignedField) {
    EXPECT_EQ(formatIDReadFrom(NSNumber::numberWithInt(-1)), 0xFFFFFFFFu);
    EXPECT_EQ(formatIDReadFrom(NSNumber::numberWithUnsignedInt(0xFFFFFFFF)), 0xFFFFFFFFu);
    EXPECT_EQ(formatIDReadFrom(NSNumber::numberWithLong(-2)), 0xFFFFFFFEu);
    EXPECT_EQ(formatIDReadFrom(NSNumber::numberWithBool(true)), 1u);
    EXPECT_EQ(formatIDReadFrom(NSNumber::numberWithBool(false)), 0u);
    EXPECT_EQ(formatIDReadFrom(NSNumber::numberWithDouble(1.9)), 1u);
    EXPECT_EQ(formatIDReadFrom(NSNumber::numberWithDouble(4294967297.0)), 1u);
    EXPECT_EQ(formatIDReadFrom(NSNumber::numberWithFloat(2.5f)), 2u);
}

TEST_F(StreamFormatTest, ReadsNumbersOfEveryKindIntoTheSampleRate) {
    EXPECT_EQ(sampleRateReadFrom(NSNumber::numberWithInt(-48000)), -48000.0);
    EXPECT_EQ(sampleRateReadFrom(NSNumber::numberWithUnsignedLong(192000)), 192000.0);
    EXPECT_EQ(sampleRateReadFrom(NSNumber::numberWithFloat(0.5f)), 0.5);
    EXPECT_EQ(sampleRateReadFrom(NSNumber::numberWithBool(true)), 1.0);
}

TEST_F(StreamFormatTest, ReadsTheSampleRateOutOfAString) {
    EXPECT_EQ(sampleRateReadFrom("44100.5 Hz"_ns), 44100.5);
    EXPECT_EQ(sampleRateReadFrom("fast"_ns), 0.0);
}

TEST_F(StreamFormatTest, RaisesForAStringInPlaceOfAnUnsignedNumber) {
    for (NSUInteger index = 1; index < 9; ++index) {
        const Retained<NSMutableArray> array = numbers(9);
        array.replaceObjectAtIndex_withObject(index, "1"_ns);
        EXPECT_THROWS_NAMED(TSSRASBDFromArray(array), "NSInvalidArgumentException") << index;
    }
}

TEST_F(StreamFormatTest, RaisesForAnElementThatAnswersNoReading) {
    for (NSUInteger index = 0; index < 9; ++index) {
        const Retained<NSMutableArray> array = numbers(9);
        array.replaceObjectAtIndex_withObject(index, NSNull::null());
        EXPECT_THROWS_NAMED(TSSRASBDFromArray(array), "NSInvalidArgumentException") << index;
    }
}

TEST_F(StreamFormatTest, ReadsAnyObjectThatAnswersTheReading) {
    static const ClassDefinition definition{
        {.name = "TessarinTestQuantity",
         .methods = {instanceMethod(
                         "doubleValue", +[](NSObject, SEL) { return 32000.0; }),
                     instanceMethod(
                         "unsignedLongValue", +[](NSObject, SEL) { return 4294967298ul; })}}};
    const Retained<NSObject> quantity = adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel));
    EXPECT_EQ(sampleRateReadFrom(quantity), 32000.0);
    EXPECT_EQ(formatIDReadFrom(quantity), 2u);
}

TEST_F(StreamFormatTest, FetchesThePositionsInOrderWithoutCounting) {
    const RecordingArray array(numbers(9));
    TSSRASBDFromArray(array);
    EXPECT_EQ(array.positions(), (std::vector<NSUInteger>{0, 1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(array.countings(), 0);
}

TEST_F(StreamFormatTest, RaisesAtTheFirstMissingPosition) {
    for (NSUInteger count = 0; count < 9; ++count) {
        const RecordingArray array(numbers(count));
        EXPECT_THROWS_NAMED(TSSRASBDFromArray(array), "NSRangeException") << count;
        ASSERT_FALSE(array.positions().empty());
        EXPECT_EQ(array.positions().size(), count + 1);
        EXPECT_EQ(array.positions().back(), count);
    }
}

TEST_F(StreamFormatTest, RaisesForShortArraysOfThePlatform) {
    for (NSUInteger count = 0; count < 9; ++count)
        EXPECT_THROWS_NAMED(TSSRASBDFromArray(NSArray::arrayWithArray(numbers(count))), "NSRangeException")
            << count;
}

TEST_F(StreamFormatTest, IgnoresElementsPastTheNinth) {
    const Retained<NSMutableArray> elements = numbers(9);
    elements.addObject("past the end"_ns);
    elements.addObject(NSNull::null());
    const RecordingArray array(elements);
    EXPECT_EQ(TSSRASBDFromArray(array), (AudioStreamBasicDescription{0.0, 1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(array.positions().size(), 9u);
}

TEST_F(StreamFormatTest, NilReadsAsAllZeros) {
    EXPECT_EQ(TSSRASBDFromArray(nil), (AudioStreamBasicDescription{}));
}

TEST_F(StreamFormatTest, ReadingKeepsNoElement) {
    const Retained<NSNumber> element = retain(NSNumber::numberWithDouble(12345.678));
    const Retained<NSMutableArray> array = numbers(9);
    array.replaceObjectAtIndex_withObject(0, element);
    EXPECT_EQ(referencesLeftBy([&] { return TSSRASBDFromArray(array); }, element), 0);
}

} // namespace
} // namespace testing
} // namespace tessarin
