// The audio components that the platform's registry offers.
#pragma once

#include <TessarinPlatform/AudioComponent.h>
#include <TessarinPlatform/Retained.h>

#include <string>
#include <vector>

struct Component {
    tessarin::AudioComponentDescription description;
    tessarin::UInt32 version;
    tessarin::Retained<tessarin::NSString> displayName; // «Acme: Delay»
    tessarin::Retained<tessarin::NSString> name;        // «Delay»
    tessarin::Retained<tessarin::NSString> manufacturer; // «Acme»; nil when the display name has no such part

    // The line under which the component is kept: «Acme: aufx; dely; Acme».
    tessarin::NSString identifier() const;
};

// Registers what bundles declare. A path is a bundle, an Info.plist, or a folder of .component bundles.
// Throws Failure when a path does not lead to any, or when nothing is declared.
void registerComponents(const std::vector<std::string>& paths);

// All registered components, sorted by their display names.
std::vector<Component> registeredComponents();

// The component whose name or display name is the given one. Throws Failure when there is none, or when
// components of different identity share the name.
Component componentNamed(const std::string& name);

// The component that an identifier line names. Throws Failure when the line is none, or no registered
// component is it.
Component componentWithIdentifier(tessarin::NSString identifier);

// The version as it is usually written: 0x00010203 is 1.2.3.
std::string versionText(tessarin::UInt32 version);
