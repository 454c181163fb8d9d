// Property lists that lose what they hold to an object in them, when that is asked what it is.
#include "platform/embedded/foundation/BinaryPropertyListWriter.h"
#include "platform/embedded/foundation/PropertyLists.h"
#include "platform/embedded/foundation/XMLPropertyListWriter.h"

#include "PlatformTest.h"

namespace tessarin::testing {
namespace {

// What is emptied, and what became of a string in it while the questions went on.
NSMutableArray emptied;
bool isStringAlive = false;
bool wasStringMissed = false;

// Says that it is data, which is asked for last.
BOOL emptyAndAnswer(NSObject, SEL, Class asked) {
    emptied.removeAllObjects();
    if (!isStringAlive) wasStringMissed = true;
    return asked == NSData::classObject();
}
void noteDeallocation(NSMutableString self, SEL selector) {
    isStringAlive = false;
    sendSuper<void>(self, NSMutableString::classObject(), selector);
}

class EmptiedPropertyListTest : public PlatformTest {
protected:
    EmptiedPropertyListTest() {
        emptied = list_;
        isStringAlive = true;
        wasStringMissed = false;
    }
    ~EmptiedPropertyListTest() override { emptied = nil; }

    // Both with no owner but the list that they are put into.
    static Retained<NSData> newAskedObject() {
        static const ClassDefinition definition{
            {.name = "EmptiedPropertyListTestAsked",
             .superclass = "NSData",
             .methods = {instanceMethod("isKindOfClass:", emptyAndAnswer)}}};
        return adopt(as<NSData>(send<NSObject>(NSObject(definition.classObject().alloc()), "init"_sel)));
    }
    static Retained<NSMutableString> newNotedString() {
        static const ClassDefinition definition{{.name = "EmptiedPropertyListTestNoted",
                                                 .superclass = "NSMutableString",
                                                 .methods = {instanceMethod("dealloc", noteDeallocation)}}};
        return adopt(
            as<NSMutableString>(send<NSObject>(NSObject(definition.classObject().alloc()), "init"_sel)));
    }
    void fillWithArray() const {
        const AutoreleasePool pool;
        list_.addObject(NSArray::arrayOf(newAskedObject(), newNotedString()));
    }
    void fillWithDictionary() const {
        const AutoreleasePool pool;
        list_.addObject(NSDictionary::dictionaryWithObject_forKey(newNotedString(), newAskedObject()));
    }
    void expectThatNothingWasMissed() const {
        EXPECT_EQ(list_.count(), 0u);
        EXPECT_FALSE(wasStringMissed);
        EXPECT_FALSE(isStringAlive);
    }

    const Retained<NSMutableArray> list_ = adopt(NSMutableArray::alloc().init());
};

TEST_F(EmptiedPropertyListTest, IsExaminedToItsEnd) {
    fillWithArray();
    EXPECT_EQ(embedded::propertyListDefect(list_, NSPropertyListXMLFormat_v1_0), "");
    expectThatNothingWasMissed();
}

TEST_F(EmptiedPropertyListTest, IsExaminedWithTheObjectOfTheKeyThatEmptiesIt) {
    fillWithDictionary();
    EXPECT_NE(embedded::propertyListDefect(list_, NSPropertyListXMLFormat_v1_0), "");
    expectThatNothingWasMissed();
}

TEST_F(EmptiedPropertyListTest, IsWrittenInXMLAsItWas) {
    fillWithArray();
    const std::string document = embedded::writeXMLPropertyList(list_, 4);
    EXPECT_NE(document.find("<string></string>"), std::string::npos) << document;
    expectThatNothingWasMissed();
}

TEST_F(EmptiedPropertyListTest, IsWrittenInBinaryAsItWas) {
    fillWithArray();
    const std::string document = embedded::writeBinaryPropertyList(list_);
    EXPECT_EQ(static_cast<unsigned char>(document[document.size() - 17]), 4u); // objects
    expectThatNothingWasMissed();
}

TEST_F(EmptiedPropertyListTest, IsWrittenInBinaryWithTheObjectOfTheKeyThatEmptiesIt) {
    fillWithDictionary();
    EXPECT_EQ(embedded::writeBinaryPropertyList(list_).substr(0, 8), "bplist00");
    expectThatNothingWasMissed();
}

// ---- Objects that change their minds

TEST_F(EmptiedPropertyListTest, AnArrayThatIsNoneWhenAskedAgainIsTheArrayThatItWas) {
    static int questions = 0;
    static const ClassDefinition definition{
        {.name = "EmptiedPropertyListTestFickle",
         .methods = {instanceMethod(
                         "isKindOfClass:",
                         +[](NSObject, SEL, Class asked) -> BOOL {
                             return asked == NSArray::classObject() && ++questions == 1;
                         }),
                     instanceMethod(
                         "count", +[](NSObject, SEL) -> NSUInteger { return 1; }),
                     instanceMethod(
                         "objectAtIndex:", +[](NSObject, SEL, NSUInteger) { return id("a"_ns); })}}};
    list_.addObject(adopt(NSObject(definition.classObject().alloc())));
    questions = 0;
    EXPECT_EQ(embedded::propertyListDefect(list_, NSPropertyListXMLFormat_v1_0), "");
    EXPECT_EQ(questions, 1);
}

} // namespace
} // namespace tessarin::testing
