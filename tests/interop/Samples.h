// The objects whose archives are kept in tests/data/archives, written on one platform and read on every
// other.
//
// A new sample is a row in Samples.cpp and what it holds in check_layout.py. Its archives are then written on
// both platforms:
//
//   build/dev/tests/interop/write_archives tests/data/archives/embedded
//   build/native/tests/interop/write_archives tests/data/archives/gnustep
//
// An archive that is kept stays as it is: every later version must read it.
#pragma once

#include "TessarinPlatform/TessarinPlatform.h"

#include <string>
#include <vector>

namespace tessarin::interop {

inline bool isEqualOrNil(NSObject read, NSObject made) { return read == made || read.isEqual(made); }

struct Sample {
    const char* name; // that of its files as well
    NSObject (*make)();
    bool (*isReadAs)(NSObject read, NSObject made) = isEqualOrNil; // what an archive gives back
};
const std::vector<Sample>& samples();
// Those of them that hold a TSSRTransformedValue.
std::vector<Sample> transformedValueSamples();

struct ArchiveFormat {
    const char* name;
    NSPropertyListFormat format;
};
inline constexpr ArchiveFormat archiveFormats[] = {{"binary", NSPropertyListBinaryFormat_v1_0},
                                                   {"xml", NSPropertyListXMLFormat_v1_0}};

inline std::string fileName(const Sample& sample, const ArchiveFormat& format) {
    return std::string(sample.name) + "." + format.name + ".archive";
}

} // namespace tessarin::interop
