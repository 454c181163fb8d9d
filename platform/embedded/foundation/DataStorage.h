// How the embedded platform's data objects keep their bytes.
#pragma once

#include "TessarinPlatform/NSData.h"
#include "TessarinPlatform/Retained.h"
#include "platform/embedded/runtime/BuiltInClass.h"

#include <cstddef>
#include <span>

namespace tessarin::embedded {

struct DataStorage {
    DataStorage() = default;
    DataStorage(const DataStorage&) = delete;
    DataStorage& operator=(const DataStorage&) = delete;
    ~DataStorage();

    // Sets the length; new bytes are zero.
    void resize(NSUInteger wanted);
    // The bytes may be some of its own.
    void append(std::span<const std::byte> added);

    std::byte* bytes = nullptr;
    NSUInteger length = 0;
    NSUInteger capacity =
        0; // of a buffer of its own; 0 when the bytes stand behind the object or there is no room

private:
    void reserve(NSUInteger wanted);
};

// The bytes of any data object; nil has none.
inline std::span<const std::byte> bytesOf(NSData data) {
    return {static_cast<const std::byte*>(data.bytes()), data.length()};
}

// A new immutable data object.
Retained<NSData> newData(std::span<const std::byte> bytes);

} // namespace tessarin::embedded
