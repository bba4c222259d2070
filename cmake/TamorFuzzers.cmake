# tamor_add_fuzzer(NAME LABEL FOLDER SOURCES FILE... CORPUS DIRECTORY [SAMPLES FILE...]
#                  [LONGEST BYTES] [MEMORY MEGABYTES] [DICTIONARY FILE] [LIBRARIES LIBRARY...])
#
# Of sources that define LLVMFuzzerTestOneInput: in every build tamor-NAME-fuzz-replay, which ctest
# runs over the files of the corpus as the test fuzz.NAME, and as damaged.NAME over the samples, cut
# at each byte and with each bit turned, or at 1000 bytes of a longer one; and with TAMOR_FUZZ
# tamor-NAME-fuzzer, which looks for more inputs and which scripts/fuzz runs.
function(tamor_add_fuzzer name)
    cmake_parse_arguments(PARSE_ARGV 1 fuzzer "" "LABEL;CORPUS;LONGEST;MEMORY;DICTIONARY" "SOURCES;SAMPLES;LIBRARIES")
    if(NOT fuzzer_LONGEST)
        set(fuzzer_LONGEST 4096)
    endif()
    set(libraries tamor_warnings tamor ${fuzzer_LIBRARIES})
    set(corpus "${CMAKE_CURRENT_SOURCE_DIR}/${fuzzer_CORPUS}")

    set(replay tamor-${name}-fuzz-replay)
    add_executable(
        ${replay} ${fuzzer_SOURCES} "${PROJECT_SOURCE_DIR}/tests/support/ReplayCorpus.cpp"
    )
    target_link_libraries(${replay} PRIVATE ${libraries})
    add_test(NAME fuzz.${name} COMMAND ${replay} "${corpus}")
    set(tests fuzz.${name})
    if(fuzzer_SAMPLES)
        add_test(
            NAME damaged.${name}
            COMMAND ${replay} --damaged 1000 ${fuzzer_SAMPLES}
            WORKING_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}"
        )
        list(APPEND tests damaged.${name})
    endif()
    set_tests_properties(
        ${tests} PROPERTIES TIMEOUT 300 LABELS "${fuzzer_LABEL};fuzz" ENVIRONMENT
                            "${TAMOR_TEST_ENVIRONMENT}"
    )

    if(TAMOR_FUZZ)
        set(program tamor-${name}-fuzzer)
        add_executable(${program} ${fuzzer_SOURCES})
        target_link_libraries(${program} PRIVATE ${libraries})
        target_link_options(${program} PRIVATE -fsanitize=fuzzer)
        set(options "-max_len=${fuzzer_LONGEST}")
        if(fuzzer_MEMORY)
            string(APPEND options " -rss_limit_mb=${fuzzer_MEMORY}")
        endif()
        if(fuzzer_DICTIONARY)
            string(APPEND options " -dict=${CMAKE_CURRENT_SOURCE_DIR}/${fuzzer_DICTIONARY}")
        endif()
        file(
            GENERATE
            OUTPUT "${CMAKE_BINARY_DIR}/fuzzers/${name}"
            CONTENT "program=$<TARGET_FILE:${program}>
corpus=${corpus}
options=(${options})
"
        )
    endif()
endfunction()
