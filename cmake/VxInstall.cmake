# SPDX-License-Identifier: BSD-3-Clause
include(CMakePackageConfigHelpers)

set(vx_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/VXCanvasItem")
set(vx_header_dir "${CMAKE_INSTALL_INCLUDEDIR}/vxcanvasitem")

set(vx_libraries VXCanvasItem)
if(VX_BUILD_LABEL)
    list(APPEND vx_libraries VXLabel)
endif()
install(TARGETS ${vx_libraries} EXPORT VXCanvasItemTargets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    FILE_SET HEADERS DESTINATION "${vx_header_dir}"
    FILE_SET generated_headers DESTINATION "${vx_header_dir}")
install(EXPORT VXCanvasItemTargets NAMESPACE VXCanvasItem:: DESTINATION "${vx_package_dir}")

configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/VXCanvasItemConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/VXCanvasItemConfig.cmake" INSTALL_DESTINATION "${vx_package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/VXCanvasItemConfigVersion.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/VXCanvasItemConfig.cmake" "${PROJECT_BINARY_DIR}/VXCanvasItemConfigVersion.cmake"
    DESTINATION "${vx_package_dir}")
