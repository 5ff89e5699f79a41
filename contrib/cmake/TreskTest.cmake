# SPDX-License-Identifier: MIT
# tresk_add_test(NAME <name> GOLDEN <file> REGRESSION <file> [TABLE <file>] [ARGS <option>...]
#                [ACCEPT <grade>...] [REPORT <folder>])
#
# Adds a CTest test that compares two punch files, which may be compressed (*.gz, *.zst). It passes when the
# grade is one of ACCEPT, numbers or names, which is PASS alone by default; NO_DATA accepts that there was
# nothing to compare. The output of the test is the transcript.
# A relative GOLDEN or TABLE is taken from the source folder, a relative REGRESSION from the binary folder.
# REPORT has tresk-report compare, which leaves a report in a folder of its own for this test, relative to the binary
# folder. TABLE adds the options that it has for the golden file's path, seen from the folder of the table.
#
# The kit's tresk-check runs tresk and judges the transcript: an exit code may be that of a run that died, and
# the grade that of two files that could not be read.

# Checks a table and options while the tests are configured, each set once.
function(tresk_check_options table)
    get_property(checked GLOBAL PROPERTY tresk_checked_options)
    string(SHA1 key "${table} ${ARGN}")
    if(key IN_LIST checked)
        return()
    endif()
    execute_process(COMMAND ${CMAKE_COMMAND} -E echo
        COMMAND "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../../tresk/harness/tresk-options" "${table}" ${ARGN}
        OUTPUT_QUIET ERROR_VARIABLE complaint RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "tresk_add_test: ${complaint}")
    endif()
    set_property(GLOBAL APPEND PROPERTY tresk_checked_options ${key})
endfunction()

function(tresk_add_test)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "NAME;GOLDEN;REGRESSION;TABLE;REPORT" "ARGS;ACCEPT")
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
    foreach(grade IN LISTS arg_ACCEPT)
        if(NOT grade MATCHES "^([0-5]|PASS|FAIL_(I|PV|V|PSV|SV)|NO_DATA)$")
            message(FATAL_ERROR "tresk_add_test: no grade: ${grade}")
        endif()
    endforeach()
    list(JOIN arg_ACCEPT " " accepted)

    get_filename_component(golden "${arg_GOLDEN}" ABSOLUTE)
    get_filename_component(regression "${arg_REGRESSION}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_BINARY_DIR}")
    set(table)
    set(look_up)
    if(DEFINED arg_TABLE)
        get_filename_component(table "${arg_TABLE}" ABSOLUTE)
        get_filename_component(folder "${table}" DIRECTORY)
        file(RELATIVE_PATH path "${folder}" "${golden}")
        string(REGEX REPLACE "\\.(gz|zst)$" "" path "${path}")
        foreach(argument "-o${table}" "-n${path}")
            string(REPLACE ";" "\\;" argument "${argument}")
            list(APPEND look_up "${argument}")
        endforeach()
    endif()
    if(DEFINED arg_REPORT)
        get_target_property(tresk Tresk::tresk LOCATION)
        get_filename_component(folder "${tresk}" DIRECTORY)
        find_program(TRESK_REPORT_PROGRAM tresk-report HINTS "${folder}")
        mark_as_advanced(TRESK_REPORT_PROGRAM)
        if(NOT TRESK_REPORT_PROGRAM)
            message(FATAL_ERROR "tresk_add_test: REPORT needs tresk-report, which is not found")
        endif()
        get_filename_component(report "${arg_REPORT}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_BINARY_DIR}")
        string(REPLACE ";" "\\;" report "-r${report}")
        list(APPEND look_up "${report}")
        set(program "TRESK_REPORT=${TRESK_REPORT_PROGRAM}")
    else()
        set(program "TRESK=$<TARGET_FILE:Tresk::tresk>")
    endif()
    tresk_check_options("${table}" ${arg_ARGS})
    add_test(NAME "${arg_NAME}"
        COMMAND ${CMAKE_COMMAND} -E env "${program}"
            "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../../tresk/harness/tresk-check"
            -A "${accepted}" ${look_up} "${golden}" "${regression}" ${arg_ARGS})
endfunction()
