// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include "compose_cases.h"

// Children of another size than their place, and rectangles that leave the pictures.
namespace zor::test {
namespace {

INSTANTIATE_TEST_SUITE_P(Forms, ComposeRectangles, testing::Bool(),
                         [](const auto& form) { return form.param ? "Sse2" : "Plain"; });

/// The blend onto 16 x 16 through a mask, or of an opacity where there is none.
void BlendEither(Bytes* target, const HeldSurface& child, const HeldSurface* mask, const RECT& dest,
                 const RECT& source, int opacity, bool sse2) {
  if (mask != nullptr) {
    BlendMasked(target, {16, 16}, child, *mask, dest, source, sse2);
  } else {
    BlendKeyed(target, {16, 16}, child, dest, source, opacity, sse2);
  }
}

TEST_P(ComposeRectangles, StretchedChildIsCutByItsSourceRectangle) {
  const HeldSurface surface = InPlace(Noisy(32, 24, FORMAT_YUV420, 1));
  const RECT dest = {4, 2, 24, 18};
  const RECT source = {2, 2, 12, 12};
  const HeldSurface child = Child(16, 16, FORMAT_YUV420, 2, dest, source, 40);
  surface->AddChild(child.get());
  const HeldSurface scratch = Stretched(child, source, 20, 16, 20);
  Bytes expected = WholeBlock(surface);
  BlendKeyed(&expected, {32, 24}, scratch, dest, {0, 0, 20, 16}, 40, Sse2());
  const HeldSurface out = Composed(surface);
  EXPECT_EQ(WholeBlock(out), expected);
  EXPECT_EQ(CountOf(child.get()), 1u);
  RECT kept = {};
  child->GetSourceRect(&kept);
  EXPECT_EQ(kept, source);
}

TEST_P(ComposeRectangles, StretchedChildKeepsItsKey) {
  const HeldSurface surface = InPlace(Noisy(32, 24, FORMAT_YUV420, 1));
  const RECT dest = {0, 0, 16, 16};
  const RECT source = {0, 0, 8, 8};
  const HeldSurface child = Child(16, 16, FORMAT_YUV420, 2, dest, source, 0, 0);
  SurfaceDescription d = DescriptionOf(child.get());
  std::memset(PixelsOf(child), 16, 256);
  std::memset(PixelsOf(child) + 256, 128, 128);  // black, as a key of 0 makes it
  for (int y = 0; y < d.height; ++y) PixelsOf(child)[y * d.stride + 3] = 200;
  surface->AddChild(child.get());
  const HeldSurface scratch = Stretched(child, source, 16, 16, 16);
  Bytes expected = WholeBlock(surface);
  BlendKeyed(&expected, {32, 24}, scratch, dest, kAll16, 0, Sse2(), {16, 128, 128});
  EXPECT_NE(expected, WholeBlock(surface));
  Bytes unkeyed = WholeBlock(surface);
  BlendKeyed(&unkeyed, {32, 24}, scratch, dest, kAll16, 0, Sse2());
  EXPECT_NE(expected, unkeyed);
  const HeldSurface out = Composed(surface);
  EXPECT_EQ(WholeBlock(out), expected);
}

TEST_P(ComposeRectangles, StretchedMaskOfAWidthNotInFoursSlidesFromRowToRow) {
  const HeldSurface surface = InPlace(Noisy(32, 24, FORMAT_YUV420, 1));
  const RECT dest = {4, 2, 14, 12};
  const RECT source = {2, 2, 10, 12};
  const HeldSurface child = Child(16, 16, FORMAT_YUV420, 2, dest, source);
  const HeldSurface mask = Noisy(16, 16, FORMAT_GRAY8, 3);
  child->SetMask(mask.get());
  surface->AddChild(child.get());
  const HeldSurface scratch = Stretched(child, source, 10, 10, 10);
  const HeldSurface scratchMask = Stretched(mask, source, 10, 10, 12);
  Bytes expected = WholeBlock(surface);
  BlendMasked(&expected, {32, 24}, scratch, scratchMask, dest, {0, 0, 10, 10}, Sse2());
  const HeldSurface out = Composed(surface);
  EXPECT_EQ(WholeBlock(out), expected);
  EXPECT_EQ(CountOf(child.get()), 1u);
  EXPECT_EQ(CountOf(mask.get()), 2u);
  // Row 5 of the rectangle starts with sample 10 x 5 of the mask's block, which is not its row 5.
  const Bytes m = WholeBlock(scratchMask);
  const Bytes c = WholeBlock(scratch);
  const Bytes before = WholeBlock(InPlace(Noisy(32, 24, FORMAT_YUV420, 1)));
  EXPECT_EQ(WholeBlock(out)[7 * 32 + 4], Mix(c[50], before[7 * 32 + 4], m[50]));
}

TEST_P(ComposeRectangles, PackedScratchSurfaceHoldsHalfOfWhatIsRead) {
  const HeldSurface surface = InPlace(Noisy(32, 24, FORMAT_YUY2, 1));
  const RECT dest = {4, 0, 24, 16};
  const HeldSurface child = Child(16, 16, FORMAT_YUY2, 2, dest, kAll16);
  const HeldSurface mask = Noisy(16, 16, FORMAT_GRAY8, 3);
  child->SetMask(mask.get());
  surface->AddChild(child.get());
  // A packed surface takes no stretch: its first quarter is 0x80 and the rest 0.
  Bytes scratch(20 * 16);
  std::fill_n(scratch.begin(), 20 * 16 / 4, std::uint8_t{0x80});
  const HeldSurface scratchMask = Stretched(mask, kAll16, 20, 16, 20);
  Bytes expected = WholeBlock(surface);
  ReferencePacked(expected, scratch, WholeBlock(scratchMask), 64, 20, 20, dest, {0, 0, 20, 16}, 0);
  const HeldSurface out = Composed(surface);
  EXPECT_EQ(WholeBlock(out), expected);
}

TEST_P(ComposeRectangles, DestinationUnderFourCannotBeStretchedAndOnlyThatChildIsLost) {
  for (const RECT& dest : {RECT{2, 2, 5, 12}, RECT{2, 2, 12, 5}}) {
    for (const bool masked : {false, true}) {
      const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUV420, 1));
      const HeldSurface child = Child(16, 16, FORMAT_YUV420, 2, dest, kAll16);
      const HeldSurface mask = Noisy(16, 16, FORMAT_GRAY8, 3);
      if (masked) child->SetMask(mask.get());
      surface->AddChild(child.get());
      const Bytes before = WholeBlock(surface);
      const HeldSurface out = Composed(surface, VED_E_INVALIDARG);
      EXPECT_EQ(WholeBlock(out), before);
      EXPECT_EQ(CountOf(child.get()), 1u);
      EXPECT_EQ(CountOf(mask.get()), masked ? 2u : 1u);
    }
  }
}

