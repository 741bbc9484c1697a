# SPDX-License-Identifier: BSD-2-Clause
list(APPEND ZOR_CORE_SOURCES
  surface/children.cpp
  surface/clone.cpp
  surface/convert_driver.cpp
  surface/engine_table.cpp
  surface/export_image.cpp
  surface/fill.cpp
  surface/fill_driver.cpp
  surface/fit_rect.cpp
  surface/lent_memory.cpp
  surface/mask_from_alpha.cpp
  surface/operation_queue.cpp
  surface/read_out.cpp
  surface/resize_driver.cpp
  surface/rotate_driver.cpp
  surface/rotate_planes.cpp
  surface/stretch_driver.cpp
  surface/surface.cpp
  surface/surface_buffer.cpp
  surface/system_images.cpp
)
