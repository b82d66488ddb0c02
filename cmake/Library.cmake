# SPDX-License-Identifier: MIT
# The library. Every folder lists its sources itself, in its CMakeLists.txt.

find_package(PkgConfig REQUIRED)
pkg_check_modules(GL REQUIRED IMPORTED_TARGET gl)
pkg_check_modules(GLU REQUIRED IMPORTED_TARGET glu)
pkg_check_modules(EGL REQUIRED IMPORTED_TARGET egl)
pkg_check_modules(FREETYPE REQUIRED IMPORTED_TARGET freetype2)
pkg_check_modules(FONTCONFIG REQUIRED IMPORTED_TARGET fontconfig)
pkg_check_modules(PNG REQUIRED IMPORTED_TARGET libpng)
pkg_check_modules(ZLIB REQUIRED IMPORTED_TARGET zlib)
pkg_check_modules(JPEG REQUIRED IMPORTED_TARGET libjpeg)
pkg_check_modules(WEBP REQUIRED IMPORTED_TARGET libwebp)
pkg_check_modules(WEBPMUX REQUIRED IMPORTED_TARGET libwebpmux)
pkg_check_modules(TIFF REQUIRED IMPORTED_TARGET libtiff-4)
pkg_check_modules(LCMS REQUIRED IMPORTED_TARGET lcms2)
pkg_check_modules(GSF REQUIRED IMPORTED_TARGET libgsf-1)
pkg_check_modules(POLYCLIPPING REQUIRED IMPORTED_TARGET polyclipping)
pkg_check_modules(PUGIXML REQUIRED IMPORTED_TARGET pugixml)
pkg_check_modules(SIMPLEINI REQUIRED IMPORTED_TARGET simpleini)
find_package(Threads REQUIRED)
if(ORVANE_WITH_ISAL)
  pkg_check_modules(ISAL REQUIRED IMPORTED_TARGET libisal)
endif()
if(ORVANE_WITH_SHAPING)
  pkg_check_modules(HARFBUZZ REQUIRED IMPORTED_TARGET harfbuzz)
  pkg_check_modules(FRIBIDI REQUIRED IMPORTED_TARGET fribidi)
  pkg_check_modules(UNIBREAK REQUIRED IMPORTED_TARGET libunibreak)
endif()

# What compiling against the library needs, on a target that links nothing yet: the library's own sources and the
# parts of the tool use it, which are linked with the library in one program and with its objects in another.
add_library(orvane_usage INTERFACE)
function(orvane_add_usage target scope)
  target_include_directories(${target} ${scope}
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_compile_features(${target} ${scope} cxx_std_17)
  target_link_libraries(${target} ${scope} PkgConfig::GL PkgConfig::GLU)
endfunction()
orvane_add_usage(orvane_usage INTERFACE)

# Every source is compiled once, into objects that the library is made of.
add_library(orvane_objects OBJECT)
foreach(folder IN ITEMS
    platform host geometry outline extrude material imaging scene import3ds contours shapes solids profiles studio
    exchange markup pictures document)
  add_subdirectory(${folder})
endforeach()
if(ORVANE_WITH_SHAPING)
  add_subdirectory(shaping)
  add_subdirectory(shapedtext)
endif()
set_target_properties(orvane_objects PROPERTIES POSITION_INDEPENDENT_CODE ON)
target_compile_definitions(orvane_objects PRIVATE ORVANE_BUILDING)
# SimpleIni is header-only and EGL, FreeType, fontconfig and libgsf stay behind platform/: users see GL and GLU.
target_include_directories(orvane_objects SYSTEM PRIVATE ${SIMPLEINI_INCLUDE_DIRS})
set(private_libraries PkgConfig::EGL PkgConfig::FREETYPE PkgConfig::FONTCONFIG PkgConfig::GSF PkgConfig::PNG PkgConfig::ZLIB
  PkgConfig::POLYCLIPPING PkgConfig::PUGIXML PkgConfig::JPEG PkgConfig::WEBP PkgConfig::WEBPMUX PkgConfig::TIFF
  PkgConfig::LCMS Threads::Threads)
if(ORVANE_WITH_ISAL)
  list(APPEND private_libraries PkgConfig::ISAL)
endif()
if(ORVANE_WITH_GLTF)
  list(APPEND private_libraries tinygltf)
endif()
if(ORVANE_WITH_SHAPING)
  list(APPEND private_libraries PkgConfig::HARFBUZZ PkgConfig::FRIBIDI PkgConfig::UNIBREAK)
endif()
target_link_libraries(orvane_objects PRIVATE orvane_usage ${private_libraries})

if(BUILD_SHARED_LIBS)
  add_library(orvane SHARED $<TARGET_OBJECTS:orvane_objects>)
else()
  # Classes register themselves by name when the program starts. Joined into one object, all of them come into the
  # program, also those that only a loaded file names.
  add_custom_command(OUTPUT orvane.o
    COMMAND ${CMAKE_CXX_COMPILER} -r -nostdlib -o orvane.o $<TARGET_OBJECTS:orvane_objects>
    DEPENDS orvane_objects $<TARGET_OBJECTS:orvane_objects>
    COMMAND_EXPAND_LISTS VERBATIM)
  add_library(orvane STATIC ${CMAKE_CURRENT_BINARY_DIR}/orvane.o)
  set_target_properties(orvane PROPERTIES LINKER_LANGUAGE CXX)
endif()
add_library(Orvane::orvane ALIAS orvane)
set_target_properties(orvane PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
orvane_add_usage(orvane PUBLIC)
target_link_libraries(orvane PRIVATE ${private_libraries})

# Programs that look inside (most tests, some benchmarks) link the objects in place of the library, so that nothing
# is exported for them. A program must never link both.
add_library(orvane_inside INTERFACE)
target_sources(orvane_inside INTERFACE $<TARGET_OBJECTS:orvane_objects>)
target_link_libraries(orvane_inside INTERFACE orvane_usage)
foreach(library IN LISTS private_libraries)
  target_link_libraries(orvane_inside INTERFACE $<LINK_ONLY:${library}>)
endforeach()
