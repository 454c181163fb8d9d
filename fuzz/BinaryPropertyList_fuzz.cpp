// The reader and the writer of property lists in binary form.
#include "PropertyListFuzzing.h"

#include <string_view>

using namespace tessarin;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (!std::string_view(reinterpret_cast<const char*>(data), size).starts_with("bplist")) return 0;
    fuzzing::checkPropertyList(data, size, NSPropertyListBinaryFormat_v1_0);
    return 0;
}
