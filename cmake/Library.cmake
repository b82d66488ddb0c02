# SPDX-License-Identifier: MIT
# The shared library: every source of these folders, and one platform backend.

find_package(PkgConfig REQUIRED)
pkg_check_modules(GL REQUIRED IMPORTED_TARGET gl)
pkg_check_modules(GLU REQUIRED IMPORTED_TARGET glu)
pkg_check_modules(EGL REQUIRED IMPORTED_TARGET egl)
pkg_check_modules(FREETYPE REQUIRED IMPORTED_TARGET freetype2)
pkg_check_modules(FONTCONFIG REQUIRED IMPORTED_TARGET fontconfig)
pkg_check_modules(GSF REQUIRED IMPORTED_TARGET libgsf-1)
pkg_check_modules(SIMPLEINI REQUIRED IMPORTED_TARGET simpleini)
find_package(Threads REQUIRED)

set(ORVANE_FOLDERS platform host geometry outline extrude material imaging scene import3ds)
if(WIN32)
  set(ORVANE_BACKEND platform/win32)
else()
  set(ORVANE_BACKEND platform/posix)
endif()

set(ORVANE_SOURCES)
foreach(folder IN LISTS ORVANE_FOLDERS ITEMS platform/outlines ${ORVANE_BACKEND} ${ORVANE_BACKEND}/fonts
        ${ORVANE_BACKEND}/drawing)
  file(GLOB folder_sources CONFIGURE_DEPENDS ${folder}/*.cpp)
  list(APPEND ORVANE_SOURCES ${folder_sources})
endforeach()

add_library(orvane SHARED ${ORVANE_SOURCES})
add_library(Orvane::orvane ALIAS orvane)
set_target_properties(orvane PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
target_compile_definitions(orvane PRIVATE ORVANE_BUILDING)
target_include_directories(orvane PUBLIC
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/orvane>)
target_compile_features(orvane PUBLIC cxx_std_20)
# SimpleIni is header-only and EGL, FreeType, fontconfig and libgsf stay behind platform/: users see GL and GLU.
target_include_directories(orvane SYSTEM PRIVATE ${SIMPLEINI_INCLUDE_DIRS})
target_link_libraries(orvane
  PUBLIC PkgConfig::GL PkgConfig::GLU
  PRIVATE PkgConfig::EGL PkgConfig::FREETYPE PkgConfig::FONTCONFIG PkgConfig::GSF Threads::Threads)
