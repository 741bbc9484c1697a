// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Where the rows of a target are made. Those of a picture that doesn't fit the caches are made in
/// a row of memory that does, and stored past the caches from there.

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "convert/fast_mem_copy.h"
#include "convert/streaming.h"
#include "scale/scale_picture.h"

namespace zor {

/// The rows of one call. Each is begun, made and then done, in the order of the walk.
class TargetRows {
 public:
  explicit TargetRows(const ScaleTarget& target) noexcept
      : target_(target),
        rowBytes_(std::int64_t{target.width} * target.bytesPerPixel),
        streams_(rowBytes_ * target.height > kStreamingBytes &&
                 std::abs(std::int64_t{target.stride}) >= rowBytes_) {}
  ~TargetRows() {
    if (streams_) EndStreaming();
  }
  TargetRows(const TargetRows&) = delete;
  TargetRows& operator=(const TargetRows&) = delete;

  /// @return bytes of memory that `Place` wants.
  std::uint64_t Bytes() const noexcept { return streams_ ? RowSize() : 0; }
  void Place(std::uint8_t* memory) noexcept { memory_ = memory; }

  /// @return where row @p y is to be made. What it holds before is that of an earlier row or of the
  ///         picture: the whole row has to be made.
  std::uint8_t* Begin(std::int32_t y) const noexcept { return streams_ ? memory_ : Row(y); }

  /// Stores row @p y.
  void Done(std::int32_t y) const noexcept {
    if (streams_) StreamBytes(Row(y), memory_, RowSize());
  }

  /// Stores row @p y as a copy of row y - 1, which was done last.
  void Repeat(std::int32_t y) const noexcept {
    // Rows lie over each other where the target's stride is smaller than a row.
    streams_ ? Done(y) : static_cast<void>(std::memmove(Row(y), Row(y - 1), RowSize()));
  }

 private:
  std::size_t RowSize() const noexcept { return static_cast<std::size_t>(rowBytes_); }
  std::uint8_t* Row(std::int32_t y) const noexcept {
    return target_.pixels + static_cast<std::ptrdiff_t>(y) * target_.stride;
  }

  const ScaleTarget& target_;
  const std::int64_t rowBytes_;
  const bool streams_;
  std::uint8_t* memory_ = nullptr;
};

}  // namespace zor
