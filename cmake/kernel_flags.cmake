# SPDX-License-Identifier: BSD-2-Clause
# The end of a file's name says which instructions it may use. Such files hold intrinsics and
# always-inline code only, so that no shared function is compiled for a processor that isn't there.

set(ZOR_FLAGS_plain "")
set(ZOR_FLAGS_mmx "-mmmx")
set(ZOR_FLAGS_sse2 "-msse2")
set(ZOR_FLAGS_avx2 "-mavx2;-mno-fma")
# GCC 12 takes the undefined operands of its own 512-bit intrinsics for mistakes of ours.
set(ZOR_FLAGS_avx512
    "-mavx2;-mavx512f;-mavx512bw;-mavx512dq;-mavx512vl;-mavx512vbmi;-mavx512vnni;-mno-fma;-mprefer-vector-width=512;-Wno-maybe-uninitialized")
if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
  # There AVX-512 includes FMA, and without it is gone too; contraction is off anyway.
  list(REMOVE_ITEM ZOR_FLAGS_avx512 -mno-fma -Wno-maybe-uninitialized)
endif()

function(zor_kernel_flags)
  foreach(source ${ARGN})
    if(source MATCHES "_(plain|mmx|sse2|avx2|avx512)\\.cpp$")
      set(flags ${ZOR_FLAGS_${CMAKE_MATCH_1}})
      # The kernel table's many kernels leave out what only grows them: unrolled loops and vectors
      # of the compiler's own making.
      if(CMAKE_BUILD_TYPE MATCHES "Rel")
        if(source MATCHES "/entries_[a-z0-9]+\\.cpp$")
          list(APPEND flags -O2)
        else()
          list(APPEND flags -O3)
        endif()
      endif()
      set_source_files_properties(${source} PROPERTIES COMPILE_OPTIONS "${flags}")
    endif()
  endforeach()
endfunction()
