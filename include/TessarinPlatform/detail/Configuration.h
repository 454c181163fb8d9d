// Which platform the program is compiled for, and the marks of exported symbols.
#pragma once

// A client of the native build is compiled with TESSARIN_NATIVE defined (the CMake target does so); every
// other client uses the embedded platform.
#if defined(TESSARIN_NATIVE) || defined(__OBJC__)
#    define TESSARIN_PLATFORM_NATIVE 1
#    define TESSARIN_PLATFORM_EMBEDDED 0
#else
#    define TESSARIN_PLATFORM_NATIVE 0
#    define TESSARIN_PLATFORM_EMBEDDED 1
#endif

// A handle stands in the place of a pointer. There a class is returned in memory, whatever it holds.
#if TESSARIN_PLATFORM_NATIVE && defined(__i386__) && !defined(__APPLE__)
#    error "On 32-bit x86 handles are not returned as the native platform's objects are."
#endif

#if defined(_WIN32)
#    if defined(TESSARIN_STATIC)
#        define TESSARIN_EXPORT
#    elif defined(TESSARIN_BUILDING)
#        define TESSARIN_EXPORT __declspec(dllexport)
#    elif defined(__MINGW32__)
#        define TESSARIN_EXPORT // its linker finds what other libraries export
#    else
#        define TESSARIN_EXPORT __declspec(dllimport)
#    endif
#else
#    define TESSARIN_EXPORT __attribute__((visibility("default")))
#endif

// A variable of a header of which each binary has one of its own, however its names are exported otherwise.
// What the library and a program look up once they keep so: another binary in the process may have looked it
// up on another platform, or in a copy of the library of its own.
#if defined(_WIN32)
#    define TESSARIN_OF_EACH_BINARY
#else
#    define TESSARIN_OF_EACH_BINARY __attribute__((visibility("hidden")))
#endif

// The plain functions are C symbols in both faces. Their C++ face returns handles, which are one pointer wide
// and passed exactly like one; Clang's warning that C could not declare them does not apply.
#if defined(__cplusplus)
#    if defined(__clang__)
#        define TESSARIN_C_DECLARATIONS_BEGIN                                                                \
            _Pragma("clang diagnostic push")                                                                 \
                _Pragma("clang diagnostic ignored \"-Wreturn-type-c-linkage\"") extern "C" {
#        define TESSARIN_C_DECLARATIONS_END                                                                  \
            }                                                                                                \
            _Pragma("clang diagnostic pop")
#    else
#        define TESSARIN_C_DECLARATIONS_BEGIN extern "C" {
#        define TESSARIN_C_DECLARATIONS_END }
#    endif
#else
#    define TESSARIN_C_DECLARATIONS_BEGIN
#    define TESSARIN_C_DECLARATIONS_END
#endif

// Functions of the system, which the C++ face declares with handles. Elsewhere the platform defines them, as
// C symbols. On macOS the system does, under the same names: there the C++ face declares functions of its own
// with the system's symbols, since a file may include the system's headers too, and C functions of one name
// have one type.
#if defined(__APPLE__) && defined(__cplusplus) && TESSARIN_PLATFORM_NATIVE
#    define TESSARIN_SYSTEM_DECLARATIONS_BEGIN
#    define TESSARIN_SYSTEM_DECLARATIONS_END
#    define TESSARIN_SYSTEM_SYMBOL(symbol) __asm__(symbol)
#else
#    define TESSARIN_SYSTEM_DECLARATIONS_BEGIN TESSARIN_C_DECLARATIONS_BEGIN
#    define TESSARIN_SYSTEM_DECLARATIONS_END TESSARIN_C_DECLARATIONS_END
#    define TESSARIN_SYSTEM_SYMBOL(symbol)
#endif
