// The form of index sets in an archive, with a coder that keeps what it is given.
#include "PlatformTest.h"

#include <map>

namespace tessarin::testing {
namespace {

struct Record {
    bool allowsKeys = true;
    std::map<std::string, std::int64_t> integers;
    std::map<std::string, Retained<NSObject>> objects;
};

Record& recordOf(NSObject coder) { return *instanceVariableOf<Record*>(coder, "record"); }

BOOL allowsKeyedCoding(NSObject self, SEL) { return recordOf(self).allowsKeys; }
void encodeInteger(NSObject self, SEL, std::int64_t value, NSString key) {
    recordOf(self).integers[text(key)] = value;
}
std::int64_t decodeInteger(NSObject self, SEL, NSString key) { return recordOf(self).integers[text(key)]; }
void encodeObject(NSObject self, SEL, NSObject value, NSString key) {
    recordOf(self).objects[text(key)] = retain(value);
}
id decodeObject(NSObject self, SEL, NSString key) {
    return static_cast<NSObject>(recordOf(self).objects[text(key)]);
}

class NSIndexSetCodingTest : public PlatformTest {
protected:
    NSIndexSetCodingTest() {
        static const ClassDefinition definition{
            {.name = "RecordingIndexSetCoder",
             .instanceVariables = {instanceVariable<Record*>("record")},
             .methods = {instanceMethod("allowsKeyedCoding", allowsKeyedCoding),
                         instanceMethod("encodeInt64:forKey:", encodeInteger),
                         instanceMethod("decodeInt64ForKey:", decodeInteger),
                         instanceMethod("encodeObject:forKey:", encodeObject),
                         instanceMethod("decodeObjectForKey:", decodeObject)}}};
        coder_ = adopt(NSObject(definition.classObject().alloc()));
        instanceVariableOf<Record*>(coder_, "record") = &record_;
    }

    void write(NSIndexSet set) { send<void>(set, "encodeWithCoder:"_sel, coder_); }
    Retained<NSIndexSet> read(Class setClass = NSIndexSet::classObject()) {
        return adopt(NSIndexSet(send<id>(setClass.alloc(), "initWithCoder:"_sel, coder_)));
    }
    void writeRuns(std::int64_t count, const std::vector<std::uint8_t>& bytes) {
        record_.integers["NSRangeCount"] = count;
        record_.objects["NSRangeData"] =
            retain(NSObject(NSData::dataWithBytes_length(bytes.data(), bytes.size())));
    }

