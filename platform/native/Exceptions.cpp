// Raising the platform's exceptions.
#include "TessarinPlatform/Exceptions.h"

#include "TessarinPlatform/FastEnumeration.h"

#include <exception>

namespace tessarin {

void raise(NSString name, NSString reason) {
    NSException::exceptionWithName_reason_userInfo(name, reason, nil).raise();
    std::terminate(); // only where somebody replaced the platform's -raise by one that returns
}

void runtime::raiseMutation(Object* collection) {
    raise(NSGenericException(),
          NSString::stringWithFormat("*** Collection <%s: %p> was mutated while being enumerated."_ns,
                                     className(classOf(collection)), static_cast<void*>(collection)));
}

} // namespace tessarin
