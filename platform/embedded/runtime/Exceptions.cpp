#include "platform/embedded/runtime/Exceptions.h"

#include "platform/embedded/runtime/BuiltInClass.h"
#include "platform/embedded/runtime/Classes.h"

#include "TessarinPlatform/Exceptions.h"
#include "TessarinPlatform/FastEnumeration.h"

namespace tessarin {
namespace embedded {

ThrownException::ThrownException(NSException exception)
    : exception_(retain(exception)),
      text_(static_cast<std::string>(exception.name()) + ": "
            + static_cast<std::string>(exception.reason())) {}

void throwException(NSException exception) { throw ThrownException(exception); }

void raiseFrom(NSString name, NSObject receiver, SEL selector, std::string_view reason) {
    Object* object = receiver.object();
    const bool isClass = object && classRecordOf(object)->isMetaclass;
    const char* className =
        isClass ? runtime::className(object) : runtime::className(runtime::classOf(object));
    std::string text = "*** ";
    text += isClass ? "+[" : "-[";
    text.append(className ? className : "nil")
        .append(" ")
        .append(runtime::selectorName(selector))
        .append("]: ");
    text += reason;
    raise(name, NSString(text));
}

void raiseNilArgument(NSObject receiver, SEL selector) {
    raiseFrom(NSInvalidArgumentException(), receiver, selector, "nil argument");
}

} // namespace embedded

void raise(NSString name, NSString reason) {
    embedded::throwException(NSException::exceptionWithName_reason_userInfo(name, reason, nil));
}

namespace runtime {

Object* catching(void (*body)(void* context), void* context) {
    try {
        body(context);
        return nullptr;
    } catch (const embedded::ThrownException& thrown) {
        return retain(thrown.exception()).autorelease().object();
    }
}

void raiseMutation(Object* collection) {
    std::string reason = "*** Collection <";
    reason.append(className(classOf(collection)))
        .append(": ")
        .append(embedded::addressText(NSObject(collection)));
    reason += "> was mutated while being enumerated.";
    raise(NSGenericException(), NSString(reason));
}

} // namespace runtime
} // namespace tessarin
