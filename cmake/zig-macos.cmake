# A toolchain that builds the native library for macOS on another system: Zig's compiler with the C, C++ and Objective-C
# runtime headers that it carries, and LLVM's linker. The system's libraries are known by text stubs: that of libSystem is
# Zig's, those of the frameworks are this project's own (apple-stubs), which list just what the library uses.
#
#   cmake -G Ninja -B build/macos-arm64 -DCMAKE_TOOLCHAIN_FILE=cmake/zig-macos.cmake -DTESSARIN_MACOS_ARCHITECTURE=arm64
#
# tools/build_macos_framework.sh does so for both architectures and joins them.

set(TESSARIN_MACOS_ARCHITECTURE arm64 CACHE STRING "arm64 or x86_64")
set(TESSARIN_MACOS_VERSION 11.0 CACHE STRING "The first version of macOS that the library is to run on")
find_program(ZIG zig REQUIRED DOC "Zig's compiler, version 0.11")
find_program(TESSARIN_CLANG NAMES clang++ clang++-14 REQUIRED DOC "The driver of the linker")
find_program(TESSARIN_LD64 NAMES ld64.lld ld64.lld-14 REQUIRED DOC "LLVM's linker for macOS")
find_program(CMAKE_AR NAMES llvm-ar llvm-ar-14 REQUIRED)
find_program(CMAKE_RANLIB NAMES llvm-ranlib llvm-ranlib-14 REQUIRED)
find_program(CMAKE_INSTALL_NAME_TOOL NAMES llvm-install-name-tool llvm-install-name-tool-14 REQUIRED)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TESSARIN_MACOS_ARCHITECTURE TESSARIN_MACOS_VERSION ZIG TESSARIN_CLANG
     TESSARIN_LD64)

set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR ${TESSARIN_MACOS_ARCHITECTURE})
set(CMAKE_OSX_SYSROOT "" CACHE STRING "" FORCE)
# There is just what the library is linked with.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

set(zig_architecture ${TESSARIN_MACOS_ARCHITECTURE})
if(zig_architecture STREQUAL arm64)
    set(zig_architecture aarch64)
endif()
set(zig_target -target ${zig_architecture}-macos.${TESSARIN_MACOS_VERSION})
set(CMAKE_CXX_COMPILER ${ZIG} c++ ${zig_target})
set(CMAKE_OBJC_COMPILER ${ZIG} cc ${zig_target})
# The C++ library is the system's, not one that Zig would build: what that version of macOS lacks is an error.
set(CMAKE_CXX_FLAGS_INIT -U_LIBCPP_HAS_NO_VENDOR_AVAILABILITY_ANNOTATIONS)
# Without a build type Zig would let undefined behaviour trap.
set(CMAKE_OBJC_FLAGS_INIT -fno-sanitize=undefined)
string(APPEND CMAKE_CXX_FLAGS_INIT " -fno-sanitize=undefined")

# What CMake would find out by linking programs, for which Zig would first build a C++ library.
execute_process(COMMAND ${ZIG} c++ --version OUTPUT_VARIABLE zig_version COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCH "[0-9]+[.][0-9]+[.][0-9]+" zig_version "${zig_version}")
foreach(language IN ITEMS CXX OBJC)
    set(CMAKE_${language}_COMPILER_ID_RUN ON)
    set(CMAKE_${language}_COMPILER_ID Clang)
    set(CMAKE_${language}_COMPILER_VERSION ${zig_version})
    set(CMAKE_${language}_COMPILER_FRONTEND_VARIANT GNU)
    set(CMAKE_${language}_EXTENSIONS_COMPUTED_DEFAULT ON)
    set(CMAKE_${language}_COMPILER_WORKS ON)
    set(CMAKE_${language}_ABI_COMPILED ON)
    set(CMAKE_${language}_SIZEOF_DATA_PTR 8)
endforeach()
set(CMAKE_CXX_STANDARD_COMPUTED_DEFAULT 17)
set(CMAKE_OBJC_STANDARD_COMPUTED_DEFAULT 17)

set(CMAKE_USER_MAKE_RULES_OVERRIDE_CXX ${CMAKE_CURRENT_LIST_DIR}/zig-macos-linking.cmake)
