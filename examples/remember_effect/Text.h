// Text between the command line, the platform's strings and the terminal.
#pragma once

#include "Failure.h"

#include <TessarinPlatform/NSString.h>

#include <string>

// Throws UsageFailure for what is no UTF-8.
inline tessarin::NSString stringFromArgument(const std::string& argument) {
    const tessarin::NSString string(argument);
    if (!string) throw UsageFailure("\"" + argument + "\" is not well-formed UTF-8");
    return string;
}

inline std::string text(tessarin::NSString string) { return static_cast<std::string>(string); }
