// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The surface with its pixels: storage, read-out and the drivers of the engines.

#include <zorsurface/scale_mode.h>

#include "platform/pixel_block.h"
#include "surface/surface.h"

namespace zor {

struct Conversion;

/// The surface that the builder makes: every slot, and the block of pixels.
class CZorSurfaceBuffer final : public CZorSurface {
 public:
  explicit CZorSurfaceBuffer(const SurfaceDescription& description) noexcept
      : CZorSurface(description) {}

  /// Makes a surface of count 0; null without memory.
  static CZorSurfaceBuffer* Create(const SurfaceDescription& description) noexcept;

  void* ScalarDeletingDestructor(std::uint32_t flags) override;

  std::int32_t ReadPixels(std::uint8_t* memory, std::int32_t stride,
                          std::uint32_t orientation) override;  // read_out.cpp
  std::int32_t ExportImage(std::uint32_t kind, void** image,
                           std::uint32_t* flag) override;  // export_image.cpp
  std::int32_t GetPixels(std::uint8_t** out) override;
  std::int32_t Compose(IZorSurface** out) override;  // compositor/compose.cpp
  std::int32_t ResizeNow(std::int32_t width, std::int32_t height, std::int32_t fit,
                         std::uint32_t quality) override;  // resize_driver.cpp
  std::int32_t RotateNow(std::int32_t degrees) override;   // rotate_driver.cpp
  std::int32_t ConvertNow(std::int32_t format) override;   // convert_driver.cpp
  std::int32_t StretchFromSurfaceNow(RECT* target, IZorSurface* source, RECT* sourceRect,
                                     std::uint32_t quality) override;  // stretch_driver.cpp
  std::int32_t StretchToMemoryNow(RECT* source, RECT* target, std::uint8_t* memory,
                                  std::int32_t width, std::int32_t height, std::int32_t stride,
                                  std::uint32_t quality) override;
  std::int32_t WarpRegionNow(std::int32_t handle, std::uint32_t value, double a, double b, double c,
                             double d, std::int32_t value2) override;
  std::int32_t FillNow(RECT* rectangle, std::uint32_t colour) override;  // fill_driver.cpp

  /// Allocates the surface's own block. A value under 1 returns false and changes nothing.
  /// @param bytes the size that the surface reports; the block covers more where the description
  ///        says that later steps will touch more.
  /// @param contents `kUnset` where the caller writes all of these bytes at once.
  bool AllocatePixels(std::int32_t bytes, BlockContents contents = BlockContents::kZero) noexcept;
  /// Frees the block if the surface owns it.
  void FreePixels() noexcept;

 private:
  ~CZorSurfaceBuffer();

  /// Copies the rows to @p memory, cut to the shorter stride, in the row order asked for. Formats
  /// 1, 2, 4 and 5; others copy nothing.
  /// @param room bytes of @p memory; nothing is written behind them.
  void CopyRowsOut(std::uint8_t* memory, std::int32_t stride, std::uint32_t orientation,
                   std::int64_t room = INT64_MAX) noexcept;  // read_out.cpp

  /// The two exports behind the flush: @p image receives the handle. @return `VED_OK` or `E_FAIL`.
  std::int32_t ExportGlobalDib(void** image);
  std::int32_t ExportDirectDraw(void** image);

  /// The two targets of `ResizeNow`: the host's memory, and a new block, which the mask follows.
  /// @param rect where the picture stands in the target, between bands; null for all of it.
  std::int32_t ResizeIntoMemory(std::int32_t width, std::int32_t height, const RECT* rect,
                                ScaleMode mode);  // resize_driver.cpp
  std::int32_t ResizeIntoBlock(std::int32_t width, std::int32_t height, const RECT* rect,
                               ScaleMode mode);

  /// The two targets of `ConvertNow`: the host's memory, and a new block.
  std::int32_t ConvertIntoMemory(const Conversion& conversion);  // convert_driver.cpp
  std::int32_t ConvertIntoBlock(const Conversion& conversion);
  /// Runs the engine on the surface's pixels. @param rowOrder see `OrientationArgument::kRowOrder`.
  void RunConversion(const Conversion& conversion, std::uint8_t* target, std::int32_t targetStride,
                     std::uint32_t rowOrder) const;
  /// Exchanges the chroma planes, in place or into the host's memory.
  std::int32_t ExchangeChroma();

  /// The time in which a mask follows its surface. A surface may be its own mask, or the mask of
  /// its mask: such a circle is gone round once.
  class MaskTurn {
   public:
    explicit MaskTurn(CZorSurfaceBuffer* surface) noexcept
        : surface_(surface), before_(surface->maskFollows_) {
      surface->maskFollows_ = true;
    }
    ~MaskTurn() { surface_->maskFollows_ = before_; }
    MaskTurn(const MaskTurn&) = delete;
    MaskTurn& operator=(const MaskTurn&) = delete;
    /// @return whether there is a mask that hasn't been reached in this round.
    bool HasMask() const noexcept { return !before_ && surface_->mask_ != nullptr; }

   private:
    CZorSurfaceBuffer* surface_;
    bool before_;
  };

  /// Frees the old block if it is owned, takes a new one and sets `StorageFlags` to 1.
  void ReplacePixels(std::uint8_t* pixels) noexcept;

  std::uint8_t* pixels_ = nullptr;
  bool maskFollows_ = false;  ///< the mask is being resized or turned after this surface
};

}  // namespace zor
