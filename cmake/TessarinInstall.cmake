# What `cmake --install` puts into a prefix, which may be moved afterwards. An embedded and a native build, and their
# shared and static libraries, may share one: the headers and the package's configuration are the same, and each library
# has a file of its own that describes it.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(tessarin_package_directory ${CMAKE_INSTALL_LIBDIR}/cmake/TessarinFoundation)

function(tessarin_install_library target kind)
    set(name TessarinFoundation-${TESSARIN_PLATFORM}-${kind})
    install(TARGETS ${target} EXPORT ${name}
            INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
            RUNTIME COMPONENT runtime
            LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
            ARCHIVE COMPONENT development
            FRAMEWORK DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime)
    install(EXPORT ${name} NAMESPACE TessarinFoundation:: FILE ${name}.cmake COMPONENT development
            DESTINATION ${tessarin_package_directory})
endfunction()

if(TESSARIN_BUILD_SHARED)
    tessarin_install_library(TessarinFoundation shared)
    if(TESSARIN_BUILD_STATIC)
        tessarin_install_library(TessarinFoundation_static static)
    endif()
else()
    tessarin_install_library(TessarinFoundation static)
endif()

install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/TessarinFoundation ${PROJECT_SOURCE_DIR}/include/TessarinPlatform
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT common FILES_MATCHING PATTERN "*.h")

configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/cmake/TessarinFoundationConfig.cmake.in
    ${PROJECT_BINARY_DIR}/package/TessarinFoundationConfig.cmake INSTALL_DESTINATION ${tessarin_package_directory}
    PATH_VARS CMAKE_INSTALL_INCLUDEDIR)
write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/package/TessarinFoundationConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/package/TessarinFoundationConfig.cmake
              ${PROJECT_BINARY_DIR}/package/TessarinFoundationConfigVersion.cmake
              ${PROJECT_SOURCE_DIR}/cmake/TessarinBundle.cmake
              ${PROJECT_SOURCE_DIR}/cmake/TessarinFramework-Info.plist.in
              ${PROJECT_SOURCE_DIR}/cmake/TessarinObjectiveC.cmake
              ${PROJECT_SOURCE_DIR}/cmake/FindGNUstep.cmake
        DESTINATION ${tessarin_package_directory} COMPONENT common)
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE ${PROJECT_SOURCE_DIR}/CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR}
        COMPONENT common)

if(PROJECT_IS_TOP_LEVEL AND TESSARIN_BUILD_SHARED AND CMAKE_SYSTEM_NAME STREQUAL Linux)
    include(TessarinDebianPackages)
endif()

# For pkg-config, which knows nothing of frameworks. Its file finds the prefix from its own place, unless a directory
# outside of the prefix was asked for.
if(is_framework)
    return()
endif()
set(pc_directory ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
    set(pc_prefix ${CMAKE_INSTALL_PREFIX})
else()
    file(RELATIVE_PATH pc_prefix /prefix/${pc_directory} /prefix)
    string(REGEX REPLACE "/$" "" pc_prefix "\${pcfiledir}/${pc_prefix}")
endif()
foreach(directory IN ITEMS LIBDIR INCLUDEDIR)
    set(pc_${directory} ${CMAKE_INSTALL_${directory}})
    if(NOT IS_ABSOLUTE ${pc_${directory}})
        string(PREPEND pc_${directory} "\${prefix}/")
    endif()
endforeach()
set(pc_definitions)
set(pc_libraries)
set(pc_private_libraries "-pthread")
if(UNIX AND NOT APPLE)
    string(PREPEND pc_private_libraries "-Wl,--exclude-libs,lib${TESSARIN_LIBRARY_NAME}.a ")
endif()
if(WIN32)
    string(APPEND pc_private_libraries " -lsynchronization")
endif()
if(TESSARIN_PLATFORM STREQUAL native)
    set(pc_definitions " -DTESSARIN_NATIVE")
    set(pc_libraries " -lgnustep-base -lobjc")
    # For programs that the Objective-C compiler links.
    string(APPEND pc_private_libraries " -lstdc++ -lm")
endif()
set(pc_file ${PROJECT_BINARY_DIR}/package/${TESSARIN_LIBRARY_NAME}.pc)
configure_file(${PROJECT_SOURCE_DIR}/cmake/TessarinFoundation.pc.in ${pc_file} @ONLY)
install(FILES ${pc_file} DESTINATION ${pc_directory} COMPONENT development)
