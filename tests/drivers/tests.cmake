# SPDX-License-Identifier: BSD-2-Clause
foreach(area fill fill_driver rotate_driver host_memory)
  zor_add_test(drivers_${area}_test ${CMAKE_CURRENT_LIST_DIR}/${area}_test.cpp)
endforeach()
zor_add_test(drivers_resize_driver_test ${CMAKE_CURRENT_LIST_DIR}/resize_driver_test.cpp
                                        ${CMAKE_CURRENT_LIST_DIR}/direct_resize_test.cpp
                                        ${CMAKE_CURRENT_LIST_DIR}/masks_test.cpp)
zor_add_test(drivers_stretch_driver_test ${CMAKE_CURRENT_LIST_DIR}/stretch_from_surface_test.cpp
                                         ${CMAKE_CURRENT_LIST_DIR}/stretch_to_memory_test.cpp
                                         ${CMAKE_CURRENT_LIST_DIR}/warp_region_test.cpp)
