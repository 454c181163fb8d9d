// The reader of property lists in the old text form.
#include "PropertyListFuzzing.h"

using namespace tessarin;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const AutoreleasePool pool;
    NSPropertyListFormat format = NSPropertyListOpenStepFormat;
    NSPropertyListSerialization::propertyListWithData_options_format_error(
        NSData::dataWithBytes_length(data, size), NSPropertyListImmutable, &format, nullptr);
    // What another format's reader takes is that reader's affair.
    if (format == NSPropertyListOpenStepFormat)
        fuzzing::checkPropertyList(data, size, NSPropertyListBinaryFormat_v1_0);
    return 0;
}
