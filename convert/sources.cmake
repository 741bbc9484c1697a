# SPDX-License-Identifier: BSD-2-Clause
list(APPEND ZOR_CORE_SOURCES
  convert/rgb_packing_avx2.cpp
  convert/rgb_packing_plain.cpp
  convert/rgb_packing_sse2.cpp
  convert/rgb_to_yuv420_avx2.cpp
  convert/rgb_to_yuv420_avx512.cpp
  convert/rgb_to_yuv420_mmx.cpp
  convert/rgb_to_yuv420_plain.cpp
  convert/rgb_to_yuv420_sse2.cpp
  convert/rgb_to_yuy2_avx2.cpp
  convert/rgb_to_yuy2_avx512.cpp
  convert/rgb_to_yuy2_plain.cpp
  convert/rgb_to_yuy2_sse2.cpp
  convert/colour_tables.cpp
  convert/fast_mem_copy.cpp
  convert/fast_mem_copy_mmx.cpp
  convert/fast_mem_copy_sse2.cpp
  convert/feature_word.cpp
)
