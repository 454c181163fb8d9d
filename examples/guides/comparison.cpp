#include <TessarinFoundation/TessarinFoundation.h>
#include <TessarinPlatform/TessarinPlatform.h>

#include <filesystem>
#include <iostream>

using namespace tessarin;

namespace {

void compare(const char* path, const char* directory) {
    std::cout << path << " from " << directory << ": "
              << tessarin_pathRelativeToDirectory(NSString(path), NSString(directory)) << ", "
              << std::filesystem::path(path).lexically_relative(directory).generic_string() << '\n';
}

} // namespace

int main() {
    const AutoreleasePool pool;
    compare("/x/y", "/a/b");         // ../../x/y, ../../x/y
    compare("/a/bc/d", "/a/b");      // c/d, ../bc/d       a prefix is compared by characters
    compare("/Music/a", "/music/b"); // ../a, ../../Music/a    components are compared without regard to case
    compare("/a/b", "/a/b");         // (empty), .
    compare("a/b", "/a");            // a/b, (empty)       a path that is not absolute comes back
}
