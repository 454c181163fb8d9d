#include "platform/embedded/foundation/StringsFile.h"

#include "TessarinPlatform/NSPropertyListSerialization.h"

namespace tessarin::embedded {

NSDictionary textsOfStringsFile(std::string_view bytes) {
    if (bytes.empty()) return NSDictionary::dictionary();
    const NSData data = NSData::dataWithBytes_length(bytes.data(), bytes.size());
    return kindOf<NSDictionary>(NSPropertyListSerialization::propertyListWithData_options_format_error(
        data, NSPropertyListImmutable, nullptr, nullptr));
}

} // namespace tessarin::embedded
