# SPDX-License-Identifier: BSD-2-Clause
foreach(area attributes queue read_out)
  zor_add_test(surface_${area}_test ${CMAKE_CURRENT_LIST_DIR}/${area}_test.cpp)
endforeach()
