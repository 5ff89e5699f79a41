# SPDX-License-Identifier: MIT
# tresk_add_test(NAME <name> GOLDEN <file> REGRESSION <file> [ARGS <option>...] [ACCEPT <grade>...])
#
# Adds a CTest test that compares two punch files. It passes when the exit grade is one of ACCEPT, 0 to
# 5, which is 0 alone by default. The output of the test is the transcript.
# A relative GOLDEN is taken from the source folder, a relative REGRESSION from the binary folder.
#
# CTest judges by the result line, not by the exit code: a run that ends without a grade (out of memory,
# a fatal fault of a file) leaves an exit code that would be one.
function(tresk_add_test)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "NAME;GOLDEN;REGRESSION" "ARGS;ACCEPT")
    foreach(needed NAME GOLDEN REGRESSION)
        if("${arg_${needed}}" STREQUAL "")
            message(FATAL_ERROR "tresk_add_test: ${needed} is missing")
        endif()
    endforeach()
    if(DEFINED arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "tresk_add_test: unknown arguments: ${arg_UNPARSED_ARGUMENTS}")
    endif()
    if(NOT DEFINED arg_ACCEPT)
        set(arg_ACCEPT 0)
    endif()

    set(words PASS FAIL_I FAIL_PV FAIL_V FAIL_PSV FAIL_SV)
    set(accepted)
    foreach(grade IN LISTS arg_ACCEPT)
        if(NOT grade MATCHES "^[0-5]$")
            message(FATAL_ERROR "tresk_add_test: no grade: ${grade}")
        endif()
        list(GET words ${grade} word)
        list(APPEND accepted ${word})
    endforeach()
    list(JOIN accepted "|" accepted)

    get_filename_component(golden ${arg_GOLDEN} ABSOLUTE)
    get_filename_component(regression ${arg_REGRESSION} ABSOLUTE BASE_DIR ${CMAKE_CURRENT_BINARY_DIR})
    add_test(NAME ${arg_NAME} COMMAND Tresk::tresk ${arg_ARGS} ${golden} ${regression})
    # Behind the word there is no capital letter up to the end of the transcript.
    set_tests_properties(${arg_NAME} PROPERTIES
        PASS_REGULAR_EXPRESSION "Comparison result:  (${accepted})[^A-Z_]*$")
endfunction()
