# SPDX-License-Identifier: BSD-2-Clause
zor_add_test(convert_rgb_packing_test ${CMAKE_CURRENT_LIST_DIR}/rgb_packing_test.cpp)
zor_add_test(convert_rgb_to_yuv420_test ${CMAKE_CURRENT_LIST_DIR}/rgb_to_yuv420_test.cpp)
zor_add_test(convert_rgb_to_yuy2_test ${CMAKE_CURRENT_LIST_DIR}/rgb_to_yuy2_test.cpp)
zor_add_test(convert_yuv420_yuy2_test ${CMAKE_CURRENT_LIST_DIR}/yuv420_yuy2_test.cpp)
zor_add_test(convert_yuy2_rgb_test ${CMAKE_CURRENT_LIST_DIR}/yuy2_rgb_test.cpp)
zor_add_test(convert_family_wrappers_test ${CMAKE_CURRENT_LIST_DIR}/family_wrappers_test.cpp)
zor_add_test(convert_streamed_test ${CMAKE_CURRENT_LIST_DIR}/streamed_test.cpp)
zor_add_test(convert_yuv420_to_rgb_test ${CMAKE_CURRENT_LIST_DIR}/yuv420_to_rgb_test.cpp
                                        ${CMAKE_CURRENT_LIST_DIR}/yuv420_to_rgb_edges_test.cpp
                                        ${CMAKE_CURRENT_LIST_DIR}/yuv420_to_rgb_wrapper_test.cpp)
zor_add_test(convert_feature_word_test ${CMAKE_CURRENT_LIST_DIR}/feature_word_test.cpp)
zor_add_test(convert_kernel_table_test ${CMAKE_CURRENT_LIST_DIR}/kernel_table_test.cpp)
zor_add_test(convert_kernel_passes_test ${CMAKE_CURRENT_LIST_DIR}/kernel_passes_test.cpp)
zor_add_test(convert_mmx_state_test ${CMAKE_CURRENT_LIST_DIR}/mmx_state_test.cpp)
