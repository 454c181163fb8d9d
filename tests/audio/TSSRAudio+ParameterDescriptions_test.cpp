#include "RecordingArray.h"

#include "TessarinFoundation/TSSRAudio.h"

#include <cstring>
#include <random>

namespace tessarin::testing {
namespace {

class ParameterDescriptionTest : public PlatformTest {
protected:
    const Retained<NSString> unitName =
        retain(NSString(std::string("beats per bar, as a string of its own")));
    const Retained<NSString> parameterName =
        retain(NSString(std::string("delay time, as a string of its own")));

    AudioUnitParameterInfo gain() const {
        AudioUnitParameterInfo information{};
        information.unitName = unitName;
        information.clumpID = 3;
        information.cfNameString = parameterName;
        information.unit = 13;
        information.minValue = -96.0f;
        information.maxValue = 12.0f;
        information.defaultValue = 0.0f;
        information.flags = 0xC0000000;
        return information;
    }
    // The first `count` elements in the order that the reader expects.
    Retained<NSMutableArray> readersArray(NSUInteger count = 8) const {
        Retained<NSMutableArray> array = retain(NSMutableArray::array());
        array.addObject(unitName);
        array.addObject(NSNumber::numberWithUnsignedInteger(3));
        array.addObject(parameterName);
        array.addObject(NSNumber::numberWithUnsignedInteger(13));
        array.addObject(NSNumber::numberWithDouble(-96.0));
        array.addObject(NSNumber::numberWithDouble(12.0));
        array.addObject(NSNumber::numberWithDouble(0.5));
        array.addObject(NSNumber::numberWithUnsignedInteger(0xC0000000));
        while (array.count() > count) array.removeLastObject();
        return array;
    }
    Retained<NSMutableArray> readersArrayWith(NSUInteger index, NSObject element) const {
        Retained<NSMutableArray> array = readersArray();
        array.replaceObjectAtIndex_withObject(index, element);
        return array;
    }
    // Reads an array and gives the strings up again.
    static AudioUnitParameterInfo readNumbers(NSArray array) {
        AudioUnitParameterInfo information = TSSRAudioUnitParameterInfoFromArray(array);
        adopt(information.unitName).reset();
        adopt(information.cfNameString).reset();
        return information;
    }
    static double doubleAt(NSArray array, NSUInteger index) {
        return as<NSNumber>(array.objectAtIndex(index)).doubleValue();
    }
    static unsigned long unsignedAt(NSArray array, NSUInteger index) {
        return as<NSNumber>(array.objectAtIndex(index)).unsignedLongValue();
    }
};

// ---- Writing

TEST_F(ParameterDescriptionTest, WritesEightElementsInItsOwnOrder) {
    const NSArray array = TSSRArrayFromAudioUnitParameterInfo(gain());
    ASSERT_EQ(array.count(), 8u);
    EXPECT_EQ(array.objectAtIndex(0), unitName);
    EXPECT_EQ(array.objectAtIndex(1), parameterName);
    EXPECT_EQ(unsignedAt(array, 2), 3u);
    EXPECT_EQ(unsignedAt(array, 3), 13u);
    EXPECT_EQ(doubleAt(array, 4), -96.0);
    EXPECT_EQ(doubleAt(array, 5), 12.0);
    EXPECT_EQ(doubleAt(array, 6), 0.0);
    EXPECT_EQ(unsignedAt(array, 7), 0xC0000000u);
}

TEST_F(ParameterDescriptionTest, WritesTheValuesAsDoubles) {
    const NSArray array = TSSRArrayFromAudioUnitParameterInfo(gain());
    for (NSUInteger index = 4; index < 7; ++index)
        EXPECT_STREQ(as<NSNumber>(array.objectAtIndex(index)).objCType(), "d") << index;
}

TEST_F(ParameterDescriptionTest, WidensAFloatExactlyAndReadsBackTheSameFloat) {
    AudioUnitParameterInfo information = gain();
    information.minValue = information.maxValue = information.defaultValue = 0.1f;
    const NSArray array = TSSRArrayFromAudioUnitParameterInfo(information);
    for (NSUInteger index = 4; index < 7; ++index) {
        EXPECT_EQ(doubleAt(array, index), 0.100000001490116119384765625) << index;
        EXPECT_NE(doubleAt(array, index), 0.1) << index;
        EXPECT_EQ(as<NSNumber>(array.objectAtIndex(index)).floatValue(), 0.1f) << index;
    }
}

TEST_F(ParameterDescriptionTest, WritesUnsignedFieldsZeroExtended) {
    AudioUnitParameterInfo information = gain();
    information.clumpID = information.unit = information.flags = 0xFFFFFFFF;
    const NSArray array = TSSRArrayFromAudioUnitParameterInfo(information);
    for (const NSUInteger index : {2u, 3u, 7u})
        EXPECT_EQ(text(as<NSNumber>(array.objectAtIndex(index)).stringValue()), "4294967295") << index;
}

TEST_F(ParameterDescriptionTest, WritesTheStringsThemselvesEvenWhenTheyAreMutable) {
    AudioUnitParameterInfo information = gain();
    const NSMutableString unit = NSMutableString::stringWithString("ms"_ns);
    const NSMutableString name = NSMutableString::stringWithString("Time"_ns);
    information.unitName = unit;
    information.cfNameString = name;
    const NSArray array = TSSRArrayFromAudioUnitParameterInfo(information);
    EXPECT_EQ(array.objectAtIndex(0), unit);
    EXPECT_EQ(array.objectAtIndex(1), name);
}

TEST_F(ParameterDescriptionTest, LeavesTheNameFieldOut) {
    AudioUnitParameterInfo information = gain();
    const NSArray withoutName = TSSRArrayFromAudioUnitParameterInfo(information);
    std::memset(information.name, 'x', sizeof information.name);
    EXPECT_TRUE(withoutName.isEqual(TSSRArrayFromAudioUnitParameterInfo(information)));
}

TEST_F(ParameterDescriptionTest, CarriesEveryFlagAsItIs) {
    AudioUnitParameterInfo information = gain();
    for (unsigned bit = 0; bit < 32; ++bit) {
        information.flags = 1u << bit;
        EXPECT_EQ(unsignedAt(TSSRArrayFromAudioUnitParameterInfo(information), 7), 1u << bit);
        const Retained<NSMutableArray> array =
            readersArrayWith(7, NSNumber::numberWithUnsignedInteger(1u << bit));
        EXPECT_EQ(readNumbers(array).flags, 1u << bit);
    }
}

TEST_F(ParameterDescriptionTest, TheArrayIsImmutable) {
    EXPECT_FALSE(kindOf<NSMutableArray>(TSSRArrayFromAudioUnitParameterInfo(gain())));
}

TEST_F(ParameterDescriptionTest, TheArrayIsAutoreleasedAndGivesItsStringsUp) {
    EXPECT_EQ(ownedReferencesOfNew([&] { return TSSRArrayFromAudioUnitParameterInfo(gain()); }), 0);
    EXPECT_EQ(referencesLeftBy([&] { return TSSRArrayFromAudioUnitParameterInfo(gain()); }, unitName), 0);
    EXPECT_EQ(referencesLeftBy([&] { return TSSRArrayFromAudioUnitParameterInfo(gain()); }, parameterName),
              0);
}

TEST_F(ParameterDescriptionTest, RaisesForANilUnitName) {
    AudioUnitParameterInfo information = gain();
    information.unitName = nil;
    EXPECT_THROWS_NAMED(TSSRArrayFromAudioUnitParameterInfo(information), "NSInvalidArgumentException");
}

TEST_F(ParameterDescriptionTest, RaisesForANilName) {
    AudioUnitParameterInfo information = gain();
    information.cfNameString = nil;
    information.flags = 0; // that no name is promised makes no difference
    EXPECT_THROWS_NAMED(TSSRArrayFromAudioUnitParameterInfo(information), "NSInvalidArgumentException");
}

TEST_F(ParameterDescriptionTest, RaisingWhileWritingKeepsNoString) {
    AudioUnitParameterInfo information = gain();
    information.cfNameString = nil;
    EXPECT_EQ(
        referencesLeftBy(
            [&] { return thrownName([&] { return TSSRArrayFromAudioUnitParameterInfo(information); }); },
            unitName),
        0);
}

// ---- Reading

TEST_F(ParameterDescriptionTest, ReadsItsOwnLayout) {
    const AudioUnitParameterInfo information = readNumbers(readersArray());
    EXPECT_EQ(information.unitName, unitName);
    EXPECT_EQ(information.clumpID, 3u);
    EXPECT_EQ(information.cfNameString, parameterName);
    EXPECT_EQ(information.unit, 13u);
    EXPECT_EQ(information.minValue, -96.0f);
    EXPECT_EQ(information.maxValue, 12.0f);
    EXPECT_EQ(information.defaultValue, 0.5f);
    EXPECT_EQ(information.flags, 0xC0000000u);
}

TEST_F(ParameterDescriptionTest, HandsTheStringsOverWithOneReferenceEach) {
    const Retained<NSMutableArray> array = readersArray();
    EXPECT_EQ(referencesLeftBy(
                  [&] {
                      const AudioUnitParameterInfo information = TSSRAudioUnitParameterInfoFromArray(array);
                      adopt(information.cfNameString).reset();
                  },
                  unitName),
              1);
    runtime::release(unitName.object());
    EXPECT_EQ(referencesLeftBy(
                  [&] {
                      const AudioUnitParameterInfo information = TSSRAudioUnitParameterInfoFromArray(array);
                      adopt(information.unitName).reset();
                  },
                  parameterName),
              1);
    runtime::release(parameterName.object());
}

TEST_F(ParameterDescriptionTest, TheStringsOutliveTheArray) {
    Retained<NSString> unit, name;
    {
        const AutoreleasePool pool;
        const NSArray array =
            NSArray::arrayOf(NSString(std::string("hertz, temporarily")), NSNumber::numberWithInt(0),
                             NSString(std::string("cutoff, temporarily")), NSNumber::numberWithInt(0),
                             NSNumber::numberWithInt(0), NSNumber::numberWithInt(0),
                             NSNumber::numberWithInt(0), NSNumber::numberWithInt(0));
        const AudioUnitParameterInfo information = TSSRAudioUnitParameterInfoFromArray(array);
        unit = adopt(information.unitName);
        name = adopt(information.cfNameString);
    }
    EXPECT_EQ(text(unit), "hertz, temporarily");
    EXPECT_EQ(text(name), "cutoff, temporarily");
    EXPECT_EQ(unit.retainCount(), 1u);
    EXPECT_EQ(name.retainCount(), 1u);
}

TEST_F(ParameterDescriptionTest, OneObjectInBothPlacesIsHandedOverTwice) {
    const Retained<NSMutableArray> array = readersArrayWith(2, unitName);
    EXPECT_EQ(referencesLeftBy([&] { return TSSRAudioUnitParameterInfoFromArray(array); }, unitName), 2);
    runtime::release(unitName.object());
    runtime::release(unitName.object());
}

TEST_F(ParameterDescriptionTest, TakesObjectsOfAnyClassForTheStrings) {
    const Retained<NSMutableArray> array = readersArrayWith(0, NSNull::null());
    EXPECT_EQ(static_cast<NSObject>(readNumbers(array).unitName), NSNull::null());
}

TEST_F(ParameterDescriptionTest, FetchesTheStringsBeforeTheNumberBetweenThem) {
    const RecordingArray array(readersArray());
    readNumbers(array);
    EXPECT_EQ(array.positions(), (std::vector<NSUInteger>{0, 2, 1, 3, 4, 5, 6, 7}));
    EXPECT_EQ(array.countings(), 0);
}

TEST_F(ParameterDescriptionTest, SevenElementsRaiseAtPosition7AfterTheOthersWereFetched) {
    const RecordingArray array(readersArray(7));
    EXPECT_THROWS_NAMED(TSSRAudioUnitParameterInfoFromArray(array), "NSRangeException");
    EXPECT_EQ(array.positions(), (std::vector<NSUInteger>{0, 2, 1, 3, 4, 5, 6, 7}));
    runtime::release(unitName.object());
    runtime::release(parameterName.object());
}

TEST_F(ParameterDescriptionTest, ShortArraysRaiseAtTheFirstMissingPositionFetched) {
    const std::vector<NSUInteger> order = {0, 2, 1, 3, 4, 5, 6, 7};
    for (NSUInteger count = 0; count < 8; ++count) {
        const RecordingArray array(readersArray(count));
        EXPECT_THROWS_NAMED(TSSRAudioUnitParameterInfoFromArray(array), "NSRangeException") << count;
        std::vector<NSUInteger> expected;
        for (const NSUInteger position : order) {
            expected.push_back(position);
            if (position >= count) break;
        }
        EXPECT_EQ(array.positions(), expected) << count;
        if (count > 0) runtime::release(unitName.object());
        if (count > 2) runtime::release(parameterName.object());
    }
}

TEST_F(ParameterDescriptionTest, WhatWasRetainedBeforeAnExceptionStaysRetained) {
    const Retained<NSMutableArray> array = readersArrayWith(1, "no number"_ns);
    const auto reading = [&] {
        EXPECT_THROWS_NAMED(TSSRAudioUnitParameterInfoFromArray(array), "NSInvalidArgumentException");
    };
    EXPECT_EQ(referencesLeftBy(reading, unitName), 1);
    EXPECT_EQ(referencesLeftBy(reading, parameterName), 1);
    for (int reads = 0; reads < 2; ++reads) {
        runtime::release(unitName.object());
        runtime::release(parameterName.object());
    }
}

TEST_F(ParameterDescriptionTest, ReadingTheWritersLayoutRaises) {
    const NSArray array = TSSRArrayFromAudioUnitParameterInfo(gain());
    EXPECT_THROWS_NAMED(TSSRAudioUnitParameterInfoFromArray(array), "NSInvalidArgumentException");
    // The objects at 0 and 2 stay retained.
    runtime::release(unitName.object());
    runtime::release(static_cast<NSObject>(array.objectAtIndex(2)).object());
}

TEST_F(ParameterDescriptionTest, ReadsTheLow32BitsOfUnsignedNumbers) {
    const NSNumber number = NSNumber::numberWithUnsignedInteger(4294967297);
    EXPECT_EQ(readNumbers(readersArrayWith(1, number)).clumpID, 1u);
    EXPECT_EQ(readNumbers(readersArrayWith(3, number)).unit, 1u);
    EXPECT_EQ(readNumbers(readersArrayWith(7, number)).flags, 1u);
    EXPECT_EQ(readNumbers(readersArrayWith(7, NSNumber::numberWithInt(-1))).flags, 0xFFFFFFFFu);
    EXPECT_EQ(readNumbers(readersArrayWith(3, NSNumber::numberWithDouble(4294967297.0))).unit, 1u);
    EXPECT_EQ(readNumbers(readersArrayWith(1, NSNumber::numberWithBool(true))).clumpID, 1u);
}

TEST_F(ParameterDescriptionTest, ReadsValuesOutOfStrings) {
    EXPECT_EQ(readNumbers(readersArrayWith(4, "-12.5 dB"_ns)).minValue, -12.5f);
    EXPECT_EQ(readNumbers(readersArrayWith(5, "1e3"_ns)).maxValue, 1000.0f);
    EXPECT_EQ(readNumbers(readersArrayWith(6, "none"_ns)).defaultValue, 0.0f);
}

TEST_F(ParameterDescriptionTest, ReadsValuesToTheNearestFloat) {
    EXPECT_EQ(readNumbers(readersArrayWith(4, NSNumber::numberWithDouble(0.1))).minValue, 0.1f);
    EXPECT_EQ(readNumbers(readersArrayWith(5, NSNumber::numberWithInt(16777217))).maxValue, 16777216.0f);
    EXPECT_EQ(readNumbers(readersArrayWith(6, NSNumber::numberWithBool(true))).defaultValue, 1.0f);
}

TEST_F(ParameterDescriptionTest, RaisesForAStringInPlaceOfAnUnsignedNumber) {
    for (const NSUInteger index : {1u, 3u, 7u}) {
        EXPECT_THROWS_NAMED(TSSRAudioUnitParameterInfoFromArray(readersArrayWith(index, "1"_ns)),
                            "NSInvalidArgumentException")
            << index;
        runtime::release(unitName.object());
        runtime::release(parameterName.object());
    }
}

TEST_F(ParameterDescriptionTest, RaisesForAnElementThatAnswersNoReading) {
    for (const NSUInteger index : {1u, 3u, 4u, 5u, 6u, 7u}) {
        EXPECT_THROWS_NAMED(TSSRAudioUnitParameterInfoFromArray(readersArrayWith(index, NSNull::null())),
                            "NSInvalidArgumentException")
            << index;
        runtime::release(unitName.object());
        runtime::release(parameterName.object());
    }
}

TEST_F(ParameterDescriptionTest, IgnoresElementsPastTheEighth) {
    const Retained<NSMutableArray> elements = readersArray();
    elements.addObject(NSNull::null());
    const RecordingArray array(elements);
    EXPECT_EQ(readNumbers(array).flags, 0xC0000000u);
    EXPECT_EQ(array.positions().size(), 8u);
}

TEST_F(ParameterDescriptionTest, NilReadsAsZerosAndNilStrings) {
    const AudioUnitParameterInfo information = TSSRAudioUnitParameterInfoFromArray(nil);
    EXPECT_FALSE(information.unitName);
    EXPECT_FALSE(information.cfNameString);
    EXPECT_EQ(information.clumpID, 0u);
    EXPECT_EQ(information.unit, 0u);
    EXPECT_EQ(information.minValue, 0.0f);
    EXPECT_EQ(information.maxValue, 0.0f);
    EXPECT_EQ(information.defaultValue, 0.0f);
    EXPECT_EQ(information.flags, 0u);
}

TEST_F(ParameterDescriptionTest, NumbersSurviveWhenTheWritersElementsArePutInTheReadersOrder) {
    std::mt19937 random(21);
    std::uniform_int_distribution<UInt32> field;
    std::uniform_real_distribution<float> value(-1e6f, 1e6f);
    for (int round = 0; round < 2'000; ++round) {
        const AutoreleasePool pool;
        AudioUnitParameterInfo written = gain();
        written.clumpID = field(random);
        written.unit = field(random);
        written.flags = field(random);
        written.minValue = value(random);
        written.maxValue = value(random);
        written.defaultValue = value(random);
        const NSMutableArray array =
            NSMutableArray::arrayWithArray(TSSRArrayFromAudioUnitParameterInfo(written));
        array.exchangeObjectAtIndex_withObjectAtIndex(1, 2);
        const AudioUnitParameterInfo read = readNumbers(array);
        ASSERT_EQ(read.clumpID, written.clumpID);
        ASSERT_EQ(read.unit, written.unit);
        ASSERT_EQ(read.flags, written.flags);
        ASSERT_EQ(read.minValue, written.minValue);
        ASSERT_EQ(read.maxValue, written.maxValue);
        ASSERT_EQ(read.defaultValue, written.defaultValue);
    }
}

TEST_F(ParameterDescriptionTest, ReadsAStoredDescriptionInTheReadersLayout) {
    const NSData data = NSData::dataWithContentsOfFile(
        NSString(testFile("data/audio/parameter-description-readers-layout.plist")));
    ASSERT_TRUE(data);
    const NSArray array = NSPropertyListSerialization::propertyListWithData_options_format_error(
        data, NSPropertyListImmutable, nullptr, nullptr);
    const AudioUnitParameterInfo information = TSSRAudioUnitParameterInfoFromArray(array);
    const Retained<NSString> unit = adopt(information.unitName), name = adopt(information.cfNameString);
    EXPECT_EQ(text(unit), "ms");
    EXPECT_EQ(text(name), "Time");
    EXPECT_EQ(information.clumpID, 3u);
    EXPECT_EQ(information.unit, 24u);
    EXPECT_EQ(information.minValue, 0.1f);
    EXPECT_EQ(information.maxValue, 2000.0f);
    EXPECT_EQ(information.defaultValue, 250.0f);
    EXPECT_EQ(information.flags, 3355443200u);
}

TEST_F(ParameterDescriptionTest, WritesTheStoredDescription) {
    const NSData data =
        NSData::dataWithContentsOfFile(NSString(testFile("data/audio/parameter-description.plist")));
    ASSERT_TRUE(data);
    const NSArray stored = NSPropertyListSerialization::propertyListWithData_options_format_error(
        data, NSPropertyListImmutable, nullptr, nullptr);
    AudioUnitParameterInfo information{};
    information.unitName = "ms"_ns;
    information.clumpID = 3;
    information.cfNameString = "Time"_ns;
    information.unit = 24;
    information.minValue = 0.1f;
    information.maxValue = 2000.0f;
    information.defaultValue = 250.0f;
    information.flags = 3355443200u;
    EXPECT_TRUE(stored.isEqual(TSSRArrayFromAudioUnitParameterInfo(information)));
}

} // namespace
} // namespace tessarin::testing
