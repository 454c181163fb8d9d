# Objective-C for the native build, where CMake's own notion of it is Apple's.

if(NOT APPLE)
    # The runtime is GCC's, so that its compiler is preferred; CMake would try Clang first.
    if(NOT DEFINED ENV{OBJC})
        find_program(CMAKE_OBJC_COMPILER gcc)
    endif()
    # On Linux CMake knows how C and C++ programs find their libraries at run time, not how Objective-C ones do.
    set(CMAKE_SHARED_LIBRARY_RUNTIME_OBJC_FLAG "${CMAKE_SHARED_LIBRARY_RUNTIME_CXX_FLAG}")
    set(CMAKE_SHARED_LIBRARY_RUNTIME_OBJC_FLAG_SEP "${CMAKE_SHARED_LIBRARY_RUNTIME_CXX_FLAG_SEP}")
endif()
enable_language(OBJC)
