# SPDX-License-Identifier: MIT
# Every source is listed in a CMakeLists.txt. These functions add listed sources, and stop the configuration when a
# source lies beside them that is not listed: it would silently be left out of the build.

# Compares a list, relative to the current folder, with the sources that the folders named after it have.
# usage: orvane_check_listed(LIST FOLDER...)
function(orvane_check_listed list)
  foreach(folder IN LISTS ARGN)
    file(GLOB found RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} CONFIGURE_DEPENDS ${folder}/*.cpp)
    list(REMOVE_ITEM found ${${list}})
    if(found)
      message(FATAL_ERROR "${CMAKE_CURRENT_SOURCE_DIR}/CMakeLists.txt does not list ${found}")
    endif()
  endforeach()
endfunction()

# Sources of the library, in the current folder.
function(orvane_sources)
  target_sources(orvane_objects PRIVATE ${ARGN})
  set(listed ${ARGN})
  orvane_check_listed(listed .)
endfunction()

# Sources of test programs, in the current folder: tests/CMakeLists.txt says which program takes which.
function(orvane_tests)
  list(TRANSFORM ARGN PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/ OUTPUT_VARIABLE sources)
  set_property(GLOBAL APPEND PROPERTY ORVANE_TESTS ${sources})
  set(listed ${ARGN})
  orvane_check_listed(listed .)
endfunction()
