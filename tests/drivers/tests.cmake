# SPDX-License-Identifier: BSD-2-Clause
foreach(area fill fill_driver resize_driver stretch_driver rotate_driver host_memory)
  zor_add_test(drivers_${area}_test ${CMAKE_CURRENT_LIST_DIR}/${area}_test.cpp)
endforeach()
