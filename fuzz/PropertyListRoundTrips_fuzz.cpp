// Property lists of any format through all that can be done with them: what is written is read, and written
// again to the byte; a copy with mutable containers is what writing and reading gives.
#include "PropertyListFuzzing.h"

#include "TessarinFoundation/NSPropertyListSerialization+TessarinExtensions.h"

using namespace tessarin;
using fuzzing::require;
using fuzzing::written;

namespace {

void checkBinaryForm(NSObject propertyList, bool isComparable) {
    const NSData first = written(propertyList, NSPropertyListBinaryFormat_v1_0);
    const NSObject read = fuzzing::readPropertyList(first, NSPropertyListImmutable, nullptr);
    require(!isComparable || read.isEqual(propertyList), "the binary form holds everything");
    require(written(read, NSPropertyListBinaryFormat_v1_0).isEqual(first),
            "the binary form comes back to the byte");
}

// In XML, dates lose their fractions: once.
void checkXMLForm(NSObject propertyList) {
    const NSData first = written(propertyList, NSPropertyListXMLFormat_v1_0);
    if (!first) return; // a date that has no written form
    const NSObject read = fuzzing::readPropertyList(first, NSPropertyListImmutable, nullptr);
    require(bool(read), "the XML form can be read");
    require(written(read, NSPropertyListXMLFormat_v1_0).isEqual(first)
                || fuzzing::UnpairedSurrogates().areIn(propertyList),
            "the XML form comes back to the byte");
}

void checkCopy(NSObject propertyList) {
    require(NSPropertyListSerialization::propertyList_isValidForFormat(propertyList,
                                                                       NSPropertyListBinaryFormat_v1_0),
            "what was read is a property list");
    require(tessarin_propertyListForValue(propertyList) == propertyList, "and stands for itself");
    NSError error;
    const NSObject copy = tessarin_propertyListWithMutableContainers_error(propertyList, &error);
    const NSObject read = fuzzing::readPropertyList(written(propertyList, NSPropertyListBinaryFormat_v1_0),
                                                    NSPropertyListMutableContainers, nullptr);
    require(bool(copy) != bool(error), "a copy or an error");
    // The two have bounds of their own for lists that share beyond all measure.
    if (!copy || !read) return;
    require(copy.isEqual(propertyList), "a copy is equal");
    require(written(copy, NSPropertyListBinaryFormat_v1_0)
                .isEqual(written(read, NSPropertyListBinaryFormat_v1_0)),
            "a copy is what writing and reading gives");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const AutoreleasePool pool;
    const NSData document = NSData::dataWithBytes_length(data, size);
    const NSObject propertyList = fuzzing::readPropertyList(document, NSPropertyListImmutable, nullptr);
    if (!propertyList) return 0;
    checkBinaryForm(propertyList, fuzzing::equalsItsLike(propertyList, document));
    if (fuzzing::standsForMany(propertyList)) return 0;
    checkXMLForm(propertyList);
    checkCopy(propertyList);
    return 0;
}
