# SPDX-License-Identifier: MIT
# The library with its headers, the pkg-config file, the CMake package, and the tool.

include(CMakePackageConfigHelpers)

install(TARGETS orvane orvane_usage EXPORT OrvaneTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
if(TARGET orvane_cli)
  # Found beside the library wherever the tree is moved.
  set_target_properties(orvane_cli PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
  install(TARGETS orvane_cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

install(FILES orvane.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/orvane)
foreach(folder IN LISTS ORVANE_FOLDERS)
  file(GLOB folder_headers CONFIGURE_DEPENDS ${folder}/*.h)
  install(FILES ${folder_headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/orvane/${folder})
endforeach()

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Orvane)
configure_package_config_file(cmake/OrvaneConfig.cmake.in ${CMAKE_BINARY_DIR}/OrvaneConfig.cmake
  INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/OrvaneConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/OrvaneConfig.cmake ${CMAKE_BINARY_DIR}/OrvaneConfigVersion.cmake
  DESTINATION ${package_dir})
install(EXPORT OrvaneTargets NAMESPACE Orvane:: DESTINATION ${package_dir})

configure_file(cmake/orvane.pc.in ${CMAKE_BINARY_DIR}/orvane.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/orvane.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
