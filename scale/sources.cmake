# SPDX-License-Identifier: BSD-2-Clause
list(APPEND ZOR_CORE_SOURCES
  scale/area.cpp
  scale/area_rows_avx2.cpp
  scale/area_rows_avx512.cpp
  scale/area_rows_plain.cpp
  scale/area_rows_sse2.cpp
  scale/gray.cpp
  scale/gray_rows_avx2.cpp
  scale/gray_rows_avx512.cpp
  scale/gray_rows_plain.cpp
  scale/gray_rows_sse2.cpp
  scale/gray_tables.cpp
  scale/packed.cpp
  scale/planar.cpp
  scale/scale_picture.cpp
  scale/sharpen.cpp
  scale/stretch.cpp
)
