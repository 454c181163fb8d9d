// Keyed archives put together by hand, to hold what no archiver writes.
#pragma once

#include "PlatformTest.h"

#include "platform/embedded/foundation/KeyedArchiverUID.h"

namespace tessarin::testing {

inline NSObject reference(std::uint32_t number) {
    return embedded::newKeyedArchiverUID(number).autorelease();
}
inline NSNumber number(int value) { return NSNumber::numberWithInt(value); }

template <class... Entries> // key, value, key, value, ...
NSDictionary dictionaryOf(const Entries&... entries) {
    const NSMutableDictionary made = NSMutableDictionary::dictionary();
    const NSObject all[] = {entries...};
    for (std::size_t index = 0; index < std::size(all); index += 2)
        made.setObject_forKey(all[index + 1], all[index]);
    return made;
}
inline NSDictionary classNamed(NSString name) {
    return dictionaryOf("$classname"_ns, name, "$classes"_ns, NSArray::arrayOf(name, "NSObject"_ns));
}
inline NSDictionary container(std::uint32_t classNumber, NSArray references) {
    return dictionaryOf("$class"_ns, reference(classNumber), "NS.objects"_ns, references);
}

inline NSData dataOf(NSObject propertyList) {
    return NSPropertyListSerialization::dataWithPropertyList_format_options_error(
        propertyList, NSPropertyListBinaryFormat_v1_0, 0, nullptr);
}
// An archive whose root is object 1, the first of those given.
inline NSDictionary archiveOf(NSArray objects) {
    const NSMutableArray all = NSMutableArray::arrayWithArray(NSArray::arrayOf("$null"_ns));
    all.addObjectsFromArray(objects);
    return dictionaryOf("$version"_ns, number(100000), "$archiver"_ns, "NSKeyedArchiver"_ns, "$top"_ns,
                        dictionaryOf("root"_ns, reference(1)), "$objects"_ns, all);
}

// What is raised, or (nothing).
inline std::string raisedBy(NSData archive) {
    std::string raised = "(nothing)";
    attempt(
        [&] { static_cast<void>(NSKeyedUnarchiver::unarchiveObjectWithData(archive)); },
        [&](NSException exception) { raised = text(exception.name()) + ": " + text(exception.reason()); });
    return raised;
}

} // namespace tessarin::testing
