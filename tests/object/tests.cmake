# SPDX-License-Identifier: BSD-2-Clause
zor_add_test(object_identity_test ${CMAKE_CURRENT_LIST_DIR}/identity_test.cpp)
zor_add_test(object_builder_test ${CMAKE_CURRENT_LIST_DIR}/builder_test.cpp)
zor_add_test(object_sources_test ${CMAKE_CURRENT_LIST_DIR}/sources_test.cpp)
