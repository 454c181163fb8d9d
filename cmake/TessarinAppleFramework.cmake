# The native library on macOS: a framework, attached to the system's own Foundation.

# For the framework's Info.plist.
set(tessarin_minimum_macos 11.0)
foreach(version IN ITEMS "${CMAKE_OSX_DEPLOYMENT_TARGET}" "${TESSARIN_MACOS_VERSION}")
    if(version)
        set(tessarin_minimum_macos ${version})
    endif()
endforeach()

# Replaces what platform/services stands in for by the system's own, and adds what macOS has a file of its own for.
function(tessarin_use_system_services sources)
    set(kept ${${sources}})
    set(stand_ins AudioComponent FourCharacterCodes JapaneseEncodings JapaneseTables PercentEscapes RandomNumbers
                  SingleByteEncodings SingleByteTables StringEncodings TextEncodings)
    list(JOIN stand_ins "|" names)
    list(FILTER kept EXCLUDE REGEX "/platform/services/(${names})[^/]*$")
    file(GLOB own CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/platform/native/apple/*.cpp)
    set(${sources} ${kept} ${own} PARENT_SCOPE)
endfunction()

# Makes the shared library a framework that an application's bundle holds.
function(tessarin_make_framework target)
    # AppKit is named although its classes are looked up by their names: a group is attached to a class that is there.
    target_link_libraries(
        ${target}
        PUBLIC objc
        PRIVATE "-framework Foundation" "-framework AppKit" "-framework CoreFoundation" "-framework CoreServices"
                "-framework AudioToolbox")
    # Instances of the standard library's templates are no part of the interface.
    set(hidden ${PROJECT_SOURCE_DIR}/platform/native/apple/hidden_symbols.txt)
    target_link_options(${target} PRIVATE LINKER:-unexported_symbols_list,${hidden} LINKER:-dead_strip)
    set_target_properties(
        ${target}
        PROPERTIES FRAMEWORK ON
                   FRAMEWORK_VERSION ${TESSARIN_FRAMEWORK_VERSION}
                   INSTALL_NAME_DIR "@executable_path/../Frameworks"
                   BUILD_WITH_INSTALL_NAME_DIR ON
                   # What is added keeps the compatibility version; an application asks for no less than it was linked with.
                   MACHO_COMPATIBILITY_VERSION 1.0.0
                   MACHO_CURRENT_VERSION ${PROJECT_VERSION}
                   MACOSX_FRAMEWORK_INFO_PLIST ${PROJECT_SOURCE_DIR}/cmake/TessarinAppleFramework-Info.plist.in
                   MACOSX_FRAMEWORK_IDENTIFIER tessarin.TessarinFoundation
                   MACOSX_FRAMEWORK_SHORT_VERSION_STRING ${PROJECT_VERSION}
                   MACOSX_FRAMEWORK_BUNDLE_VERSION ${PROJECT_VERSION}
                   LINK_DEPENDS ${hidden})
endfunction()
