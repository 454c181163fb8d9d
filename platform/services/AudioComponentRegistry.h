// The components that are registered in this process.
#pragma once

#include "TessarinPlatform/AudioComponent.h"
#include "TessarinPlatform/Retained.h"

#include <cstddef>
#include <memory>
#include <shared_mutex>
#include <vector>

namespace tessarin {

// A component never changes and never goes, so it is read without a lock.
struct OpaqueAudioComponent {
    AudioComponentDescription description;
    Retained<NSString> name;
    UInt32 version;
    AudioComponentFactoryFunction factory;
    std::size_t registrationIndex; // how many were registered before it
};

class AudioComponentRegistry {
public:
    static AudioComponentRegistry& shared();

    AudioComponent add(const AudioComponentDescription& description, Retained<NSString> name, UInt32 version,
                       AudioComponentFactoryFunction factory);
    UInt32 count(const AudioComponentDescription& wanted) const;
    AudioComponent next(AudioComponent component, const AudioComponentDescription& wanted) const;

private:
    using Components = std::vector<std::unique_ptr<OpaqueAudioComponent>>;
    using Place = Components::const_iterator;

    Place placeAfter(const OpaqueAudioComponent& component) const;

    mutable std::shared_mutex mutex_;
    Components components_; // in the order in which searches find them
};

} // namespace tessarin
