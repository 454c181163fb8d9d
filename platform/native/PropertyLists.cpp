#include "TessarinPlatform/PropertyLists.h"

#include "platform/native/PropertyLists.h"
#include "platform/services/PropertyListCopy.h"

#include "TessarinPlatform/NSMutableArray.h"
#include "TessarinPlatform/NSMutableDictionary.h"
#include "TessarinPlatform/NSMutableString.h"
#include "TessarinPlatform/NSNull.h"
#include "TessarinPlatform/NSNumber.h"

#include <limits>

namespace tessarin {
namespace {

// Looks into the platform's objects through their own operations.
struct PropertyListObjects {
    static const Object* classOf(NSObject object) { return runtime::classOf(object.object()); }
    // How containers own each other is the platform's own affair.
    static bool mayBeShared(NSObject) { return true; }
    static bool isForeign(NSObject, PropertyListKind) { return true; }

    class Contents {
    public:
        Contents(NSObject container, PropertyListKind kind, bool /*isForeign*/)
            : container_(container),
              isDictionary_(kind == PropertyListKind::dictionary),
              fetched_(container, kind) {}

        NSObject container() const { return container_; }
        bool isDictionary() const { return isDictionary_; }
        std::size_t count() const { return fetched_.objects.size(); }
        bool next(NSObject& key, NSObject& object) {
            if (position_ == fetched_.objects.size()) return false;
            if (isDictionary_) key = fetched_.keys[position_];
            object = fetched_.objects[position_++];
            return true;
        }

    private:
        NSObject container_;
        bool isDictionary_;
        FetchedContents fetched_;
        std::size_t position_ = 0;
    };

    static Retained<NSObject> newMutableContainer(NSObject source, PropertyListKind kind) {
        if (kind == PropertyListKind::array)
            return adopt(NSObject(NSMutableArray::alloc().initWithArray(as<NSArray>(source))));
        return adopt(NSObject(NSMutableDictionary::alloc().initWithDictionary(as<NSDictionary>(source))));
    }
    static NSUInteger countOf(NSObject container, PropertyListKind kind) {
        return kind == PropertyListKind::array ? as<NSArray>(container).count()
                                               : as<NSDictionary>(container).count();
    }

    static bool isInteger(NSNumber number) {
        return std::string_view("sSiIlL").find(number.objCType()[0]) != std::string_view::npos;
    }
    static bool isDecimal(NSObject object) {
        const Class decimalClass = "NSDecimalNumber"_class;
        return decimalClass && object.isKindOfClass(decimalClass);
    }
    static bool mayStay(NSObject leaf, PropertyListKind kind) {
        switch (kind) {
        case PropertyListKind::string:
            return !leaf.isKindOfClass(NSMutableString::classObject());
        case PropertyListKind::data:
            return !leaf.isKindOfClass("NSMutableData"_class);
        case PropertyListKind::number:
            return !isDecimal(leaf) && !isInteger(as<NSNumber>(leaf));
        default:
            return true;
        }
    }
    static Retained<NSObject> newLeaf(NSObject leaf, PropertyListKind kind) {
        if (kind != PropertyListKind::number) return adopt(static_cast<NSObject>(leaf.copy()));
        const auto number = as<NSNumber>(leaf);
        if (isDecimal(leaf)) return retain<NSObject>(NSNumber::numberWithDouble(number.doubleValue()));
        const unsigned long long value = number.unsignedLongLongValue();
        const bool isUnsigned = number.objCType()[0] == 'L';
        if (isUnsigned && value > std::numeric_limits<long long>::max())
            return retain<NSObject>(NSNumber::numberWithUnsignedLongLong(value));
        return retain<NSObject>(NSNumber::numberWithLongLong(number.longLongValue()));
    }

    // Each object is asked for by its place, since what is read is replaced meanwhile.
    class CopiedContents {
    public:
        CopiedContents(NSObject container, PropertyListKind kind)
            : container_(container),
              keys_(retain(kind == PropertyListKind::dictionary ? as<NSDictionary>(container).allKeys()
                                                                : NSArray())),
              count_(countOf(container, kind)) {}

        bool next(NSObject& object) {
            if (position_ == count_) return false;
            object = keys_ ? as<NSDictionary>(container_).objectForKey(keys_.objectAtIndex(position_))
                           : as<NSArray>(container_).objectAtIndex(position_);
            ++position_;
            return true;
        }
        void replace(NSObject object) {
            const NSUInteger index = position_ - 1;
            if (keys_)
                as<NSMutableDictionary>(container_).setObject_forKey(object, keys_.objectAtIndex(index));
            else
                as<NSMutableArray>(container_).replaceObjectAtIndex_withObject(index, object);
        }

    private:
        NSObject container_;
        Retained<NSArray> keys_; // nil for an array
        NSUInteger count_;
        NSUInteger position_ = 0;
    };
};

// Whether the platform refuses what is no property list. It is asked itself where it does.
bool examinesPropertyLists() {
    static const bool does = !NSPropertyListSerialization::propertyList_isValidForFormat(
        NSNull::null(), NSPropertyListXMLFormat_v1_0);
    return does;
}

} // namespace

id writtenAndRead(NSObject propertyList, NSError* error) {
    const NSData data = NSPropertyListSerialization::dataWithPropertyList_format_options_error(
        propertyList, NSPropertyListBinaryFormat_v1_0, 0, error);
    if (!data) return nil;
    return NSPropertyListSerialization::propertyListWithData_options_format_error(
        data, NSPropertyListMutableContainers, nullptr, error);
}

bool isPropertyList(NSObject object, NSPropertyListFormat format) {
    if (examinesPropertyLists())
        return NSPropertyListSerialization::propertyList_isValidForFormat(object, format);
    return PropertyListExamination<PropertyListObjects>(format).defectOf(object).empty();
}

id propertyListWithMutableContainers(NSObject propertyList, NSError* error) {
    // nil is answered here on every platform; some raise for it.
    if (propertyList && examinesPropertyLists()) return writtenAndRead(propertyList, error);
    return copyWithMutableContainers<PropertyListObjects>(propertyList, error);
}

} // namespace tessarin
