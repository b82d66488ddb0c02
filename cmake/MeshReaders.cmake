# SPDX-License-Identifier: MIT
# Other libraries that read files of meshes, to compare with in tests and benchmarks: link mesh_readers. It defines
# ORVANE_HAS_ASSIMP and ORVANE_HAS_LIB3DS for those that are installed. The tests need lib3ds, which writes 3D Studio
# files for them; assimp, and lib3mf for 3MF files, are compared with where they are installed.

pkg_check_modules(ASSIMP QUIET IMPORTED_TARGET assimp)
if(ORVANE_BUILD_TESTS)
  set(lib3ds_required REQUIRED)
endif()
find_library(LIB3DS_LIBRARY 3ds ${lib3ds_required})
find_path(LIB3DS_INCLUDE lib3ds/file.h ${lib3ds_required})

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
find_library(LIB3MF_LIBRARY 3MF)
find_path(LIB3MF_INCLUDE Model/COM/NMR_DLLInterfaces.h PATH_SUFFIXES lib3mf)
if(LIB3MF_LIBRARY AND LIB3MF_INCLUDE)
  target_link_libraries(mesh_readers INTERFACE ${LIB3MF_LIBRARY})
endif()
