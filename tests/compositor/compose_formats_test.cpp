// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include "compose_cases.h"

// Children and targets of other formats than planes.
namespace zor::test {
namespace {

TEST_P(Compose, PackedTargetDrawsTheMaskedChildrenAndKeepsAReferenceOfTheOthers) {
  const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUY2, 1));
  const RECT dest = {2, 3, 13, 10};
  const RECT source = {4, 5, 15, 12};
  const HeldSurface masked = Child(16, 16, FORMAT_YUY2, 2, dest, source);
  const HeldSurface mask = Noisy(16, 16, FORMAT_GRAY8, 3);
  masked->SetMask(mask.get());
  const HeldSurface plain = Child(16, 16, FORMAT_YUY2, 4, kAll16, kAll16);
  surface->AddChild(masked.get());
  surface->AddChild(plain.get());
  Bytes expected = WholeBlock(surface);
  ReferencePacked(expected, WholeBlock(masked), WholeBlock(mask), 32, 32, 16, dest, source,
                  Sse2() ? source.top : dest.top);
  const HeldSurface out = Composed(surface);
  EXPECT_EQ(DescriptionOf(out.get()).format, FORMAT_YUY2);
  EXPECT_EQ(WholeBlock(out), expected);
  EXPECT_EQ(CountOf(masked.get()), 1u);
  EXPECT_EQ(CountOf(mask.get()), 2u);
  EXPECT_EQ(CountOf(plain.get()), 2u);  // the walk's own reference stays
  plain->Release();
}

TEST_P(Compose, SkippedChildOnAPackedTargetKeepsTheResultOfTheChildBefore) {
  const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUY2, 1));
  const HeldSurface failing = Child(16, 16, FORMAT_YUY2, 2, {4, 4, 4, 4}, kAll16);
  const HeldSurface mask = Noisy(16, 16, FORMAT_GRAY8, 3);
  failing->SetMask(mask.get());
  const HeldSurface skipped = Child(16, 16, FORMAT_RGB24, 4, kAll16, kAll16);
  surface->AddChild(failing.get());
  surface->AddChild(skipped.get());
  const HeldSurface out = Composed(surface, VED_E_INVALIDARG);
  EXPECT_EQ(DescriptionOf(skipped.get()).format, FORMAT_YUY2);
  skipped->Release();
}

TEST_P(Compose, Rgb32ChildIsDrawnThroughTheMaskThatItsConversionMakesOfAlpha) {
  for (const std::int32_t format : {FORMAT_YUV420, FORMAT_YUY2}) {
    const HeldSurface surface = InPlace(Noisy(16, 16, format, 1));
    const RECT rect = {0, 0, 14, 14};
    const HeldSurface child = Child(16, 16, FORMAT_RGB32, 2, rect, rect, 256, 0);
    surface->AddChild(child.get());
    const HeldSurface converted = Converted(child, format);
    HeldSurface mask;
    ASSERT_EQ(converted->GetMask(mask.Reset()), VED_OK);
    Bytes expected = WholeBlock(surface);
    if (format == FORMAT_YUV420) {
      BlendMasked(&expected, {16, 16}, converted, mask, rect, rect, Sse2());
    } else {
      ReferencePacked(expected, WholeBlock(converted), WholeBlock(mask), 32, 32, 16, rect, rect, 0);
    }
    const HeldSurface out = Composed(surface);
    EXPECT_EQ(WholeBlock(out), expected);
  }
}

TEST_P(Compose, RgbTargetsInPlaceEndPlanar) {
  for (const std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32}) {
    const HeldSurface surface = InPlace(Noisy(16, 16, format, 1));
    const HeldSurface first = Child(16, 16, FORMAT_RGB24, 2, kAll16, kAll16, 77);
    const HeldSurface second = Child(16, 16, FORMAT_YUY2, 3, {2, 2, 10, 10}, {4, 4, 12, 12});
    const HeldSurface mask = Noisy(16, 16, FORMAT_GRAY8, 5);
    second->SetMask(mask.get());
    surface->AddChild(first.get());
    surface->AddChild(second.get());
    const HeldSurface base = Converted(surface, FORMAT_YUV420);
    Bytes expected = WholeBlock(base);
    BlendKeyed(&expected, PlanesOf(base), Converted(first, FORMAT_YUV420), kAll16, kAll16, 77,
               Sse2());
    BlendMasked(&expected, PlanesOf(base), Converted(second, FORMAT_YUV420), mask, {2, 2, 10, 10},
                {4, 4, 12, 12}, Sse2());
    const HeldSurface out = Composed(surface);
    EXPECT_EQ(DescriptionOf(surface.get()).format, FORMAT_YUV420);
    EXPECT_EQ(WholeBlock(out), expected) << format;
    // A child keeps the format that it was brought to, for all who share it.
    EXPECT_EQ(DescriptionOf(first.get()).format, FORMAT_YUV420);
    EXPECT_EQ(DescriptionOf(second.get()).format, FORMAT_YUV420);
  }
}

