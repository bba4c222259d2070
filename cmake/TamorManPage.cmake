# tamor_man_page(NAME SUMMARY PROGRAM COMPONENT): the page of a command, made from what PROGRAM --help says
# and from NAME.h2m beside its sources, which adds examples and where to read on.
find_program(TAMOR_HELP2MAN help2man)
if(NOT TAMOR_HELP2MAN)
    message(STATUS "No man pages are made, since help2man is missing: install the package help2man")
endif()

function(tamor_man_page name summary program component)
    if(NOT TAMOR_HELP2MAN)
        return()
    endif()
    set(page "${CMAKE_CURRENT_BINARY_DIR}/${name}.1")
    set(additions "${CMAKE_CURRENT_SOURCE_DIR}/${name}.h2m")
    add_custom_command(
        OUTPUT "${page}"
        COMMAND "${TAMOR_HELP2MAN}" --no-info "--name=${summary}" --source=Tamor "--include=${additions}"
                "--output=${page}" "${program}"
        DEPENDS "${program}" "${additions}"
        VERBATIM
    )
    add_custom_target(${name}-page ALL DEPENDS "${page}")
    install(FILES "${page}" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT ${component})
endfunction()
