// Protocols: names that classes adopt. Each is an object that lives as long as the process.
#include "platform/embedded/runtime/Classes.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <string_view>

namespace tessarin::embedded {
namespace {

struct ProtocolRecord : Object {
    std::string name;
};

std::unordered_map<std::string, std::unique_ptr<ProtocolRecord>>& protocols() {
    static auto* table = new std::unordered_map<std::string, std::unique_ptr<ProtocolRecord>>;
    return *table;
}

// Those of the platform, which exist before a class that adopts them is made.
constexpr std::string_view platformProtocols[] = {"NSCoding",  "NSCopying",        "NSFastEnumeration",
                                                  "NSLocking", "NSMutableCopying", "NSObject"};

// Whether there is a protocol of that name: the platform's own, or one that a class adopts.
bool isKnown(const char* name) {
    return std::ranges::find(platformProtocols, name) != std::end(platformProtocols)
           || protocols().contains(name);
}

} // namespace

Object* protocolNamed(const char* name) {
    const std::lock_guard lock(runtimeMutex());
    auto& record = protocols()[name];
    if (!record) {
        record = std::make_unique<ProtocolRecord>();
        record->references.store(-1, std::memory_order_relaxed);
        record->name = name;
        // While the root class is being made there is no class Protocol to be an instance of; lookUpProtocol
        // fills it in.
        record->isa = nullptr;
    }
    return record.get();
}

const char* protocolName(Object* protocol) {
    return protocol ? static_cast<ProtocolRecord*>(protocol)->name.c_str() : nullptr;
}

} // namespace tessarin::embedded

namespace tessarin::runtime {

Object* lookUpProtocol(const char* name) {
    if (!name) return nullptr;
    const std::lock_guard lock(embedded::runtimeMutex());
    if (!embedded::isKnown(name)) return nullptr;
    Object* protocol = embedded::protocolNamed(name);
    if (!protocol->isa) protocol->isa = embedded::runtimeClass(lookUpClass("Protocol"));
    return protocol;
}

} // namespace tessarin::runtime
