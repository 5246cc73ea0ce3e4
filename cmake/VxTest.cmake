# SPDX-License-Identifier: BSD-3-Clause
# vx_add_test(<folder>/<name> [SOURCES more.cpp…] [LIBRARIES more…] [TIMEOUT seconds])
# Builds <folder>/tst_<name>.cpp into a program of that name and registers it with CTest. All tests include what
# they use, and share the headers that the first of them has compiled, which halves the time of a test's own.
function(vx_add_test path)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "TIMEOUT" "SOURCES;LIBRARIES")
    get_filename_component(folder "${path}" DIRECTORY)
    get_filename_component(name "${path}" NAME)
    set(target tst_${name})
    add_executable(${target} "${folder}/${target}.cpp" ${arg_SOURCES})
    target_link_libraries(${target} PRIVATE vx_options vx_test_support ${arg_LIBRARIES})
    get_property(first_test GLOBAL PROPERTY VX_FIRST_TEST)
    if(first_test)
        target_precompile_headers(${target} REUSE_FROM ${first_test})
    else()
        target_precompile_headers(${target} PRIVATE "${PROJECT_SOURCE_DIR}/tests/support/testheaders.h")
        set_property(GLOBAL PROPERTY VX_FIRST_TEST ${target})
    endif()
    # What moc finds is in the source itself: this one is all but empty, and would take as long as a test.
    set_source_files_properties("${CMAKE_CURRENT_BINARY_DIR}/${target}_autogen/mocs_compilation.cpp" PROPERTIES
        SKIP_PRECOMPILE_HEADERS ON)
    add_test(NAME ${path} COMMAND ${target})
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 120)
    endif()
    set_tests_properties(${path} PROPERTIES LABELS "${folder}" TIMEOUT ${arg_TIMEOUT}
        ENVIRONMENT "${VX_TEST_ENVIRONMENT}")
endfunction()
