#include "Components.h"

#include "Failure.h"
#include "FileSystem.h"
#include "Text.h"

#include <TessarinFoundation/TessarinFoundation.h>
#include <TessarinPlatform/TessarinPlatform.h>

#include <algorithm>

using namespace tessarin;

namespace {

bool isBundle(NSString directory) {
    const NSFileManager manager = NSFileManager::defaultManager();
    return directory.pathExtension().isEqualToString("component"_ns)
           || manager.fileExistsAtPath(directory.stringByAppendingPathComponent("Contents/Info.plist"_ns))
           || manager.fileExistsAtPath(directory.stringByAppendingPathComponent("Info.plist"_ns));
}

void registerBundle(NSString path) {
    NSError error;
    if (TessarinRegisterAudioComponentsOfBundle(path, &error) < 0)
        throw Failure(text(error.localizedDescription()));
}

void registerFolder(NSString folder) {
    NSError error;
    const NSArray names = NSFileManager::defaultManager().contentsOfDirectoryAtPath_error(folder, &error);
    if (!names) throw Failure(text(folder) + " cannot be read");
    // In the order of their names, so that runs do not differ by the order in which a file system lists them.
    for (const NSString name : names.sortedArrayUsingSelector("compare:"_sel))
        if (name.pathExtension().isEqualToString("component"_ns))
            registerBundle(folder.stringByAppendingPathComponent(name));
}

Component describe(AudioComponent reference) {
    Component component{};
    NSString displayName, manufacturer;
    AudioComponentGetDescription(reference, &component.description);
    AudioComponentGetVersion(reference, &component.version);
    AudioComponentCopyName(reference, &displayName);
    component.displayName = adopt(displayName);
    component.name = retain(TSSRGetAudioComponentName(reference, &manufacturer));
    component.manufacturer = adopt(manufacturer);
    return component;
}

bool isSameComponent(const Component& left, const Component& right) {
    return TSSREqualAudioComponentDescriptions(left.description, right.description) != NO;
}

} // namespace

NSString Component::identifier() const {
    return TSSRIdentifierStringFromAudioComponentDescriptionAndManufacturer(description, manufacturer);
}

void registerComponents(const std::vector<std::string>& paths) {
    for (const std::string& argument : paths) {
        const NSString path = stringFromArgument(argument);
        if (isDirectory(path) && !isBundle(path))
            registerFolder(path);
        else
            registerBundle(path);
    }
    const AudioComponentDescription any{};
    if (AudioComponentCount(&any) == 0)
        throw Failure("nothing under --components declares an audio component");
}

std::vector<Component> registeredComponents() {
    std::vector<Component> components;
    const AudioComponentDescription any{};
    AudioComponent reference = nullptr;
    while ((reference = AudioComponentFindNext(reference, &any))) components.push_back(describe(reference));
    std::ranges::stable_sort(components, [](const Component& left, const Component& right) {
        return left.displayName.compare(right.displayName) == NSOrderedAscending;
    });
    return components;
}

Component componentNamed(const std::string& name) {
    const NSString wanted = stringFromArgument(name);
    std::vector<Component> named = registeredComponents();
    std::erase_if(named, [&](const Component& component) {
        return !component.name.isEqualToString(wanted) && !component.displayName.isEqualToString(wanted);
    });
    if (named.empty()) throw Failure("no component is named \"" + name + '"');
    // Several versions of one component are no ambiguity: the registry finds the highest first.
    for (const Component& component : named)
        if (!isSameComponent(component, named.front()))
            throw Failure('"' + name + "\" is ambiguous: " + text(named.front().displayName) + " ("
                          + text(named.front().identifier()) + ") or " + text(component.displayName) + " ("
                          + text(component.identifier()) + ')');
    return named.front();
}

Component componentWithIdentifier(NSString identifier) {
    const AudioComponentDescription kept =
        TSSRAudioComponentDescriptionFromIdentifierString(identifier, nullptr);
    if (kept.componentType == 0 || kept.componentSubType == 0 || kept.componentManufacturer == 0)
        throw Failure('"' + text(identifier) + "\" is no identifier of a component");
    AudioComponent reference = nullptr;
    const AudioComponentDescription any{};
    while ((reference = AudioComponentFindNext(reference, &any))) {
        AudioComponentDescription offered;
        AudioComponentGetDescription(reference, &offered);
        if (TSSREqualAudioComponentDescriptions(offered, kept)) return describe(reference);
    }
    throw Failure("the component \"" + text(identifier) + "\" is not among those registered");
}

std::string versionText(UInt32 version) {
    return std::to_string(version >> 16) + '.' + std::to_string(version >> 8 & 0xFF) + '.'
           + std::to_string(version & 0xFF);
}
