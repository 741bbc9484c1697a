# SPDX-License-Identifier: BSD-2-Clause
list(APPEND ZOR_CORE_SOURCES
  ipl/iplalloc.cpp
  ipl/iplborde.cpp
  ipl/iplstatus.cpp
  ipl/iplwarp.cpp
  ipl/move_lattice.cpp
  ipl/move_rows_avx2.cpp
  ipl/move_rows_avx512.cpp
  ipl/move_rows_plain.cpp
  ipl/move_rows_sse2.cpp
  ipl/ownrect.cpp
  ipl/warp_nearest.cpp
  ipl/warp_smooth.cpp
  ipl/warp_spans_avx2.cpp
  ipl/warp_spans_avx512.cpp
  ipl/warp_spans_plain.cpp
  ipl/warp_spans_sse2.cpp
)
