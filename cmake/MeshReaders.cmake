# SPDX-License-Identifier: MIT
# Other readers of 3D Studio files, to measure and compare with where they are installed: link mesh_readers and
# ask for ORVANE_HAS_ASSIMP and ORVANE_HAS_LIB3DS.

pkg_check_modules(ASSIMP QUIET IMPORTED_TARGET assimp)
find_library(LIB3DS_LIBRARY 3ds)
find_path(LIB3DS_INCLUDE lib3ds/file.h)

add_library(mesh_readers INTERFACE)
if(ASSIMP_FOUND)
  target_link_libraries(mesh_readers INTERFACE PkgConfig::ASSIMP)
  target_compile_definitions(mesh_readers INTERFACE ORVANE_HAS_ASSIMP)
endif()
if(LIB3DS_LIBRARY AND LIB3DS_INCLUDE)
  target_link_libraries(mesh_readers INTERFACE ${LIB3DS_LIBRARY})
  target_include_directories(mesh_readers SYSTEM INTERFACE ${LIB3DS_INCLUDE})
  target_compile_definitions(mesh_readers INTERFACE ORVANE_HAS_LIB3DS)
endif()
