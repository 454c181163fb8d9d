// Unarchiving: objects in circles, objects that are replaced, values of the wrong kind, archives that are
// none.
#include "KeyedCoding.h"

#include <limits>
#include <utility>

namespace tessarin::testing {
namespace {

class NSKeyedUnarchiverTest : public PlatformTest {};

// ---- UnarchivedNode: an object that holds another, and refers to its owner

struct Node : Handle<Node, "UnarchivedNode", NSObject> {
    using Handle::Handle;
    NSObject& content() const { return instanceVariableOf<NSObject>(*this, "content"); }
    NSObject& owner() const { return instanceVariableOf<NSObject>(*this, "owner"); } // not retained
};

void encodeNode(Node self, SEL, NSCoder coder) {
    coder.encodeObject_forKey(self.content(), "content"_ns);
    coder.encodeObject_forKey(self.owner(), "owner"_ns);
}
Node initNode(Node self, SEL, NSCoder coder) {
    self.content() = retain(static_cast<NSObject>(coder.decodeObjectForKey("content"_ns))).leak();
    self.owner() = coder.decodeObjectForKey("owner"_ns);
    return self;
}
void deallocNode(Node self, SEL selector) {
    runtime::release(std::exchange(self.content(), nil).object());
    sendSuper<void>(self, Node::classObject(), selector);
}

// What another class does in place of a node's initialiser.
Node initAsAnotherNode(Node self, SEL, NSCoder coder) {
    const Retained<Node> replaced = adopt(self);
    static_cast<void>(coder.decodeObjectForKey("content"_ns));
    return Node(send<NSObject>(Node::alloc(), "init"_sel));
}
int timesInitialisedAsNil = 0;
Node initAsNil(Node self, SEL, NSCoder) {
    ++timesInitialisedAsNil;
    runtime::release(self.object());
    return nil;
}
Node initRaising(Node self, SEL, NSCoder) {
    runtime::release(self.object());
    raise(NSGenericException(), "no more"_ns);
}

const ClassDefinition plainNode{
    {.name = "UnarchivedNode",
     .protocols = {"NSCoding"},
     .instanceVariables = {instanceVariable<NSObject>("content"), instanceVariable<NSObject>("owner")},
     .methods = {instanceMethod("encodeWithCoder:", encodeNode), instanceMethod("initWithCoder:", initNode),
                 instanceMethod("dealloc", deallocNode)}}};
const ClassDefinition replacedNode{{.name = "UnarchivedReplacedNode",
                                    .superclass = "UnarchivedNode",
                                    .methods = {instanceMethod("initWithCoder:", initAsAnotherNode)}}};
const ClassDefinition nilNode{{.name = "UnarchivedNilNode",
                               .superclass = "UnarchivedNode",
                               .methods = {instanceMethod("initWithCoder:", initAsNil)}}};
const ClassDefinition raisingNode{{.name = "UnarchivedRaisingNode",
                                   .superclass = "UnarchivedNode",
                                   .methods = {instanceMethod("initWithCoder:", initRaising)}}};

Node makeNode(Class nodeClass = Node::classObject()) {
    return adopt(send<Node>(nodeClass.alloc(), "init"_sel)).autorelease();
}
void setContent(Node holder, NSObject content) { holder.content() = retain(content).leak(); }

id archivedAndBack(NSObject root) {
    return NSKeyedUnarchiver::unarchiveObjectWithData(NSKeyedArchiver::archivedDataWithRootObject(root));
}

std::string reference(unsigned number) {
    return "<dict><key>CF$UID</key><integer>" + std::to_string(number) + "</integer></dict>";
}
// An archive in XML, as other software might write it.
std::string archiveOf(const std::string& objects) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\"><dict><key>$version</key><integer>100000</integer>"
           "<key>$archiver</key><string>NSKeyedArchiver</string><key>$top</key><dict><key>root</key>"
           + reference(1) + "</dict><key>$objects</key><array><string>$null</string>" + objects
           + "</array></dict></plist>";
}
std::string classNamed(const std::string& name) {
    return "<dict><key>$classname</key><string>" + name + "</string><key>$classes</key><array><string>" + name
           + "</string><string>NSObject</string></array></dict>";
}
NSData dataOf(const std::string& bytes) { return NSData::dataWithBytes_length(bytes.data(), bytes.size()); }

// ---- Circles

TEST_F(NSKeyedUnarchiverTest, AnObjectInsideAnotherRefersBackToIt) {
    const Node outer = makeNode(), inner = makeNode();
    setContent(outer, inner);
    inner.owner() = outer;
    const Retained<Node> back = retain(Node(archivedAndBack(outer)));
    EXPECT_EQ(Node(back.content()).owner(), back);
}

TEST_F(NSKeyedUnarchiverTest, AnObjectInAnArrayRefersBackToTheArraysOwner) {
    const Node owner = makeNode(), item = makeNode();
    item.owner() = owner;
    setContent(owner, NSMutableArray::arrayWithArray(NSArray::arrayOf(item)));
    const Retained<Node> back = retain(Node(archivedAndBack(owner)));
    const NSMutableArray items(back.content());
    ASSERT_EQ(items.count(), 1u);
    EXPECT_EQ(as<Node>(items.objectAtIndex(0)).owner(), back);
}

TEST_F(NSKeyedUnarchiverTest, AnObjectRefersBackToTheArrayThatItIsIn) {
    const NSMutableArray items = NSMutableArray::array();
    const Node item = makeNode();
    item.owner() = items;
    items.addObject(item);
    const Retained<NSMutableArray> back = retain(NSMutableArray(archivedAndBack(items)));
    ASSERT_EQ(back.count(), 1u);
    EXPECT_EQ(as<Node>(back.objectAtIndex(0)).owner(), back);
}

TEST_F(NSKeyedUnarchiverTest, AContainerInsideItselfIsRefused) {
    const auto refused = "NSInvalidUnarchiveOperationException";
    const std::string itself = "<dict><key>$class</key>" + reference(2) + "<key>NS.objects</key><array>"
                               + reference(1) + "</array></dict>" + classNamed("NSMutableArray");
    EXPECT_THROWS_NAMED(NSKeyedUnarchiver::unarchiveObjectWithData(dataOf(archiveOf(itself))), refused);
    const std::string eachOther = "<dict><key>$class</key>" + reference(2) + "<key>NS.objects</key><array>"
                                  + reference(3) + "</array></dict>" + classNamed("NSArray")
                                  + "<dict><key>$class</key>" + reference(4) + "<key>NS.keys</key><array>"
                                  + reference(5) + "</array><key>NS.objects</key><array>" + reference(1)
                                  + "</array></dict>" + classNamed("NSDictionary") + "<string>key</string>";
    EXPECT_THROWS_NAMED(NSKeyedUnarchiver::unarchiveObjectWithData(dataOf(archiveOf(eachOther))), refused);
}

// ---- Initialisers that answer something else

TEST_F(NSKeyedUnarchiverTest, AnObjectMayBeReplacedWhileItIsInitialised) {
    const Node original = makeNode("UnarchivedReplacedNode"_class);
    const NSArray back = archivedAndBack(NSArray::arrayOf(original, original));
    EXPECT_TRUE(as<NSObject>(back.objectAtIndex(0)).isMemberOfClass(Node::classObject()));
    EXPECT_EQ(back.objectAtIndex(0), back.objectAtIndex(1));
}

TEST_F(NSKeyedUnarchiverTest, AnObjectThatOthersReferToMustNotBeReplaced) {
    const Node original = makeNode("UnarchivedReplacedNode"_class), inner = makeNode();
    setContent(original, inner);
    inner.owner() = original;
    EXPECT_THROWS_NAMED(archivedAndBack(original), "NSInvalidUnarchiveOperationException");
}

TEST_F(NSKeyedUnarchiverTest, AnObjectThatFailsToInitialiseIsNilAndTriedOnce) {
    const Node failing = makeNode("UnarchivedNilNode"_class), holder = makeNode();
    setContent(holder, failing);
    holder.owner() = failing;
    timesInitialisedAsNil = 0;
    const Node back(archivedAndBack(holder));
    EXPECT_TRUE(back);
    EXPECT_EQ(back.content(), nil);
    EXPECT_EQ(back.owner(), nil);
    EXPECT_EQ(timesInitialisedAsNil, 1);
}

TEST_F(NSKeyedUnarchiverTest, AnItemThatIsNilIsRefused) {
    EXPECT_THROWS_NAMED(archivedAndBack(NSArray::arrayOf(makeNode("UnarchivedNilNode"_class))),
                        "NSInvalidUnarchiveOperationException");
}

TEST_F(NSKeyedUnarchiverTest, WhatAnInitialiserRaisesPassesThrough) {
    EXPECT_THROWS_NAMED(archivedAndBack(NSArray::arrayOf(makeNode("UnarchivedRaisingNode"_class))),
                        "NSGenericException");
}

// ---- Values of the wrong kind

TEST_F(NSKeyedUnarchiverTest, AKeyThatWasNotWrittenIsZero) {
    const NSData archive = NSKeyedArchiver::archivedDataWithRootObject(nil);
    const Retained<NSKeyedUnarchiver> coder =
        adopt(NSKeyedUnarchiver::alloc().initForReadingWithData(archive));
    EXPECT_EQ(coder.decodeObjectForKey("none"_ns), nil);
    EXPECT_FALSE(coder.decodeBoolForKey("none"_ns));
    EXPECT_EQ(coder.decodeIntForKey("none"_ns), 0);
    EXPECT_EQ(coder.decodeInt64ForKey("none"_ns), 0);
    EXPECT_EQ(coder.decodeIntegerForKey("none"_ns), 0);
    EXPECT_EQ(coder.decodeFloatForKey("none"_ns), 0.0F);
    EXPECT_EQ(coder.decodeDoubleForKey("none"_ns), 0.0);
    NSUInteger length = 7;
    EXPECT_EQ(coder.decodeBytesForKey_returnedLength("none"_ns, &length), nullptr);
    EXPECT_EQ(length, 0u);
}

TEST_F(NSKeyedUnarchiverTest, AnIntegerThatDoesNotFitRaises) {
    const NSMutableData data = NSMutableData::data();
    const Retained<NSKeyedArchiver> archiver =
        adopt(NSKeyedArchiver::alloc().initForWritingWithMutableData(data));
    archiver.encodeInt64_forKey(std::int64_t{1} << 31, "large"_ns);
    archiver.finishEncoding();
    const Retained<NSKeyedUnarchiver> coder = adopt(NSKeyedUnarchiver::alloc().initForReadingWithData(data));
    EXPECT_THROWS_NAMED(coder.decodeIntForKey("large"_ns), "NSRangeException");
    EXPECT_THROWS_NAMED(coder.decodeInt32ForKey("large"_ns), "NSRangeException");
    EXPECT_EQ(coder.decodeInt64ForKey("large"_ns), std::int64_t{1} << 31);
}

TEST_F(NSKeyedUnarchiverTest, AValueOfAnotherKindRaises) {
    const NSMutableData data = NSMutableData::data();
    const Retained<NSKeyedArchiver> archiver =
        adopt(NSKeyedArchiver::alloc().initForWritingWithMutableData(data));
    archiver.encodeInt_forKey(1, "integer"_ns);
    archiver.encodeObject_forKey("text"_ns, "object"_ns);
    archiver.finishEncoding();
    const Retained<NSKeyedUnarchiver> coder = adopt(NSKeyedUnarchiver::alloc().initForReadingWithData(data));
    const char* const refused = "NSInvalidUnarchiveOperationException";
    EXPECT_THROWS_NAMED(coder.decodeObjectForKey("integer"_ns), refused);
    EXPECT_THROWS_NAMED(coder.decodeIntForKey("object"_ns), refused);
    EXPECT_THROWS_NAMED(coder.decodeBoolForKey("object"_ns), refused);
    EXPECT_THROWS_NAMED(coder.decodeDoubleForKey("object"_ns), refused);
    NSUInteger length = 0;
    EXPECT_THROWS_NAMED(coder.decodeBytesForKey_returnedLength("integer"_ns, &length), refused);
}

// ---- Archives

TEST_F(NSKeyedUnarchiverTest, ReadsWhatOtherSoftwareWrites) {
    EXPECT_EQ(text(NSKeyedUnarchiver::unarchiveObjectWithData(dataOf(archiveOf("<string>text</string>")))),
              "text");
    const std::string wrapped = "<dict><key>$class</key>" + reference(2)
                                + "<key>NS.string</key><string>text</string></dict>"
                                + classNamed("NSMutableString");
    EXPECT_EQ(text(NSKeyedUnarchiver::unarchiveObjectWithData(dataOf(archiveOf(wrapped)))), "text");
}

TEST_F(NSKeyedUnarchiverTest, AClassThatIsNotThereRaises) {
    const std::string objects =
        "<dict><key>$class</key>" + reference(2) + "</dict>" + classNamed("NoSuchClassAnywhere");
    EXPECT_THROWS_NAMED(NSKeyedUnarchiver::unarchiveObjectWithData(dataOf(archiveOf(objects))),
                        "NSInvalidUnarchiveOperationException");
    std::string reason;
    attempt(
        [&] { static_cast<void>(NSKeyedUnarchiver::unarchiveObjectWithData(dataOf(archiveOf(objects)))); },
        [&](NSException exception) { reason = text(exception.reason()); });
    EXPECT_NE(reason.find("NoSuchClassAnywhere"), std::string::npos) << reason;
}

TEST_F(NSKeyedUnarchiverTest, AClassThatTakesNoPartRaises) {
    const std::string objects = "<dict><key>$class</key>" + reference(2) + "</dict>" + classNamed("NSLock");
    EXPECT_NE(
        thrownName([&] { return NSKeyedUnarchiver::unarchiveObjectWithData(dataOf(archiveOf(objects))); }),
        "(nothing)");
}

TEST_F(NSKeyedUnarchiverTest, RefusesWhatIsNoArchive) {
    const char* const refused = "NSInvalidArgumentException";
    const std::string propertyList =
        "<plist version=\"1.0\"><dict><key>a</key><string>b</string></dict></plist>";
    for (const std::string& bytes :
         {std::string(), std::string("abc"), std::string("bplist00"), propertyList}) {
        EXPECT_THROWS_NAMED(adopt(NSKeyedUnarchiver::alloc().initForReadingWithData(dataOf(bytes))), refused)
            << bytes;
        EXPECT_THROWS_NAMED(NSKeyedUnarchiver::unarchiveObjectWithData(dataOf(bytes)), refused) << bytes;
    }
}

TEST_F(NSKeyedUnarchiverTest, NoDataIsNoObject) {
    EXPECT_EQ(NSKeyedUnarchiver::unarchiveObjectWithData(nil), nil);
    EXPECT_THROWS_NAMED(adopt(NSKeyedUnarchiver::alloc().initForReadingWithData(nil)),
                        "NSInvalidArgumentException");
}

TEST_F(NSKeyedUnarchiverTest, RefusesToGoOnAfterTheEnd) {
    const NSData archive = NSKeyedArchiver::archivedDataWithRootObject("x"_ns);
    const Retained<NSKeyedUnarchiver> coder =
        adopt(NSKeyedUnarchiver::alloc().initForReadingWithData(archive));
    coder.finishDecoding();
    EXPECT_THROWS_NAMED(coder.decodeObjectForKey("root"_ns), "NSInvalidUnarchiveOperationException");
}

TEST_F(NSKeyedUnarchiverTest, WhatIsReadOutlivesTheCoder) {
    Retained<NSArray> back;
    {
        const AutoreleasePool pool;
        back = retain(NSArray(archivedAndBack(NSArray::arrayOf(NSArray::arrayOf("x"_ns)))));
    }
    EXPECT_EQ(back.retainCount(), 1u);
    EXPECT_TRUE(back.isEqual(NSArray::arrayOf(NSArray::arrayOf("x"_ns))));
}

} // namespace
} // namespace tessarin::testing
