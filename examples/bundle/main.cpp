#include <TessarinFoundation/TessarinFoundation.h>
#include <TessarinPlatform/TessarinPlatform.h>

#include <iostream>

using namespace tessarin;

int main() {
    const AutoreleasePool pool;
    const NSString what =
        NSBundle::mainBundle().localizedStringForKey_value_table("Length"_ns, nil, "Player"_ns);
    std::cout << what << ": " << tessarin_timeStringWithSeconds(3725) << '\n';
    // Length of the recording: 1 : 02 : 05, or where LANG is de_DE.UTF-8, Dauer der Aufnahme: 1 : 02 : 05
}
