# SPDX-License-Identifier: BSD-2-Clause
zor_add_test(iplalloc_test ${CMAKE_CURRENT_LIST_DIR}/iplalloc_test.cpp)
zor_add_test(warp_test ${CMAKE_CURRENT_LIST_DIR}/warp_test.cpp
                       ${CMAKE_CURRENT_LIST_DIR}/warp_edges_test.cpp
                       ${CMAKE_CURRENT_LIST_DIR}/warp_interpolation_test.cpp)
zor_add_test(move_test ${CMAKE_CURRENT_LIST_DIR}/move_test.cpp)
zor_add_test(warp_degrees_test ${CMAKE_CURRENT_LIST_DIR}/warp_degrees_test.cpp)
