# SPDX-License-Identifier: BSD-3-Clause
# One target that carries how everything of ours is compiled; it is linked privately and never exported.
add_library(vx_options INTERFACE)
target_compile_features(vx_options INTERFACE cxx_std_20)
target_compile_options(vx_options INTERFACE -Wall -Wextra -Wpedantic -Woverloaded-virtual -Wnon-virtual-dtor -Wshadow)
target_compile_definitions(vx_options INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_KEYWORDS QT_NO_FOREACH
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(VX_WARNINGS_AS_ERRORS)
    target_compile_options(vx_options INTERFACE -Werror)
endif()
if(VX_SANITIZE)
    target_compile_options(vx_options INTERFACE -fsanitize=${VX_SANITIZE} -fno-omit-frame-pointer
        -fno-sanitize-recover=all)
    target_link_options(vx_options INTERFACE -fsanitize=${VX_SANITIZE})
endif()

# vx_precompile_headers(<target> [<header>…]): a third less to compile; builds without show what a source forgot to
# include. Large headers of other libraries may be added.
function(vx_precompile_headers target)
    if(VX_PRECOMPILED_HEADERS)
        target_precompile_headers(${target} PRIVATE "${PROJECT_SOURCE_DIR}/cmake/precompiled.h" ${ARGN})
    endif()
endfunction()

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
