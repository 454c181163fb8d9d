// The platform's formats: C's conversions and %@, whatever locale the process has set.
#pragma once

#include "platform/embedded/foundation/StringStorage.h"

#include <cstdarg>

namespace tessarin::embedded {

// Appends a format with its arguments. Conversions: % @ d D i u U x X o O c C s S p a A e E f F g G, with the
// flags - + space # 0, a width, a precision, * for either, the length modifiers h hh l ll q z t j L, and
// argument positions (%2$@). %@ takes an object and shows its description; nil and null show as (null). %s
// takes UTF-8, %S and %C UTF-16. What is no conversion stands for itself.
void appendFormat(StringStorage& result, NSString format, std::va_list arguments);

// An autoreleased string from a format in UTF-8.
NSString formatted(const char* format, ...);

} // namespace tessarin::embedded
