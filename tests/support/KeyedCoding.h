// What every class must do that can be archived.
#pragma once

#include "Archived.h"
#include "PlatformTest.h"

namespace tessarin::testing {

// An object conforms to NSCoding and comes back from archives of both formats as an equal one, mutable if it
// was; in both of its places, where it was met twice, as the same one.
template <HandleType T>
void expectKeyedCoding(T object) {
    EXPECT_TRUE(object.conformsToProtocol("NSCoding"_protocol));
    for (const NSPropertyListFormat format :
         {NSPropertyListBinaryFormat_v1_0, NSPropertyListXMLFormat_v1_0}) {
        const id back = NSKeyedUnarchiver::unarchiveObjectWithData(archived(object, format));
        EXPECT_TRUE(back.isEqual(object)) << text(object.description()) << " came back as "
                                          << text(back.description()) << " from format " << format;
        EXPECT_TRUE(back.isKindOfClass(send<Class>(object, "classForCoder"_sel)));
        const NSArray twice =
            NSKeyedUnarchiver::unarchiveObjectWithData(archived(NSArray::arrayOf(object, object), format));
        EXPECT_EQ(twice.objectAtIndex(0), twice.objectAtIndex(1));
        EXPECT_TRUE(twice.objectAtIndex(0).isEqual(object));
    }
}

} // namespace tessarin::testing
