# SPDX-License-Identifier: BSD-2-Clause
foreach(area gray area row_forms packed sharpen stretch stretch_planar)
  zor_add_test(scale_${area}_test ${CMAKE_CURRENT_LIST_DIR}/${area}_test.cpp
               ${CMAKE_CURRENT_LIST_DIR}/scale_reference.cpp)
endforeach()
foreach(area axis box edges grid reduction rows)
  zor_add_test(scale_rgb_${area}_test ${CMAKE_CURRENT_LIST_DIR}/rgb_${area}_test.cpp
               ${CMAKE_CURRENT_LIST_DIR}/rgb_reference.cpp
               ${CMAKE_CURRENT_LIST_DIR}/rgb_reference_axes.cpp)
endforeach()
