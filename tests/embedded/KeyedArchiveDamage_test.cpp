// Archives that are not what they should be. Each is refused with an exception of the platform, in a time and
// with memory in proportion to its size.
#include "HandMadeArchives.h"
#include "KeyedCoding.h"

#include <functional>

namespace tessarin::testing {
namespace {

class KeyedArchiveDamageTest : public PlatformTest {};

TEST_F(KeyedArchiveDamageTest, WhatIsNoArchiveIsIncomprehensible) {
    const NSDictionary sound = archiveOf(NSArray::arrayOf("x"_ns));
    EXPECT_EQ(raisedBy(dataOf(sound)), "(nothing)");
    const auto with = [&](NSString key, NSObject value) {
        const NSMutableDictionary changed = NSMutableDictionary::dictionary();
        changed.addEntriesFromDictionary(sound);
        if (value)
            changed.setObject_forKey(value, key);
        else
            changed.removeObjectForKey(key);
        return dataOf(changed);
    };
    const NSData none[] = {with("$version"_ns, nil),
                           with("$version"_ns, number(99999)),
                           with("$version"_ns, "100000"_ns),
                           with("$archiver"_ns, nil),
                           with("$archiver"_ns, "Other"_ns),
                           with("$archiver"_ns, number(1)),
                           with("$top"_ns, nil),
                           with("$top"_ns, NSArray::array()),
                           with("$objects"_ns, nil),
                           with("$objects"_ns, NSDictionary::dictionary()),
                           dataOf(NSArray::arrayOf("x"_ns)),
                           dataOf("x"_ns)};
    for (const NSData archive : none)
        EXPECT_EQ(raisedBy(archive),
                  "NSInvalidArgumentException: *** -[NSKeyedUnarchiver initForReadingWithData:]: "
                  "incomprehensible archive (0x62, 0x70, 0x6c, 0x69, 0x73, 0x74, 0x30, 0x30)");
    EXPECT_NE(raisedBy(NSData::dataWithBytes_length("ab", 2)).find("(0x61, 0x62)"), std::string::npos);
}

TEST_F(KeyedArchiveDamageTest, ObjectsThatAreNotWhatTheyShouldBeAreRefused) {
    const NSArray noItems = NSArray::array();
    const NSDictionary arrayClass = classNamed("NSArray"_ns), mapClass = classNamed("NSDictionary"_ns);
    const auto map = [](NSObject keys, NSObject objects) {
        return dictionaryOf("$class"_ns, reference(2), "NS.keys"_ns, keys, "NS.objects"_ns, objects);
    };
    const std::pair<NSArray, const char*> damaged[] = {
        {noItems, "not there"},
        {NSArray::arrayOf(NSArray::array()), "no object"},
        {NSArray::arrayOf(reference(1)), "no object"},
        {NSArray::arrayOf(NSDictionary::dictionary()), "without a class"},
        {NSArray::arrayOf(container(9, noItems)), "not there"},
        {NSArray::arrayOf(container(0, noItems)), "without a name"},
        {NSArray::arrayOf(container(1, noItems)), "without a name"},
        {NSArray::arrayOf(container(2, noItems), "NSArray"_ns), "without a name"},
        {NSArray::arrayOf(container(2, noItems), dictionaryOf("$classname"_ns, number(1))), "without a name"},
        {NSArray::arrayOf(container(2, noItems), classNamed(""_ns)), "cannot decode object of class ()"},
        {NSArray::arrayOf(container(2, noItems), classNamed("NoSuchClass"_ns)), "class (NoSuchClass)"},
        {NSArray::arrayOf(dictionaryOf("$class"_ns, "NSArray"_ns)), "no object"},
        {NSArray::arrayOf(container(2, noItems), classNamed("NSCoder"_ns)), "unrecognized selector"},
        {NSArray::arrayOf(container(2, noItems), classNamed("NSEnumerator"_ns)), "unrecognized selector"},
        {NSArray::arrayOf(container(2, noItems), classNamed("Protocol"_ns)), "unrecognized selector"},
        {NSArray::arrayOf(container(2, noItems), classNamed("NSObject"_ns)), "unrecognized selector"},
        {NSArray::arrayOf(dictionaryOf("$class"_ns, reference(2)), arrayClass), "without items"},
        {NSArray::arrayOf(dictionaryOf("$class"_ns, reference(2), "NS.objects"_ns, "x"_ns), arrayClass),
         "of another kind"},
        {NSArray::arrayOf(container(2, NSArray::arrayOf("x"_ns)), arrayClass), "no object"},
        {NSArray::arrayOf(container(2, NSArray::arrayOf(reference(0))), arrayClass), "that is nil"},
        {NSArray::arrayOf(container(2, NSArray::arrayOf(reference(4000000000U))), arrayClass), "not there"},
        {NSArray::arrayOf(container(2, NSArray::arrayOf(reference(1))), arrayClass), "inside itself"},
        {NSArray::arrayOf(container(2, noItems), mapClass), "without items"},
        {NSArray::arrayOf(map(noItems, NSArray::arrayOf(reference(3))), mapClass, "x"_ns), "0 and 1"},
        {NSArray::arrayOf(map(NSArray::arrayOf(reference(3)), noItems), mapClass, "x"_ns), "1 and 0"},
        {NSArray::arrayOf(map(NSArray::arrayOf(reference(0)), NSArray::arrayOf(reference(3))), mapClass,
                          "x"_ns),
         "that is nil"},
        {NSArray::arrayOf(map(NSArray::arrayOf(reference(1)), NSArray::arrayOf(reference(3))), mapClass,
                          "x"_ns),
         "inside itself"},
        {NSArray::arrayOf(dictionaryOf("$class"_ns, reference(2)), classNamed("NSMutableString"_ns)),
         "without text"},
        {NSArray::arrayOf(dictionaryOf("$class"_ns, reference(2), "NS.string"_ns, number(1)),
                          classNamed("NSString"_ns)),
         "without text"},
        {NSArray::arrayOf(dictionaryOf("$class"_ns, reference(2), "NS.string"_ns, reference(1)),
                          classNamed("NSString"_ns)),
         "inside itself"},
        {NSArray::arrayOf(dictionaryOf("$class"_ns, reference(2), "NS.data"_ns, "x"_ns),
                          classNamed("NSMutableData"_ns)),
         "of another kind"},
        {NSArray::arrayOf(dictionaryOf("$class"_ns, reference(2), "NS.time"_ns, "x"_ns),
                          classNamed("NSDate"_ns)),
         "of another kind"},
        {NSArray::arrayOf(dictionaryOf("$class"_ns, reference(2)), classNamed("NSURL"_ns)), "no URL"},
        {NSArray::arrayOf(dictionaryOf("$class"_ns, reference(2), "NS.base"_ns, reference(3),
                                       "NS.relative"_ns, reference(3)),
                          classNamed("NSURL"_ns), "a"_ns),
         "no URL"},
        {NSArray::arrayOf(dictionaryOf("$class"_ns, reference(2), "NS.base"_ns, reference(1),
                                       "NS.relative"_ns, reference(3)),
                          classNamed("NSURL"_ns), "a"_ns),
         "inside itself"},
    };
    for (const auto& [objects, expected] : damaged) {
        const std::string raised = raisedBy(dataOf(archiveOf(objects)));
        EXPECT_NE(raised.find(expected), std::string::npos)
            << "expected: " << expected << "\nraised: " << raised;
        const bool isUnrecognised = std::string_view(expected) == "unrecognized selector";
        EXPECT_EQ(raised.substr(0, raised.find(':')),
                  isUnrecognised ? "NSInvalidArgumentException" : "NSInvalidUnarchiveOperationException");
    }
}

// ---- Depth

NSData nestedArchive(int levels) {
    const NSMutableArray objects = NSMutableArray::array();
    const auto last = static_cast<std::uint32_t>(levels) + 1;
    for (int level = 1; level < levels; ++level) {
        const AutoreleasePool pool;
        objects.addObject(
            container(last, NSArray::arrayOf(reference(static_cast<std::uint32_t>(level) + 1))));
    }
    objects.addObject(container(last, NSArray::array()));
    objects.addObject(classNamed("NSArray"_ns));
    return dataOf(archiveOf(objects));
}

TEST_F(KeyedArchiveDamageTest, ObjectsAreReadUpTo256InsideEachOther) {
    EXPECT_EQ(raisedBy(nestedArchive(256)), "(nothing)");
    EXPECT_NE(raisedBy(nestedArchive(257)).find("256 deep"), std::string::npos);
    EXPECT_NE(raisedBy(nestedArchive(100000)).find("256 deep"), std::string::npos);
}

TEST_F(KeyedArchiveDamageTest, ObjectsAreWrittenUpTo256InsideEachOther) {
    NSArray nested = NSArray::array();
    for (int level = 1; level < 256; ++level) nested = NSArray::arrayOf(nested);
    EXPECT_EQ(raisedBy(NSKeyedArchiver::archivedDataWithRootObject(nested)), "(nothing)");
    EXPECT_THROWS_NAMED(NSKeyedArchiver::archivedDataWithRootObject(NSArray::arrayOf(nested)),
                        "NSInvalidArchiveOperationException");
}

TEST_F(KeyedArchiveDamageTest, AMillionLevelsAreNotWritten) {
    Retained<NSArray> nested = retain(NSArray::array());
    for (int level = 1; level < 1000000; ++level) {
        const AutoreleasePool pool;
        nested = retain(NSArray::arrayOf(NSArray(nested)));
    }
    EXPECT_THROWS_NAMED(NSKeyedArchiver::archivedDataWithRootObject(nested),
                        "NSInvalidArchiveOperationException");
}

// ---- Size

TEST_F(KeyedArchiveDamageTest, ObjectsThatDoubleAtEachLevelAreEachReadOnce) {
    NSArray doubled = NSArray::arrayOf("x"_ns);
    for (int level = 0; level < 100; ++level) doubled = NSArray::arrayOf(doubled, doubled);
    const NSData archive = NSKeyedArchiver::archivedDataWithRootObject(doubled);
    EXPECT_LT(archive.length(), 10000u);
    EXPECT_TRUE(NSKeyedUnarchiver::unarchiveObjectWithData(archive).isEqual(doubled));
}

// A property list may hold the same list of items in many objects, and the same bytes.
TEST_F(KeyedArchiveDamageTest, ItemsBeyondTheSizeOfTheArchiveAreRefused) {
    const NSMutableArray items = NSMutableArray::array(), objects = NSMutableArray::array();
    constexpr int count = 2000;
    for (int index = 0; index < count; ++index) items.addObject(reference(3));
    const NSMutableArray references = NSMutableArray::array();
    for (int index = 0; index < count; ++index)
        references.addObject(reference(4 + static_cast<std::uint32_t>(index)));
    objects.addObject(container(2, references));
    objects.addObject(classNamed("NSArray"_ns));
    objects.addObject("x"_ns);
    for (int index = 0; index < count; ++index) objects.addObject(container(2, items));
    EXPECT_NE(raisedBy(dataOf(archiveOf(objects))).find("more items"), std::string::npos);
}

TEST_F(KeyedArchiveDamageTest, CopiesBeyondMeasureAreRefused) {
    const NSString text = NSString(std::string(100000, 'x'));
    const NSMutableArray objects = NSMutableArray::array(), references = NSMutableArray::array();
    constexpr std::uint32_t count = 1000;
    for (std::uint32_t index = 0; index < count; ++index) references.addObject(reference(4 + index));
    objects.addObject(container(2, references));
    objects.addObject(classNamed("NSArray"_ns));
    objects.addObject(classNamed("NSMutableString"_ns));
    for (std::uint32_t index = 0; index < count; ++index)
        objects.addObject(dictionaryOf("$class"_ns, reference(3), "NS.string"_ns, text));
    EXPECT_NE(raisedBy(dataOf(archiveOf(objects))).find("more bytes"), std::string::npos);
}

// Many mutable strings of the same text, which other writers keep once.
TEST_F(KeyedArchiveDamageTest, TextThatManyObjectsShareIsRead) {
    const NSMutableArray objects = NSMutableArray::array(), references = NSMutableArray::array();
    for (std::uint32_t index = 0; index < 1000; ++index) references.addObject(reference(4 + index));
    objects.addObject(container(2, references));
    objects.addObject(classNamed("NSArray"_ns));
    objects.addObject(classNamed("NSMutableString"_ns));
    for (int index = 0; index < 1000; ++index)
        objects.addObject(dictionaryOf("$class"_ns, reference(3), "NS.string"_ns, "the same text"_ns));
    EXPECT_EQ(raisedBy(dataOf(archiveOf(objects))), "(nothing)");
}

// ---- Any damage

NSArray everything() {
    return NSArray::arrayOf("text"_ns, NSMutableString::stringWithString("mutable"_ns),
                            NSNumber::numberWithDouble(0.5), NSMutableData::dataWithBytes_length("abc", 3),
                            NSNull::null(), NSURL::URLWithString("a/b"_ns),
                            NSDate::dateWithTimeIntervalSinceReferenceDate(1),
                            NSDictionary::dictionaryWithObject_forKey(NSMutableArray::array(), "key"_ns));
}

TEST_F(KeyedArchiveDamageTest, AnArchiveCutOffAnywhereIsRefused) {
    for (const NSPropertyListFormat format :
         {NSPropertyListBinaryFormat_v1_0, NSPropertyListXMLFormat_v1_0}) {
        const NSData whole = archived(everything(), format);
        // The end of an XML document's last tag is not missed.
        const NSUInteger longest = whole.length() - std::string_view("</plist>\n").size();
        for (NSUInteger length = 0; length < longest; ++length) {
            const AutoreleasePool pool;
            EXPECT_NE(raisedBy(NSData::dataWithBytes_length(whole.bytes(), length)), "(nothing)") << length;
        }
    }
}

TEST_F(KeyedArchiveDamageTest, NoSingleByteDoesHarm) {
    const NSData whole = NSKeyedArchiver::archivedDataWithRootObject(everything());
    const std::string bytes(static_cast<const char*>(whole.bytes()), whole.length());
    std::size_t read = 0;
    for (std::size_t position = 0; position < bytes.size(); ++position)
        for (unsigned value = 0; value < 256; value += 15) {
            std::string damaged = bytes;
            damaged[position] = static_cast<char>(value);
            const AutoreleasePool pool;
            if (raisedBy(NSData::dataWithBytes_length(damaged.data(), damaged.size())) == "(nothing)") ++read;
        }
    EXPECT_GT(read, 0u);
}

} // namespace
} // namespace tessarin::testing
