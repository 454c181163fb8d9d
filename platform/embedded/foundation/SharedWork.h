// Work that several threads do together.
#pragma once

#include "TessarinPlatform/NSObject.h"

#include <functional>

namespace tessarin::embedded {

// Calls work(portion) once for each portion from 0 up, on at most so many threads as are asked for and as the
// machine has, the calling one included, and returns when all are done. Each thread takes the next portion
// that is left. The others have an autorelease pool of their own.
//
// No further portion is taken once work answers false or throws; the first that was thrown is thrown on in
// the calling thread, when no other is at work any more.
void shareWork(NSUInteger portions, NSUInteger mostThreads, const std::function<bool(NSUInteger)>& work);

} // namespace tessarin::embedded
