# Compile options of the project's own targets: warnings, which are errors, and sanitizers.

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES AND PROJECT_IS_TOP_LEVEL)
    set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Build type" FORCE)
endif()
set(CMAKE_CXX_EXTENSIONS OFF)

option(TESSARIN_WARNINGS_AS_ERRORS "Treat the compiler's warnings as errors" ${PROJECT_IS_TOP_LEVEL})

add_library(tessarin_warnings INTERFACE)
set(warnings -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wnon-virtual-dtor -Wold-style-cast
    -Wcast-align -Woverloaded-virtual -Wdouble-promotion)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # Its optimiser sees overlapping copies in plain std::string concatenation (GCC bug 105651).
    list(APPEND warnings -Wno-restrict)
endif()
if(TESSARIN_WARNINGS_AS_ERRORS)
    list(APPEND warnings -Werror)
endif()
target_compile_options(tessarin_warnings INTERFACE $<$<COMPILE_LANGUAGE:CXX>:${warnings}>)

add_library(tessarin_sanitizers INTERFACE)
if(TESSARIN_SANITIZE)
    target_compile_options(tessarin_sanitizers INTERFACE -fsanitize=${TESSARIN_SANITIZE}
                           -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(tessarin_sanitizers INTERFACE -fsanitize=${TESSARIN_SANITIZE})
    # GCC warns of uninitialised variables where a sanitizer's code hides their initialisation.
    target_compile_options(tessarin_sanitizers INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()

# No path of the machine that builds goes into the library, debug information included: source files are named as seen
# from the project's directory.
add_library(tessarin_source_names INTERFACE)
target_compile_options(
    tessarin_source_names
    INTERFACE $<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>)
cmake_path(IS_PREFIX PROJECT_SOURCE_DIR "${PROJECT_BINARY_DIR}" NORMALIZE binary_directory_is_within)
if(NOT binary_directory_is_within)
    target_compile_options(
        tessarin_source_names
        INTERFACE $<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-ffile-prefix-map=${PROJECT_BINARY_DIR}=build>)
endif()
