#include "StringSubclass.h"

#include "TessarinFoundation/NSString+TessarinExtensions.h"

namespace tessarin::testing {
namespace {

// A set of an application's own, which notes the units that it is asked for.
class RecordingSet {
public:
    explicit RecordingSet(std::u16string members) : members_(std::move(members)) {
        set_ = adopt(send<NSCharacterSet>(classObject().alloc(), "init"_sel));
        instanceVariableOf<RecordingSet*>(set_, "record") = this;
    }
    RecordingSet(const RecordingSet&) = delete;
    RecordingSet& operator=(const RecordingSet&) = delete;

    operator NSCharacterSet() const { return set_; }
    const std::u16string& asked() const { return asked_; }

private:
    static Class classObject() {
        static const ClassDefinition definition{
            {.name = "TessarinRecordingSet",
             .superclass = "NSCharacterSet",
             .instanceVariables = {instanceVariable<RecordingSet*>("record")},
             .methods = {instanceMethod(
                             "init", +[](NSCharacterSet self, SEL) { return self; }),
                         instanceMethod("characterIsMember:", characterIsMember)}}};
        return definition.classObject();
    }
    static BOOL characterIsMember(NSCharacterSet self, SEL, unichar unit) {
        RecordingSet& record = *instanceVariableOf<RecordingSet*>(self, "record");
        record.asked_ += unit;
        return record.members_.find(unit) != std::u16string::npos ? YES : NO;
    }

    std::u16string members_, asked_;
    Retained<NSCharacterSet> set_;
};

class TrimmingTest : public PlatformTest {
protected:
    const NSCharacterSet slash = NSCharacterSet::characterSetWithCharactersInString("/"_ns);

    static std::string trimmed(NSString string, NSCharacterSet set) {
        return text(tessarin_stringByTrimmingLeadingCharactersInSet(string, set));
    }
};

TEST_F(TrimmingTest, RemovesLeadingMembersOnly) { EXPECT_EQ(trimmed("///a/b/"_ns, slash), "a/b/"); }

TEST_F(TrimmingTest, NothingIsLeftOfAStringOfMembers) { EXPECT_EQ(trimmed("///"_ns, slash), ""); }

TEST_F(TrimmingTest, TheEmptyStringStaysEmpty) { EXPECT_EQ(trimmed(""_ns, slash), ""); }

TEST_F(TrimmingTest, TheWholeStringWhenItBeginsWithNoMember) { EXPECT_EQ(trimmed("a//b"_ns, slash), "a//b"); }

TEST_F(TrimmingTest, ANilSetHoldsNoCharacter) {
    EXPECT_EQ(trimmed("///a"_ns, nil), "///a");
    EXPECT_EQ(trimmed(""_ns, nil), "");
}

TEST_F(TrimmingTest, ANilReceiverAnswersNil) { EXPECT_EQ(trimmed(nil, slash), "(nil)"); }

TEST_F(TrimmingTest, ASetOfSeveralCharacters) {
    EXPECT_EQ(trimmed(" \t \na b"_ns, NSCharacterSet::whitespaceCharacterSet()), "\na b");
    EXPECT_EQ(trimmed(" \t \na b"_ns, NSCharacterSet::whitespaceAndNewlineCharacterSet()), "a b");
}

TEST_F(TrimmingTest, AsksForUnitsInOrderUpToTheFirstThatIsNoMember) {
    const RecordingSet set(u"xy");
    EXPECT_EQ(trimmed("xyxabx"_ns, set), "abx");
    EXPECT_EQ(set.asked(), u"xyxa");
}

TEST_F(TrimmingTest, AsksForNoUnitBeyondTheEnd) {
    const RecordingSet set(u"x");
    EXPECT_EQ(trimmed("xx"_ns, set), "");
    EXPECT_EQ(set.asked(), u"xx");
}

TEST_F(TrimmingTest, AsksForTheSurrogatesOfACharacterOneByOne) {
    const RecordingSet both(u"\xD83D\xDE00");
    EXPECT_EQ(trimmed(u"\U0001F600a"_ns, both), "a");
    EXPECT_EQ(both.asked(), u"\xD83D\xDE00"
                            u"a");

    const RecordingSet highOnly(u"\xD83D");
    const NSString rest = tessarin_stringByTrimmingLeadingCharactersInSet(u"\U0001F600a"_ns, highOnly);
    EXPECT_EQ(static_cast<std::u16string>(rest), u"\xDE00"
                                                 u"a");
}

TEST_F(TrimmingTest, ASetOfACharacterOutsideTheBasicPlaneHoldsNeitherSurrogate) {
    const NSCharacterSet face = NSCharacterSet::characterSetWithCharactersInString(u"\U0001F600"_ns);
    EXPECT_EQ(trimmed(u"\U0001F600a"_ns, face), "😀a");
}

TEST_F(TrimmingTest, AnInvertedSetHoldsSurrogates) {
    const NSCharacterSet others = NSCharacterSet::alphanumericCharacterSet().invertedSet();
    EXPECT_EQ(trimmed(u"\U0001F600-a"_ns, others), "a");
}

TEST_F(TrimmingTest, CombiningMarksAreUnitsOfTheirOwn) {
    EXPECT_EQ(trimmed(u"/\u0301a"_ns, slash), "\u0301a");
}

TEST_F(TrimmingTest, WorksOnStringsOfAnApplicationsOwn) {
    EXPECT_EQ(trimmed(StringSubclass::make(StringSubclass::classObject(), "//a/b"_ns), slash), "a/b");
}

TEST_F(TrimmingTest, TheResultDoesNotFollowAMutableReceiver) {
    const NSMutableString string = NSMutableString::stringWithString("//a/b"_ns);
    const NSString result = tessarin_stringByTrimmingLeadingCharactersInSet(string, slash);
    string.setString("changed"_ns);
    EXPECT_EQ(text(result), "a/b");
}

TEST_F(TrimmingTest, TheResultIsAutoreleased) {
    const Retained<NSString> string = retain(NSString(std::string("///a string of this test")));
    EXPECT_EQ(
        ownedReferencesOfNew([&] { return tessarin_stringByTrimmingLeadingCharactersInSet(string, slash); }),
        0);
}

TEST_F(TrimmingTest, TrimsLongStrings) {
    EXPECT_EQ(trimmed(NSString(std::string(100'000, '/') + "a"), slash), "a");
    EXPECT_EQ(trimmed(NSString(std::string(100'000, '/')), slash), "");
}

} // namespace
} // namespace tessarin::testing
