# SPDX-License-Identifier: BSD-2-Clause
zor_add_test(object_identity_test ${CMAKE_CURRENT_LIST_DIR}/identity_test.cpp)
zor_add_test(object_builder_test ${CMAKE_CURRENT_LIST_DIR}/create_blank_test.cpp
                                 ${CMAKE_CURRENT_LIST_DIR}/create_from_memory_test.cpp)
zor_add_test(object_sources_test ${CMAKE_CURRENT_LIST_DIR}/sources_test.cpp
                                 ${CMAKE_CURRENT_LIST_DIR}/draw_source_test.cpp
                                 ${CMAKE_CURRENT_LIST_DIR}/global_dib_source_test.cpp
                                 ${CMAKE_CURRENT_LIST_DIR}/kelp_source_test.cpp)
