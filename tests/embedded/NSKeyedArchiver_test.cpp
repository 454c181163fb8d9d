// What the embedded platform promises of archivers beyond the platform's own contract.
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

// An object that is archived with what it holds, and refuses while it is not ready.
bool isReady = false;
NSObject& contentOf(NSObject holder) { return instanceVariableOf<NSObject>(holder, "content"); }
void encodeHolder(NSObject self, SEL, NSCoder coder) {
    coder.encodeObject_forKey(contentOf(self), "content"_ns);
    if (!isReady) raise(NSGenericException(), "not ready"_ns);
    coder.encodeBool_forKey(true, "complete"_ns);
}
NSObject initHolder(NSObject self, SEL, NSCoder coder) {
    const NSObject content = coder.decodeObjectForKey("content"_ns);
    if (coder.decodeBoolForKey("complete"_ns)) contentOf(self) = retain(content).leak();
    return self;
}
void deallocHolder(NSObject self, SEL selector);
const ClassDefinition definition{
    {.name = "EmbeddedArchiverTestHolder",
     .protocols = {"NSCoding"},
     .instanceVariables = {instanceVariable<NSObject>("content")},
     .methods = {instanceMethod("encodeWithCoder:", encodeHolder),
                 instanceMethod("initWithCoder:", initHolder), instanceMethod("dealloc", deallocHolder)}}};
void deallocHolder(NSObject self, SEL selector) {
    adopt(contentOf(self)).reset();
    sendSuper<void>(self, definition.classObject(), selector);
}
Retained<NSObject> newHolder(NSObject content) {
    const Retained<NSObject> holder = adopt(send<NSObject>(definition.classObject().alloc(), "init"_sel));
    contentOf(holder) = retain(content).leak();
    return holder;
}

class EmbeddedArchiverTest : public PlatformTest {
protected:
    NSKeyedUnarchiver finished() const {
        archiver_.finishEncoding();
        return adopt(NSKeyedUnarchiver::alloc().initForReadingWithData(data_)).autorelease();
    }
    void expectToBeRefused(NSObject object) const {
        isReady = false;
        EXPECT_THROWS_NAMED((archiver_.encodeObject_forKey(object, "refused"_ns), 0), "NSGenericException");
        isReady = true;
    }

    const Retained<NSMutableData> data_ = retain(NSMutableData::data());
    const Retained<NSKeyedArchiver> archiver_ =
        adopt(NSKeyedArchiver::alloc().initForWritingWithMutableData(data_));
};

TEST_F(EmbeddedArchiverTest, WhatRaisedIsEncodedAnew) {
    const Retained<NSObject> holder = newHolder(NSArray::arrayOf("kept"_ns));
    expectToBeRefused(NSArray::arrayOf("outer"_ns, NSObject(holder)));
    archiver_.encodeObject_forKey(holder, "holder"_ns);
    const NSObject back = finished().decodeObjectForKey("holder"_ns);
    ASSERT_TRUE(back);
    EXPECT_EQ(texts(NSArray(contentOf(back))), (Texts{"kept"}));
}

TEST_F(EmbeddedArchiverTest, WhatRaisedAndIsNotEncodedAnewIsNil) {
    const Retained<NSObject> inner = newHolder("inner"_ns);
    const Retained<NSObject> outer = newHolder(inner);
    archiver_.encodeConditionalObject_forKey(outer, "outer"_ns);
    archiver_.encodeConditionalObject_forKey(inner, "inner"_ns);
    expectToBeRefused(outer);
    const NSKeyedUnarchiver coder = finished();
    EXPECT_TRUE(coder.containsValueForKey("outer"_ns));
    EXPECT_EQ(coder.decodeObjectForKey("outer"_ns), nil);
    EXPECT_EQ(coder.decodeObjectForKey("inner"_ns), nil);
    EXPECT_FALSE(coder.containsValueForKey("refused"_ns));
}

TEST_F(EmbeddedArchiverTest, ATextIsArchivedAsItWasWhenItWasEncoded) {
    const Retained<NSMutableAttributedString> string =
        adopt(NSMutableAttributedString::alloc().initWithString("before"_ns));
    archiver_.encodeObject_forKey(string.string(), "text"_ns);
    string.replaceCharactersInRange_withString({0, 6}, "after"_ns);
    EXPECT_EQ(text(NSString(finished().decodeObjectForKey("text"_ns))), "before");
}

} // namespace
} // namespace tessarin::testing
