// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Surfaces to compose, and the walk's blends worked out on copies of their blocks.

#include <gtest/gtest.h>

#include <cstring>

#include "blend_reference.h"
#include "drivers/driver_cases.h"

namespace zor::test {

inline HeldSurface Noisy(std::int32_t width, std::int32_t height, std::int32_t format,
                         std::uint64_t seed) {
  return MakeNoisy(Describe(width, height, format), seed);
}

/// Chooses whether a surface composes onto itself.
inline HeldSurface InPlace(HeldSurface surface, bool inPlace = true) {
  surface->SetComposeInPlace(inPlace ? 1 : 0);
  return surface;
}

/// @return a surface of the same shape and bytes.
inline HeldSurface CopyOf(const HeldSurface& surface) {
  HeldSurface copy = MakeBlank(DescriptionOf(surface.get()));
  const Bytes bytes = WholeBlock(surface);
  std::memcpy(PixelsOf(copy), bytes.data(), bytes.size());
  return copy;
}

/// @return the surface's picture in another format.
inline HeldSurface Converted(const HeldSurface& surface, std::int32_t format) {
  HeldSurface copy = CopyOf(surface);
  EXPECT_EQ(copy->ConvertNow(format), VED_OK);
  return copy;
}

inline void SetRects(const HeldSurface& child, const RECT& dest, const RECT& source) {
  child->SetDestRect(dest.left, dest.top, dest.right, dest.bottom);
  child->SetSourceRect(source.left, source.top, source.right, source.bottom);
}

/// @return a child without a mask.
inline HeldSurface Child(std::int32_t width, std::int32_t height, std::int32_t format,
                         std::uint64_t seed, const RECT& dest, const RECT& source,
                         std::uint32_t opacity = 0, std::uint32_t key = 0xFF000000u) {
  HeldSurface child = Noisy(width, height, format, seed);
  SetRects(child, dest, source);
  child->SetOpacity(opacity);
  child->SetBackColor(key);
  return child;
}

/// Composes, which must give @p result. @return the surface drawn on.
inline HeldSurface Composed(const HeldSurface& surface, std::int32_t result = VED_OK) {
  HeldSurface out;
  EXPECT_EQ(surface->Compose(out.Reset()), result);
  return out;
}

inline Geometry PlanesOf(const HeldSurface& surface) {
  const SurfaceDescription d = DescriptionOf(surface.get());
  return {d.stride, d.height};
}

/// The blend of a planar child without a mask, in either form.
inline void BlendKeyed(Bytes* target, Geometry geometry, const HeldSurface& child, const RECT& dest,
                       const RECT& source, int opacity, bool sse2, Key key = {-1, -1, -1}) {
  ReferenceKeyed(*target, WholeBlock(child), geometry, PlanesOf(child), dest, source, opacity, key,
                 sse2);
}

/// The blend of a planar child with a mask, in either form.
inline void BlendMasked(Bytes* target, Geometry geometry, const HeldSurface& child,
                        const HeldSurface& mask, const RECT& dest, const RECT& source, bool sse2) {
  ReferenceMasked(*target, WholeBlock(child), WholeBlock(mask), geometry, PlanesOf(child), dest,
                  source, sse2);
}

/// @return what a part of a surface becomes in a blank surface of another size and any stride.
inline HeldSurface Stretched(const HeldSurface& surface, const RECT& source, std::int32_t width,
                             std::int32_t height, std::int32_t stride) {
  SurfaceDescription d = DescriptionOf(surface.get());
  d.width = width;
  d.height = height;
  d.stride = stride;
  HeldSurface scratch = MakeBlank(d);
  RECT part = source;
  scratch->StretchFromSurface(nullptr, surface.get(), &part, 0);
  return scratch;
}

inline constexpr RECT kAll16 = {0, 0, 16, 16};

/// Each test runs with the word that chooses the SSE2 forms and with the one of the plain forms.
class Compose : public testing::TestWithParam<bool> {
 protected:
  bool Sse2() const { return GetParam(); }

 private:
  WithFeatures features_{GetParam() ? kWords[0] : kWords[2]};
};

/// Its tests about places and sizes.
class ComposeRectangles : public Compose {};

}  // namespace zor::test
