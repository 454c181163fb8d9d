// Property lists of every kind of object, and a form of them that other software can compare.
#pragma once

#include "TessarinPlatform/TessarinPlatform.h"

#include <string>
#include <vector>

namespace tessarin::interop {

struct PropertyListTree {
    std::string name; // that of its files as well
    Retained<NSObject> root;
    bool hasXML = true; // whether XML can hold it as it is

    // Whether its files are kept in tests/data/property_lists, as each platform wrote them:
    //
    //   build/dev/tests/interop/property_lists record tests/data/property_lists/embedded
    //   build/native/tests/interop/property_lists record tests/data/property_lists/gnustep
    bool isRecorded = true;
};

// The same on every run.
std::vector<PropertyListTree> propertyListTrees();

// One line that is the same for equal property lists, whatever program writes it: strings as UTF-16 and data
// in hexadecimal digits, reals and dates as the bits of a double, keys in the order of their digits.
//
//   {s006b:[i-5,rb3ff0000000000000,b1,s00e9,x00ff,d0000000000000000]}
std::string plainForm(NSObject propertyList);

} // namespace tessarin::interop
