# SPDX-License-Identifier: BSD-2-Clause
# What a build can switch, and the flags that every file of ours is compiled with.

option(ZOR_BUILD_TESTS "Build the test programs" ${PROJECT_IS_TOP_LEVEL})
option(ZOR_BUILD_HOST "Build the host program zorhost" ${PROJECT_IS_TOP_LEVEL})
option(ZOR_BUILD_BENCH "Build the benchmarks" OFF)
option(ZOR_BUILD_FUZZ "Build the fuzzers (clang)" OFF)
option(ZOR_INSTALL "Have rules for the installation" ${PROJECT_IS_TOP_LEVEL})
option(ZOR_WERROR "Treat warnings as errors" OFF)
set(ZOR_SANITIZE "" CACHE STRING "Sanitizers for every target: address,undefined or thread")

if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

# The number rules hold in every build: no contraction, SSE arithmetic also on 32 bits, and room
# for hosts whose stack is aligned to 4 bytes only.
function(zor_compile_options target)
  target_compile_features(${target} PRIVATE cxx_std_20)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
    POSITION_INDEPENDENT_CODE ON)
  target_compile_options(${target} PRIVATE -Wall -Wextra -ffp-contract=off -fno-fast-math)
  if(ZOR_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(WIN32)
    target_compile_options(${target} PRIVATE -msse2 -mfpmath=sse -mstackrealign)
  endif()
  if(ZOR_SANITIZE)
    target_compile_options(${target} PUBLIC -fsanitize=${ZOR_SANITIZE} -fno-sanitize-recover=all
                                            -fno-omit-frame-pointer)
    target_link_options(${target} PUBLIC -fsanitize=${ZOR_SANITIZE})
  endif()
endfunction()
