// What ends the program: one line for standard error, and the exit status.
#pragma once

#include <stdexcept>

class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
    virtual int exitStatus() const { return 1; }
};

// The command line is not as it should be.
class UsageFailure : public Failure {
public:
    using Failure::Failure;
    int exitStatus() const override { return 2; }
};
