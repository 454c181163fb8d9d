# Puts the library into an application's bundle, from where the application loads it:
#
#   add_executable(player main.cpp)
#   target_link_libraries(player PRIVATE TessarinFoundation::TessarinFoundation)
#   tessarin_embed_framework(player)
#
# makes, wherever it is built,
#
#   player.app/Contents/MacOS/player
#   player.app/Contents/Frameworks/TessarinFoundation.framework/
#       Versions/A/TessarinFoundation, Versions/A/Headers/, Versions/A/Resources/Info.plist
#       Versions/Current -> A
#       TessarinFoundation, Headers, Resources -> Versions/Current/...
#
# The bundle may be moved, and is installed as it stands:
#
#   install(DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/player.app DESTINATION . USE_SOURCE_PERMISSIONS)

# tessarin_embed_framework(TARGET [LIBRARY library] [BUNDLE directory])
#
# LIBRARY is the shared library's target, TessarinFoundation::TessarinFoundation unless it is given; TARGET links it.
# BUNDLE is the bundle's directory, TARGET.app in the current binary directory unless it is given. A target with
# MACOSX_BUNDLE has its bundle from CMake on macOS.
function(tessarin_embed_framework target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "LIBRARY;BUNDLE" "")
    if(arg_UNPARSED_ARGUMENTS OR arg_KEYWORDS_MISSING_VALUES)
        message(FATAL_ERROR "tessarin_embed_framework: not understood: "
                            "${arg_UNPARSED_ARGUMENTS} ${arg_KEYWORDS_MISSING_VALUES}")
    endif()
    if(NOT arg_LIBRARY)
        set(arg_LIBRARY TessarinFoundation::TessarinFoundation)
    endif()
    if(NOT TARGET ${arg_LIBRARY})
        message(FATAL_ERROR "tessarin_embed_framework: there is no target ${arg_LIBRARY}")
    endif()
    get_target_property(type ${arg_LIBRARY} TYPE)
    if(NOT type STREQUAL SHARED_LIBRARY)
        message(FATAL_ERROR "tessarin_embed_framework: ${arg_LIBRARY} is not a shared library")
    endif()
    if(WIN32)
        message(FATAL_ERROR "tessarin_embed_framework: Windows has no bundles; put the DLL beside the application")
    endif()

    get_target_property(is_bundle ${target} MACOSX_BUNDLE)
    if(NOT (APPLE AND is_bundle))
        if(NOT arg_BUNDLE)
            set(arg_BUNDLE ${CMAKE_CURRENT_BINARY_DIR}/${target}.app)
        endif()
        set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${arg_BUNDLE}/Contents/MacOS)
    endif()

    get_target_property(version ${arg_LIBRARY} TESSARIN_FRAMEWORK_VERSION)
    set(place ../Frameworks/TessarinFoundation.framework)
    set(framework $<TARGET_FILE_DIR:${target}>/${place})
    set(contents ${framework}/Versions/${version})
    get_target_property(headers ${arg_LIBRARY} TESSARIN_INCLUDE_DIRECTORY)

    get_target_property(library_version ${arg_LIBRARY} TESSARIN_VERSION)
    set(information ${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${target}.dir/TessarinFoundation-Info.plist)
    configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/TessarinFramework-Info.plist.in ${information} @ONLY)
    get_target_property(is_framework ${arg_LIBRARY} FRAMEWORK)
    if(APPLE AND is_framework)
        set(information $<TARGET_FILE_DIR:${arg_LIBRARY}>/Resources/Info.plist) # which says more
    endif()

    add_custom_command(
        TARGET ${target} POST_BUILD
        COMMAND ${CMAKE_COMMAND} -E rm -rf ${framework}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${contents}/Resources
        COMMAND ${CMAKE_COMMAND} -E copy $<TARGET_FILE:${arg_LIBRARY}> ${contents}/TessarinFoundation
        COMMAND ${CMAKE_COMMAND} -E copy ${information} ${contents}/Resources/Info.plist
        # The library's own headers as a framework has them; a compiler that knows nothing of frameworks finds
        # everything with the one option -I.../TessarinFoundation.framework/Headers.
        COMMAND ${CMAKE_COMMAND} -E copy_directory ${headers}/TessarinFoundation ${contents}/Headers
        COMMAND ${CMAKE_COMMAND} -E copy_directory ${headers}/TessarinPlatform ${contents}/Headers/TessarinPlatform
        COMMAND ${CMAKE_COMMAND} -E create_symlink . ${contents}/Headers/TessarinFoundation
        COMMAND ${CMAKE_COMMAND} -E create_symlink ${version} ${framework}/Versions/Current
        COMMAND ${CMAKE_COMMAND} -E create_symlink Versions/Current/TessarinFoundation ${framework}/TessarinFoundation
        COMMAND ${CMAKE_COMMAND} -E create_symlink Versions/Current/Headers ${framework}/Headers
        COMMAND ${CMAKE_COMMAND} -E create_symlink Versions/Current/Resources ${framework}/Resources
        COMMENT "Embedding TessarinFoundation.framework for ${target}"
        VERBATIM)

    if(APPLE)
        set(install_name @executable_path/${place}/Versions/${version}/TessarinFoundation)
        add_custom_command(
            TARGET ${target} POST_BUILD
            COMMAND install_name_tool -id ${install_name} ${contents}/TessarinFoundation
            COMMAND install_name_tool -change @rpath/$<TARGET_SONAME_FILE_NAME:${arg_LIBRARY}> ${install_name}
                    $<TARGET_FILE:${target}>
            VERBATIM)
    else()
        # The loader looks in the run path for the name that the library bears inside, which is here a link. The name
        # stays what it is outside of bundles, so that a plug-in linked with the library elsewhere shares the
        # application's copy.
        add_custom_command(
            TARGET ${target} POST_BUILD
            COMMAND ${CMAKE_COMMAND} -E create_symlink TessarinFoundation
                    ${contents}/$<TARGET_SONAME_FILE_NAME:${arg_LIBRARY}>
            VERBATIM)
        set_property(TARGET ${target} APPEND PROPERTY INSTALL_RPATH "$ORIGIN/${place}/Versions/${version}")
        # Without the places of this machine, which a bundle that is moved would carry along.
        set_target_properties(${target} PROPERTIES BUILD_WITH_INSTALL_RPATH ON)
    endif()
endfunction()
