// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Exports of surfaces: those that succeed with the image for as long as it is looked at, and those
/// that must fail.

#include <gtest/gtest.h>

#include <cstring>

#include "platform/memory.h"
#include "platform/system_calls.h"
#include "support/guarded_memory.h"
#include "support/surfaces.h"
#include "support/system_call_watch.h"
#include "surface/surface_buffer.h"
#include "surface/system_images.h"

namespace zor::test {

inline constexpr std::uint32_t kDraw = 1;
inline constexpr std::uint32_t kDib = 2;

inline HeldSurface Noisy(const SurfaceDescription& description) {
  return MakeNoisy(description, 41);
}

/// Runs an export that must fail, and checks that both results are left alone. @return its code.
inline std::int32_t FailToExport(const HeldSurface& surface, std::uint32_t kind) {
  void* image = surface.get();
  std::uint32_t flag = 77;
  const std::int32_t result = surface->ExportImage(kind, &image, &flag);
  EXPECT_EQ(image, surface.get());
  EXPECT_EQ(flag, 77u);
  return result;
}

/// Runs an export that must succeed. @return the image.
inline void* Export(IZorSurface* surface, std::uint32_t kind) {
  void* image = nullptr;
  std::uint32_t flag = 77;
  EXPECT_EQ(surface->ExportImage(kind, &image, &flag), VED_OK);
  EXPECT_EQ(flag, 1u);
  return image;
}

/// Takes an exported image back in, and checks that it is still the surface's picture.
inline void CheckComingBack(void* image, std::int32_t kind, const SurfaceDescription& description,
                            const HeldSurface& surface) {
  HeldSurface back;
  ASSERT_EQ(
      MakeBuilder()->CreateFromSource(image, kind, description.format, STORAGE_COPY, back.Reset()),
      VED_OK);
  const SurfaceDescription actual = DescriptionOf(back.get());
  EXPECT_EQ(actual.format, description.format);
  EXPECT_EQ(actual.width, description.width);
  EXPECT_EQ(actual.height, description.height);
  EXPECT_EQ(actual.stride, description.stride);
  EXPECT_EQ(actual.Orientation, description.Orientation);
  const std::size_t bytes = PictureBytes(description);
  EXPECT_EQ(BlockOf(back.get(), bytes), BlockOf(surface.get(), bytes));
}

/// A bitmap from an export, freed in the end.
class ExportedDib {
 public:
  explicit ExportedDib(IZorSurface* surface) : handle(Export(surface, kDib)) {
    const std::size_t bytes = GlobalSize(handle);
    const auto* start = static_cast<const std::uint8_t*>(GlobalLock(handle));
    all.assign(start, start + bytes);
    GlobalUnlock(handle);
  }
  ~ExportedDib() { GlobalFree(handle); }

  template <class T>
  T At(std::size_t offset) const {
    T value;
    std::memcpy(&value, &all[offset], sizeof value);
    return value;
  }
  Bytes Pixels(std::size_t bytes) const {
    EXPECT_GE(all.size(), 40 + bytes);
    return {all.begin() + 40, all.begin() + 40 + static_cast<std::ptrdiff_t>(bytes)};
  }

  void* handle;
  Bytes all;
};

/// The DirectDraw surface of an export and its locked memory.
class ExportedDraw {
 public:
  explicit ExportedDraw(IZorSurface* surface)
      : handle(static_cast<IDirectDrawSurface7*>(Export(surface, kDraw))) {
    desc = EmptySurfaceDesc();
    EXPECT_EQ(LockSurface(handle, &desc), DD_OK);
    const auto* start = static_cast<const std::uint8_t*>(desc.lpSurface);
    memory.assign(start, start + static_cast<std::size_t>(desc.lPitch) * desc.dwHeight);
    EXPECT_EQ(UnlockSurface(handle), DD_OK);
  }
  ~ExportedDraw() { EXPECT_EQ(ReleaseSurface(handle), 0u); }

  IDirectDrawSurface7* handle;
  DDSURFACEDESC2 desc;
  Bytes memory;
};

}  // namespace zor::test
