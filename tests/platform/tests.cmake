# SPDX-License-Identifier: BSD-2-Clause
zor_add_test(platform_test
  ${CMAKE_CURRENT_LIST_DIR}/direct_draw_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/global_memory_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/kelp_tool_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/memory_reserve_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/memory_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/osa_layer_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/pixel_block_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/rect_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/system_calls_test.cpp)

# Where no uKelpTool is: a folder of its own, and no library path. Wine can also be told to have no
# DirectDraw.
set(zor_alone ${CMAKE_CURRENT_BINARY_DIR}/alone)
file(MAKE_DIRECTORY ${zor_alone})
zor_add_test(platform_missing_libraries_test ${CMAKE_CURRENT_LIST_DIR}/missing_libraries_test.cpp)
set_target_properties(platform_missing_libraries_test PROPERTIES
  BUILD_RPATH "" RUNTIME_OUTPUT_DIRECTORY ${zor_alone})
set_tests_properties(platform_missing_libraries_test PROPERTIES
  WORKING_DIRECTORY ${zor_alone}
  ENVIRONMENT "WINEDLLOVERRIDES=mscoree,mshtml,ddraw=\\;winemenubuilder.exe,winedbg.exe=d")
set_tests_properties(platform_test PROPERTIES LABELS threads)
add_dependencies(zor_threads_tests platform_test)
