#include "TessarinPlatform/detail/LibraryAnchor.h"

const char tessarin_libraryAnchor = 0;
