# SPDX-License-Identifier: BSD-2-Clause
zor_add_test(convert_now_test ${CMAKE_CURRENT_LIST_DIR}/convert_now_test.cpp)
zor_add_test(convert_there_and_back_test ${CMAKE_CURRENT_LIST_DIR}/there_and_back_test.cpp)
zor_add_test(convert_plain_forms_test ${CMAKE_CURRENT_LIST_DIR}/plain_forms_test.cpp)
