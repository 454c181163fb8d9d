# An overlay port of the checkout that it lies in: vcpkg install tessarinfoundation --overlay-ports=packaging/vcpkg
get_filename_component(SOURCE_PATH "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)

string(COMPARE EQUAL "${VCPKG_LIBRARY_LINKAGE}" dynamic build_shared)
string(COMPARE EQUAL "${VCPKG_LIBRARY_LINKAGE}" static build_static)
vcpkg_cmake_configure(
    SOURCE_PATH "${SOURCE_PATH}"
    OPTIONS -DTESSARIN_BUILD_SHARED=${build_shared} -DTESSARIN_BUILD_STATIC=${build_static}
            -DTESSARIN_BUILD_TESTS=OFF -DTESSARIN_BUILD_EXAMPLES=OFF -DTESSARIN_WARNINGS_AS_ERRORS=OFF)
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(PACKAGE_NAME TessarinFoundation CONFIG_PATH lib/cmake/TessarinFoundation)
vcpkg_fixup_pkgconfig()
file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include" "${CURRENT_PACKAGES_DIR}/debug/share")

file(INSTALL "${CMAKE_CURRENT_LIST_DIR}/usage" DESTINATION "${CURRENT_PACKAGES_DIR}/share/${PORT}")
vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/LICENSE")
