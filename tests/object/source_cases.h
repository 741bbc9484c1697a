// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Surfaces from images of the system, and what holds of all of them.

#include "object/creator_cases.h"
#include "surface/system_images.h"

namespace zor::test {

inline constexpr std::uint32_t kCopy = STORAGE_COPY;

/// Runs a `CreateFromSource` that must fail, and checks that the library keeps nothing.
/// @param refused which of its requests for memory is refused, counted from 1; 0 for none.
inline std::int32_t Fail(void* handle, std::int32_t kind, std::int32_t format,
                         std::uint32_t flags = kCopy, std::uint64_t refused = 0) {
  return FailToCreate(
      [=](ISurfaceBuilder* builder, IZorSurface** out) {
        return builder->CreateFromSource(handle, kind, format, flags, out);
      },
      refused);
}

inline HeldSurface Take(void* handle, std::int32_t kind, std::int32_t format) {
  HeldSurface surface;
  EXPECT_EQ(MakeBuilder()->CreateFromSource(handle, kind, format, kCopy, surface.Reset()), VED_OK);
  return surface;
}

/// Checks that an image of 4 x 4 and 24 bits is taken, and that its block goes with the surface:
/// the copy bit makes it the surface's own, whatever the bits beside it.
inline void CheckSmallest(void* handle, std::int32_t kind) {
  const HeldBuilder builder = MakeBuilder();
  const std::int64_t before = LiveAllocations();
  for (const std::int32_t format : {FORMAT_RGB24, FORMAT_YUV420}) {
    for (const std::uint32_t flags : {4u, 5u, 6u, 12u, 0xFFFFFFFFu}) {
      HeldSurface surface;
      ASSERT_EQ(builder->CreateFromSource(handle, kind, format, flags, surface.Reset()), VED_OK);
      EXPECT_EQ(DescriptionOf(surface.get()).width, 4);
      surface.Reset();
      EXPECT_EQ(LiveAllocations(), before) << "format " << format << ", flags " << flags;
    }
  }
}

/// What must hold of every surface from a system image.
inline void CheckDescription(IZorSurface* surface, const SurfaceDescription& expected) {
  const SurfaceDescription actual = DescriptionOf(surface);
  EXPECT_EQ(actual.size, 52u);
  EXPECT_EQ(actual.width, expected.width);
  EXPECT_EQ(actual.height, expected.height);
  EXPECT_EQ(actual.format, expected.format);
  EXPECT_EQ(actual.StorageKind, 4u);
  EXPECT_EQ(actual.bitsPerPixel, expected.bitsPerPixel);
  EXPECT_EQ(actual.stride, expected.stride);
  EXPECT_EQ(actual.DirtyRect.left, 0);
  EXPECT_EQ(actual.DirtyRect.top, 0);
  EXPECT_EQ(actual.DirtyRect.right, expected.DirtyRect.right);
  EXPECT_EQ(actual.DirtyRect.bottom, expected.DirtyRect.bottom);
  EXPECT_EQ(actual.Orientation, expected.Orientation);
  EXPECT_EQ(actual.ComposeInPlace, 1u);
  EXPECT_EQ(CountOf(surface), 1u);
}

inline SurfaceDescription Expect(std::int32_t width, std::int32_t height, std::int32_t format,
                                 std::int32_t bits, std::int32_t stride, std::int32_t dirtyRight,
                                 std::int32_t dirtyBottom, std::uint32_t orientation) {
  return {52,          width, height, format, 4, bits, stride, {0, 0, dirtyRight, dirtyBottom},
          orientation, 1};
}

}  // namespace zor::test
