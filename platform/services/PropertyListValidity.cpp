#include "platform/services/PropertyListValidity.h"

#include "TessarinPlatform/NSDate.h"
#include "TessarinPlatform/NSNumber.h"

#include <unordered_map>
#include <vector>

namespace tessarin {
namespace {

// The names that the platform's error texts give to classes. Other objects count as of no particular type.
std::string typeName(NSObject object) {
    const auto isOf = [&](Class classObject) { return classObject && object.isKindOfClass(classObject); };
    if (const auto number = kindOf<NSNumber>(object)) {
        const char kind = number.objCType()[0];
        return kind == 'c' || kind == 'C' || kind == 'B' ? "CFBoolean" : "CFNumber";
    }
    if (isOf("NSNull"_class)) return "CFNull";
    if (isOf("NSDate"_class)) return "CFDate";
    if (isOf("NSData"_class)) return "CFData";
    if (isOf("NSArray"_class)) return "CFArray";
    if (isOf("NSDictionary"_class)) return "CFDictionary";
    if (isOf("NSURL"_class)) return "CFURL";
    if (isOf("NSSet"_class)) return "CFSet";
    if (isOf("NSCharacterSet"_class)) return "CFCharacterSet";
    return "CFType";
}

class Examination {
public:
    explicit Examination(NSPropertyListFormat format) : format_(format) {}

    std::string defectOf(NSObject root);

private:
    enum class Kind { leaf, array, dictionary, other };
    Kind kindOfObject(NSObject object) const;
    bool admit(NSObject object);
    void enter(NSObject container);

    struct Step {
        NSObject container;
        bool leaves; // its contents have been examined
    };

    const NSPropertyListFormat format_;
    std::vector<Step> steps_;                    // still to be taken, the next last
    std::unordered_map<Object*, bool> examined_; // containers entered; true once everything in them is sound
    std::string defect_;
};

Examination::Kind Examination::kindOfObject(NSObject object) const {
    if (object.isKindOfClass(NSString::classObject())) return Kind::leaf;
    if (object.isKindOfClass(NSArray::classObject())) return Kind::array;
    if (object.isKindOfClass(NSDictionary::classObject())) return Kind::dictionary;
    if (object.isKindOfClass(NSData::classObject())) return Kind::leaf;
    const bool hasOnlyText = format_ == NSPropertyListOpenStepFormat;
    if (hasOnlyText) return Kind::other;
    if (object.isKindOfClass(NSNumber::classObject())) return Kind::leaf;
    if (object.isKindOfClass(NSDate::classObject())) return Kind::leaf;
    // A reference in a keyed archive, on the platforms whose property lists show it as a class of that name.
    if (const Class uid = "CFKeyedArchiverUID"_class; uid && object.isKindOfClass(uid)) return Kind::leaf;
    return Kind::other;
}

// Whether an object may stand in a property list. A container is noted down, to be entered later.
bool Examination::admit(NSObject object) {
    switch (kindOfObject(object)) {
    case Kind::leaf:
        return true;
    case Kind::array:
    case Kind::dictionary:
        steps_.push_back({object, false});
        return true;
    case Kind::other:
        break;
    }
    defect_ = object ? "property lists cannot contain objects of type '" + typeName(object) + "'"
                     : "property lists cannot contain NULL";
    return false;
}

void Examination::enter(NSObject container) {
    if (const auto array = kindOf<NSArray>(container)) {
        for (const NSObject item : array)
            if (!admit(item)) return;
        return;
    }
    const auto dictionary = as<NSDictionary>(container);
    for (const NSObject key : dictionary) {
        if (!key.isKindOfClass(NSString::classObject())) {
            defect_ = "property list dictionaries may only have keys which are CFStrings, not '"
                      + typeName(key) + "'";
            return;
        }
        if (!admit(dictionary.objectForKey(key))) return;
    }
}

std::string Examination::defectOf(NSObject root) {
    admit(root);
    while (defect_.empty() && !steps_.empty()) {
        const auto [container, leaves] = steps_.back();
        if (leaves) {
            examined_[container.object()] = true;
            steps_.pop_back();
            continue;
        }
        const auto [entry, isNew] = examined_.try_emplace(container.object(), false);
        if (!isNew) {
            // Entered and not left: the way here leads through the container itself.
            if (!entry->second) return "property lists cannot contain recursive container references";
            steps_.pop_back();
            continue;
        }
        steps_.back().leaves = true;
        enter(container);
    }
    return std::move(defect_);
}

} // namespace

std::string propertyListDefect(NSObject object, NSPropertyListFormat format) {
    if (format != NSPropertyListOpenStepFormat && format != NSPropertyListXMLFormat_v1_0
        && format != NSPropertyListBinaryFormat_v1_0)
        return "there is no such format";
    return Examination(format).defectOf(object);
}

} // namespace tessarin
