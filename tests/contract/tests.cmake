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

# zor_add_contract_test(NAME SOURCES...): a program on the shared library.
function(zor_add_contract_test name)
  add_executable(${name} ${ARGN})
  zor_compile_options(${name})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE zor::zor GTest::gtest_main)
  set_target_properties(${name} PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY $<TARGET_FILE_DIR:ZorSurface>)  # where Windows looks for the DLL
  add_test(NAME ${name} COMMAND ${name} WORKING_DIRECTORY $<TARGET_FILE_DIR:ZorSurface>)
endfunction()

zor_add_contract_test(contract_ref_test ${contract}/ref_test.cpp)
zor_add_contract_test(contract_first_lines ${CMAKE_SOURCE_DIR}/examples/first_lines.cpp)
add_test(NAME contract.floors COMMAND ${contract}/check_floors.sh ${CMAKE_SOURCE_DIR})

# The sanitizers add symbols, and a host of theirs would need their runtime.
if(NOT ZOR_SANITIZE)
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
endif()

# A host compiled for the other Windows compiler's ABI.
if(WIN32)
  find_program(ZOR_CLANG clang++ NO_CMAKE_FIND_ROOT_PATH)
  if(ZOR_CLANG)
    set(foreign ${CMAKE_CURRENT_BINARY_DIR}/msvc_host.obj)
    add_custom_command(OUTPUT ${foreign}
      COMMAND ${ZOR_CLANG} --target=i686-pc-windows-msvc -std=c++20 -O1 -Wall -Werror
              -fno-exceptions -fno-rtti -fms-compatibility -ffreestanding
              -DZORSURFACE_OWN_SYSTEM_TYPES -I${contract}/msvc -I${CMAKE_SOURCE_DIR}/include
              -I${CMAKE_SOURCE_DIR}/tests -c ${contract}/msvc_host.cpp -o ${foreign}
      DEPENDS ${contract}/msvc_host.cpp ${contract}/msvc_host.h
      VERBATIM)
    zor_add_contract_test(contract_foreign_host_test ${contract}/foreign_host_test.cpp ${foreign})
  else()
    message(WARNING "clang++ wasn't found: no host of the other compiler's ABI is tested")
  endif()
endif()
