// NSPropertyListSerialization. Each format has a reader and a writer of its own.
#include "TessarinPlatform/NSPropertyListSerialization.h"

#include "platform/embedded/foundation/BinaryPropertyListReader.h"
#include "platform/embedded/foundation/BinaryPropertyListWriter.h"
#include "platform/embedded/foundation/DocumentText.h"
#include "platform/embedded/foundation/OpenStepPropertyListReader.h"
#include "platform/embedded/foundation/PropertyLists.h"
#include "platform/embedded/foundation/XMLPropertyListReader.h"
#include "platform/embedded/foundation/XMLPropertyListWriter.h"
#include "platform/embedded/runtime/BuiltInClass.h"
#include "platform/services/PropertyListError.h"
#include "platform/services/PropertyListExamination.h"

namespace tessarin::embedded {
namespace {

std::string_view bytesOf(NSData data) { return {static_cast<const char*>(data.bytes()), data.length()}; }

std::string write(NSObject propertyList, NSPropertyListFormat format, std::size_t objectCount) {
    switch (format) {
    case NSPropertyListXMLFormat_v1_0:
        return writeXMLPropertyList(propertyList, objectCount);
    case NSPropertyListBinaryFormat_v1_0:
        return writeBinaryPropertyList(propertyList);
    case NSPropertyListOpenStepFormat:
        break;
    }
    throw PropertyListProblem("there is no writer of this format");
}

// Nothing but a tag begins with "<", save data in the old text form: hexadecimal digits up to ">". No tag of
// a property list is spelled with such digits alone.
bool isXML(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\n\v\f\r");
    if (first == std::string_view::npos || text[first] != '<') return false;
    const std::size_t end = text.find_first_not_of("0123456789abcdefABCDEF \t\n\v\f\r", first + 1);
    return end == std::string_view::npos || text[end] != '>';
}

// Reads bytes in whatever format they are, which is told through `format`.
Retained<NSObject> read(std::string_view bytes, NSPropertyListMutabilityOptions mutability,
                        NSPropertyListFormat& format) {
    if (bytes.starts_with("bplist")) {
        format = NSPropertyListBinaryFormat_v1_0;
        return readBinaryPropertyList(bytes, mutability);
    }
    std::string converted;
    const std::string_view text = textOfDocument(bytes, converted);
    if (isXML(text)) {
        format = NSPropertyListXMLFormat_v1_0;
        return readXMLPropertyList(text, mutability);
    }
    format = NSPropertyListOpenStepFormat;
    return readOpenStepPropertyList(text, mutability);
}

NSData dataWithPropertyList(Class, SEL, NSObject propertyList, NSPropertyListFormat format, NSUInteger,
                            NSError* error) {
    if (!propertyList) {
        storeNilPropertyListError(error);
        return nil;
    }
    PropertyListExamination<PropertyListStorage> examination(format);
    std::string defect = examination.defectOf(propertyList);
    if (defect.empty()) {
        try {
            const std::string document = write(propertyList, format, examination.objectCount());
            return NSData::dataWithBytes_length(document.data(), document.size());
        } catch (const PropertyListProblem& problem) {
            defect = problem.what();
        }
    }
    storeInvalidPropertyListError(error, format, defect);
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
    try {
        NSPropertyListFormat found{};
        Retained<NSObject> propertyList = read(bytes, mutability, found);
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
