// How methods are typed: by the runtime's record, and by the library's own derivation.
#pragma once

#include "PlatformTest.h"

#include "platform/native/ObjectiveC.h"

namespace tessarin::testing {

// Without the offsets of the arguments, which compilers write and nobody reads.
inline std::string encodingOf(Class classObject, const char* selector) {
    const ::Method method =
        class_getInstanceMethod(native::runtimeClass(classObject.object()), sel_registerName(selector));
    std::string encoding = method ? method_getTypeEncoding(method) : "(no method)";
    std::erase_if(encoding, [](char character) { return character >= '0' && character <= '9'; });
    return encoding;
}

template <class Result, class Self, class... Arguments>
std::string ownEncoding() {
    return std::string(tessarin::detail::methodEncoding<Result, Self, Arguments...>.view());
}

} // namespace tessarin::testing
