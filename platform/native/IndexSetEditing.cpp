#include "TessarinPlatform/IndexSetEditing.h"

namespace tessarin {

// How the platform's sets keep their indexes is their own affair.
bool moveIndexAtOnce(NSUInteger, NSMutableIndexSet, NSMutableIndexSet) { return false; }

} // namespace tessarin
