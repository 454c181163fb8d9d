#include "platform/services/AudioComponentRegistry.h"

#include <algorithm>
#include <mutex>

namespace tessarin {
namespace {

constexpr OSStatus parameterError = -50;

// The order of searches. It is total, so a search goes on from any component, whatever was registered since.
bool isFoundBefore(const OpaqueAudioComponent& left, const OpaqueAudioComponent& right) {
    if (left.version != right.version) return left.version > right.version;
    return left.registrationIndex < right.registrationIndex;
}

bool fits(const OpaqueAudioComponent& component, const AudioComponentDescription& wanted) {
    const AudioComponentDescription& own = component.description;
    const auto fitsCode = [](OSType code, OSType wantedCode) {
        return wantedCode == 0 || code == wantedCode;
    };
    return fitsCode(own.componentType, wanted.componentType)
           && fitsCode(own.componentSubType, wanted.componentSubType)
           && fitsCode(own.componentManufacturer, wanted.componentManufacturer)
           && ((own.componentFlags ^ wanted.componentFlags) & wanted.componentFlagsMask) == 0;
}

} // namespace

AudioComponentRegistry& AudioComponentRegistry::shared() {
    // Never destroyed: a component lives as long as the process, and other threads may outlive its statics.
    static auto& registry = *new AudioComponentRegistry;
    return registry;
}

AudioComponentRegistry::Place
AudioComponentRegistry::placeAfter(const OpaqueAudioComponent& component) const {
    return std::ranges::upper_bound(
        components_, component, isFoundBefore, [](const auto& other) -> const auto& { return *other; });
}

AudioComponent AudioComponentRegistry::add(const AudioComponentDescription& description,
                                           Retained<NSString> name, UInt32 version,
                                           AudioComponentFactoryFunction factory) {
    const std::lock_guard lock(mutex_);
    auto component = std::make_unique<OpaqueAudioComponent>(
        OpaqueAudioComponent{description, std::move(name), version, factory, components_.size()});
    const Place place = placeAfter(*component);
    return components_.insert(place, std::move(component))->get();
}

UInt32 AudioComponentRegistry::count(const AudioComponentDescription& wanted) const {
    const std::shared_lock lock(mutex_);
    return static_cast<UInt32>(
        std::ranges::count_if(components_, [&](const auto& component) { return fits(*component, wanted); }));
}

AudioComponent AudioComponentRegistry::next(AudioComponent component,
                                            const AudioComponentDescription& wanted) const {
    const std::shared_lock lock(mutex_);
    const Place start = component ? placeAfter(*component) : components_.begin();
    const Place found =
        std::find_if(start, components_.end(), [&](const auto& other) { return fits(*other, wanted); });
    return found == components_.end() ? nullptr : found->get();
}

AudioComponent AudioComponentRegister(const AudioComponentDescription* description, NSString name,
                                      UInt32 version, AudioComponentFactoryFunction factory) {
    if (!description || !name) return nullptr;
    // Copied before the registry is locked, since a name of the application's own class runs its code.
    Retained<NSString> ownName = adopt(name.copy());
    return AudioComponentRegistry::shared().add(*description, std::move(ownName), version, factory);
}

UInt32 AudioComponentCount(const AudioComponentDescription* description) {
    return description ? AudioComponentRegistry::shared().count(*description) : 0;
}

AudioComponent AudioComponentFindNext(AudioComponent component,
                                      const AudioComponentDescription* description) {
    return description ? AudioComponentRegistry::shared().next(component, *description) : nullptr;
}

OSStatus AudioComponentGetDescription(AudioComponent component, AudioComponentDescription* description) {
    if (!component || !description) return parameterError;
    *description = component->description;
    return 0;
}

OSStatus AudioComponentCopyName(AudioComponent component, NSString* name) {
    if (!component || !name) return parameterError;
    *name = Retained<NSString>(component->name).leak();
    return 0;
}

OSStatus AudioComponentGetVersion(AudioComponent component, UInt32* version) {
    if (!component || !version) return parameterError;
    *version = component->version;
    return 0;
}

} // namespace tessarin
