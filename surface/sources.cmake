# SPDX-License-Identifier: BSD-2-Clause
list(APPEND ZOR_CORE_SOURCES
  surface/children.cpp
  surface/clone.cpp
  surface/driver_slots.cpp
  surface/export_image.cpp
  surface/fit_rect.cpp
  surface/operation_queue.cpp
  surface/read_out.cpp
  surface/surface.cpp
  surface/surface_buffer.cpp
  surface/system_images.cpp
  surface/rotate_driver.cpp
  surface/rotate_planes.cpp
)
