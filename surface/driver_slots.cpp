// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

// Slots whose engines aren't part of the library yet. Each moves to its driver's file.

#include <zorsurface/result_codes.h>

#include "surface/surface_buffer.h"

namespace zor {

std::int32_t CZorSurfaceBuffer::ResizeNow(std::int32_t, std::int32_t, std::int32_t, std::uint32_t) {
  return VED_E_UNSUPPORTED;
}

std::int32_t CZorSurfaceBuffer::ConvertNow(std::int32_t) {
  return VED_E_UNSUPPORTED;
}

std::int32_t CZorSurfaceBuffer::StretchFromSurfaceNow(RECT*, IZorSurface*, RECT*, std::uint32_t) {
  return VED_E_UNSUPPORTED;
}

std::int32_t CZorSurfaceBuffer::StretchToMemoryNow(RECT*, RECT*, std::uint8_t*, std::int32_t,
                                                   std::int32_t, std::int32_t, std::uint32_t) {
  return VED_E_UNSUPPORTED;
}

std::int32_t CZorSurfaceBuffer::WarpRegionNow(std::int32_t, std::uint32_t, double, double, double,
                                              double, std::int32_t) {
  return VED_E_UNSUPPORTED;
}

std::int32_t CZorSurfaceBuffer::FillNow(RECT*, std::uint32_t) {
  return VED_E_UNSUPPORTED;
}

}  // namespace zor