TEST_P(Compose, MaskedChildOntoGrayFailsAndKeepsReferencesOfChildAndMask) {
  const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_GRAY8, 1));
  const HeldSurface child = Child(16, 16, FORMAT_YUV420, 2, kAll16, kAll16);
  const HeldSurface mask = Noisy(16, 16, FORMAT_GRAY8, 3);
  child->SetMask(mask.get());
  surface->AddChild(child.get());
  const Bytes before = WholeBlock(surface);
  const HeldSurface out = Composed(surface, VED_E_COMPOSE);
  EXPECT_EQ(out.get(), surface.get());
  EXPECT_EQ(WholeBlock(surface), before);
  EXPECT_EQ(surface->GetChildCount(), 0);
  EXPECT_EQ(CountOf(child.get()), 2u);
  EXPECT_EQ(CountOf(mask.get()), 3u);
  child->Release();
  mask->Release();
}

TEST_P(Compose, ChildWithoutMaskOntoGrayLandsAsIfTheTargetWerePlanar) {
  const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_GRAY8, 1));
  const HeldSurface child = Child(16, 16, FORMAT_YUV420, 2, {2, 2, 14, 14}, {0, 0, 12, 12}, 50);
  surface->AddChild(child.get());
  Bytes expected = WholeBlock(surface);
  BlendKeyed(&expected, {16, 16}, child, {2, 2, 14, 14}, {0, 0, 12, 12}, 50, Sse2());
  const HeldSurface out = Composed(surface);
  EXPECT_EQ(DescriptionOf(out.get()).format, FORMAT_GRAY8);
  EXPECT_EQ(WholeBlock(out), expected);
}

TEST_P(Compose, GrayChildIsReadWithZerosForThePlanesThatItLacks) {
  const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUV420, 1));
  const HeldSurface child = Child(16, 16, FORMAT_GRAY8, 2, kAll16, kAll16, 0);
  surface->AddChild(child.get());
  Bytes expected = WholeBlock(surface);
  BlendKeyed(&expected, {16, 16}, child, kAll16, kAll16, 0, Sse2());
  const HeldSurface out = Composed(surface);
  EXPECT_EQ(WholeBlock(out), expected);
  EXPECT_EQ(expected[256], 0);
}

TEST_P(Compose, GrayChildOnAPackedTargetIsReadAsPackedRowsOfItsOwnStride) {
  const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUY2, 1));
  const RECT rect = {0, 0, 16, 16};
  const HeldSurface child = Child(16, 16, FORMAT_GRAY8, 2, rect, rect);
  const HeldSurface mask = Noisy(16, 16, FORMAT_GRAY8, 3);
  child->SetMask(mask.get());
  surface->AddChild(child.get());
  Bytes expected = WholeBlock(surface);
  ReferencePacked(expected, WholeBlock(child), WholeBlock(mask), 32, 16, 16, rect, rect, 0);
  EXPECT_EQ(expected.back(), Mix(0, WholeBlock(surface).back(), WholeBlock(mask).back()));
  const HeldSurface out = Composed(surface);
  EXPECT_EQ(WholeBlock(out), expected);
}

TEST_P(Compose, OnACloneOfAnRgbSurfaceTheKeyedBlendTakesTheOldGeometry) {
  for (const std::int32_t format : {FORMAT_RGB24, FORMAT_RGB32}) {
    for (const RECT& dest : {RECT{2, 2, 10, 8}, RECT{1, 3, 12, 14}, RECT{0, 10, 16, 16}}) {
      const HeldSurface surface = InPlace(Noisy(16, 16, format, 1), false);
      const RECT source = {0, 0, dest.right - dest.left, dest.bottom - dest.top};
      const HeldSurface child = Child(16, 16, FORMAT_YUV420, 2, dest, source, 20);
      surface->AddChild(child.get());
      const std::int32_t stride = DescriptionOf(surface.get()).stride;
      Bytes expected = WholeBlock(Converted(surface, FORMAT_YUV420));
      BlendKeyed(&expected, {stride, 16}, child, dest, source, 20, Sse2());
      const HeldSurface out = Composed(surface);
      EXPECT_EQ(DescriptionOf(surface.get()).format, format);
      EXPECT_EQ(DescriptionOf(out.get()).format, FORMAT_YUV420);
      EXPECT_EQ(WholeBlock(out), expected) << format << " at " << dest;
    }
  }
}

TEST_P(Compose, OnACloneOfAnRgbSurfaceTheMaskedBlendLandsInPlace) {
  const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_RGB24, 1), false);
  const RECT dest = {2, 2, 10, 8};
  const RECT source = {4, 4, 12, 10};
  const HeldSurface child = Child(16, 16, FORMAT_YUV420, 2, dest, source);
  const HeldSurface mask = Noisy(16, 16, FORMAT_GRAY8, 3);
  child->SetMask(mask.get());
  surface->AddChild(child.get());
  Bytes expected = WholeBlock(Converted(surface, FORMAT_YUV420));
  BlendMasked(&expected, {16, 16}, child, mask, dest, source, Sse2());
  const HeldSurface out = Composed(surface);
  EXPECT_EQ(WholeBlock(out), expected);
}

}  // namespace
}  // namespace zor::test
