// File URLs relative to each other.
#include "TessarinFoundation/NSURL+TessarinExtensions.h"

#include "TessarinFoundation/NSString+TessarinExtensions.h"

#include "TessarinPlatform/Definition.h"

using namespace tessarin;

namespace {

NSURL fileURLRelativeToFileURL(NSURL self, SEL, NSURL base) {
    if (!self.isFileURL()) return nil;
    if (!base.isFileURL()) return nil; // a nil base is no file URL either
    // The platform takes the relative path against the current directory, not against the base; that is
    // meant.
    return NSURL::fileURLWithPath(tessarin_pathRelativeToDirectory(self.path(), base.path()));
}

const ExtensionGroup group{"NSURL",
                           "TessarinExtensions",
                           {instanceMethod("tessarin_fileURLRelativeToFileURL:", fileURLRelativeToFileURL)}};

} // namespace

NSURL tessarin_fileURLRelativeToFileURL(NSURL file, NSURL base) {
    return send<NSURL>(file, "tessarin_fileURLRelativeToFileURL:"_sel, base);
}