TEST_P(ComposeRectangles, RectanglesUnderFourOfOneSizeAreDrawn) {
  const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUV420, 1));
  const RECT dest = {2, 2, 5, 4};
  const RECT source = {7, 4, 10, 6};
  const HeldSurface child = Child(16, 16, FORMAT_YUV420, 2, dest, source, 128);
  surface->AddChild(child.get());
  Bytes expected = WholeBlock(surface);
  BlendKeyed(&expected, {16, 16}, child, dest, source, 128, Sse2());
  const HeldSurface out = Composed(surface);
  EXPECT_EQ(WholeBlock(out), expected);
}

TEST_P(ComposeRectangles, RectanglesThatLeaveThePicturesAddressTheirBlocks) {
  const RECT dests[] = {
      {8, 8, 20, 20}, {12, 0, 24, 12}, {0, 12, 12, 24}, {4, 14, 16, 26}, {2, 24, 14, 36}};
  const RECT sources[] = {{0, 0, 12, 12}, {4, 4, 16, 16}, {10, 10, 22, 22}, {2, 12, 14, 24}};
  for (const RECT& dest : dests) {
    for (const RECT& source : sources) {
      for (const bool masked : {false, true}) {
        const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUV420, 1));
        // The slot looks at the size of the moment: the child shrinks under its rectangle later.
        const HeldSurface child = Child(24, 24, FORMAT_YUV420, 2, dest, source, 99);
        child->ResizeNow(16, 16, 0, 0);
        const HeldSurface mask = Noisy(16, 16, FORMAT_GRAY8, 3);
        if (masked) child->SetMask(mask.get());
        surface->AddChild(child.get());
        Bytes expected = WholeBlock(surface);
        BlendEither(&expected, child, masked ? &mask : nullptr, dest, source, 99, Sse2());
        const HeldSurface out = Composed(surface);
        EXPECT_EQ(WholeBlock(out), expected) << dest << " from " << source << " mask " << masked;
      }
    }
  }
}

TEST_P(ComposeRectangles, ChildWiderThanTheTargetWrapsIntoTheNextRows) {
  for (const bool masked : {false, true}) {
    const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUV420, 1));
    const RECT dest = {0, 2, 40, 8};
    const RECT source = {4, 6, 44, 12};
    const HeldSurface child = Child(48, 16, FORMAT_YUV420, 2, dest, source, 70);
    const HeldSurface mask = Noisy(48, 16, FORMAT_GRAY8, 3);
    if (masked) child->SetMask(mask.get());
    surface->AddChild(child.get());
    Bytes expected = WholeBlock(surface);
    BlendEither(&expected, child, masked ? &mask : nullptr, dest, source, 70, Sse2());
    const HeldSurface out = Composed(surface);
    EXPECT_EQ(WholeBlock(out), expected) << masked;
  }
}

TEST_P(ComposeRectangles, RectanglesThatLeaveAPackedTargetAddressItsBlock) {
  const RECT dest = {10, 9, 22, 21};
  const RECT source = {4, 4, 16, 16};
  const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUY2, 1));
  const HeldSurface child = Child(16, 16, FORMAT_YUY2, 2, dest, source);
  const HeldSurface mask = Noisy(16, 16, FORMAT_GRAY8, 3);
  child->SetMask(mask.get());
  surface->AddChild(child.get());
  Bytes expected = WholeBlock(surface);
  ReferencePacked(expected, WholeBlock(child), WholeBlock(mask), 32, 32, 16, dest, source,
                  Sse2() ? 4 : 9);
  const HeldSurface out = Composed(surface);
  EXPECT_EQ(WholeBlock(out), expected);
}

TEST_P(ComposeRectangles, MaskSmallerThanItsUseIsReadAsZeroBehindItsBlock) {
  const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUV420, 1));
  const HeldSurface child = Child(16, 16, FORMAT_YUV420, 2, kAll16, kAll16);
  const HeldSurface mask = Noisy(8, 8, FORMAT_GRAY8, 3);
  child->SetMask(mask.get());
  surface->AddChild(child.get());
  Bytes expected = WholeBlock(surface);
  BlendMasked(&expected, {16, 16}, child, mask, kAll16, kAll16, Sse2());
  EXPECT_EQ(expected[255], WholeBlock(child)[255]);
  const HeldSurface out = Composed(surface);
  EXPECT_EQ(WholeBlock(out), expected);
}

}  // namespace
}  // namespace zor::test
