// A folder for the files of one test.
#pragma once

#include <filesystem>
#include <fstream>
#include <string_view>

#include <unistd.h>

namespace tessarin::testing {

class TemporaryFolder {
public:
    TemporaryFolder() {
        static int count = 0;
        path_ = std::filesystem::temp_directory_path()
                / ("tessarin-test-" + std::to_string(::getpid()) + "-" + std::to_string(++count));
        std::filesystem::create_directories(path_);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

    // Makes a file, and the folders that lead to it.
    void write(const std::filesystem::path& file, std::string_view contents) const {
        std::filesystem::create_directories((path_ / file).parent_path());
        std::ofstream(path_ / file, std::ios::binary) << contents;
    }

private:
    std::filesystem::path path_;
};

} // namespace tessarin::testing
