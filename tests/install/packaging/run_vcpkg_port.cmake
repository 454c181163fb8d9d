# Carries out the vcpkg port where there is no vcpkg:
#
#   cmake -DPORTFILE=... -DWORK=directory -DLINKAGE=dynamic|static -DCOMPILER=... -P run_vcpkg_port.cmake
#
# The functions that it calls are stood in for by the few lines below, which do what vcpkg documents. That shows what is
# built, installed and left, and whether a consumer finds it; not that vcpkg itself takes the port.
cmake_minimum_required(VERSION 3.25)

set(VCPKG_LIBRARY_LINKAGE ${LINKAGE})
set(CURRENT_PACKAGES_DIR ${WORK}/package)
get_filename_component(CMAKE_CURRENT_LIST_DIR ${PORTFILE} DIRECTORY)
get_filename_component(PORT ${CMAKE_CURRENT_LIST_DIR} NAME)

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

function(vcpkg_cmake_configure)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "SOURCE_PATH" "OPTIONS")
    string(COMPARE EQUAL "${VCPKG_LIBRARY_LINKAGE}" dynamic shared)
    foreach(configuration IN ITEMS Debug Release)
        set(prefix ${CURRENT_PACKAGES_DIR})
        if(configuration STREQUAL Debug)
            string(APPEND prefix /debug)
        endif()
        run(${CMAKE_COMMAND} -G Ninja -S ${arg_SOURCE_PATH} -B ${WORK}/${configuration}
            -DCMAKE_BUILD_TYPE=${configuration} -DCMAKE_INSTALL_PREFIX=${prefix} -DCMAKE_CXX_COMPILER=${COMPILER}
            -DBUILD_SHARED_LIBS=${shared} -DCMAKE_INSTALL_LIBDIR=lib ${arg_OPTIONS})
    endforeach()
endfunction()

function(vcpkg_cmake_install)
    foreach(configuration IN ITEMS Debug Release)
        run(${CMAKE_COMMAND} --build ${WORK}/${configuration})
        run(${CMAKE_COMMAND} --install ${WORK}/${configuration})
    endforeach()
endfunction()

# Moves the configuration from lib/cmake to share, where it lies one folder less deep, and lets that of the debug
# libraries find them under debug.
function(vcpkg_cmake_config_fixup)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "PACKAGE_NAME;CONFIG_PATH" "")
    set(share ${CURRENT_PACKAGES_DIR}/share/${arg_PACKAGE_NAME})
    file(MAKE_DIRECTORY ${CURRENT_PACKAGES_DIR}/share)
    file(RENAME ${CURRENT_PACKAGES_DIR}/${arg_CONFIG_PATH} ${share})
    file(GLOB debug_files ${CURRENT_PACKAGES_DIR}/debug/${arg_CONFIG_PATH}/*-debug.cmake)
    foreach(file IN LISTS debug_files)
        file(READ ${file} text)
        string(REPLACE "\${_IMPORT_PREFIX}/" "\${_IMPORT_PREFIX}/debug/" text "${text}")
        get_filename_component(name ${file} NAME)
        file(WRITE ${share}/${name} "${text}")
    endforeach()
    file(REMOVE_RECURSE ${CURRENT_PACKAGES_DIR}/debug/${arg_CONFIG_PATH} ${CURRENT_PACKAGES_DIR}/lib/cmake
         ${CURRENT_PACKAGES_DIR}/debug/lib/cmake)
    file(GLOB files ${share}/*.cmake)
    set(up "get_filename_component(_IMPORT_PREFIX \"\${_IMPORT_PREFIX}\" PATH)\n")
    foreach(file IN LISTS files)
        file(READ ${file} text)
        string(REPLACE "${up}${up}${up}" "${up}${up}" text "${text}")
        string(REPLACE "\${CMAKE_CURRENT_LIST_DIR}/../../../" "\${CMAKE_CURRENT_LIST_DIR}/../../" text "${text}")
        file(WRITE ${file} "${text}")
    endforeach()
endfunction()

function(vcpkg_fixup_pkgconfig)
endfunction()

function(vcpkg_install_copyright)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "" "FILE_LIST")
    configure_file(${arg_FILE_LIST} ${CURRENT_PACKAGES_DIR}/share/${PORT}/copyright COPYONLY)
endfunction()

include(${PORTFILE})
