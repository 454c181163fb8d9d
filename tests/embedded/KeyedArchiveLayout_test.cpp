// Keyed archives as the property lists that they are.
#include "KeyedCoding.h"

#include "platform/embedded/foundation/KeyedArchiverUID.h"

namespace tessarin::testing {
namespace {

using embedded::keyedArchiverUID;

class KeyedArchiveLayoutTest : public PlatformTest {};

NSDictionary propertyListOf(NSData archive) {
    return NSPropertyListSerialization::propertyListWithData_options_format_error(
        archive, NSPropertyListImmutable, nullptr, nullptr);
}

// A part of an archive on one line: 'text', 3, @2 for a reference, (items), {key: value}.
std::string shown(NSObject value) {
    if (const auto uid = keyedArchiverUID(value)) return "@" + std::to_string(*uid);
    std::string list;
    if (const auto array = kindOf<NSArray>(value)) {
        for (const NSObject item : array) list += (list.empty() ? "" : ", ") + shown(item);
        return "(" + list + ")";
    }
    if (const auto dictionary = kindOf<NSDictionary>(value)) {
        for (const NSObject key : dictionary)
            list +=
                (list.empty() ? "" : ", ") + text(NSString(key)) + ": " + shown(dictionary.objectForKey(key));
        return "{" + list + "}";
    }
    if (const auto string = kindOf<NSString>(value)) return "'" + text(string) + "'";
    return text(value.description());
}

Texts objectsOf(NSObject root) {
    const NSDictionary archive = propertyListOf(NSKeyedArchiver::archivedDataWithRootObject(root));
    Texts objects;
    for (const NSObject object : NSArray(archive.objectForKey("$objects"_ns)))
        objects.push_back(shown(object));
    return objects;
}

const std::string null = "'$null'";

TEST_F(KeyedArchiveLayoutTest, HasFourEntries) {
    const NSDictionary archive = propertyListOf(NSKeyedArchiver::archivedDataWithRootObject("x"_ns));
    EXPECT_EQ(shown(archive),
              "{$version: 100000, $archiver: 'NSKeyedArchiver', $top: {root: @1}, $objects: ('$null', 'x')}");
}

TEST_F(KeyedArchiveLayoutTest, NilIsTheFirstObject) { EXPECT_EQ(objectsOf(nil), (Texts{null})); }

TEST_F(KeyedArchiveLayoutTest, StringsNumbersAndDataStandAsTheyAre) {
    EXPECT_EQ(objectsOf("text"_ns), (Texts{null, "'text'"}));
    EXPECT_EQ(objectsOf(NSNumber::numberWithInt(7)), (Texts{null, "7"}));
    EXPECT_EQ(objectsOf(NSData::dataWithBytes_length("a", 1)), (Texts{null, "<61>"}));
}

TEST_F(KeyedArchiveLayoutTest, TheTextThatStandsForNilIsWrapped) {
    EXPECT_EQ(objectsOf("$null"_ns), (Texts{null, "{NS.string: '$null', $class: @2}",
                                            "{$classname: 'NSString', $classes: ('NSString', 'NSObject')}"}));
}

TEST_F(KeyedArchiveLayoutTest, MutableValuesAreObjects) {
    EXPECT_EQ(
        objectsOf(NSMutableString::stringWithString("text"_ns)),
        (Texts{null, "{NS.string: 'text', $class: @2}",
               "{$classname: 'NSMutableString', $classes: ('NSMutableString', 'NSString', 'NSObject')}"}));
    EXPECT_EQ(objectsOf(NSMutableData::dataWithBytes_length("a", 1)),
              (Texts{null, "{NS.data: <61>, $class: @2}",
                     "{$classname: 'NSMutableData', $classes: ('NSMutableData', 'NSData', 'NSObject')}"}));
}

TEST_F(KeyedArchiveLayoutTest, ContainersReferToTheirItems) {
    EXPECT_EQ(objectsOf(NSArray::arrayOf("a"_ns, NSNumber::numberWithInt(7))),
              (Texts{null, "{NS.objects: (@2, @3), $class: @4}", "'a'", "7",
                     "{$classname: 'NSArray', $classes: ('NSArray', 'NSObject')}"}));
    EXPECT_EQ(objectsOf(NSMutableArray::array()),
              (Texts{null, "{NS.objects: (), $class: @2}",
                     "{$classname: 'NSMutableArray', $classes: ('NSMutableArray', 'NSArray', 'NSObject')}"}));
    EXPECT_EQ(objectsOf(NSDictionary::dictionaryWithObject_forKey("value"_ns, "key"_ns)),
              (Texts{null, "{NS.keys: (@2), NS.objects: (@3), $class: @4}", "'key'", "'value'",
                     "{$classname: 'NSDictionary', $classes: ('NSDictionary', 'NSObject')}"}));
    EXPECT_EQ(
        objectsOf(NSMutableDictionary::dictionary())[2],
        "{$classname: 'NSMutableDictionary', $classes: ('NSMutableDictionary', 'NSDictionary', 'NSObject')}");
}

TEST_F(KeyedArchiveLayoutTest, DatesURLsAndNull) {
    EXPECT_EQ(objectsOf(NSDate::dateWithTimeIntervalSinceReferenceDate(1.5)),
              (Texts{null, "{NS.time: 1.5, $class: @2}",
                     "{$classname: 'NSDate', $classes: ('NSDate', 'NSObject')}"}));
    EXPECT_EQ(objectsOf(NSURL::URLWithString("a/b"_ns)),
              (Texts{null, "{NS.base: @0, NS.relative: @2, $class: @3}", "'a/b'",
                     "{$classname: 'NSURL', $classes: ('NSURL', 'NSObject')}"}));
    EXPECT_EQ(objectsOf(NSNull::null()),
              (Texts{null, "{$class: @2}", "{$classname: 'NSNull', $classes: ('NSNull', 'NSObject')}"}));
}

TEST_F(KeyedArchiveLayoutTest, ARelativeURLReferToItsBase) {
    const NSURL relative = NSURL::fileURLWithPath("a/b"_ns);
    ASSERT_TRUE(relative.baseURL());
    const id back =
        NSKeyedUnarchiver::unarchiveObjectWithData(NSKeyedArchiver::archivedDataWithRootObject(relative));
    EXPECT_TRUE(back.isEqual(relative));
    EXPECT_TRUE(NSURL(back).baseURL().isEqual(relative.baseURL()));
}

TEST_F(KeyedArchiveLayoutTest, ObjectsAndClassesStandOnce) {
    const NSArray inner = NSArray::arrayOf("x"_ns);
    EXPECT_EQ(objectsOf(NSArray::arrayOf(inner, inner, "x"_ns)),
              (Texts{null, "{NS.objects: (@2, @2, @3), $class: @4}", "{NS.objects: (@3), $class: @4}", "'x'",
                     "{$classname: 'NSArray', $classes: ('NSArray', 'NSObject')}"}));
}

// What becomes of a subclass of one of the platform's families, which readers elsewhere would not know.
TEST_F(KeyedArchiveLayoutTest, PrivateSubclassesAreArchivedUnderThePublicName) {
    static const ClassDefinition array{{.name = "LayoutArray", .superclass = "NSMutableArray"}};
    static const ClassDefinition string{{.name = "LayoutString", .superclass = "NSString"}};
    const Retained<NSArray> items =
        adopt(as<NSArray>("LayoutArray"_class.alloc()).initWithArray(NSArray::array()));
    EXPECT_EQ(objectsOf(items)[2],
              "{$classname: 'NSMutableArray', $classes: ('NSMutableArray', 'NSArray', 'NSObject')}");
    const Retained<NSString> text_ = adopt(as<NSString>("LayoutString"_class.alloc()).initWithString("x"_ns));
    EXPECT_EQ(objectsOf(text_), (Texts{null, "'x'"}));
}

TEST_F(KeyedArchiveLayoutTest, ValuesStandUnderTheirKeys) {
    const NSMutableData data = NSMutableData::data();
    const Retained<NSKeyedArchiver> archiver =
        adopt(NSKeyedArchiver::alloc().initForWritingWithMutableData(data));
    archiver.encodeBool_forKey(true, "bool"_ns);
    archiver.encodeInt_forKey(-1, "$int"_ns);
    archiver.encodeDouble_forKey(0.5, "$$double"_ns);
    archiver.encodeBytes_length_forKey(reinterpret_cast<const std::uint8_t*>("a"), 1, "bytes"_ns);
    archiver.encodeObject_forKey(nil, "nil"_ns);
    archiver.finishEncoding();
    const NSDictionary top = propertyListOf(data).objectForKey("$top"_ns);
    EXPECT_EQ(shown(top), "{bool: 1, $$int: -1, $$$double: 0.5, bytes: <61>, nil: @0}");
    EXPECT_EQ(as<NSNumber>(top.objectForKey("bool"_ns)).objCType()[0], 'c');
}

TEST_F(KeyedArchiveLayoutTest, InXMLAReferenceIsADictionaryOfOneKey) {
    const NSDictionary archive = propertyListOf(archived("x"_ns, NSPropertyListXMLFormat_v1_0));
    EXPECT_EQ(shown(archive.objectForKey("$top"_ns)), "{root: {CF$UID: 1}}");
}

// ---- References as other callers of property lists see them

TEST_F(KeyedArchiveLayoutTest, ReferencesAreOpaqueObjects) {
    const NSDictionary top =
        propertyListOf(NSKeyedArchiver::archivedDataWithRootObject("x"_ns)).objectForKey("$top"_ns);
    const NSObject one = top.objectForKey("root"_ns);
    EXPECT_EQ(text(one.description()).substr(0, 19), "<CFKeyedArchiverUID");
    EXPECT_NE(text(one.description()).find("{value = 1}"), std::string::npos);
    EXPECT_TRUE(one.isEqual(embedded::newKeyedArchiverUID(1)));
    EXPECT_EQ(one.hash(), embedded::newKeyedArchiverUID(1).hash());
    EXPECT_FALSE(one.isEqual(embedded::newKeyedArchiverUID(2)));
    EXPECT_FALSE(one.isEqual(NSNumber::numberWithInt(1)));
    EXPECT_FALSE(one.isEqual(nil));
}

TEST_F(KeyedArchiveLayoutTest, AnArchiveIsAPropertyListThatCanBeWritten) {
    const NSData archive =
        NSKeyedArchiver::archivedDataWithRootObject(NSArray::arrayOf("x"_ns, NSNull::null()));
    for (const NSPropertyListFormat format :
         {NSPropertyListBinaryFormat_v1_0, NSPropertyListXMLFormat_v1_0}) {
        EXPECT_TRUE(
            NSPropertyListSerialization::propertyList_isValidForFormat(propertyListOf(archive), format));
        const NSData written = NSPropertyListSerialization::dataWithPropertyList_format_options_error(
            propertyListOf(archive), format, 0, nullptr);
        EXPECT_TRUE(NSKeyedUnarchiver::unarchiveObjectWithData(written).isEqual(
            NSArray::arrayOf("x"_ns, NSNull::null())));
    }
    EXPECT_FALSE(NSPropertyListSerialization::propertyList_isValidForFormat(propertyListOf(archive),
                                                                            NSPropertyListOpenStepFormat));
}

} // namespace
} // namespace tessarin::testing
