// Numbers: kinds, reading, comparison, text.
#include "PlatformTest.h"

#include "TessarinPlatform/NSNumber.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace tessarin::testing {
namespace {

class NSNumberTest : public PlatformTest {
protected:
    static std::string kindOfNumber(NSNumber number) { return number.objCType(); }
    static void expectEqual(NSNumber left, NSNumber right) {
        EXPECT_TRUE(left.isEqual(right));
        EXPECT_TRUE(right.isEqual(left));
        EXPECT_TRUE(left.isEqualToNumber(right));
        EXPECT_EQ(left.hash(), right.hash());
        EXPECT_EQ(left.compare(right), NSOrderedSame);
    }
    static void expectAscending(NSNumber smaller, NSNumber larger) {
        EXPECT_FALSE(smaller.isEqual(larger));
        EXPECT_EQ(smaller.compare(larger), NSOrderedAscending);
        EXPECT_EQ(larger.compare(smaller), NSOrderedDescending);
    }
    static NSNumber ofInteger(NSInteger value) { return NSNumber::numberWithInteger(value); }
    static NSNumber ofUnsigned(NSUInteger value) { return NSNumber::numberWithUnsignedInteger(value); }
    static NSNumber ofDouble(double value) { return NSNumber::numberWithDouble(value); }
    static NSNumber ofFloat(float value) { return NSNumber::numberWithFloat(value); }

