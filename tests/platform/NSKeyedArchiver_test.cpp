// Archiving: what becomes of values, objects and keys, as it shows when they are read back. The layout of
// archives is tested beside the platform that writes them, and in tests/interop.
#include "KeyedCoding.h"
#include "TemporaryFolder.h"

#include <limits>

namespace tessarin::testing {
namespace {

class NSKeyedArchiverTest : public PlatformTest {
protected:
    // A coder that reads what `archiver` has written, which ends the writing.
    NSKeyedUnarchiver finished() const {
        archiver_.finishEncoding();
        return adopt(NSKeyedUnarchiver::alloc().initForReadingWithData(data_)).autorelease();
    }

    const Retained<NSMutableData> data_ = retain(NSMutableData::data());
    const Retained<NSKeyedArchiver> archiver_ =
        adopt(NSKeyedArchiver::alloc().initForWritingWithMutableData(data_));
};

// ---- Values

TEST_F(NSKeyedArchiverTest, EveryKindOfValueComesBack) {
    const std::uint8_t bytes[] = {1, 0, 255};
    archiver_.encodeObject_forKey("text"_ns, "object"_ns);
    archiver_.encodeBool_forKey(true, "bool"_ns);
    archiver_.encodeInt_forKey(-5, "int"_ns);
    archiver_.encodeInt32_forKey(std::numeric_limits<std::int32_t>::min(), "int32"_ns);
    archiver_.encodeInt64_forKey(std::numeric_limits<std::int64_t>::max(), "int64"_ns);
    archiver_.encodeInteger_forKey(std::numeric_limits<NSInteger>::min(), "integer"_ns);
    archiver_.encodeFloat_forKey(0.1F, "float"_ns);
    archiver_.encodeDouble_forKey(0.1, "double"_ns);
    archiver_.encodeBytes_length_forKey(bytes, sizeof bytes, "bytes"_ns);
    const NSKeyedUnarchiver coder = finished();
    EXPECT_EQ(text(coder.decodeObjectForKey("object"_ns)), "text");
    EXPECT_TRUE(coder.decodeBoolForKey("bool"_ns));
    EXPECT_EQ(coder.decodeIntForKey("int"_ns), -5);
    EXPECT_EQ(coder.decodeInt32ForKey("int32"_ns), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(coder.decodeInt64ForKey("int64"_ns), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(coder.decodeIntegerForKey("integer"_ns), std::numeric_limits<NSInteger>::min());
    EXPECT_EQ(coder.decodeFloatForKey("float"_ns), 0.1F);
    EXPECT_EQ(coder.decodeDoubleForKey("double"_ns), 0.1);
    NSUInteger length = 0;
    const std::uint8_t* const back = coder.decodeBytesForKey_returnedLength("bytes"_ns, &length);
    EXPECT_EQ(std::string(back, back + length), std::string(bytes, bytes + sizeof bytes));
}

TEST_F(NSKeyedArchiverTest, NilIsContainedAndReadAsNil) {
    archiver_.encodeObject_forKey(nil, "nil"_ns);
    const NSKeyedUnarchiver coder = finished();
    EXPECT_TRUE(coder.containsValueForKey("nil"_ns));
    EXPECT_EQ(coder.decodeObjectForKey("nil"_ns), nil);
    EXPECT_FALSE(coder.containsValueForKey("other"_ns));
    EXPECT_EQ(coder.decodeObjectForKey("other"_ns), nil);
}

TEST_F(NSKeyedArchiverTest, KeysMayBeginWithADollarSign) {
    archiver_.encodeObject_forKey("one"_ns, "$class"_ns);
    archiver_.encodeObject_forKey("two"_ns, "$$class"_ns);
    archiver_.encodeObject_forKey("none"_ns, ""_ns);
    const NSKeyedUnarchiver coder = finished();
    EXPECT_EQ(text(coder.decodeObjectForKey("$class"_ns)), "one");
    EXPECT_EQ(text(coder.decodeObjectForKey("$$class"_ns)), "two");
    EXPECT_EQ(text(coder.decodeObjectForKey(""_ns)), "none");
    EXPECT_FALSE(coder.containsValueForKey("class"_ns));
}

TEST_F(NSKeyedArchiverTest, TheSameKeyTwiceReplacesAndIsLogged) {
    const CapturedStandardError log;
    archiver_.encodeInt_forKey(1, "key"_ns);
    archiver_.encodeInt_forKey(2, "key"_ns);
    const std::vector<std::string> lines = log.lines();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_NE(lines[0].find("'key'"), std::string::npos) << lines[0];
    EXPECT_EQ(finished().decodeIntForKey("key"_ns), 2);
}

// ---- Objects

TEST_F(NSKeyedArchiverTest, ThePlatformsValuesComeBackEqual) {
    expectKeyedCoding("text"_ns);
    expectKeyedCoding(""_ns);
    expectKeyedCoding(u"\u00e9\u20ac"_ns);
    expectKeyedCoding(NSMutableString::stringWithString("text"_ns));
    expectKeyedCoding(NSNumber::numberWithInt(-3));
    expectKeyedCoding(NSNumber::numberWithBool(true));
    expectKeyedCoding(NSNumber::numberWithDouble(0.5));
    expectKeyedCoding(NSData::dataWithBytes_length("a\0b", 3));
    expectKeyedCoding(NSMutableData::dataWithBytes_length("a\0b", 3));
    expectKeyedCoding(NSDate::dateWithTimeIntervalSinceReferenceDate(86400));
    expectKeyedCoding(NSURL::URLWithString("http://example.com/a?b#c"_ns));
    expectKeyedCoding(NSNull::null());
}

TEST_F(NSKeyedArchiverTest, ContainersComeBackEqual) {
    expectKeyedCoding(NSArray::array());
    expectKeyedCoding(NSArray::arrayOf("a"_ns, NSArray::arrayOf("b"_ns), NSNull::null()));
    expectKeyedCoding(NSMutableArray::arrayWithArray(NSArray::arrayOf("a"_ns)));
    expectKeyedCoding(NSDictionary::dictionary());
    expectKeyedCoding(NSDictionary::dictionaryWithObject_forKey(NSArray::arrayOf("a"_ns), "key"_ns));
    expectKeyedCoding(NSDictionary::dictionaryWithObject_forKey("one"_ns, NSNumber::numberWithInt(1)));
    expectKeyedCoding(NSMutableDictionary::dictionary());
}

TEST_F(NSKeyedArchiverTest, DatesComeBackToTheLastBit) {
    expectKeyedCoding(NSDate::dateWithTimeIntervalSinceReferenceDate(0.1));
}

TEST_F(NSKeyedArchiverTest, RealsComeBackToTheLastBit) { expectKeyedCoding(NSNumber::numberWithDouble(0.1)); }

TEST_F(NSKeyedArchiverTest, TheLargestIntegerComesBack) {
    expectKeyedCoding(NSNumber::numberWithUnsignedLongLong(~0ULL));
}

TEST_F(NSKeyedArchiverTest, TheTextThatStandsForNilComesBack) {
    expectKeyedCoding("$null"_ns);
    expectKeyedCoding(NSMutableString::stringWithString("$null"_ns));
}

TEST_F(NSKeyedArchiverTest, MutableObjectsComeBackMutable) {
    const NSArray back =
        NSKeyedUnarchiver::unarchiveObjectWithData(NSKeyedArchiver::archivedDataWithRootObject(
            NSArray::arrayOf(NSMutableString::stringWithString("a"_ns), NSMutableArray::array(),
                             NSMutableDictionary::dictionary(), NSMutableData::data())));
    as<NSMutableString>(back.objectAtIndex(0)).appendString("b"_ns);
    EXPECT_EQ(text(back.objectAtIndex(0)), "ab");
    as<NSMutableArray>(back.objectAtIndex(1)).addObject("a"_ns);
    as<NSMutableDictionary>(back.objectAtIndex(2)).setObject_forKey("a"_ns, "b"_ns);
    as<NSMutableData>(back.objectAtIndex(3)).setLength(3);
    EXPECT_EQ(as<NSMutableData>(back.objectAtIndex(3)).length(), 3u);
}

TEST_F(NSKeyedArchiverTest, AnObjectIsToldByIdentity) {
    const NSArray one = NSArray::arrayOf("x"_ns), equal = NSArray::arrayOf("x"_ns);
    const NSArray back = NSKeyedUnarchiver::unarchiveObjectWithData(
        NSKeyedArchiver::archivedDataWithRootObject(NSArray::arrayOf(one, equal, one)));
    EXPECT_EQ(back.objectAtIndex(0), back.objectAtIndex(2));
    EXPECT_NE(back.objectAtIndex(0), back.objectAtIndex(1));
}

TEST_F(NSKeyedArchiverTest, ObjectsThatAreGoneAreNotTakenForLaterOnes) {
    for (int number = 0; number < 100; ++number) {
        const AutoreleasePool pool;
        archiver_.encodeObject_forKey(NSArray::arrayOf(NSNumber::numberWithInt(1000 + number)),
                                      NSString("key" + std::to_string(number)));
    }
    const NSKeyedUnarchiver coder = finished();
    for (int number = 0; number < 100; ++number) {
        const NSArray back = coder.decodeObjectForKey(NSString("key" + std::to_string(number)));
        EXPECT_EQ(as<NSNumber>(back.objectAtIndex(0)).intValue(), 1000 + number);
    }
}

TEST_F(NSKeyedArchiverTest, AConditionalObjectIsWrittenOnlyIfItIsElsewhere) {
    const NSArray before = NSArray::arrayOf("before"_ns), after = NSArray::arrayOf("after"_ns);
    archiver_.encodeObject_forKey(before, "before"_ns);
    archiver_.encodeConditionalObject_forKey(before, "conditionally before"_ns);
    archiver_.encodeConditionalObject_forKey(after, "conditionally after"_ns);
    archiver_.encodeConditionalObject_forKey(NSArray::arrayOf("never"_ns), "never"_ns);
    archiver_.encodeObject_forKey(after, "after"_ns);
    const NSKeyedUnarchiver coder = finished();
    EXPECT_EQ(coder.decodeObjectForKey("conditionally before"_ns), coder.decodeObjectForKey("before"_ns));
    EXPECT_EQ(coder.decodeObjectForKey("conditionally after"_ns), coder.decodeObjectForKey("after"_ns));
    EXPECT_TRUE(coder.decodeObjectForKey("after"_ns));
    EXPECT_TRUE(coder.containsValueForKey("never"_ns));
    EXPECT_EQ(coder.decodeObjectForKey("never"_ns), nil);
}

TEST_F(NSKeyedArchiverTest, ABareObjectCannotBeArchived) {
    const Retained<NSObject> bare = adopt(send<NSObject>("NSObject"_class.alloc(), "init"_sel));
    EXPECT_FALSE(bare.conformsToProtocol("NSCoding"_protocol));
    EXPECT_THROWS_NAMED(NSKeyedArchiver::archivedDataWithRootObject(bare), "NSInvalidArgumentException");
    // A container conforms whatever is in it, and says so when it is archived.
    EXPECT_TRUE(NSArray::arrayOf(NSObject(bare)).conformsToProtocol("NSCoding"_protocol));
    EXPECT_THROWS_NAMED(NSKeyedArchiver::archivedDataWithRootObject(NSArray::arrayOf(NSObject(bare))),
                        "NSInvalidArgumentException");
}

// ---- Formats, and the end

TEST_F(NSKeyedArchiverTest, IsBinaryUnlessXMLIsAsked) {
    EXPECT_EQ(archiver_.outputFormat(), NSPropertyListBinaryFormat_v1_0);
    const auto beginning = [](NSData data) { return std::string(static_cast<const char*>(data.bytes()), 6); };
    EXPECT_EQ(beginning(NSKeyedArchiver::archivedDataWithRootObject("x"_ns)), "bplist");
    archiver_.setOutputFormat(NSPropertyListXMLFormat_v1_0);
    EXPECT_EQ(archiver_.outputFormat(), NSPropertyListXMLFormat_v1_0);
    archiver_.finishEncoding();
    EXPECT_EQ(beginning(data_), "<?xml ");
}

TEST_F(NSKeyedArchiverTest, RefusesEveryOtherFormat) {
    EXPECT_THROWS_NAMED(archiver_.setOutputFormat(NSPropertyListOpenStepFormat),
                        "NSInvalidArgumentException");
}

TEST_F(NSKeyedArchiverTest, RefusesValuesAfterTheEnd) {
    archiver_.encodeInt_forKey(1, "key"_ns);
    archiver_.finishEncoding();
    EXPECT_THROWS_NAMED(archiver_.encodeInt_forKey(2, "other"_ns), "NSInvalidArchiveOperationException");
    EXPECT_THROWS_NAMED(archiver_.encodeObject_forKey("x"_ns, "other"_ns),
                        "NSInvalidArchiveOperationException");
}

TEST_F(NSKeyedArchiverTest, FinishingTwiceIsFinishingOnce) {
    archiver_.encodeInt_forKey(1, "key"_ns);
    archiver_.finishEncoding();
    const NSUInteger length = data_.length();
    archiver_.finishEncoding();
    EXPECT_EQ(data_.length(), length);
    EXPECT_EQ(finished().decodeIntForKey("key"_ns), 1);
}

TEST_F(NSKeyedArchiverTest, AFileComesBack) {
    const TemporaryFolder folder;
    const NSString name((folder.path() / "archive").string());
    EXPECT_TRUE(NSKeyedArchiver::archiveRootObject_toFile(NSArray::arrayOf("x"_ns), name));
    EXPECT_TRUE(NSKeyedUnarchiver::unarchiveObjectWithFile(name).isEqual(NSArray::arrayOf("x"_ns)));
    EXPECT_EQ(NSKeyedUnarchiver::unarchiveObjectWithFile(NSString((folder.path() / "none").string())), nil);
    EXPECT_FALSE(NSKeyedArchiver::archiveRootObject_toFile("x"_ns, "/nowhere/at/all"_ns));
}

} // namespace
} // namespace tessarin::testing
