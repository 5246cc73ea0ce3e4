# SPDX-License-Identifier: BSD-3-Clause
# Finds libzint, the barcode encoder: the imported target Zint::Zint, Zint_FOUND and Zint_VERSION.
# Its header does not say its version and it comes without package files; the full name of the library does.
include(FindPackageHandleStandardArgs)

find_path(Zint_INCLUDE_DIR zint.h)
find_library(Zint_LIBRARY zint)
mark_as_advanced(Zint_INCLUDE_DIR Zint_LIBRARY)

if(Zint_LIBRARY)
    file(REAL_PATH "${Zint_LIBRARY}" Zint_FILE)
    if(Zint_FILE MATCHES "\\.so\\.([0-9]+(\\.[0-9]+)+)$")
        set(Zint_VERSION "${CMAKE_MATCH_1}")
    endif()
    unset(Zint_FILE)
endif()

find_package_handle_standard_args(Zint REQUIRED_VARS Zint_LIBRARY Zint_INCLUDE_DIR VERSION_VAR Zint_VERSION)

if(Zint_FOUND AND NOT TARGET Zint::Zint)
    add_library(Zint::Zint UNKNOWN IMPORTED)
    set_target_properties(Zint::Zint PROPERTIES
        IMPORTED_LOCATION "${Zint_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${Zint_INCLUDE_DIR}")
endif()
