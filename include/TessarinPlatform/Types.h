// The platform's plain types: integers, the boolean, ranges, comparison results.
#pragma once

#include "TessarinPlatform/detail/Configuration.h"

#include <cstddef>
#include <cstdint>
#include <limits>

namespace tessarin {

using NSInteger = std::intptr_t;   // pointer width
using NSUInteger = std::uintptr_t; // pointer width
using NSTimeInterval = double;     // seconds
using unichar = char16_t;          // one UTF-16 code unit

// The platform's boolean, in the width that its compiled code expects.
#if TESSARIN_PLATFORM_EMBEDDED || (defined(__APPLE__) && defined(__aarch64__))
using BOOL = bool;
#elif defined(__APPLE__)
using BOOL = signed char;
#else
using BOOL = unsigned char;
#endif
// Headers of the platform, where a file has included some before, have macros of these names.
#if !defined(YES)
inline constexpr BOOL YES = 1;
inline constexpr BOOL NO = 0;
#endif

#if !defined(nil)
inline constexpr std::nullptr_t nil = nullptr;
#endif

// The index that a search answers which found nothing. The searches answer NSUInteger; some are kept as
// NSInteger, and the value is the same in both.
inline constexpr NSInteger NSNotFound = std::numeric_limits<NSInteger>::max();

enum NSComparisonResult : NSInteger { NSOrderedAscending = -1, NSOrderedSame = 0, NSOrderedDescending = 1 };

struct NSRange {
    NSUInteger location;
    NSUInteger length;

    friend constexpr bool operator==(NSRange, NSRange) = default;
};

} // namespace tessarin
