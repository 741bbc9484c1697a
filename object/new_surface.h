// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// A surface on its way from a creator to its host.

#include <zorsurface/result_codes.h>
#include <zorsurface/surface_builder.h>

#include "surface/picture_layout.h"
#include "surface/surface_buffer.h"

namespace zor {

/// @return the words that every surface from a system image starts with.
inline SurfaceDescription SourceDescription() noexcept {
  SurfaceDescription description = {};
  description.size = sizeof(SurfaceDescription);
  description.StorageKind = kStorageInBlock;
  description.ComposeInPlace = 1;
  return description;
}

/// Formats 1 and 2 both ask for RGB; the image's bit count decides which it is. @return whether
/// @p format asks for RGB and the bit count is 24 or 32; format and bit count are then set.
inline bool SetRgbFormat(std::int32_t format, std::int32_t bitCount,
                         SurfaceDescription& description) noexcept {
  if (!IsRgb(format)) return false;
  if (bitCount != 24 && bitCount != 32) return false;
  description.format = bitCount == 24 ? FORMAT_RGB24 : FORMAT_RGB32;
  description.bitsPerPixel = bitCount;
  return true;
}

/// Owns a surface of count 0 and destroys it, with its block, unless it is handed over.
class NewSurface {
 public:
  explicit NewSurface(const SurfaceDescription& description) noexcept
      : surface_(CZorSurfaceBuffer::Create(description)) {}
  ~NewSurface() {
    if (surface_ == nullptr) return;
    surface_->SetStorageFlags(kStorageOwned);
    surface_->ScalarDeletingDestructor(1);
  }
  NewSurface(const NewSurface&) = delete;
  NewSurface& operator=(const NewSurface&) = delete;

  /// @return whether there was memory for the object.
  explicit operator bool() const noexcept { return surface_ != nullptr; }

  /// Gives the surface its block, zeroed, or unset where the caller writes all of it. @return the
  /// first byte, or null for a size under 1 or beyond a signed 32-bit word, or without memory.
  std::uint8_t* AllocatePixels(std::int64_t bytes,
                               BlockContents contents = BlockContents::kZero) noexcept {
    std::uint8_t* pixels = nullptr;
    if (FitsWord(bytes) && surface_->AllocatePixels(static_cast<std::int32_t>(bytes), contents)) {
      surface_->GetPixels(&pixels);
    }
    return pixels;
  }

  /// Sets the storage word and gives the surface to the host with one reference. @return `VED_OK`.
  std::int32_t HandOver(std::uint32_t flags, IZorSurface** out) noexcept {
    surface_->SetStorageFlags(flags);
    surface_->AddRef();
    *out = surface_;
    Abandon();
    return VED_OK;
  }

  /// Leaves the surface alive with a count of 0.
  void Abandon() noexcept { surface_ = nullptr; }

 private:
  CZorSurfaceBuffer* surface_;
};

}  // namespace zor
