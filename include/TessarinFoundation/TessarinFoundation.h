// The whole library.
#pragma once

#include "TessarinFoundation/NSArray+TessarinExtensions.h"
#include "TessarinFoundation/NSDictionary+TessarinExtensions.h"
#include "TessarinFoundation/NSFileManager+TessarinExtensions.h"
#include "TessarinFoundation/NSMutableArray+TessarinExtensions.h"
#include "TessarinFoundation/NSPropertyListSerialization+TessarinExtensions.h"
#include "TessarinFoundation/NSString+TessarinExtensions.h"
#include "TessarinFoundation/NSURL+TessarinExtensions.h"
#include "TessarinFoundation/TSSRAudio.h"
#include "TessarinFoundation/TSSRTransformedValue.h"
#include "TessarinFoundation/TSSRUniqueIndexer.h"
