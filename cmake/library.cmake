# SPDX-License-Identifier: BSD-2-Clause
# The shared library: libZorSurface.so or ZorSurface.dll, exporting CreateObject and nothing else.

add_library(ZorSurface SHARED $<TARGET_OBJECTS:zor_core>)
add_library(zor::zor ALIAS ZorSurface)
zor_compile_options(ZorSurface)
target_include_directories(ZorSurface INTERFACE
  $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/include>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
target_link_libraries(ZorSurface PRIVATE ${CMAKE_DL_LIBS})
set_target_properties(ZorSurface PROPERTIES
  VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} EXPORT_NAME zor LINKER_LANGUAGE CXX)
