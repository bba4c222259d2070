# TAMOR_FONT_FILE: the font of the demonstration, the tests and the benchmarks, as fontconfig finds it
# on this machine.
if(NOT TAMOR_FONT_FILE)
    find_program(TAMOR_FC_MATCH fc-match)
    if(NOT TAMOR_FC_MATCH)
        message(FATAL_ERROR "fc-match is missing: install the package fontconfig")
    endif()
    execute_process(
        COMMAND "${TAMOR_FC_MATCH}" --format=%{file} "DejaVu Sans:style=Book" OUTPUT_VARIABLE file
    )
    # Another font is what fontconfig names where there is none of that name.
    if(NOT file MATCHES "/DejaVuSans\\.ttf$")
        message(FATAL_ERROR "DejaVuSans.ttf is missing: install the package fonts-dejavu-core")
    endif()
    set(TAMOR_FONT_FILE "${file}" CACHE FILEPATH "The font of the demonstration's GUI")
endif()
