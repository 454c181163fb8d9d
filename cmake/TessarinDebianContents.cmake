# Run by cpack before it makes the packages of what each component has put into a directory.

# CPACK_STRIP_FILES leaves archives as they are: without debug information this one is a tenth of the size.
file(GLOB_RECURSE archives ${CPACK_TEMPORARY_DIRECTORY}/*.a)
foreach(archive IN LISTS archives)
    execute_process(COMMAND ${CPACK_TESSARIN_STRIP} --strip-debug --enable-deterministic-archives ${archive}
                    COMMAND_ERROR_IS_FATAL ANY)
endforeach()

string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} variable)
    set(documentation
        ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr/share/doc/${CPACK_DEBIAN_${variable}_PACKAGE_NAME})
    file(MAKE_DIRECTORY ${documentation})
    file(COPY_FILE ${CPACK_TESSARIN_SOURCE_DIR}/LICENSE ${documentation}/copyright)
    file(WRITE ${documentation}/changelog.Debian
         "${CPACK_DEBIAN_PACKAGE_SOURCE} (${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}) unstable; "
         "urgency=medium\n\n  * See CHANGELOG.md of libtessarinfoundation-common-dev.\n\n"
         " -- ${CPACK_PACKAGE_CONTACT}  ${date}\n")
    execute_process(COMMAND gzip --best --no-name ${documentation}/changelog.Debian COMMAND_ERROR_IS_FATAL ANY)
endforeach()
