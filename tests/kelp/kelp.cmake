# SPDX-License-Identifier: BSD-2-Clause
# The uKelpTool of the suite stands beside the test programs. Nothing links it: it is found at run
# time, on Windows in the program's folder, elsewhere through the program's own library path.
add_library(uKelpTool SHARED kelp/kelp_tool.cpp)
zor_compile_options(uKelpTool)
target_include_directories(uKelpTool PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
target_compile_definitions(uKelpTool PRIVATE KELP_BUILDS)
set_target_properties(uKelpTool PROPERTIES
  RUNTIME_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}
  LIBRARY_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
if(WIN32)
  set_target_properties(uKelpTool PROPERTIES PREFIX "")
endif()

# zor_find_kelp(TARGET): lets a program in the tests' folder find it. The path is of the old kind,
# which also holds when another library of the process, ours or a sanitizer's, opens it.
function(zor_find_kelp target)
  add_dependencies(${target} uKelpTool)
  if(NOT WIN32)
    set_property(TARGET ${target} APPEND PROPERTY BUILD_RPATH "$ORIGIN")
    target_link_options(${target} PRIVATE -Wl,--disable-new-dtags)
  endif()
endfunction()
