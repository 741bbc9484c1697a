# SPDX-License-Identifier: BSD-2-Clause
# The host's parts by themselves, and whole runs of the program. They lie beside the program, where
# a Windows program finds its DLL.
if(TARGET zorhost)
  function(zor_add_host_test name)
    add_executable(${name} ${ARGN})
    zor_compile_options(${name})
    target_link_libraries(${name} PRIVATE zorhost_parts GTest::gtest_main)
    set_target_properties(${name} PROPERTIES
      RUNTIME_OUTPUT_DIRECTORY $<TARGET_FILE_DIR:zorhost>)
    add_test(NAME ${name} COMMAND ${name} WORKING_DIRECTORY $<TARGET_FILE_DIR:zorhost>)
  endfunction()

  set(host_tests ${CMAKE_CURRENT_LIST_DIR})
  zor_add_host_test(host_parts_test
    ${host_tests}/bmp_test.cpp ${host_tests}/convert_test.cpp ${host_tests}/formulas_test.cpp
    ${host_tests}/matrix_test.cpp ${host_tests}/options_test.cpp
    ${host_tests}/picture_test.cpp
    ${host_tests}/plan_test.cpp ${host_tests}/scene_test.cpp ${host_tests}/still_test.cpp
    ${host_tests}/turn_test.cpp ${host_tests}/y4m_test.cpp)
  target_compile_definitions(host_parts_test PRIVATE
    ZOR_CONVERSION_PAGES="${CMAKE_SOURCE_DIR}/docs/conversions")
  zor_add_host_test(host_commands_test ${host_tests}/commands_test.cpp)
  add_dependencies(host_commands_test zorhost)
  zor_add_host_test(host_run_test
    ${host_tests}/compose_test.cpp ${host_tests}/rotate_test.cpp ${host_tests}/run_ends_test.cpp
    ${host_tests}/run_pictures_test.cpp ${host_tests}/run_reports_test.cpp)
  add_dependencies(host_run_test zorhost)
endif()
