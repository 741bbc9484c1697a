# SPDX-License-Identifier: BSD-2-Clause
if(WIN32)
  set(zor_system win32)
else()
  set(zor_system posix)
endif()

list(APPEND ZOR_CORE_SOURCES
  platform/direct_draw.cpp
  platform/global_memory.cpp
  platform/kelp_tool.cpp
  platform/memory.cpp
  platform/memory_reserve.cpp
  platform/pixel_block.cpp
  platform/shared_library.cpp
  platform/system_calls.cpp
  platform/${zor_system}/direct_draw.cpp
  platform/${zor_system}/global_memory.cpp
  platform/${zor_system}/memory.cpp
  platform/${zor_system}/osa_layer.cpp
  platform/${zor_system}/rect.cpp
  platform/${zor_system}/shared_library.cpp
)
