# Run by cpack when the packages are there: that of the shared library calls ldconfig by a trigger, as Debian
# wants it, instead of by the two scripts that cpack writes.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
    if(NOT package MATCHES "/${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME}_")
        continue()
    endif()
    set(tree "${CPACK_TEMPORARY_DIRECTORY}/unpacked")
    file(REMOVE_RECURSE "${tree}")
    execute_process(COMMAND dpkg-deb --raw-extract "${package}" "${tree}" COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE "${tree}/DEBIAN/postinst" "${tree}/DEBIAN/postrm")
    file(WRITE "${tree}/DEBIAN/triggers" "activate-noawait ldconfig\n")
    execute_process(
        COMMAND dpkg-deb --root-owner-group -Zxz --build "${tree}" "${package}"
        OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY
    )
endforeach()
