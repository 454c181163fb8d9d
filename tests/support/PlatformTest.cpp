#include "PlatformTest.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <fcntl.h>
#include <unistd.h>

namespace tessarin::testing {
namespace {

constexpr int standardError = 2;

// A file rather than a pipe: nobody has to read while others write.
std::string newFileName() {
    static int count = 0;
    const std::string name = "captured-" + std::to_string(getpid()) + "-" + std::to_string(++count);
    return (std::filesystem::temp_directory_path() / name).string();
}

} // namespace

std::string testFile(std::string_view name) { return std::string(TESSARIN_TESTS_DIRECTORY "/").append(name); }

std::filesystem::path& testProgram() {
    static std::filesystem::path path;
    return path;
}

CapturedStandardError::CapturedStandardError() : path_(newFileName()), original_(dup(standardError)) {
    const int file = open(path_.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_APPEND, 0600);
    if (file < 0) throw std::runtime_error("no temporary file for standard error");
    std::fflush(stderr);
    dup2(file, standardError);
    close(file);
}

CapturedStandardError::~CapturedStandardError() {
    std::fflush(stderr);
    dup2(original_, standardError);
    close(original_);
    std::remove(path_.c_str());
}

std::vector<std::string> CapturedStandardError::lines() const {
    std::fflush(stderr);
    std::vector<std::string> lines;
    std::ifstream file(path_);
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
}

} // namespace tessarin::testing
