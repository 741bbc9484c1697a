// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <zorsurface/result_codes.h>

#include <algorithm>

#include "surface/row_copy.h"
#include "surface/surface_buffer.h"

namespace zor {
namespace {

/// Rows of one plane as they are read.
struct PlaneRows {
  const std::uint8_t* first;
  std::int64_t step;   ///< bytes from one row to the next; negative runs up the memory
  std::int64_t bytes;  ///< of each row
  std::int64_t count;
};

/// Lays rows one behind the other and stops at the end of its memory.
class RowSink {
 public:
  RowSink(std::uint8_t* memory, std::int64_t room) : memory_(memory), room_(room) {}

  /// Lays rows @p step apart, which is no less than their size; the next plane starts where the
  /// last row of this one ends.
  void Take(const PlaneRows& rows, std::int64_t step) {
    if (rows.bytes > 0) {
      const std::int64_t whole =
          room_ < rows.bytes ? 0 : std::min(rows.count, (room_ - rows.bytes) / step + 1);
      CopyRows(memory_, step, rows.first, rows.step, rows.bytes, whole);
      if (whole < rows.count) {
        CopyRows(memory_ + whole * step, step, rows.first + whole * rows.step, rows.step,
                 room_ - whole * step, 1);
      }
    }
    const std::int64_t taken = std::min(rows.count * step, room_);
    memory_ += taken;
    room_ -= taken;
  }

 private:
  std::uint8_t* memory_;
  std::int64_t room_;
};

}  // namespace

std::int32_t CZorSurfaceBuffer::ReadPixels(std::uint8_t* memory, std::int32_t stride,
                                           std::uint32_t orientation) {
  if (memory == nullptr || stride < 1) return VED_E_INVALIDARG;
  direct_.memory = memory;
  direct_.stride = stride;
  direct_.orientation = orientation;
  const std::int32_t result = FlushQueue(1);
  if (result < 0) {
    direct_.active = 0;  // the memory was lent for this call
    return result;
  }
  if (direct_.active == 0) CopyRowsOut(memory, stride, orientation);
  direct_ = {0, nullptr, 0, 0};
  return result;
}

void CZorSurfaceBuffer::CopyRowsOut(std::uint8_t* memory, std::int32_t stride,
                                    std::uint32_t orientation, std::int64_t room) noexcept {
  const std::int64_t ownStride = description_.stride;
  const std::int64_t height = description_.height;
  const std::int64_t row = std::min<std::int64_t>(ownStride, stride);
  if (pixels_ == nullptr || row < 1 || height < 1) return;
  const bool sameOrder = orientation == description_.Orientation;
  RowSink sink(memory, room);

  // Rows leave in the order of memory, or from the last one backwards.
  const auto takePlane = [&](std::int64_t start, std::int64_t lastRow, std::int64_t step,
                             std::int64_t bytes, std::int64_t count, std::int64_t targetStep) {
    sink.Take({pixels_ + start + (sameOrder ? 0 : lastRow), sameOrder ? step : -step, bytes, count},
              targetStep);
  };
  switch (description_.format) {
    case FORMAT_RGB24:
    case FORMAT_RGB32:
    case FORMAT_YUY2:
      takePlane(0, (height - 1) * ownStride, ownStride, row, height, stride);
      break;
    case FORMAT_YUV420: {
      takePlane(0, (height - 1) * ownStride, ownStride, row, height, stride);
      const std::int64_t chromaRows = height >> 1;
      if (chromaRows < 1) break;
      const std::int64_t first = ownStride * height;
      const std::int64_t second =
          first + (sameOrder ? ownStride * height / 4 : ownStride * chromaRows >> 1);
      const std::int64_t lastRow = (chromaRows - 1) * ownStride >> 1;
      for (const std::int64_t start : {first, second}) {
        takePlane(start, lastRow, ownStride / 2, row / 2, chromaRows, stride / 2);
      }
      break;
    }
    default:
      break;
  }
}

}  // namespace zor
