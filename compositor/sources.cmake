# SPDX-License-Identifier: BSD-2-Clause
list(APPEND ZOR_CORE_SOURCES
  compositor/blend_keyed.cpp
  compositor/blend_masked.cpp
  compositor/blend_rows.cpp
  compositor/blend_rows_avx2.cpp
  compositor/blend_rows_avx512.cpp
  compositor/blend_rows_plain.cpp
  compositor/blend_rows_sse2.cpp
  compositor/compose.cpp
  compositor/key_colour.cpp
  compositor/swap_planes_sse2.cpp
)
