#include "TessarinPlatform/IndexSetEditing.h"

namespace tessarin {

// How the platform's sets keep their indexes is their own affair.
IndexEdit addIndexAtOnce(NSMutableIndexSet, NSUInteger) { return IndexEdit::notMade; }
IndexEdit removeIndexAtOnce(NSMutableIndexSet, NSUInteger) { return IndexEdit::notMade; }

} // namespace tessarin
