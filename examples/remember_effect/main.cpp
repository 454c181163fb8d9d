// An application that keeps the effect and the stream format that its user chose, and finds them again when
// it is started the next time.

#include "Arguments.h"
#include "Components.h"
#include "Failure.h"
#include "Preferences.h"
#include "StreamFormat.h"
#include "Text.h"

#include <TessarinFoundation/TessarinFoundation.h>
#include <TessarinPlatform/FourCharacterCodes.h>
#include <TessarinPlatform/TessarinPlatform.h>

#include <algorithm>
#include <iostream>

using namespace tessarin;

namespace {

void printSelection(const Component& component, const Selection& selection) {
    std::cout << "component     " << text(component.displayName) << '\n'
              << "manufacturer  " << (component.manufacturer ? text(component.manufacturer) : "(none)")
              << '\n'
              << "identifier    " << text(selection.identifier) << '\n';
    printStreamFormat(std::cout, selection.format);
}

std::string codeText(OSType code) { return text(adopt(UTCreateStringForOSType(code))); }

void list() {
    for (const Component& component : registeredComponents()) {
        const AudioComponentDescription& description = component.description;
        std::cout << codeText(description.componentType) << ' ' << codeText(description.componentSubType)
                  << ' ' << codeText(description.componentManufacturer) << "  " << text(component.displayName)
                  << ", version " << versionText(component.version) << '\n';
    }
}

void choose(const Arguments& arguments) {
    const Component component = componentNamed(arguments.componentName);
    const Selection selection{component.identifier(),
                              linearPCM(arguments.sampleRate, arguments.channels, arguments.bitsPerChannel)};
    // A code with a ";" or a leading space in it does not survive the way through an identifier line.
    if (!TSSREqualAudioComponentDescriptions(
            TSSRAudioComponentDescriptionFromIdentifierString(selection.identifier, nullptr),
            component.description))
        throw Failure("the codes of \"" + text(component.displayName) + "\" cannot be kept in one line");
    keepSelection(arguments.preferencesFile, selection);
    printSelection(component, selection);
}

void restore(const Arguments& arguments) {
    const Selection selection = keptSelection(arguments.preferencesFile);
    printSelection(componentWithIdentifier(selection.identifier), selection);
}

void run(const Arguments& arguments) {
    if (arguments.command == Command::help) {
        std::cout << helpText;
    } else {
        registerComponents(arguments.componentPaths);
        if (arguments.command == Command::list)
            list();
        else if (arguments.command == Command::choose)
            choose(arguments);
        else
            restore(arguments);
    }
    if (!std::cout.flush()) throw Failure("standard output cannot be written");
}

// A name or a path may hold line breaks.
std::string onOneLine(std::string message) {
    std::ranges::replace_if(
        message, [](char character) { return static_cast<unsigned char>(character) < 0x20; }, ' ');
    return message;
}

int fail(const std::string& message, int exitStatus) {
    std::cerr << "remember_effect: " << onOneLine(message) << '\n';
    return exitStatus;
}

} // namespace

int main(int argumentCount, char** argumentWords) {
    const AutoreleasePool pool;
    try {
        const std::vector<std::string> words(argumentWords + std::min(argumentCount, 1),
                                             argumentWords + argumentCount);
        // First of all, since a platform may read the program's words itself, and raise for one that is no
        // UTF-8.
        for (const std::string& word : words) stringFromArgument(word);
        const Arguments arguments = parseArguments(words);
        int exitStatus = 0;
        attempt([&] { run(arguments); },
                [&](NSException exception) { exitStatus = fail(text(exception.reason()), 1); });
        return exitStatus;
    } catch (const Failure& failure) {
        return fail(failure.what(), failure.exitStatus());
    } catch (const std::exception& error) {
        return fail(error.what(), 1);
    }
}
