// Runs a fuzz target over the files and directories that are given, without a fuzzer. It fails when it is
// given nothing to run.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::size_t inputsRun = 0;

void runFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    // Said beforehand, so that the last line names the input that crashes.
    std::cout << path.string() << std::endl;
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    ++inputsRun;
}

} // namespace

int main(int argumentCount, char** arguments) {
    for (int index = 1; index < argumentCount; ++index) {
        const std::filesystem::path path = arguments[index];
        if (!std::filesystem::is_directory(path)) {
            runFile(path);
            continue;
        }
        for (const auto& entry : std::filesystem::recursive_directory_iterator(path))
            if (entry.is_regular_file()) runFile(entry.path());
    }
    std::cout << inputsRun << " inputs" << std::endl;
    return inputsRun > 0 ? 0 : 1;
}
