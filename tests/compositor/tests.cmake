# SPDX-License-Identifier: BSD-2-Clause
zor_add_test(blend_test ${CMAKE_CURRENT_LIST_DIR}/blend_test.cpp
                        ${CMAKE_CURRENT_LIST_DIR}/blend_rows_test.cpp
                        ${CMAKE_CURRENT_LIST_DIR}/blend_geometry_test.cpp
                        ${CMAKE_CURRENT_LIST_DIR}/swap_planes_test.cpp)
zor_add_test(compose_test ${CMAKE_CURRENT_LIST_DIR}/compose_test.cpp
                          ${CMAKE_CURRENT_LIST_DIR}/compose_formats_test.cpp
                          ${CMAKE_CURRENT_LIST_DIR}/compose_stretch_test.cpp
                          ${CMAKE_CURRENT_LIST_DIR}/compose_memory_test.cpp)
