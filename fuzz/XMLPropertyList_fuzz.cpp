// Any bytes give a property list, or nil and an error; and what was read is written and read back as an equal
// one.
#include "TessarinPlatform/TessarinPlatform.h"

#include <cstdint>
#include <cstdlib>
#include <iostream>

using namespace tessarin;

namespace {

void require(bool condition, const char* requirement) {
    if (condition) return;
    std::cerr << "violated: " << requirement << std::endl;
    std::abort();
}

id read(NSData data, NSPropertyListMutabilityOptions options, NSError* error) {
    return NSPropertyListSerialization::propertyListWithData_options_format_error(data, options, nullptr,
                                                                                  error);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Another parser's; and a binary property list can hold what XML has no form for.
    constexpr std::string_view binaryMark = "bplist";
    if (std::string_view(reinterpret_cast<const char*>(data), size).starts_with(binaryMark)) return 0;

    const AutoreleasePool pool;
    const NSData document = NSData::dataWithBytes_length(data, size);
    NSError error;
    const NSObject propertyList = read(document, NSPropertyListImmutable, &error);
    if (!propertyList) {
        require(error && error.code() == 3840, "what cannot be read gives an error");
        require(error.userInfo().objectForKey(NSDebugDescriptionErrorKey()) != NSObject(),
                "an error has a text");
        return 0;
    }
    require(!error, "what can be read gives no error");

    const NSData written = NSPropertyListSerialization::dataWithPropertyList_format_options_error(
        propertyList, NSPropertyListXMLFormat_v1_0, 0, &error);
    require(bool(written), "what was read can be written");
    for (const NSUInteger options : {NSPropertyListImmutable, NSPropertyListMutableContainers,
                                     NSPropertyListMutableContainersAndLeaves}) {
        const NSObject again = read(written, options, &error);
        require(bool(again), "what was written can be read");
        require(again.isEqual(propertyList), "what was written reads back as an equal property list");
    }
    return 0;
}
