# SPDX-License-Identifier: BSD-2-Clause
zor_add_test(platform_test
  ${CMAKE_CURRENT_LIST_DIR}/direct_draw_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/global_memory_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/kelp_tool_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/memory_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/osa_layer_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/pixel_block_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/rect_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/system_calls_test.cpp)

# Where no uKelpTool is: a folder of its own, and no library path.
set(zor_no_kelp ${CMAKE_CURRENT_BINARY_DIR}/no_kelp)
file(MAKE_DIRECTORY ${zor_no_kelp})
zor_add_test(platform_no_kelp_test ${CMAKE_CURRENT_LIST_DIR}/no_kelp_test.cpp)
set_target_properties(platform_no_kelp_test PROPERTIES
  BUILD_RPATH "" RUNTIME_OUTPUT_DIRECTORY ${zor_no_kelp})
set_tests_properties(platform_no_kelp_test PROPERTIES WORKING_DIRECTORY ${zor_no_kelp})
