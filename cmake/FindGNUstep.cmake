# Finds GNUstep Base, the Foundation for GCC's Objective-C runtime, by asking gnustep-config.
#
#   GNUstep::Base         the Foundation and the runtime, to link
#   GNUstep::GUI          the AppKit as well, where it is installed
#   GNUstep::ObjectiveC   what sources need: the flags of Objective-C ones, the runtime's headers for all
#
# GNUstep_FOUND, GNUstep_VERSION

find_program(GNUstep_CONFIG gnustep-config)
mark_as_advanced(GNUstep_CONFIG)

if(GNUstep_CONFIG)
    execute_process(COMMAND ${GNUstep_CONFIG} --objc-flags OUTPUT_VARIABLE gnustep_flags
                    OUTPUT_STRIP_TRAILING_WHITESPACE)
    execute_process(COMMAND ${GNUstep_CONFIG} --base-libs OUTPUT_VARIABLE gnustep_libraries
                    OUTPUT_STRIP_TRAILING_WHITESPACE)
    separate_arguments(gnustep_flags UNIX_COMMAND "${gnustep_flags}")
    separate_arguments(gnustep_libraries UNIX_COMMAND "${gnustep_libraries}")
endif()

# Optimisation, warnings, dependency files and the current directory are the business of the one who builds.
set(gnustep_includes ${gnustep_flags})
list(FILTER gnustep_includes INCLUDE REGEX "^-I[^.]")
list(TRANSFORM gnustep_includes REPLACE "^-I" "")
list(FILTER gnustep_flags INCLUDE REGEX "^-(D|f)")
list(REMOVE_ITEM gnustep_flags -DGSWARN -DGSDIAGNOSE -fPIC)
list(REMOVE_DUPLICATES gnustep_flags)
list(TRANSFORM gnustep_libraries REPLACE "^-L" "" OUTPUT_VARIABLE gnustep_library_directories)
list(FILTER gnustep_library_directories INCLUDE REGEX "^/")

find_library(GNUstep_BASE_LIBRARY gnustep-base HINTS ${gnustep_library_directories})
find_library(GNUstep_GUI_LIBRARY gnustep-gui HINTS ${gnustep_library_directories})
find_path(GNUstep_INCLUDE_DIR Foundation/NSObject.h HINTS ${gnustep_includes} PATH_SUFFIXES GNUstep)

# The runtime's library and headers lie in GCC's own directories, which other compilers do not search.
foreach(compiler IN ITEMS "${CMAKE_CXX_COMPILER}" gcc)
    if(GNUstep_OBJC_LIBRARY AND GNUstep_OBJC_INCLUDE_DIR)
        break()
    endif()
    execute_process(COMMAND ${compiler} -print-file-name=libobjc.so OUTPUT_VARIABLE gnustep_objc_library
                    OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    get_filename_component(gnustep_compiler_directory "${gnustep_objc_library}" DIRECTORY)
    find_library(GNUstep_OBJC_LIBRARY objc HINTS ${gnustep_compiler_directory})
    find_path(GNUstep_OBJC_INCLUDE_DIR objc/runtime.h HINTS ${gnustep_compiler_directory}/include)
endforeach()
mark_as_advanced(GNUstep_BASE_LIBRARY GNUstep_GUI_LIBRARY GNUstep_INCLUDE_DIR GNUstep_OBJC_LIBRARY GNUstep_OBJC_INCLUDE_DIR)

if(EXISTS ${GNUstep_INCLUDE_DIR}/GNUstepBase/GSConfig.h)
    file(STRINGS ${GNUstep_INCLUDE_DIR}/GNUstepBase/GSConfig.h gnustep_version_line
         REGEX "define[ \t]+GNUSTEP_BASE_VERSION[ \t]")
    string(REGEX MATCH "[0-9.]+" GNUstep_VERSION "${gnustep_version_line}")
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(
    GNUstep REQUIRED_VARS GNUstep_CONFIG GNUstep_BASE_LIBRARY GNUstep_INCLUDE_DIR GNUstep_OBJC_LIBRARY
                          GNUstep_OBJC_INCLUDE_DIR
    VERSION_VAR GNUstep_VERSION)

if(GNUstep_FOUND AND NOT TARGET GNUstep::Base)
    find_package(Threads REQUIRED)
    add_library(GNUstep::Base INTERFACE IMPORTED)
    target_link_libraries(GNUstep::Base INTERFACE ${GNUstep_BASE_LIBRARY} ${GNUstep_OBJC_LIBRARY} Threads::Threads)

    if(GNUstep_GUI_LIBRARY)
        # Its classes are looked up by their names, which is no reference that a linker sees.
        add_library(GNUstep::GUI INTERFACE IMPORTED)
        target_link_libraries(GNUstep::GUI INTERFACE GNUstep::Base -Wl,--push-state,--no-as-needed
                              ${GNUstep_GUI_LIBRARY} -Wl,--pop-state)
    endif()

    # Of GCC's directory the runtime's headers alone: the rest are headers for GCC itself.
    set(gnustep_runtime_headers ${CMAKE_BINARY_DIR}/CMakeFiles/objective-c-runtime)
    file(MAKE_DIRECTORY ${gnustep_runtime_headers})
    file(CREATE_LINK ${GNUstep_OBJC_INCLUDE_DIR}/objc ${gnustep_runtime_headers}/objc SYMBOLIC)

    add_library(GNUstep::ObjectiveC INTERFACE IMPORTED)
    target_compile_options(GNUstep::ObjectiveC INTERFACE $<$<COMPILE_LANGUAGE:OBJC,OBJCXX>:${gnustep_flags}>)
    target_include_directories(GNUstep::ObjectiveC SYSTEM INTERFACE ${GNUstep_INCLUDE_DIR}
                                                                    ${gnustep_runtime_headers})
endif()
