#include "TessarinPlatform/NSScroller.h"
#include "platform/embedded/runtime/BuiltInClass.h"

namespace tessarin::embedded {

ClassDescription describeNSScroller() { return {.name = "NSScroller", .superclass = "NSView"}; }

} // namespace tessarin::embedded
