// NSPropertyListSerialization. Each format has a reader and a writer of its own.
#include "TessarinPlatform/NSPropertyListSerialization.h"

#include "platform/embedded/foundation/BinaryPropertyListReader.h"
#include "platform/embedded/foundation/BinaryPropertyListWriter.h"
#include "platform/embedded/foundation/PropertyListError.h"
#include "platform/embedded/foundation/XMLPropertyListReader.h"
#include "platform/embedded/foundation/XMLPropertyListWriter.h"
#include "platform/embedded/runtime/BuiltInClass.h"
#include "platform/services/PropertyListValidity.h"

namespace tessarin::embedded {
namespace {

std::string_view bytesOf(NSData data) { return {static_cast<const char*>(data.bytes()), data.length()}; }

NSPropertyListFormat formatOf(std::string_view bytes) {
    return bytes.starts_with("bplist") ? NSPropertyListBinaryFormat_v1_0 : NSPropertyListXMLFormat_v1_0;
}

std::string write(NSObject propertyList, NSPropertyListFormat format) {
    switch (format) {
    case NSPropertyListXMLFormat_v1_0:
        return writeXMLPropertyList(propertyList);
    case NSPropertyListBinaryFormat_v1_0:
        return writeBinaryPropertyList(propertyList);
    case NSPropertyListOpenStepFormat:
        break;
    }
    throw PropertyListProblem("there is no writer of this format");
}

Retained<NSObject> read(std::string_view bytes, NSPropertyListFormat format,
                        NSPropertyListMutabilityOptions mutability) {
    if (format == NSPropertyListBinaryFormat_v1_0) return readBinaryPropertyList(bytes, mutability);
    return readXMLPropertyList(bytes, mutability);
}

NSData dataWithPropertyList(Class, SEL, NSObject propertyList, NSPropertyListFormat format, NSUInteger,
                            NSError* error) {
    if (!propertyList) {
        storePropertyListError(error, NSPropertyListWriteInvalidError, "Cannot write nil as a property list");
        return nil;
    }
    std::string defect = propertyListDefect(propertyList, format);
    if (defect.empty()) {
        try {
            const std::string document = write(propertyList, format);
            return NSData::dataWithBytes_length(document.data(), document.size());
        } catch (const PropertyListProblem& problem) {
            defect = problem.what();
        }
    }
    storePropertyListError(error, NSPropertyListWriteStreamError,
                           "Property list invalid for format: " + std::to_string(format) + " (" + defect
                               + ")");
    return nil;
}

id propertyListWithData(Class, SEL, NSData data, NSPropertyListMutabilityOptions mutability,
                        NSPropertyListFormat* format, NSError* error) {
    const std::string_view bytes = bytesOf(data);
    if (bytes.empty()) {
        storePropertyListError(error, NSPropertyListReadCorruptError,
                               "Cannot parse a NULL or zero-length data");
        return nil;
    }
    const NSPropertyListFormat found = formatOf(bytes);
    try {
        Retained<NSObject> propertyList = read(bytes, found, mutability);
        if (format) *format = found;
        return propertyList.autorelease();
    } catch (const PropertyListProblem& problem) {
        storePropertyListError(error, NSPropertyListReadCorruptError, problem.what());
        return nil;
    }
}

BOOL isValid(Class, SEL, NSObject propertyList, NSPropertyListFormat format) {
    return propertyListDefect(propertyList, format).empty();
}

} // namespace

ClassDescription describeNSPropertyListSerialization() {
    return {.name = "NSPropertyListSerialization",
            .superclass = "NSObject",
            .methods = {classMethod("dataWithPropertyList:format:options:error:", dataWithPropertyList),
                        classMethod("propertyListWithData:options:format:error:", propertyListWithData),
                        classMethod("propertyList:isValidForFormat:", isValid)}};
}

} // namespace tessarin::embedded
