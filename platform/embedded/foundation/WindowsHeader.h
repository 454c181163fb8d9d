// The header of Windows, without the macros that would take the names min and max from everyone.
#pragma once

#ifndef NOMINMAX
#    define NOMINMAX
#endif
#include <windows.h>
