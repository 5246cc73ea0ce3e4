# SPDX-License-Identifier: BSD-3-Clause
# vx_add_test(<folder>/<name> [SOURCES more.cpp…] [LIBRARIES more…] [TIMEOUT seconds])
# Builds <folder>/tst_<name>.cpp into a program of that name and registers it with CTest.
function(vx_add_test path)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "TIMEOUT" "SOURCES;LIBRARIES")
    get_filename_component(folder "${path}" DIRECTORY)
    get_filename_component(name "${path}" NAME)
    set(target tst_${name})
    add_executable(${target} "${folder}/${target}.cpp" ${arg_SOURCES})
    target_link_libraries(${target} PRIVATE vx_options vx_test_support ${arg_LIBRARIES})
    add_test(NAME ${path} COMMAND ${target})
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 120)
    endif()
    set_tests_properties(${path} PROPERTIES LABELS "${folder}" TIMEOUT ${arg_TIMEOUT}
        ENVIRONMENT "${VX_TEST_ENVIRONMENT}")
endfunction()
