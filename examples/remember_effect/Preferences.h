// The property list in which a selection is kept.
#pragma once

#include <TessarinPlatform/AudioTypes.h>
#include <TessarinPlatform/NSString.h>

#include <string>

struct Selection {
    tessarin::NSString identifier; // the component's, autoreleased
    tessarin::AudioStreamBasicDescription format;
};

// Keeps a selection in a property list, whose other keys stay. The file is replaced as a whole or not at all;
// one that is no property list is left alone. Throws Failure.
void keepSelection(const std::string& file, const Selection& selection);

// Reads a kept selection. Throws Failure for anything that keepSelection would not have written.
Selection keptSelection(const std::string& file);
