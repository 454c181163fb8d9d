// The error domain that applications make their errors in.
#include "TessarinFoundation/TSSRAudio.h"

using namespace tessarin;

const NSString TSSRErrorDomain = "Tessarin Error Domain"_ns;
