# Run by cpack in each package's tree before it is packed: copyright, changelog and compressed man pages,
# which Debian asks for and other installations have no use for. All times become SOURCE_DATE_EPOCH.
set(sources "${CPACK_TAMOR_SOURCES}")
function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} key)
    set(tree "${CPACK_TEMPORARY_DIRECTORY}/${component}/usr")
    set(documentation "${tree}/share/doc/${CPACK_DEBIAN_${key}_PACKAGE_NAME}")
    file(COPY "${sources}/cmake/debian/copyright" DESTINATION "${documentation}"
         FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ
    )
    run(sh "${sources}/cmake/debian/changelog" "${sources}/CHANGELOG.md" "${CPACK_PACKAGE_CONTACT}"
        OUTPUT_FILE "${documentation}/changelog"
    )
    file(GLOB pages "${tree}/share/man/man*/*")
    run(gzip -9n ${pages} "${documentation}/changelog")
    file(GLOB_RECURSE files LIST_DIRECTORIES true "${tree}/*")
    if(DEFINED ENV{SOURCE_DATE_EPOCH})
        run(touch --no-dereference "--date=@$ENV{SOURCE_DATE_EPOCH}" "${tree}" ${files})
    endif()
endforeach()
