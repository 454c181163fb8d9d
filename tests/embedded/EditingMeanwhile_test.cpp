// What platform objects are asked about may be an application's own, and while it is asked it may edit them.
#include "EditingObjects.h"

namespace tessarin::testing {
namespace {

// The letter a.
BOOL isMemberOfSet(NSCharacterSet, SEL, unichar unit) {
    makeEdit();
    return unit == 'a';
}
Retained<NSCharacterSet> editingSet() {
    static const ClassDefinition definition{
        {.name = "EditingMeanwhileCharacterSet",
         .superclass = "NSCharacterSet",
         .methods = {instanceMethod("characterIsMember:", isMemberOfSet)}}};
    return newObject<NSCharacterSet>(definition);
}

class EditingMeanwhileTest : public EditingTest {
protected:
    // A string that becomes another at the next question.
    static NSMutableString stringThatBecomes(NSString later, std::string_view first) {
        const NSMutableString string = NSMutableString::stringWithString(NSString(std::string(first)));
        edit = [=] { string.setString(later); };
        return string;
    }
    static NSMutableString longStringThatBecomes(NSString later) {
        return stringThatBecomes(later, std::string(3000, 'a'));
    }
};

// ---- Strings

TEST_F(EditingMeanwhileTest, ARangeIsCheckedWhenTheReplacementIsKnown) {
    const NSMutableString string = longStringThatBecomes("x"_ns);
    EXPECT_THROWS_NAMED(string.replaceCharactersInRange_withString({1500, 10}, editingString()),
                        "NSRangeException");
    EXPECT_EQ(text(string), "x");
}

TEST_F(EditingMeanwhileTest, AComparedStringIsLookedAtAfterTheOther) {
    EXPECT_TRUE(longStringThatBecomes("qqq"_ns).isEqual(editingString()));
    EXPECT_EQ(longStringThatBecomes("qqq"_ns).compare(editingString()), NSOrderedSame);
    EXPECT_TRUE(editingString().isEqual(longStringThatBecomes("qqq"_ns)));
}

TEST_F(EditingMeanwhileTest, ASearchedStringIsLookedAtAfterTheOther) {
    EXPECT_EQ(longStringThatBecomes("-qqq"_ns).rangeOfString(editingString()), (NSRange{1, 3}));
    EXPECT_TRUE(longStringThatBecomes("qqq-"_ns).hasPrefix(editingString()));
    EXPECT_TRUE(editingString().hasPrefix(longStringThatBecomes("qq"_ns)));
    EXPECT_TRUE(editingString().hasSuffix(longStringThatBecomes("qq"_ns)));
    EXPECT_EQ(texts(longStringThatBecomes("1qqq2"_ns).componentsSeparatedByString(editingString())),
              (Texts{"1", "2"}));
}

TEST_F(EditingMeanwhileTest, AStringIsAppendedToWhatIsThereAfterwards) {
    EXPECT_EQ(text(longStringThatBecomes("x"_ns).stringByAppendingString(editingString())), "xqqq");
}

TEST_F(EditingMeanwhileTest, ASetIsAskedAboutTheStringAsItWas) {
    EXPECT_EQ(stringThatBecomes("aaaa"_ns, "bbba").rangeOfCharacterFromSet(editingSet()), (NSRange{3, 1}));
    EXPECT_EQ(
        texts(stringThatBecomes("aaaaa"_ns, "bbabb").componentsSeparatedByCharactersInSet(editingSet())),
        (Texts{"bb", "bb"}));
    EXPECT_EQ(text(stringThatBecomes("aaaa"_ns, "abba").stringByTrimmingCharactersInSet(editingSet())), "bb");
    EXPECT_EQ(text(stringThatBecomes("x"_ns, "abba").stringByTrimmingCharactersInSet(editingSet())), "bb");
}

TEST_F(EditingMeanwhileTest, AScannerSkipsBeforeItLooksAtWhatIsWanted) {
    for (const bool goesUpToIt : {false, true}) {
        const NSScanner scanner = NSScanner::scannerWithString("qbc"_ns);
        scanner.setCharactersToBeSkipped(editingSet());
        const NSMutableString wanted =
            goesUpToIt ? stringThatBecomes("c"_ns, "abc") : stringThatBecomes("q"_ns, "qbc");
        NSString found;
        EXPECT_TRUE(goesUpToIt ? scanner.scanUpToString_intoString(wanted, &found)
                               : scanner.scanString_intoString(wanted, &found));
        EXPECT_EQ(text(found), goesUpToIt ? "qb" : "q");
    }
}

TEST_F(EditingMeanwhileTest, ASetThatItsScannerLetsGoOfIsAskedToTheEnd) {
    const NSScanner scanner = NSScanner::scannerWithString("aab"_ns);
    scanner.setCharactersToBeSkipped(editingSet());
    edit = [=] { scanner.setCharactersToBeSkipped(nil); };
    EXPECT_TRUE(scanner.scanString_intoString("b"_ns, nullptr));
    EXPECT_FALSE(scanner.charactersToBeSkipped());
}

// ---- Data

const void* bytesOfData(NSData, SEL) {
    makeEdit();
    static const std::string bytes(4096, 'a');
    return bytes.data();
}
NSUInteger lengthOfData(NSData, SEL) { return 4096; }

TEST_F(EditingMeanwhileTest, ComparedDataIsLookedAtAfterTheOther) {
    static const ClassDefinition definition{
        {.name = "EditingMeanwhileData",
         .superclass = "NSData",
         .methods = {instanceMethod("bytes", bytesOfData), instanceMethod("length", lengthOfData)}}};
    const Retained<NSData> other = newObject<NSData>(definition);
    const auto dataThatBecomesEqual = [] {
        const NSMutableData data = NSMutableData::dataWithBytes_length("a", 1);
        edit = [=] { data.appendBytes_length(std::string(4095, 'a').data(), 4095); };
        return data;
    };
    EXPECT_TRUE(dataThatBecomesEqual().isEqualToData(other));
    EXPECT_TRUE(other.isEqualToData(dataThatBecomesEqual()));
}

} // namespace
} // namespace tessarin::testing
