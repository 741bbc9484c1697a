# SPDX-License-Identifier: BSD-2-Clause
foreach(area attributes queue read_out export clone threads)
  zor_add_test(surface_${area}_test ${CMAKE_CURRENT_LIST_DIR}/${area}_test.cpp)
endforeach()
set_tests_properties(surface_threads_test PROPERTIES LABELS threads)
add_dependencies(zor_threads_tests surface_threads_test)
