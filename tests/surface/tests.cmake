# SPDX-License-Identifier: BSD-2-Clause
foreach(area queue clone threads)
  zor_add_test(surface_${area}_test ${CMAKE_CURRENT_LIST_DIR}/${area}_test.cpp)
endforeach()
zor_add_test(surface_attributes_test ${CMAKE_CURRENT_LIST_DIR}/attributes_test.cpp
                                     ${CMAKE_CURRENT_LIST_DIR}/children_test.cpp
                                     ${CMAKE_CURRENT_LIST_DIR}/fit_rect_test.cpp)
zor_add_test(surface_export_test ${CMAKE_CURRENT_LIST_DIR}/export_test.cpp
                                 ${CMAKE_CURRENT_LIST_DIR}/export_dib_test.cpp
                                 ${CMAKE_CURRENT_LIST_DIR}/export_draw_test.cpp)
zor_add_test(surface_read_out_test ${CMAKE_CURRENT_LIST_DIR}/read_out_test.cpp
                                   ${CMAKE_CURRENT_LIST_DIR}/read_out_queue_test.cpp
                                   ${CMAKE_CURRENT_LIST_DIR}/storage_test.cpp)
set_tests_properties(surface_threads_test PROPERTIES LABELS threads)
add_dependencies(zor_threads_tests surface_threads_test)
