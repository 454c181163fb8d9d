# Debian packages, by `cpack -G DEB` in the build directory: the shared library; what a program of one platform is built
# with; and what both platforms' programs are built with, which is the same from either build. Configured with
# -DCMAKE_INSTALL_PREFIX=/usr the libraries go where the distribution has its own.

set(library libtessarinfoundation)
if(TESSARIN_PLATFORM STREQUAL native)
    string(APPEND library -native)
endif()
string(TOLOWER ${library}-${TESSARIN_FRAMEWORK_VERSION} library_package)

set(CPACK_PACKAGE_NAME TessarinFoundation)
set(CPACK_PACKAGE_CONTACT "The TessarinFoundation authors <authors@tessarin.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "shared support library for desktop audio applications")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development common)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE tessarinfoundation)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON) # from which packages of programs learn what they depend on
set(package_version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${library_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/package/triggers)
file(WRITE ${PROJECT_BINARY_DIR}/package/triggers "activate-noawait ldconfig\n")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "The shared library over the ${TESSARIN_PLATFORM} platform.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${library}-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${library_package} (= ${package_version}), libtessarinfoundation-common-dev (= ${package_version})")
if(TESSARIN_PLATFORM STREQUAL native)
    string(APPEND CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ", libgnustep-base-dev, gobjc")
endif()
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "The static library over the ${TESSARIN_PLATFORM} platform,\nand its descriptions for CMake and pkg-config.")

set(CPACK_DEBIAN_COMMON_PACKAGE_NAME libtessarinfoundation-common-dev)
set(CPACK_DEBIAN_COMMON_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_COMMON_DESCRIPTION "The headers, and the package's configuration for CMake.")

# What the distribution asks of every package beside what a prefix holds.
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/TessarinDebianContents.cmake)
set(CPACK_TESSARIN_SOURCE_DIR ${PROJECT_SOURCE_DIR})
set(CPACK_TESSARIN_STRIP ${CMAKE_STRIP})

include(CPack)
