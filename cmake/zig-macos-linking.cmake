# How zig-macos.cmake links shared libraries. Read by CMake after its own rules, which this replaces.

# Zig names its directory as seen from where it runs.
execute_process(COMMAND ${ZIG} env WORKING_DIRECTORY ${CMAKE_CURRENT_LIST_DIR} OUTPUT_VARIABLE zig_environment
                COMMAND_ERROR_IS_FATAL ANY)
string(JSON zig_library_directory GET "${zig_environment}" lib_dir)
get_filename_component(zig_library_directory "${zig_library_directory}" ABSOLUTE BASE_DIR ${CMAKE_CURRENT_LIST_DIR})
string(REGEX MATCH "^[0-9]+" macos_major "${TESSARIN_MACOS_VERSION}")

# The standard libraries are named last, by the stubs that there are. What the compiler wrote for debuggers names files of
# this machine and is left out.
string(
    JOIN " " CMAKE_CXX_CREATE_SHARED_LIBRARY
    "\"${TESSARIN_CLANG}\" --target=${TESSARIN_MACOS_ARCHITECTURE}-apple-macos${TESSARIN_MACOS_VERSION}"
    "-fuse-ld=lld -mlinker-version=609 --ld-path=\"${TESSARIN_LD64}\" -isysroot \"${CMAKE_CURRENT_LIST_DIR}/apple-stubs\" -nodefaultlibs -Wl,-S"
    "<CMAKE_SHARED_LIBRARY_CREATE_CXX_FLAGS> <LINK_FLAGS> -o <TARGET>"
    "<SONAME_FLAG> <TARGET_INSTALLNAME_DIR><TARGET_SONAME> <OBJECTS> <LINK_LIBRARIES>"
    "-lc++ -L\"${zig_library_directory}/libc/darwin\" -lSystem.${macos_major}")
