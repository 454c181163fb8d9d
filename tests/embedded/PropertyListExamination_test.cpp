// How the embedded platform examines property lists: in which words, at what cost, and what of an
// application's own containers.
#include "platform/embedded/foundation/PropertyLists.h"

#include "NestedArrays.h"
#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

class PropertyListExaminationTest : public PlatformTest {
protected:
    static std::string defectOf(NSObject object, NSPropertyListFormat format = NSPropertyListXMLFormat_v1_0) {
        return embedded::propertyListDefect(object, format);
    }
};

TEST_F(PropertyListExaminationTest, TheDefectIsInThePlatformsWords) {
    EXPECT_EQ(defectOf("a"_ns), "");
    EXPECT_EQ(defectOf(nil), "property lists cannot contain NULL");
    EXPECT_EQ(defectOf(NSCharacterSet::whitespaceCharacterSet()),
              "property lists cannot contain objects of type 'CFCharacterSet'");
    EXPECT_EQ(defectOf(NSNumber::numberWithBool(true), NSPropertyListOpenStepFormat),
              "property lists cannot contain objects of type 'CFBoolean'");
    for (const auto& [key, type] : {std::pair<NSObject, std::string>{NSNumber::numberWithInt(1), "CFNumber"},
                                    {NSNumber::numberWithBool(true), "CFBoolean"},
                                    {NSDate::date(), "CFDate"},
                                    {NSData::data(), "CFData"},
                                    {NSArray::array(), "CFArray"},
                                    {NSDictionary::dictionary(), "CFDictionary"},
                                    {NSNull::null(), "CFNull"}})
        EXPECT_EQ(defectOf(NSDictionary::dictionaryWithObject_forKey("a"_ns, key)),
                  "property list dictionaries may only have keys which are CFStrings, not '" + type + "'");
}

// ---- Containers of an application's own, which hold nothing but make up what they answer

NSUInteger answerTwo(NSArray, SEL) { return 2; }
id answerItself(NSArray self, SEL, NSUInteger) { return self; }
id answerAnotherPair(NSArray, SEL, NSUInteger index) {
    return index == 0 ? id(NSArray::arrayOf("a"_ns)) : id(NSDictionary::dictionary());
}
id answerNil(NSArray, SEL, NSUInteger) { return nil; }

Retained<NSArray> newArrayAnswering(const ClassDefinition& definition) {
    return adopt(as<NSArray>(send<NSObject>(definition.classObject().alloc(), "init"_sel)));
}

TEST_F(PropertyListExaminationTest, AnArrayThatAnswersItselfIsRecursive) {
    static const ClassDefinition definition{
        {.name = "ExaminationTestItself",
         .superclass = "NSArray",
         .methods = {instanceMethod("count", answerTwo), instanceMethod("objectAtIndex:", answerItself)}}};
    const Retained<NSArray> array = newArrayAnswering(definition);
    const std::string recursion = "property lists cannot contain recursive container references";
    EXPECT_EQ(defectOf(array), recursion);
    EXPECT_EQ(defectOf(NSArray::arrayOf("a"_ns, array)), recursion);
}

TEST_F(PropertyListExaminationTest, WhatAnArrayMakesUpIsExamined) {
    static const ClassDefinition definition{
        {.name = "ExaminationTestMadeUp",
         .superclass = "NSArray",
         .methods = {instanceMethod("count", answerTwo),
                     instanceMethod("objectAtIndex:", answerAnotherPair)}}};
    EXPECT_EQ(defectOf(newArrayAnswering(definition)), "");
}

TEST_F(PropertyListExaminationTest, AnArrayThatAnswersNilIsNoPropertyList) {
    static const ClassDefinition definition{
        {.name = "ExaminationTestNil",
         .superclass = "NSArray",
         .methods = {instanceMethod("count", answerTwo), instanceMethod("objectAtIndex:", answerNil)}}};
    EXPECT_EQ(defectOf(newArrayAnswering(definition)), "property lists cannot contain NULL");
}

// ---- A container that is changed while it is examined

NSMutableArray emptiedMeanwhile;

NSUInteger emptyTheOther(NSArray, SEL) {
    emptiedMeanwhile.removeAllObjects();
    return 0;
}

TEST_F(PropertyListExaminationTest, WhatIsReleasedMeanwhileDoesNoHarm) {
    static const ClassDefinition definition{{.name = "ExaminationTestEmptying",
                                             .superclass = "NSArray",
                                             .methods = {instanceMethod("count", emptyTheOther)}}};
    const Retained<NSMutableArray> outer = adopt(NSMutableArray::alloc().init());
    emptiedMeanwhile = outer;
    {
        const AutoreleasePool pool;
        const Retained<NSArray> emptying = newArrayAnswering(definition);
        outer.addObject(NSArray::arrayOf(NSArray::arrayOf(emptying, "a"_ns), "b"_ns));
    }
    EXPECT_EQ(defectOf(outer), "");
    EXPECT_EQ(outer.count(), 0u);
    emptiedMeanwhile = nil;
}

// ---- What is shared, and by whom

TEST_F(PropertyListExaminationTest, AContainerWithASingleOwnerMayStillBeInsideItself) {
    const Retained<NSMutableArray> outer = adopt(NSMutableArray::alloc().init());
    const Retained<NSMutableArray> inner = adopt(NSMutableArray::alloc().init());
    outer.addObject(inner);
    inner.addObject(outer);
    const NSMutableArray circular = outer;
    runtime::release(circular.object()); // its only owner is the one inside it
    EXPECT_EQ(circular.retainCount(), 1u);
    EXPECT_EQ(defectOf(circular), "property lists cannot contain recursive container references");
    runtime::retain(circular.object());
    inner.removeAllObjects();
}

} // namespace
} // namespace tessarin::testing
