#include "PlatformTest.h"

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

#include <unistd.h>

namespace tessarin::testing {
namespace {

constexpr int standardError = 2;

// A file rather than a pipe: nobody has to read while others write.
int openTemporaryFile() {
    char path[] = "/tmp/captured-XXXXXX";
    const int file = mkstemp(path);
    if (file < 0) throw std::runtime_error("no temporary file for standard error");
    unlink(path);
    return file;
}

} // namespace

std::string testFile(std::string_view name) { return std::string(TESSARIN_TESTS_DIRECTORY "/").append(name); }

CapturedStandardError::CapturedStandardError() : file_(openTemporaryFile()), original_(dup(standardError)) {
    std::fflush(stderr);
    dup2(file_, standardError);
}

CapturedStandardError::~CapturedStandardError() {
    std::fflush(stderr);
    dup2(original_, standardError);
    close(original_);
    close(file_);
}

std::vector<std::string> CapturedStandardError::lines() const {
    std::fflush(stderr);
    std::string all;
    char buffer[4096];
    ssize_t size = 0;
    for (off_t offset = 0; (size = pread(file_, buffer, sizeof buffer, offset)) > 0; offset += size)
        all.append(buffer, static_cast<std::size_t>(size));

    std::vector<std::string> lines;
    std::istringstream input(all);
    for (std::string line; std::getline(input, line);) lines.push_back(line);
    return lines;
}

} // namespace tessarin::testing
