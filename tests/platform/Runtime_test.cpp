// Messages, selectors, classes and protocols.
#include "PlatformTest.h"

#include <array>
#include <set>

namespace tessarin::testing {
namespace {

class MessageTest : public PlatformTest {};
class SelectorTest : public PlatformTest {};
class ClassTest : public PlatformTest {};

// ---- Messages

TEST_F(MessageTest, AnswerAnObject) { EXPECT_EQ(text(send<NSString>("ab"_ns, "uppercaseString"_sel)), "AB"); }

TEST_F(MessageTest, AnswerAnInteger) {
    EXPECT_EQ(send<NSUInteger>("abc"_ns, "length"_sel), 3u);
    EXPECT_EQ(send<int>("-12"_ns, "intValue"_sel), -12);
    EXPECT_EQ(send<long long>(NSNumber::numberWithLongLong(1LL << 40), "longLongValue"_sel), 1LL << 40);
    EXPECT_EQ(send<unichar>(u"\u20ac"_ns, "characterAtIndex:"_sel, NSUInteger{0}), u'\u20ac');
}

TEST_F(MessageTest, AnswerABoolean) {
    EXPECT_EQ(send<BOOL>("abc"_ns, "hasPrefix:"_sel, "ab"_ns), YES);
    EXPECT_EQ(send<BOOL>("abc"_ns, "hasPrefix:"_sel, "b"_ns), NO);
}

TEST_F(MessageTest, AnswerFloatingPoint) {
    EXPECT_EQ(send<double>("1.25"_ns, "doubleValue"_sel), 1.25);
    EXPECT_EQ(send<float>(NSNumber::numberWithFloat(-0.5f), "floatValue"_sel), -0.5f);
}

TEST_F(MessageTest, AnswerAStructure) {
    EXPECT_EQ(send<NSRange>("abcd"_ns, "rangeOfString:"_sel, "cd"_ns), (NSRange{2, 2}));
}

TEST_F(MessageTest, AnswerNothing) {
    const NSMutableArray array = NSMutableArray::array();
    send<void>(array, "addObject:"_sel, "a"_ns);
    EXPECT_EQ(texts(array), (Texts{"a"}));
}

TEST_F(MessageTest, CarryOwningHandlesAsPlainOnes) {
    const Retained<NSString> prefix = retain("ab"_ns);
    EXPECT_EQ(send<BOOL>("abc"_ns, "hasPrefix:"_sel, prefix), YES);
}

TEST_F(MessageTest, CarryAListOfVariableLength) {
    EXPECT_EQ(text(NSString::stringWithFormat("%@ %d %s %@"_ns, "a"_ns, 7, "c", NSNumber::numberWithInt(3))),
              "a 7 c 3");
    EXPECT_EQ(text(NSString::stringWithFormat("%@"_ns, nil)), "(null)");
}

TEST_F(MessageTest, RaiseWhenTheReceiverHasNoSuchMethod) {
    EXPECT_THROWS_NAMED(send<id>("a"_ns, "noMethodHasThisName:"_sel, "b"_ns), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(send<double>(NSArray::array(), "noMethodHasThisName"_sel),
                        "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(send<void>("NSString"_class, "noMethodHasThisName"_sel),
                        "NSInvalidArgumentException");
}

TEST_F(MessageTest, PerformingNoneRaises) {
    const SEL null = nullptr;
    EXPECT_THROWS_NAMED(send<id>("a"_ns, "performSelector:"_sel, null), "NSInvalidArgumentException");
    EXPECT_THROWS_NAMED(send<id>("a"_ns, "performSelector:withObject:"_sel, null, "b"_ns),
                        "NSInvalidArgumentException");
}

// ---- Selectors

TEST_F(SelectorTest, EqualNamesGiveTheSameSelector) {
    EXPECT_EQ("count"_sel, runtime::registerSelector(std::string("count").c_str()));
    EXPECT_NE("count"_sel, "count:"_sel);
}

TEST_F(SelectorTest, KeepTheirNames) {
    EXPECT_STREQ(runtime::selectorName("insertObject:atIndex:"_sel), "insertObject:atIndex:");
    EXPECT_STREQ(runtime::selectorName(runtime::registerSelector("aNameNobodyElseUses:")),
                 "aNameNobodyElseUses:");
}

TEST_F(SelectorTest, MayHaveTheEmptyName) {
    const SEL empty = runtime::registerSelector("");
    EXPECT_NE(empty, nullptr);
    EXPECT_EQ(empty, ""_sel);
    EXPECT_STREQ(runtime::selectorName(empty), "");
}

TEST_F(SelectorTest, AreAsManyAsThereAreNames) {
    std::set<SEL> selectors;
    for (int index = 0; index < 2000; ++index)
        selectors.insert(runtime::registerSelector(("numbered" + std::to_string(index) + ":").c_str()));
    EXPECT_EQ(selectors.size(), 2000u);
    EXPECT_STREQ(runtime::selectorName(runtime::registerSelector("numbered1234:")), "numbered1234:");
}

// ---- Classes and protocols

TEST_F(ClassTest, IsFoundByName) {
    const Class found(NSObject(runtime::lookUpClass("NSString")));
    EXPECT_EQ(found, "NSString"_class);
    EXPECT_EQ(found, NSString::classObject());
    EXPECT_STREQ(runtime::className(found.object()), "NSString");
}

TEST_F(ClassTest, IsNilForAnUnknownName) {
    EXPECT_FALSE("NoClassOfThisName"_class);
    EXPECT_EQ(runtime::lookUpClass(""), nullptr);
}

TEST_F(ClassTest, HasASuperclass) {
    EXPECT_EQ("NSMutableString"_class.superclass(), "NSString"_class);
    EXPECT_EQ(runtime::superclassOf("NSMutableArray"_class.object()), "NSArray"_class.object());
    EXPECT_FALSE("NSObject"_class.superclass());
    EXPECT_EQ(runtime::superclassOf("NSObject"_class.object()), nullptr);
}

TEST_F(ClassTest, IsOfItsMetaclass) {
    Object* const metaclass = runtime::classOf("NSString"_class.object());
    ASSERT_NE(metaclass, nullptr);
    EXPECT_NE(metaclass, "NSString"_class.object());
    EXPECT_EQ(runtime::superclassOf(metaclass), runtime::classOf("NSObject"_class.object()));
    EXPECT_EQ(runtime::classOf(nullptr), nullptr);
}

TEST_F(ClassTest, KnowsItsInstances) {
    const NSObject string = NSMutableString::string();
    EXPECT_TRUE(string.isKindOfClass("NSString"_class));
    EXPECT_TRUE(string.isKindOfClass("NSMutableString"_class));
    EXPECT_FALSE(string.isKindOfClass("NSArray"_class));
    EXPECT_TRUE(kindOf<NSString>(string));
    EXPECT_FALSE(kindOf<NSNumber>(string));
    EXPECT_TRUE("NSMutableArray"_class.isSubclassOfClass("NSArray"_class));
}

TEST_F(ClassTest, KnowsWhatInstancesRespondTo) {
    EXPECT_TRUE(runtime::instancesRespond("NSString"_class.object(), "length"_sel));
    EXPECT_TRUE(runtime::instancesRespond("NSMutableString"_class.object(), "length"_sel));
    EXPECT_FALSE(runtime::instancesRespond("NSString"_class.object(), "noMethodHasThisName"_sel));
    EXPECT_TRUE("NSString"_class.instancesRespondToSelector("isEqual:"_sel));
    EXPECT_TRUE("a"_ns.respondsToSelector("length"));
    EXPECT_FALSE("a"_ns.respondsToSelector("noMethodHasThisName"));
    EXPECT_TRUE("NSString"_class.respondsToSelector("stringWithString:"));
    EXPECT_FALSE("NSString"_class.respondsToSelector("noMethodHasThisName"));
}

TEST_F(ClassTest, ConformsToProtocols) {
    ASSERT_TRUE("NSCopying"_protocol);
    EXPECT_TRUE("a"_ns.conformsToProtocol("NSCopying"_protocol));
    EXPECT_FALSE(NSFileManager::defaultManager().conformsToProtocol("NSCopying"_protocol));
    EXPECT_FALSE("NoProtocolOfThisName"_protocol);
}

} // namespace
} // namespace tessarin::testing
