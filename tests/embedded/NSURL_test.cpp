// What the embedded platform's URLs do beyond what every platform has in common.
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

class NSURLTest : public PlatformTest {};

TEST_F(NSURLTest, ANilTextRaises) {
    EXPECT_THROWS_NAMED(NSURL::URLWithString(nil), "NSInvalidArgumentException");
}

TEST_F(NSURLTest, TheReasonNamesTheMethod) {
    const std::string reason = attempt([] { return text(NSURL::fileURLWithPath(nil).path()); },
                                       [](NSException exception) { return text(exception.reason()); });
    EXPECT_EQ(reason, "*** -[NSURL initFileURLWithPath:]: nil string parameter");
}

TEST_F(NSURLTest, TheClassMethodsMakeWhatTheReceivingClassMakes) {
    static const ClassDefinition definition({.name = "NSURLTestSubclass", .superclass = "NSURL"});
    const Class subclass = definition.classObject();
    for (const SEL selector : {"fileURLWithPath:"_sel, "URLWithString:"_sel})
        EXPECT_EQ(send<NSURL>(subclass, selector, "/a"_ns).class_(), subclass);
}

TEST_F(NSURLTest, TextThatTheSyntaxRefusesGivesNil) {
    for (const char* notURL : {"http://x/#a#b", ":a", "1a:b", "a[b]", "http://x/?[", "a%g0", "a%4"})
        EXPECT_EQ(NSURL::URLWithString(NSString(notURL)), nil) << notURL;
}

TEST_F(NSURLTest, APathWithoutAnEncodingGivesNil) {
    const unichar unpaired[] = {u'/', 0xD800};
    EXPECT_EQ(NSURL::fileURLWithPath(NSString::stringWithCharacters_length(unpaired, 2)), nil);
}

TEST_F(NSURLTest, WhatIsMadeIsNotOwned) {
    EXPECT_EQ(ownedReferencesOfNew([] { return NSURL::fileURLWithPath("a"_ns); }), 0);
    EXPECT_EQ(ownedReferencesOfNew([] { return NSURL::URLWithString("a"_ns); }), 0);
    EXPECT_EQ(ownedReferencesOfNew([] { return NSURL::alloc().initFileURLWithPath("a"_ns); }), 1);
}

} // namespace
} // namespace tessarin::testing
