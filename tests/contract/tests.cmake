# SPDX-License-Identifier: BSD-2-Clause
# What a host sees of the library: the shared library alone is linked here.
set(contract ${CMAKE_CURRENT_LIST_DIR})

# Every public header stands by itself.
file(GLOB headers RELATIVE ${CMAKE_SOURCE_DIR}/include CONFIGURE_DEPENDS
     ${CMAKE_SOURCE_DIR}/include/zorsurface/*)
foreach(header ${headers})
  string(MAKE_C_IDENTIFIER ${header} name)
  file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/alone/${name}.cpp
       CONTENT "#include <${header}>\n#include <${header}>\n")
  list(APPEND alone ${CMAKE_CURRENT_BINARY_DIR}/alone/${name}.cpp)
endforeach()
add_library(zor_headers_alone OBJECT ${alone})
target_include_directories(zor_headers_alone PRIVATE ${CMAKE_SOURCE_DIR}/include)
zor_compile_options(zor_headers_alone)

# zor_add_contract_program(NAME SOURCES...): a program on the shared library.
function(zor_add_contract_program name)
  add_executable(${name} ${ARGN})
  zor_compile_options(${name})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE zor::zor)
  set_target_properties(${name} PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY $<TARGET_FILE_DIR:ZorSurface>)  # where Windows looks for the DLL
endfunction()

function(zor_add_contract_test name)
  zor_add_contract_program(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE GTest::gtest_main)
  add_test(NAME ${name} COMMAND ${name} WORKING_DIRECTORY $<TARGET_FILE_DIR:ZorSurface>)
endfunction()

zor_add_contract_test(contract_ref_test ${contract}/ref_test.cpp)
add_test(NAME contract.floors COMMAND ${contract}/check_floors.sh ${CMAKE_SOURCE_DIR})
add_test(NAME contract.counting COMMAND ${contract}/check_counting.sh ${CMAKE_SOURCE_DIR})
add_test(NAME contract.readme COMMAND ${contract}/check_readme.sh ${CMAKE_SOURCE_DIR})

# The README's program. It isn't a GoogleTest program: its name has a dot.
zor_add_contract_program(contract_first_lines ${CMAKE_SOURCE_DIR}/examples/first_lines.cpp)
add_test(NAME contract.first_lines COMMAND contract_first_lines)

# The sanitizers add symbols, and a host of theirs would need their runtime.
if(NOT ZOR_SANITIZE)
  # Loads the library and unloads it, so it isn't linked to it.
  add_executable(contract_unload_test ${contract}/unload_test.cpp)
  zor_compile_options(contract_unload_test)
  target_include_directories(contract_unload_test PRIVATE ${CMAKE_SOURCE_DIR}/include)
  target_link_libraries(contract_unload_test PRIVATE GTest::gtest_main ${CMAKE_DL_LIBS})
  set_target_properties(contract_unload_test PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY $<TARGET_FILE_DIR:ZorSurface> BUILD_RPATH $<TARGET_FILE_DIR:ZorSurface>)
  add_dependencies(contract_unload_test ZorSurface)
  add_test(NAME contract_unload_test COMMAND contract_unload_test
           WORKING_DIRECTORY $<TARGET_FILE_DIR:ZorSurface>)

  add_test(NAME contract.exports
           COMMAND ${contract}/check_exports.sh $<TARGET_FILE:ZorSurface> ${CMAKE_OBJDUMP})
  add_test(NAME contract.weak_functions COMMAND ${contract}/check_weak.sh ${CMAKE_OBJDUMP}
                                                $<TARGET_OBJECTS:zor_core> COMMAND_EXPAND_LISTS)
  if(TARGET zorhost)
    add_test(NAME contract.install
             COMMAND ${contract}/check_install.sh ${CMAKE_BINARY_DIR} ${contract}/consumer
                     ${CMAKE_COMMAND} ${CMAKE_CXX_COMPILER} "${CMAKE_CROSSCOMPILING_EMULATOR}"
                     ${CMAKE_TOOLCHAIN_FILE})
  endif()
  if(NOT WIN32)
    add_test(NAME contract.subproject
             COMMAND ${contract}/check_subproject.sh ${CMAKE_BINARY_DIR} ${contract}/subproject
                     ${CMAKE_SOURCE_DIR} ${CMAKE_COMMAND})
  endif()
endif()

# The DLL as Windows loads it, and a host compiled for the other Windows compiler's ABI.
if(WIN32)
  set(programs $<TARGET_FILE:ZorSurface>)
  foreach(name zorhost zorkernels)
    if(TARGET ${name})
      list(APPEND programs $<TARGET_FILE:${name}>)
    endif()
  endforeach()
  add_test(NAME contract.unwind COMMAND ${contract}/check_unwind.sh ${CMAKE_OBJDUMP} ${programs})

  zor_add_contract_test(contract_dll_test ${contract}/dll_test.cpp)
  target_link_libraries(contract_dll_test PRIVATE version)
  target_compile_definitions(contract_dll_test PRIVATE
    ZOR_MAJOR=${PROJECT_VERSION_MAJOR} ZOR_MINOR=${PROJECT_VERSION_MINOR}
    ZOR_PATCH=${PROJECT_VERSION_PATCH})

  find_program(ZOR_CLANG clang++ NO_CMAKE_FIND_ROOT_PATH)
  if(ZOR_CLANG)
    set(foreign ${CMAKE_CURRENT_BINARY_DIR}/msvc_host.obj)
    add_custom_command(OUTPUT ${foreign}
      COMMAND ${ZOR_CLANG} --target=i686-pc-windows-msvc -std=c++20 -O1 -Wall -Werror
              -fno-exceptions -fno-rtti -fms-compatibility -ffreestanding
              -DZORSURFACE_OWN_SYSTEM_TYPES -I${contract}/msvc -I${CMAKE_SOURCE_DIR}/include
              -I${CMAKE_SOURCE_DIR}/tests -MD -MT ${foreign} -MF ${foreign}.d
              -c ${contract}/msvc_host.cpp -o ${foreign}
      DEPENDS ${contract}/msvc_host.cpp
      DEPFILE ${foreign}.d
      VERBATIM)
    zor_add_contract_test(contract_foreign_host_test ${contract}/foreign_host_test.cpp ${foreign})
  else()
    add_test(NAME contract.foreign_host COMMAND sh -c "echo 'clang++ was not found'; exit 77")
    set_tests_properties(contract.foreign_host PROPERTIES SKIP_RETURN_CODE 77)
  endif()
endif()
