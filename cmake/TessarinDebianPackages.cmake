# Debian packages, by `cpack -G DEB` in the build directory: the shared library, and what is needed to build with it.
# For a distribution's own directories configure with -DCMAKE_INSTALL_PREFIX=/usr.

string(TOLOWER libtessarinfoundation-${TESSARIN_FRAMEWORK_VERSION} library)
if(TESSARIN_PLATFORM STREQUAL native)
    string(REPLACE foundation- foundation-native- library ${library})
endif()
string(REGEX REPLACE "-[a-z]$" "-dev" development ${library})

set(CPACK_PACKAGE_NAME TessarinFoundation)
set(CPACK_PACKAGE_VENDOR "TessarinFoundation")
set(CPACK_PACKAGE_CONTACT "The TessarinFoundation authors <tessarin@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${library})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/package/triggers)
file(WRITE ${PROJECT_BINARY_DIR}/package/triggers "activate-noawait ldconfig\n")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "${PROJECT_DESCRIPTION}
 Audio descriptions as plain arrays and strings, operations on collections,
 strings and paths, unique indexes and archivable values.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${development})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library} (= ${PROJECT_VERSION}-1)")
if(TESSARIN_PLATFORM STREQUAL native)
    string(APPEND CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ", libgnustep-base-dev, gobjc")
endif()
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "${PROJECT_DESCRIPTION}: development files
 Headers, the static library, and the descriptions for CMake and pkg-config.")

include(CPack)
