// NSCoder, the abstract class of all coders.
#include "TessarinPlatform/NSCoder.h"

#include "TessarinPlatform/Exceptions.h"
#include "platform/embedded/runtime/BuiltInClass.h"

#include <string>

namespace tessarin::embedded {
namespace {

// Nobody but a subclass can do it.
template <class Result, class... Arguments>
Result abstractOperation(NSCoder self, SEL selector, Arguments...) {
    const std::string operation = runtime::selectorName(selector);
    const std::string className = runtime::className(runtime::classOf(self.object()));
    tessarin::raise(NSInvalidArgumentException(),
                    NSString("*** -" + operation + " only defined for abstract class.  Define -[" + className
                             + " " + operation + "]!"));
}

template <class Value>
MethodRow encoding(const char* selector) {
    return instanceMethod(selector, abstractOperation<void, Value, NSString>);
}
template <class Value>
MethodRow decoding(const char* selector) {
    return instanceMethod(selector, abstractOperation<Value, NSString>);
}

BOOL allowsKeyedCoding(NSCoder, SEL) { return NO; }

} // namespace

ClassDescription describeNSCoder() {
    return {
        .name = "NSCoder",
        .superclass = "NSObject",
        .methods = {instanceMethod("allowsKeyedCoding", allowsKeyedCoding),
                    encoding<NSObject>("encodeObject:forKey:"),
                    encoding<NSObject>("encodeConditionalObject:forKey:"),
                    encoding<BOOL>("encodeBool:forKey:"),
                    encoding<int>("encodeInt:forKey:"),
                    encoding<std::int32_t>("encodeInt32:forKey:"),
                    encoding<std::int64_t>("encodeInt64:forKey:"),
                    encoding<NSInteger>("encodeInteger:forKey:"),
                    encoding<float>("encodeFloat:forKey:"),
                    encoding<double>("encodeDouble:forKey:"),
                    instanceMethod("encodeBytes:length:forKey:",
                                   abstractOperation<void, const std::uint8_t*, NSUInteger, NSString>),
                    decoding<BOOL>("containsValueForKey:"),
                    decoding<id>("decodeObjectForKey:"),
                    decoding<BOOL>("decodeBoolForKey:"),
                    decoding<int>("decodeIntForKey:"),
                    decoding<std::int32_t>("decodeInt32ForKey:"),
                    decoding<std::int64_t>("decodeInt64ForKey:"),
                    decoding<NSInteger>("decodeIntegerForKey:"),
                    decoding<float>("decodeFloatForKey:"),
                    decoding<double>("decodeDoubleForKey:"),
                    instanceMethod("decodeBytesForKey:returnedLength:",
                                   abstractOperation<const std::uint8_t*, NSString, NSUInteger*>)},
    };
}

} // namespace tessarin::embedded
