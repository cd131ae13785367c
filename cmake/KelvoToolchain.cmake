# Compiler flags, linker and cache shared by every target of this project.

find_program(KELVO_CCACHE ccache)
if(KELVO_CCACHE)
  # Precompiled headers are cached only with these two liberties; neither changes an output.
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${KELVO_CCACHE})
endif()

# clang needs lld for its sanitizer runtimes to link fast; GCC 12 understands mold.
find_program(KELVO_MOLD mold)
if(KELVO_MOLD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_link_options(-fuse-ld=mold)
endif()

add_library(kelvo_flags INTERFACE)
target_compile_options(kelvo_flags INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
# GCC 12 reports "x" + string at -O3 as overlapping copies (GCC bug 105651); -Wall turns that on.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(kelvo_flags INTERFACE -Wno-restrict)
endif()

if(KELVO_SANITIZE)
  set(_sanitize -fsanitize=${KELVO_SANITIZE} -fno-sanitize-recover=all)
  add_compile_options(${_sanitize})
  add_link_options(${_sanitize})
endif()

# The libraries tell the fuzzers which of their branches an input reached.
if(KELVO_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
