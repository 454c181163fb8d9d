// File managers of one's own.
#include "TessarinFoundation/NSFileManager+TessarinExtensions.h"

#include "TessarinPlatform/Definition.h"

using namespace tessarin;

namespace {

// Of the class NSFileManager itself, whichever class is asked; that is meant.
NSFileManager fileManager(Class, SEL) { return adopt(NSFileManager::alloc().init()).autorelease(); }

const ExtensionGroup group{
    "NSFileManager", "TessarinExtensions", {classMethod("tessarin_fileManager", fileManager)}};

} // namespace

NSFileManager tessarin_fileManager() { return tessarin_fileManager(NSFileManager::classObject()); }

NSFileManager tessarin_fileManager(Class receiver) {
    return send<NSFileManager>(receiver, "tessarin_fileManager"_sel);
}
