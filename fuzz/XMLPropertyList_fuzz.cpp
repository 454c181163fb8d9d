// The reader and the writer of property lists in XML form.
#include "PropertyListFuzzing.h"

#include <string_view>

using namespace tessarin;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Another parser's; and a binary property list can hold what XML has no form for.
    if (std::string_view(reinterpret_cast<const char*>(data), size).starts_with("bplist")) return 0;
    fuzzing::checkPropertyList(data, size, NSPropertyListXMLFormat_v1_0);
    return 0;
}