    Record record_;
    Retained<NSObject> coder_;
};

NSMutableIndexSet setOf(std::initializer_list<NSUInteger> indexes) {
    const NSMutableIndexSet set = NSMutableIndexSet::indexSet();
    for (const NSUInteger index : indexes) set.addIndex(index);
    return set;
}

TEST_F(NSIndexSetCodingTest, AnEmptySetIsItsCount) {
    write(setOf({}));
    EXPECT_EQ(record_.integers, (std::map<std::string, std::int64_t>{{"NSRangeCount", 0}}));
    EXPECT_TRUE(record_.objects.empty());
    EXPECT_EQ(read().count(), 0u);
}

TEST_F(NSIndexSetCodingTest, OneRunIsTwoNumbers) {
    write(setOf({5, 6, 7}));
    EXPECT_EQ(record_.integers,
              (std::map<std::string, std::int64_t>{{"NSRangeCount", 1}, {"NSLocation", 5}, {"NSLength", 3}}));
    EXPECT_TRUE(record_.objects.empty());
    EXPECT_TRUE(read().isEqual(setOf({5, 6, 7})));
}

TEST_F(NSIndexSetCodingTest, SeveralRunsAreBytes) {
    write(setOf({1, 2, 300}));
    EXPECT_EQ(record_.integers["NSRangeCount"], 2);
    EXPECT_EQ(text(record_.objects["NSRangeData"].description()), "<0102ac02 01>");
    EXPECT_TRUE(read().isEqual(setOf({1, 2, 300})));
}

TEST_F(NSIndexSetCodingTest, TheHighestIndexComesBack) {
    const NSIndexSet set = setOf({0, static_cast<NSUInteger>(NSNotFound) - 1});
    write(set);
    EXPECT_TRUE(read().isEqual(set));
}

TEST_F(NSIndexSetCodingTest, ASetIsOfTheClassThatReadsIt) {
    write(setOf({4}));
    EXPECT_FALSE(read().isKindOfClass(NSMutableIndexSet::classObject()));
    const Retained<NSMutableIndexSet> set =
        adopt(NSMutableIndexSet(read(NSMutableIndexSet::classObject()).leak()));
    set.addIndex(5);
    EXPECT_EQ(set.count(), 2u);
}

TEST_F(NSIndexSetCodingTest, BytesThatEndTooSoonRaise) {
    for (const std::vector<std::uint8_t>& bytes :
         {std::vector<std::uint8_t>{}, {1}, {1, 1}, {1, 1, 5}, {1, 1, 5, 0x80}}) {
        writeRuns(2, bytes);
        EXPECT_THROWS_NAMED(read(), "NSInvalidUnarchiveOperationException") << bytes.size();
    }
}

TEST_F(NSIndexSetCodingTest, BytesLeftOverRaise) {
    writeRuns(2, {1, 1, 5, 1, 9});
    EXPECT_THROWS_NAMED(read(), "NSInvalidUnarchiveOperationException");
}

TEST_F(NSIndexSetCodingTest, MissingBytesRaise) {
    record_.integers["NSRangeCount"] = std::numeric_limits<std::int64_t>::max();
    EXPECT_THROWS_NAMED(read(), "NSInvalidUnarchiveOperationException");
    record_.objects["NSRangeData"] = retain(NSObject("text"_ns));
    EXPECT_THROWS_NAMED(read(), "NSInvalidUnarchiveOperationException");
}

TEST_F(NSIndexSetCodingTest, RunsThatAreNoneRaise) {
    writeRuns(2, {1, 0, 5, 1}); // empty
    EXPECT_THROWS_NAMED(read(), "NSInvalidUnarchiveOperationException");
    writeRuns(2, {1, 4, 3, 1}); // one over the other
    EXPECT_THROWS_NAMED(read(), "NSInvalidUnarchiveOperationException");
    writeRuns(2, {5, 1, 1, 1}); // backwards
    EXPECT_THROWS_NAMED(read(), "NSInvalidUnarchiveOperationException");
}

TEST_F(NSIndexSetCodingTest, IndexesThatAreTooHighRaise) {
    record_.integers = {{"NSRangeCount", 1}, {"NSLocation", NSNotFound}, {"NSLength", 1}};
    EXPECT_THROWS_NAMED(read(), "NSInvalidUnarchiveOperationException");
    record_.integers = {{"NSRangeCount", 1}, {"NSLocation", -1}, {"NSLength", 1}};
    EXPECT_THROWS_NAMED(read(), "NSInvalidUnarchiveOperationException");
    record_.integers = {{"NSRangeCount", 1}, {"NSLocation", 1}, {"NSLength", NSNotFound}};
    EXPECT_THROWS_NAMED(read(), "NSInvalidUnarchiveOperationException");
    record_.integers = {{"NSRangeCount", -1}};
    EXPECT_THROWS_NAMED(read(), "NSInvalidUnarchiveOperationException");
    constexpr std::uint8_t full = 0xFF; // seven bits, and more to come
    writeRuns(2, {full, full, full, full, full, full, full, full, full, full, 0, 1, 1, 1});
    EXPECT_THROWS_NAMED(read(), "NSInvalidUnarchiveOperationException");
}

TEST_F(NSIndexSetCodingTest, ACoderWithoutKeysRaises) {
    record_.allowsKeys = false;
    EXPECT_THROWS_NAMED(write(setOf({1})), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(read(), "NSInvalidArgumentException");
}

} // namespace
} // namespace tessarin::testing
