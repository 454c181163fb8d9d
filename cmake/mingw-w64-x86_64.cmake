# Cross-compiling for 64-bit Windows with MinGW-w64. Programs are run by Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)

find_program(WINE NAMES wine64 wine PATHS /usr/lib/wine)
mark_as_advanced(WINE)
if(WINE)
    # The compiler's own libraries lie where Wine does not look.
    set(library_folders "Z:${CMAKE_BINARY_DIR}")
    foreach(library IN ITEMS libstdc++-6.dll libwinpthread-1.dll)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library} OUTPUT_VARIABLE file
                        OUTPUT_STRIP_TRAILING_WHITESPACE)
        get_filename_component(folder "${file}" DIRECTORY)
        string(APPEND library_folders "\\;Z:${folder}")
    endforeach()
    # Wine writes the names of files in the locale's encoding, and cannot make what has no name there.
    set(CMAKE_CROSSCOMPILING_EMULATOR env LC_ALL=C.UTF-8 WINEDEBUG=-all "WINEPATH=${library_folders}" ${WINE})
endif()
