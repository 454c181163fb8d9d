// NSKeyedUnarchiver: any bytes give an object, or one of the platform's exceptions; and what was read can be
// archived, which gives the same archive again and again.
#include "PropertyListFuzzing.h"

#include <string_view>

using namespace tessarin;

namespace {

// ---- A class of an application's own, which may stand anywhere in an archive

class FuzzedNode : public Handle<FuzzedNode, "FuzzedNode", NSObject> {
public:
    using Handle::Handle;
};

// Decodes a value of every kind. It keeps none of them: objects that hold each other in a circle would never
// be released.
FuzzedNode initWithCoder(FuzzedNode self, SEL, NSCoder coder) {
    Retained<FuzzedNode> node = adopt(self);
    for (const NSString key : {"content"_ns, "owner"_ns}) {
        const NSObject object = coder.decodeObjectForKey(key);
        static_cast<void>(object.isKindOfClass(FuzzedNode::classObject()));
    }
    static_cast<void>(coder.decodeIntForKey("int"_ns));
    static_cast<void>(coder.decodeInt64ForKey("int64"_ns));
    static_cast<void>(coder.decodeFloatForKey("float"_ns));
    static_cast<void>(coder.decodeDoubleForKey("double"_ns));
    NSUInteger length = 0;
    const std::uint8_t* const bytes = coder.decodeBytesForKey_returnedLength("bytes"_ns, &length);
    if (length > 0 && bytes[length - 1] == 'n') return nil;
    if (coder.decodeBoolForKey("other"_ns))
        return FuzzedNode(send<NSObject>(FuzzedNode::alloc(), "init"_sel));
    return node.leak();
}

void encodeWithCoder(FuzzedNode, SEL, NSCoder coder) { coder.encodeInt_forKey(1, "int"_ns); }

const ClassDefinition definition{{.name = "FuzzedNode",
                                  .protocols = {"NSCoding"},
                                  .methods = {instanceMethod("encodeWithCoder:", encodeWithCoder),
                                              instanceMethod("initWithCoder:", initWithCoder)}}};

// ---- Reading and writing

// An object's archive; nil where the object is one too deep, which reading counts without the values that
// stand in archives as they are.
NSData archived(NSObject object) {
    return attempt([&] { return NSKeyedArchiver::archivedDataWithRootObject(object); },
                   [](NSException exception) {
                       fuzzing::require(exception.name().isEqual(NSInvalidArchiveOperationException()),
                                        "what was read can be archived");
                       return NSData();
                   });
}

void checkArchive(NSData archive) {
    const NSObject read =
        attempt([&] { return NSObject(NSKeyedUnarchiver::unarchiveObjectWithData(archive)); },
                [](NSException) { return NSObject(); });
    if (!read) return;
    const NSData written = archived(read);
    if (!written) return;
    const NSData again = archived(NSKeyedUnarchiver::unarchiveObjectWithData(written));
    fuzzing::require(written.isEqualToData(again), "what was archived comes back the same");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const AutoreleasePool pool;
    checkArchive(NSData::dataWithBytes_length(data, size));
    return 0;
}
