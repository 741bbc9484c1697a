# SPDX-License-Identifier: BSD-2-Clause
include(${CMAKE_SOURCE_DIR}/fuzz/sources.cmake)
list(TRANSFORM ZOR_FUZZ_SOURCES PREPEND ${CMAKE_SOURCE_DIR}/)
zor_add_test(replay_test ${CMAKE_CURRENT_LIST_DIR}/replay_test.cpp ${ZOR_FUZZ_SOURCES})
