// What a message to nil answers, for each kind of result.
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

struct Point {
    double x;
    double y;
};

struct Quadruple {
    long first, second, third, fourth; // more than the registers of a result hold
};

// The compiler cannot see that the receiver is nil, and the registers that results come in hold other values.
class NilReceiverTest : public PlatformTest {
protected:
    NilReceiverTest() {
        EXPECT_NE(NSNumber::numberWithDouble(2.5).doubleValue(), 0);
        EXPECT_NE("text"_ns.length(), 0u);
    }
    NSObject none = NSArray::array().firstObject();
    Class noClass = Class(NSObject(runtime::lookUpClass("NoClassOfThisName")));
};

TEST_F(NilReceiverTest, AnswersNilForAnObject) {
    EXPECT_FALSE(send<NSString>(none, "description"_sel));
    EXPECT_FALSE(send<id>(none, "copy"_sel));
    EXPECT_FALSE(send<Class>(none, "class"_sel));
}

TEST_F(NilReceiverTest, AnswersNullForAPointer) {
    EXPECT_EQ(send<const char*>(none, "UTF8String"_sel), nullptr);
    EXPECT_EQ(send<const void*>(none, "bytes"_sel), nullptr);
}

TEST_F(NilReceiverTest, AnswersZeroForAnInteger) {
    EXPECT_EQ(send<NSUInteger>(none, "length"_sel), 0u);
    EXPECT_EQ(send<int>(none, "intValue"_sel), 0);
    EXPECT_EQ(send<long long>(none, "longLongValue"_sel), 0);
    EXPECT_EQ(send<unichar>(none, "characterAtIndex:"_sel, NSUInteger{0}), 0);
}

TEST_F(NilReceiverTest, AnswersNoForABoolean) {
    EXPECT_EQ(send<BOOL>(none, "isEqual:"_sel, NSObject(none)), NO);
    EXPECT_FALSE(none.isEqual(none));
    EXPECT_FALSE(none.respondsToSelector("isEqual:"));
}

TEST_F(NilReceiverTest, AnswersZeroForAFloat) { EXPECT_EQ(send<float>(none, "floatValue"_sel), 0.0f); }

TEST_F(NilReceiverTest, AnswersZeroForADouble) { EXPECT_EQ(send<double>(none, "doubleValue"_sel), 0.0); }

TEST_F(NilReceiverTest, AnswersZerosForAStructureOfDoubles) {
    const auto point = send<Point>(none, "sizeOfNothing"_sel);
    EXPECT_EQ(point.x, 0.0);
    EXPECT_EQ(point.y, 0.0);
}

TEST_F(NilReceiverTest, AnswersZerosForAStructureInRegisters) {
    EXPECT_EQ(send<NSRange>(none, "rangeOfString:"_sel, "a"_ns), (NSRange{0, 0}));
}

TEST_F(NilReceiverTest, AnswersZerosForAStructureInMemory) {
    const auto values = send<Quadruple>(none, "valuesOfNothing"_sel);
    EXPECT_EQ(values.first, 0);
    EXPECT_EQ(values.second, 0);
    EXPECT_EQ(values.third, 0);
    EXPECT_EQ(values.fourth, 0);
}

TEST_F(NilReceiverTest, AnswersTheFirstValueOfAnEnumeration) {
    EXPECT_EQ(send<NSComparisonResult>(none, "compare:"_sel, "a"_ns), NSOrderedSame);
}

TEST_F(NilReceiverTest, DoesNothingForVoid) { send<void>(none, "removeAllObjects"_sel); }

TEST_F(NilReceiverTest, IsAllowedForAListOfVariableLength) {
    EXPECT_FALSE(sendVariadic<NSString>(none, "stringByAppendingFormat:"_sel, "%@"_ns, "a"_ns));
    sendVariadic<void>(none, "appendFormat:"_sel, "%d"_ns, 1);
}

TEST_F(NilReceiverTest, IsAllowedForAClassThatDoesNotExist) {
    EXPECT_FALSE(noClass);
    EXPECT_FALSE(noClass.alloc());
    EXPECT_FALSE(noClass.superclass());
    EXPECT_EQ(send<double>(noClass, "doubleValue"_sel), 0.0);
    EXPECT_FALSE(noClass.instancesRespondToSelector("init"_sel));
    EXPECT_FALSE(send<id>(noClass.alloc(), "init"_sel));
}

TEST_F(NilReceiverTest, IsAllowedForTheMembersOfHandles) {
    const NSString string;
    EXPECT_EQ(string.length(), 0u);
    EXPECT_EQ(string.doubleValue(), 0.0);
    EXPECT_FALSE(string.isEqualToString(string));
    EXPECT_EQ(string.rangeOfString("a"_ns), (NSRange{0, 0}));
    EXPECT_EQ(NSArray().count(), 0u);
    EXPECT_EQ(static_cast<std::string>(string), "");
}

} // namespace
} // namespace tessarin::testing
