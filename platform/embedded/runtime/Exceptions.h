// How the embedded platform throws its exceptions: as C++ exceptions that carry the object.
#pragma once

#include "TessarinPlatform/NSException.h"
#include "TessarinPlatform/Retained.h"

#include <exception>
#include <string>

namespace tessarin::embedded {

class ThrownException : public std::exception {
public:
    explicit ThrownException(NSException exception);

    NSException exception() const { return exception_; }
    // "name: reason", which is what the C++ runtime prints of an exception that nobody catches.
    const char* what() const noexcept override { return text_.c_str(); }

private:
    Retained<NSException> exception_;
    std::string text_;
};

[[noreturn]] void throwException(NSException exception);

} // namespace tessarin::embedded
