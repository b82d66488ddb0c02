# SPDX-License-Identifier: MIT
# What every target is compiled with.

find_program(ORVANE_CCACHE ccache)
if(ORVANE_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${ORVANE_CCACHE})
endif()

# Results are compared bit by bit: no fused multiplication and addition.
add_compile_options(-ffp-contract=off -Wall -Wextra -Wpedantic)
if(ORVANE_WERROR)
  add_compile_options(-Werror)
endif()
# Exported functions may be inlined inside the library; nobody replaces them from outside.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_compile_options(-fno-semantic-interposition)
endif()

option(ORVANE_SANITIZE "Address and undefined-behaviour sanitizers" OFF)
if(ORVANE_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