    static constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    static constexpr double infinity = std::numeric_limits<double>::infinity();
};

// ---- Kinds

TEST_F(NSNumberTest, KeepsTheKindOfFloatingPointNumbers) {
    EXPECT_EQ(kindOfNumber(ofFloat(1)), "f");
    EXPECT_EQ(kindOfNumber(ofDouble(1)), "d");
}

TEST_F(NSNumberTest, KeepsTheKindOfAnInt) { EXPECT_EQ(kindOfNumber(NSNumber::numberWithInt(1000)), "i"); }

TEST_F(NSNumberTest, KeepsTheKindOfALargeInteger) {
    EXPECT_EQ(kindOfNumber(ofInteger(std::numeric_limits<std::int64_t>::min())), "q");
}

TEST_F(NSNumberTest, ASmallIntegerIsOfTheKindOfALargeOne) {
    EXPECT_EQ(kindOfNumber(ofInteger(7)), "q");
    EXPECT_EQ(kindOfNumber(ofUnsigned(7)), "q");
    EXPECT_EQ(kindOfNumber(ofUnsigned(1000000)), "q");
    EXPECT_EQ(kindOfNumber(NSNumber::numberWithUnsignedInt(4294967295u)), "q");
}

TEST_F(NSNumberTest, UnsignednessIsKeptForValuesThatNeedIt) {
    EXPECT_EQ(kindOfNumber(ofUnsigned(std::numeric_limits<std::uint64_t>::max())), "Q");
    EXPECT_EQ(kindOfNumber(NSNumber::numberWithUnsignedLongLong(std::uint64_t{1} << 63)), "Q");
}

TEST_F(NSNumberTest, ABooleanIsTheOnlyOneOfItsValue) {
    EXPECT_EQ(NSNumber::numberWithBool(true), NSNumber::numberWithBool(true));
    EXPECT_EQ(NSNumber::numberWithBool(false), NSNumber::numberWithBool(false));
    EXPECT_NE(NSNumber::numberWithBool(true), NSNumber::numberWithBool(false));
}

TEST_F(NSNumberTest, ABooleanIsNotTheNumberOfItsValue) {
    EXPECT_NE(NSNumber::numberWithBool(true), NSNumber::numberWithInt(1));
    EXPECT_NE(NSNumber::numberWithBool(false), ofInteger(0));
    EXPECT_NE(kindOfNumber(NSNumber::numberWithBool(true)), kindOfNumber(NSNumber::numberWithInt(1)));
}

TEST_F(NSNumberTest, ABooleanHasTheEncodingOfASignedCharacter) {
    EXPECT_EQ(kindOfNumber(NSNumber::numberWithBool(true)), "c");
}

// ---- Reading

TEST_F(NSNumberTest, UnsignedValuesReinterpretNegativeOnes) {
    EXPECT_EQ(NSNumber::numberWithInt(-1).unsignedLongValue(), std::numeric_limits<unsigned long>::max());
    EXPECT_EQ(ofDouble(-1.5).unsignedLongLongValue(), 18446744073709551615u);
    EXPECT_EQ(NSNumber::numberWithInt(-1).unsignedIntegerValue(), 18446744073709551615u);
}

TEST_F(NSNumberTest, IntegersAreCutTowardsZero) {
    EXPECT_EQ(ofDouble(1.9).longLongValue(), 1);
    EXPECT_EQ(ofDouble(-1.9).longLongValue(), -1);
    EXPECT_EQ(ofDouble(1.9).unsignedLongValue(), 1u);
    EXPECT_EQ(ofFloat(-2.5f).intValue(), -2);
}

TEST_F(NSNumberTest, ShortIntegersAreTheLowBits) {
    EXPECT_EQ(ofInteger(4294967297).intValue(), 1);
    EXPECT_EQ(ofInteger(4294967297).unsignedIntValue(), 1u);
}

TEST_F(NSNumberTest, LargeUnsignedNumbersComeBack) {
    constexpr auto largest = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(ofUnsigned(largest).unsignedLongLongValue(), largest);
    EXPECT_EQ(ofUnsigned(largest).doubleValue(), 18446744073709551616.0);
    EXPECT_EQ(ofUnsigned(largest).floatValue(), 18446744073709551616.0f);
}

TEST_F(NSNumberTest, FloatsAreTheNearest) {
    EXPECT_EQ(ofDouble(0.1).floatValue(), 0.1f);
    EXPECT_EQ(ofFloat(0.1f).doubleValue(), static_cast<double>(0.1f));
    EXPECT_EQ(ofInteger(16777217).floatValue(), 16777216.0f);
}

TEST_F(NSNumberTest, ANumberIsTrueUnlessItIsZero) {
    EXPECT_TRUE(ofInteger(-1).boolValue());
    EXPECT_TRUE(ofInteger(std::numeric_limits<std::int64_t>::min()).boolValue());
    EXPECT_TRUE(ofInteger(256).boolValue());
    EXPECT_FALSE(ofInteger(0).boolValue());
    EXPECT_FALSE(ofDouble(0).boolValue());
}

TEST_F(NSNumberTest, AHalfIsFalse) { EXPECT_FALSE(ofDouble(0.5).boolValue()); }

TEST_F(NSNumberTest, ABooleanReadsAsOneOrZero) {
    EXPECT_EQ(NSNumber::numberWithBool(true).unsignedLongValue(), 1u);
    EXPECT_EQ(NSNumber::numberWithBool(true).doubleValue(), 1.0);
    EXPECT_EQ(NSNumber::numberWithBool(false).intValue(), 0);
}

// ---- Comparing

TEST_F(NSNumberTest, OneIsOneOfWhateverKind) {
    const NSNumber ones[] = {NSNumber::numberWithInt(1), ofInteger(1), ofFloat(1), ofDouble(1),
                             NSNumber::numberWithBool(true)};
    for (const NSNumber left : ones)
        for (const NSNumber right : ones) expectEqual(left, right);
}

TEST_F(NSNumberTest, ZeroIsZeroOfWhateverKindAndSign) {
    const NSNumber zeros[] = {NSNumber::numberWithInt(0), ofFloat(0), ofDouble(0), ofDouble(-0.0),
                              NSNumber::numberWithBool(false)};
    for (const NSNumber left : zeros)
        for (const NSNumber right : zeros) expectEqual(left, right);
}

TEST_F(NSNumberTest, YesIsNoOtherTrueNumber) {
    expectAscending(NSNumber::numberWithInt(-1), NSNumber::numberWithBool(true));
    expectAscending(NSNumber::numberWithBool(true), NSNumber::numberWithInt(2));
}

TEST_F(NSNumberTest, NotANumberEqualsItself) {
    expectEqual(ofDouble(nan), ofDouble(nan));
    expectEqual(ofDouble(nan), ofFloat(std::numeric_limits<float>::quiet_NaN()));
}

TEST_F(NSNumberTest, NotANumberStandsBetweenTheNegativeNumbersAndZero) {
    expectAscending(ofDouble(nan), ofInteger(0));
    expectAscending(ofDouble(nan), ofDouble(0));
    expectAscending(ofDouble(nan), ofInteger(1));
    expectAscending(ofDouble(nan), ofDouble(1e300));
    expectAscending(ofInteger(-1), ofDouble(nan));
    expectAscending(ofDouble(-0.5), ofDouble(nan));
}

TEST_F(NSNumberTest, AFloatIsNotTheDoubleThatItWasMadeFrom) { expectAscending(ofDouble(0.1), ofFloat(0.1f)); }

TEST_F(NSNumberTest, LargeIntegersAreNotRoundedToCompareThem) {
    expectAscending(ofDouble(9007199254740992.0), ofInteger(9007199254740993));
    expectEqual(ofDouble(9007199254740992.0), ofInteger(9007199254740992));
    expectAscending(ofInteger(std::numeric_limits<std::int64_t>::max()), ofDouble(9223372036854775808.0));
    expectEqual(ofInteger(std::numeric_limits<std::int64_t>::min()), ofDouble(-9223372036854775808.0));
}

TEST_F(NSNumberTest, LargeUnsignedIntegersComeBehindAllSignedOnes) {
    const NSNumber largest = ofUnsigned(std::numeric_limits<std::uint64_t>::max());
    expectAscending(ofInteger(-1), largest);
    expectAscending(ofInteger(std::numeric_limits<std::int64_t>::max()), ofUnsigned(std::uint64_t{1} << 63));
    expectAscending(ofUnsigned(std::uint64_t{1} << 63), largest);
    expectAscending(largest, ofDouble(18446744073709551616.0));
    expectEqual(ofUnsigned(std::uint64_t{1} << 63), ofDouble(9223372036854775808.0));
}

TEST_F(NSNumberTest, FractionsDecideBetweenEqualWholes) {
    expectAscending(ofInteger(1), ofDouble(1.5));
    expectAscending(ofDouble(-1.5), ofInteger(-1));
    expectAscending(ofInteger(-2), ofDouble(-1.5));
    expectAscending(ofDouble(-infinity), ofInteger(std::numeric_limits<std::int64_t>::min()));
    expectAscending(ofUnsigned(std::numeric_limits<std::uint64_t>::max()), ofDouble(infinity));
}

TEST_F(NSNumberTest, ANumberIsNoString) {
    EXPECT_FALSE(NSNumber::numberWithInt(1).isEqual("1"_ns));
    EXPECT_FALSE("1"_ns.isEqual(NSNumber::numberWithInt(1)));
    EXPECT_FALSE(NSNumber::numberWithInt(1).isEqual(nil));
}

TEST_F(NSNumberTest, ComparingWithAStringRaises) {
    EXPECT_THROWS_NAMED(send<NSComparisonResult>(ofInteger(1), "compare:"_sel, "1"_ns),
                        "NSInvalidArgumentException");
}

// ---- Text

TEST_F(NSNumberTest, IntegersShowAsDigits) {
    EXPECT_EQ(text(ofInteger(-42).stringValue()), "-42");
    EXPECT_EQ(text(ofInteger(std::numeric_limits<std::int64_t>::min()).stringValue()),
              "-9223372036854775808");
    EXPECT_EQ(text(ofUnsigned(std::numeric_limits<std::uint64_t>::max()).stringValue()),
              "18446744073709551615");
}

TEST_F(NSNumberTest, BooleansShowAsDigits) {
    EXPECT_EQ(text(NSNumber::numberWithBool(true).stringValue()), "1");
    EXPECT_EQ(text(NSNumber::numberWithBool(false).stringValue()), "0");
    EXPECT_EQ(text(NSNumber::numberWithBool(true).description()), "1");
}

TEST_F(NSNumberTest, DoublesShowSixteenDigits) {
    EXPECT_EQ(text(ofDouble(1).stringValue()), "1");
    EXPECT_EQ(text(ofDouble(0.1).stringValue()), "0.1");
    EXPECT_EQ(text(ofDouble(-2.5).description()), "-2.5");
    EXPECT_EQ(text(ofDouble(1.0 / 3).stringValue()), "0.3333333333333333");
    EXPECT_EQ(text(ofDouble(1e20).stringValue()), "1e+20");
    EXPECT_EQ(text(ofDouble(1e-7).stringValue()), "1e-07");
}

TEST_F(NSNumberTest, FloatsShowSevenDigits) {
    EXPECT_EQ(text(ofFloat(0.1f).stringValue()), "0.1");
    EXPECT_EQ(text(ofFloat(1.0f / 3).stringValue()), "0.3333333");
}

TEST_F(NSNumberTest, ValuesThatAreNoNumbersShowByName) {
    EXPECT_EQ(text(ofDouble(infinity).stringValue()), "inf");
    EXPECT_EQ(text(ofDouble(-infinity).stringValue()), "-inf");
    EXPECT_EQ(text(ofDouble(nan).stringValue()), "nan");
}

// ---- Objects

TEST_F(NSNumberTest, IsItsOwnCopy) {
    const NSNumber number = ofDouble(1.5);
    const Retained<NSNumber> copy = adopt(number.copy());
    EXPECT_TRUE(copy.isEqual(number));
    EXPECT_TRUE(number.conformsToProtocol("NSCopying"_protocol));
}

TEST_F(NSNumberTest, CanBeAllocatedAndInitialised) {
    const Retained<NSNumber> number =
        adopt(send<NSNumber>(NSNumber::classObject().alloc(), "initWithDouble:"_sel, 2.5));
    EXPECT_EQ(number.doubleValue(), 2.5);
    const Retained<NSNumber> small =
        adopt(send<NSNumber>(NSNumber::classObject().alloc(), "initWithInt:"_sel, 3));
    EXPECT_EQ(small.intValue(), 3);
}

} // namespace
} // namespace tessarin::testing
