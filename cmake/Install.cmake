# SPDX-License-Identifier: MIT
# The library with its public headers, the pkg-config file, the CMake package, and the tool. Nothing that is
# installed names the folder it is installed to: the tree may be moved.

include(CMakePackageConfigHelpers)
include(cmake/PublicHeaders.cmake)

install(TARGETS orvane EXPORT OrvaneTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
if(ORVANE_BUILD_TOOL)
  file(RELATIVE_PATH to_library ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  set_target_properties(orvane_cli PROPERTIES INSTALL_RPATH "$ORIGIN/${to_library}")
  install(TARGETS orvane_cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

# The installed headers name each other from the folder above orvane/, so that a host's own "scene/..." or
# "platform/Types.h" is never taken for ours.
foreach(header IN LISTS ORVANE_PUBLIC_HEADERS)
  string(REGEX REPLACE "^orvane/" "" place ${header})
  set(copy ${PROJECT_BINARY_DIR}/include/orvane/${place})
  file(READ ${header} text)
  string(REGEX REPLACE "(include[ (]\")(orvane/)?([^\"]+\")" "\\1orvane/\\3" text "${text}")
  file(CONFIGURE OUTPUT ${copy} CONTENT "${text}" @ONLY NEWLINE_STYLE UNIX)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${header})
  get_filename_component(folder ${place} DIRECTORY)
  install(FILES ${copy} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/orvane/${folder})
endforeach()

# A static library leaves what it is made with to the program that links it.
if(BUILD_SHARED_LIBS)
  set(package_libraries "gl glu")
  set(package_private "")
else()
  set(package_libraries
    "gl glu egl freetype2 fontconfig libgsf-1 libpng zlib polyclipping pugixml libjpeg libwebp libwebpmux libtiff-4 lcms2")
  if(ORVANE_WITH_ISAL)
    string(APPEND package_libraries " libisal")
  endif()
  if(ORVANE_WITH_SHAPING)
    string(APPEND package_libraries " harfbuzz fribidi libunibreak")
  endif()
  set(package_private " -pthread")
  if(ORVANE_WITH_GLTF)
    string(APPEND package_private " -ltinygltf")
  endif()
endif()
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Orvane)
configure_package_config_file(cmake/OrvaneConfig.cmake.in ${PROJECT_BINARY_DIR}/OrvaneConfig.cmake
  INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/OrvaneConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/OrvaneConfig.cmake ${PROJECT_BINARY_DIR}/OrvaneConfigVersion.cmake
  DESTINATION ${package_dir})
install(EXPORT OrvaneTargets NAMESPACE Orvane:: DESTINATION ${package_dir})

file(RELATIVE_PATH to_prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH library_dir ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH include_dir ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
configure_file(cmake/orvane.pc.in ${PROJECT_BINARY_DIR}/orvane.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/orvane.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
