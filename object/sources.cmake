# SPDX-License-Identifier: BSD-2-Clause
list(APPEND ZOR_CORE_SOURCES
  object/create_object.cpp
  object/source_direct_draw.cpp
  object/source_global_dib.cpp
  object/source_kelp.cpp
  object/surface_builder.cpp
  object/ved_unknown.cpp
)
