// The abstract coder.
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

class NSCoderTest : public PlatformTest {
protected:
    const Retained<NSCoder> coder_ = adopt(send<NSCoder>(NSCoder::alloc(), "init"_sel));
};

TEST_F(NSCoderTest, AllowsNoKeys) {
    EXPECT_FALSE(coder_.allowsKeyedCoding());
    const NSMutableData data = NSMutableData::data();
    EXPECT_TRUE(adopt(NSKeyedArchiver::alloc().initForWritingWithMutableData(data)).allowsKeyedCoding());
}

TEST_F(NSCoderTest, LeavesEveryKeyedOperationToItsSubclasses) {
    const char* const refused = "NSInvalidArgumentException";
    EXPECT_THROWS_NAMED(coder_.encodeObject_forKey(nil, "key"_ns), refused);
    EXPECT_THROWS_NAMED(coder_.encodeConditionalObject_forKey(nil, "key"_ns), refused);
    EXPECT_THROWS_NAMED(coder_.encodeBool_forKey(true, "key"_ns), refused);
    EXPECT_THROWS_NAMED(coder_.encodeInt_forKey(1, "key"_ns), refused);
    EXPECT_THROWS_NAMED(coder_.encodeInt32_forKey(1, "key"_ns), refused);
    EXPECT_THROWS_NAMED(coder_.encodeInt64_forKey(1, "key"_ns), refused);
    EXPECT_THROWS_NAMED(coder_.encodeInteger_forKey(1, "key"_ns), refused);
    EXPECT_THROWS_NAMED(coder_.encodeFloat_forKey(1, "key"_ns), refused);
    EXPECT_THROWS_NAMED(coder_.encodeDouble_forKey(1, "key"_ns), refused);
    EXPECT_THROWS_NAMED(coder_.encodeBytes_length_forKey(nullptr, 0, "key"_ns), refused);
    EXPECT_THROWS_NAMED(coder_.containsValueForKey("key"_ns), refused);
    EXPECT_THROWS_NAMED(coder_.decodeObjectForKey("key"_ns), refused);
    EXPECT_THROWS_NAMED(coder_.decodeBoolForKey("key"_ns), refused);
    EXPECT_THROWS_NAMED(coder_.decodeIntForKey("key"_ns), refused);
    EXPECT_THROWS_NAMED(coder_.decodeInt32ForKey("key"_ns), refused);
    EXPECT_THROWS_NAMED(coder_.decodeInt64ForKey("key"_ns), refused);
    EXPECT_THROWS_NAMED(coder_.decodeIntegerForKey("key"_ns), refused);
    EXPECT_THROWS_NAMED(coder_.decodeFloatForKey("key"_ns), refused);
    EXPECT_THROWS_NAMED(coder_.decodeDoubleForKey("key"_ns), refused);
    NSUInteger length = 0;
    EXPECT_THROWS_NAMED(coder_.decodeBytesForKey_returnedLength("key"_ns, &length), refused);
}

TEST_F(NSCoderTest, NamesTheOperationThatIsMissing) {
    std::string reason;
    attempt([&] { static_cast<void>(coder_.containsValueForKey("key"_ns)); },
            [&](NSException exception) { reason = text(exception.reason()); });
    EXPECT_NE(reason.find("containsValueForKey:"), std::string::npos) << reason;
    EXPECT_NE(reason.find("only defined for abstract class"), std::string::npos) << reason;
}

} // namespace
} // namespace tessarin::testing
