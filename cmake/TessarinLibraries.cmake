# The library in its kinds, made of the same object files:
#
#   TessarinFoundation          the shared library, or the static one where no shared one is built
#   TessarinFoundation_static   the static one beside a shared one
#
# Other projects know them by the names that the installed package has too: TessarinFoundation::TessarinFoundation,
# ::embedded or ::native, and of an exact kind ::embedded_shared, ::embedded_static, ::native_shared, ::native_static.

# The version of the framework, which is that of the binary interface.
set(TESSARIN_FRAMEWORK_VERSION A)
# The native library has a name of its own, so that it may stand beside the embedded one. On macOS it is the framework.
set(TESSARIN_LIBRARY_NAME TessarinFoundation)
if(TESSARIN_PLATFORM STREQUAL native AND NOT APPLE)
    set(TESSARIN_LIBRARY_NAME TessarinFoundation-native)
endif()

# What the object files need of the system.
set(TESSARIN_SYSTEM_LIBRARIES Threads::Threads)
if(WIN32)
    list(APPEND TESSARIN_SYSTEM_LIBRARIES synchronization) # waiting for a word
endif()

function(tessarin_add_libraries)
    if(WIN32 AND TESSARIN_BUILD_SHARED AND TESSARIN_BUILD_STATIC)
        message(FATAL_ERROR "On Windows an object file is for one kind of library: "
                            "set either TESSARIN_BUILD_SHARED or TESSARIN_BUILD_STATIC to OFF")
    endif()
    find_package(Threads REQUIRED GLOBAL)

    add_library(tessarin_objects OBJECT ${ARGN})
    target_compile_features(tessarin_objects PUBLIC cxx_std_20)
    target_include_directories(tessarin_objects PRIVATE ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR})
    target_compile_definitions(tessarin_objects PRIVATE TESSARIN_BUILDING)
    target_link_libraries(tessarin_objects PRIVATE Threads::Threads tessarin_warnings tessarin_sanitizers
                                                   tessarin_source_names)
    set_target_properties(tessarin_objects PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
                          POSITION_INDEPENDENT_CODE ON)
    if(TESSARIN_PLATFORM STREQUAL native)
        target_compile_definitions(tessarin_objects PRIVATE TESSARIN_NATIVE)
        if(NOT APPLE)
            target_link_libraries(tessarin_objects PRIVATE GNUstep::ObjectiveC)
        endif()
    endif()

    if(TESSARIN_BUILD_SHARED)
        tessarin_add_shared_library(TessarinFoundation)
    else()
        target_compile_definitions(tessarin_objects PRIVATE TESSARIN_STATIC)
        tessarin_add_static_library(TessarinFoundation)
    endif()
    add_library(TessarinFoundation::TessarinFoundation ALIAS TessarinFoundation)
    add_library(TessarinFoundation::${TESSARIN_PLATFORM} ALIAS TessarinFoundation)
    if(TESSARIN_BUILD_SHARED AND TESSARIN_BUILD_STATIC)
        tessarin_add_static_library(TessarinFoundation_static)
    endif()
endfunction()

function(tessarin_add_shared_library target)
    add_library(${target} SHARED $<TARGET_OBJECTS:tessarin_objects>)
    set_target_properties(${target} PROPERTIES VERSION ${TESSARIN_FRAMEWORK_VERSION}
                          SOVERSION ${TESSARIN_FRAMEWORK_VERSION})
    tessarin_set_interface(${target} shared)

    # What is exported, and under which version of the interface: an embedded and a native library in one process
    # export the same names, and each must be found by its own. The library's calls of itself stay within it for the
    # same reason.
    if(UNIX AND NOT APPLE)
        set(exports ${PROJECT_SOURCE_DIR}/platform/${TESSARIN_PLATFORM}/exports.map)
        target_link_options(${target} PRIVATE LINKER:--version-script=${exports} LINKER:-Bsymbolic-functions)
        set_target_properties(${target} PROPERTIES LINK_DEPENDS ${exports})
        # A name in the file that an optimiser has left nothing of is no mistake, which some linkers think it is.
        include(CheckLinkerFlag)
        check_linker_flag(CXX LINKER:--undefined-version TESSARIN_LINKER_HAS_UNDEFINED_VERSION)
        if(TESSARIN_LINKER_HAS_UNDEFINED_VERSION)
            target_link_options(${target} PRIVATE LINKER:--undefined-version)
        endif()
    endif()
endfunction()

# Of one object file where that can be made. A linker takes just those members of an archive that something names, and
# nothing names the files whose operations are only attached.
function(tessarin_add_static_library target)
    set(objects $<TARGET_OBJECTS:tessarin_objects>)
    if(UNIX)
        set(objects ${CMAKE_CURRENT_BINARY_DIR}/${target}.o)
        add_custom_command(
            OUTPUT ${objects}
            COMMAND ${CMAKE_CXX_COMPILER} -nostdlib -r -o ${objects} $<TARGET_OBJECTS:tessarin_objects>
            DEPENDS tessarin_objects $<TARGET_OBJECTS:tessarin_objects>
            COMMAND_EXPAND_LISTS VERBATIM)
        # The language says with what a program that holds the library is linked.
        set_source_files_properties(${objects} PROPERTIES EXTERNAL_OBJECT ON LANGUAGE CXX)
    endif()
    add_library(${target} STATIC ${objects})
    target_compile_definitions(${target} INTERFACE TESSARIN_STATIC)
    tessarin_set_interface(${target} static)
    # A plug-in that holds the library keeps it to itself, so that the host's copy does not come in between.
    if(UNIX AND NOT APPLE)
        target_link_options(${target} INTERFACE LINKER:--exclude-libs,lib${TESSARIN_LIBRARY_NAME}.a)
    endif()
endfunction()

# What the kinds have in common.
function(tessarin_set_interface target kind)
    add_library(TessarinFoundation::${TESSARIN_PLATFORM}_${kind} ALIAS ${target})
    target_compile_features(${target} INTERFACE cxx_std_20)
    target_include_directories(${target} INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>)
    target_link_libraries(${target} PUBLIC Threads::Threads
                          PRIVATE ${TESSARIN_SYSTEM_LIBRARIES} $<BUILD_INTERFACE:tessarin_sanitizers>)
    set_target_properties(
        ${target}
        PROPERTIES LINKER_LANGUAGE CXX
                   OUTPUT_NAME ${TESSARIN_LIBRARY_NAME}
                   EXPORT_NAME ${TESSARIN_PLATFORM}_${kind}
                   TESSARIN_INCLUDE_DIRECTORY ${PROJECT_SOURCE_DIR}/include
                   TESSARIN_VERSION ${PROJECT_VERSION}
                   TESSARIN_FRAMEWORK_VERSION ${TESSARIN_FRAMEWORK_VERSION})
    if(TESSARIN_PLATFORM STREQUAL native)
        target_compile_definitions(${target} INTERFACE TESSARIN_NATIVE)
        if(NOT APPLE)
            target_link_libraries(${target} PUBLIC GNUstep::Base)
        endif()
    endif()
endfunction()
