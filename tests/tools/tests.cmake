# SPDX-License-Identifier: BSD-2-Clause
if(TARGET zorkernels)
  zor_add_test(tools_zorkernels_test ${CMAKE_CURRENT_LIST_DIR}/zorkernels_test.cpp)
  target_link_libraries(tools_zorkernels_test PRIVATE zorkernels_parts)
endif()
