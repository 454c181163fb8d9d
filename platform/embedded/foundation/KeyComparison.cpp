#include "platform/embedded/foundation/KeyComparison.h"

#include "platform/embedded/foundation/NSObject+KeyValueCoding.h"
#include "platform/embedded/foundation/Ordering.h"
#include "platform/embedded/foundation/StringFormat.h"
#include "platform/embedded/runtime/Classes.h"

#include "TessarinPlatform/Exceptions.h"
#include "TessarinPlatform/NSException.h"

#include <optional>

namespace tessarin::embedded {
namespace {

// Whether a method answers an NSInteger and takes one object. Of a smaller result the rest of what is read
// would be anything.
bool isComparison(std::string_view encoding) {
    constexpr std::string_view objects = "@#";
    return encoding.size() == 4 && encoding[0] == detail::integerLetter<NSInteger>()
           && objects.find(encoding[3]) != objects.npos;
}

} // namespace

KeyComparison::KeyComparison(NSSortDescriptor descriptor)
    : key_(retain(descriptor.key())),
      selector_(descriptor.selector()),
      isAscending_(descriptor.ascending()) {}

NSObject KeyComparison::valueOf(NSObject object) {
    if (!key_ || !object) return object;
    const Object* const classObject = object.object()->isa;
    if (classObject != accessedClass_) {
        accessor_ = directAccessor(object, key_);
        accessedClass_ = classObject;
    }
    return accessor_ ? send<id>(object, accessor_) : object.valueForKeyPath(key_);
}

NSComparisonResult KeyComparison::compare(NSObject left, NSObject right) {
    if (!selector_) return NSOrderedSame;
    if (!left || !right) return directed(ordering(left ? 1 : 0, right ? 1 : 0));
    requireComparison(left);
    // An application's comparison may answer any number.
    return directed(ordering(send<NSComparisonResult>(left, selector_, right), 0));
}

NSComparisonResult KeyComparison::directed(NSComparisonResult ascending) const {
    return isAscending_ ? ascending : static_cast<NSComparisonResult>(-ascending);
}

void KeyComparison::requireComparison(NSObject object) {
    const Object* const classObject = object.object()->isa;
    if (classObject == soundClass_ || selector_ == "compare:"_sel) return;
    // An object without the method says so itself.
    const std::optional<Method> method = findMethod(classRecordOf(object.object()), selector_);
    if (method && !isComparison(method->encoding))
        raise(NSInvalidArgumentException(),
              formatted("*** -[NSSortDescriptor compareObject:toObject:]: -[%s %s] is no comparison",
                        runtime::className(runtime::classOf(object.object())),
                        runtime::selectorName(selector_)));
    soundClass_ = classObject;
}

NSComparisonResult compareObject_toObject(NSSortDescriptor self, SEL, NSObject left, NSObject right) {
    KeyComparison comparison(self);
    // Retained, since the one's code may let go of what the other has answered.
    const Retained<NSObject> leftValue = retain(comparison.valueOf(left));
    const Retained<NSObject> rightValue = retain(comparison.valueOf(right));
    return comparison.compare(leftValue, rightValue);
}

} // namespace tessarin::embedded
