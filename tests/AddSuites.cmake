# Read by ctest when it starts: each suite of a test program is an entry and a process of its own,
# named FOLDER.Suite. A process a test would spend more time on starting than on testing.
function(tamor_add_suites folder program directory environment)
    if(NOT EXISTS "${program}")
        add_test(${folder}.IsNotBuilt "${program}")
        return()
    endif()
    execute_process(
        COMMAND "${program}" --gtest_list_tests
        WORKING_DIRECTORY "${directory}"
        OUTPUT_VARIABLE list
        COMMAND_ERROR_IS_FATAL ANY
    )
    # Suites stand at the start of their lines and end with a dot, tests are indented.
    string(REGEX MATCHALL "\n[A-Za-z0-9_/]+\\." suites "\n${list}")
    foreach(suite IN LISTS suites)
        string(REGEX REPLACE "^\n(.*)\\.$" "\\1" suite "${suite}")
        add_test("${folder}.${suite}" "${program}" "--gtest_filter=${suite}.*")
        set_tests_properties(
            "${folder}.${suite}" PROPERTIES WORKING_DIRECTORY "${directory}" LABELS ${folder}
                                            ENVIRONMENT "${environment}" TIMEOUT 600
        )
        # The longest come first.
        if(folder STREQUAL "end_to_end")
            set_tests_properties("${folder}.${suite}" PROPERTIES COST 100)
        endif()
    endforeach()
endfunction()
