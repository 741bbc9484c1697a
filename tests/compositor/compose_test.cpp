// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include "compose_cases.h"

// The walk over the children: what is drawn, in which order, and who holds whom afterwards.
namespace zor::test {
namespace {

INSTANTIATE_TEST_SUITE_P(Forms, Compose, testing::Bool(),
                         [](const auto& form) { return form.param ? "Sse2" : "Plain"; });

TEST_P(Compose, SurfaceWithoutChildrenYieldsItselfAlsoWhenNotInPlace) {
  for (const bool inPlace : {false, true}) {
    const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_RGB32, 1), inPlace);
    IZorSurface* out = nullptr;
    EXPECT_EQ(surface->Compose(&out), VED_OK);
    EXPECT_EQ(out, surface.get());
    EXPECT_EQ(CountOf(out), 2u);
    EXPECT_EQ(DescriptionOf(out).format, FORMAT_RGB32);
    EXPECT_EQ(out->Release(), 1u);
  }
}

TEST_P(Compose, FlushesFirstAndAFailingFlushTouchesNothingElse) {
  const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_GRAY8, 1));
  const HeldSurface child = Child(16, 16, FORMAT_YUV420, 2, kAll16, kAll16);
  surface->AddChild(child.get());
  const Bytes before = WholeBlock(surface);
  const std::int32_t failure = CopyOf(surface)->ConvertNow(FORMAT_RGB24);
  ASSERT_LT(failure, 0);
  surface->QueueConvert(FORMAT_RGB24);
  IZorSurface* out = child.get();
  EXPECT_EQ(surface->Compose(&out), failure);
  EXPECT_EQ(out, child.get());
  EXPECT_EQ(surface->GetChildCount(), 1);
  EXPECT_EQ(CountOf(child.get()), 2u);
  EXPECT_EQ(CountOf(surface.get()), 1u);
  EXPECT_EQ(WholeBlock(surface), before);
}

TEST_P(Compose, NullOutIsRefusedBeforeAnythingHappens) {
  const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_RGB32, 1));
  const HeldSurface child = Child(16, 16, FORMAT_YUV420, 2, kAll16, kAll16);
  surface->AddChild(child.get());
  surface->QueueConvert(FORMAT_YUV420);
  EXPECT_EQ(surface->Compose(nullptr), VED_E_INVALIDARG);
  EXPECT_EQ(DescriptionOf(surface.get()).format, FORMAT_RGB32);
  EXPECT_EQ(surface->GetChildCount(), 1);
  EXPECT_EQ(CountOf(child.get()), 2u);
}

TEST_P(Compose, NotInPlaceLeavesThePixelsAloneButTakesTheChildren) {
  const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUV420, 1), false);
  const HeldSurface child = Child(16, 16, FORMAT_YUV420, 2, kAll16, kAll16, 100);
  surface->AddChild(child.get());
  const Bytes before = WholeBlock(surface);
  Bytes expected = before;
  BlendKeyed(&expected, PlanesOf(surface), child, kAll16, kAll16, 100, Sse2());
  const HeldSurface out = Composed(surface);
  EXPECT_NE(out.get(), surface.get());
  EXPECT_EQ(CountOf(out.get()), 1u);
  EXPECT_EQ(CountOf(surface.get()), 1u);
  EXPECT_EQ(WholeBlock(surface), before);
  EXPECT_EQ(surface->GetChildCount(), 0);
  EXPECT_EQ(out->GetChildCount(), 0);
  EXPECT_EQ(CountOf(child.get()), 1u);
  EXPECT_EQ(WholeBlock(out), expected);
}

TEST_P(Compose, InPlaceYieldsTheSurfaceWithOneMoreReference) {
  const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUV420, 1));
  const HeldSurface child = Child(16, 16, FORMAT_YUV420, 2, kAll16, kAll16, 31);
  surface->AddChild(child.get());
  Bytes expected = WholeBlock(surface);
  BlendKeyed(&expected, PlanesOf(surface), child, kAll16, kAll16, 31, Sse2());
  const HeldSurface out = Composed(surface);
  EXPECT_EQ(out.get(), surface.get());
  EXPECT_EQ(CountOf(out.get()), 2u);
  EXPECT_EQ(CountOf(child.get()), 1u);
  EXPECT_EQ(WholeBlock(surface), expected);
}

TEST_P(Compose, SecondCallRightAfterTheFirstFindsNoChildren) {
  const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUV420, 1), false);
  const HeldSurface child = Child(16, 16, FORMAT_YUV420, 2, kAll16, kAll16);
  surface->AddChild(child.get());
  Composed(surface);
  EXPECT_EQ(Composed(surface).get(), surface.get());
}

TEST_P(Compose, EmptyDestinationInTheMiddleIsHiddenByTheLastChild) {
  const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUV420, 1));
  const HeldSurface first = Child(16, 16, FORMAT_YUV420, 2, kAll16, kAll16, 90);
  const HeldSurface second = Child(16, 16, FORMAT_YUV420, 3, {4, 4, 4, 12}, kAll16);
  const HeldSurface third = Child(16, 16, FORMAT_YUV420, 4, {4, 2, 12, 10}, {2, 4, 10, 12}, 60);
  for (const HeldSurface* child : {&first, &second, &third}) surface->AddChild(child->get());
  Bytes expected = WholeBlock(surface);
  BlendKeyed(&expected, PlanesOf(surface), first, kAll16, kAll16, 90, Sse2());
  BlendKeyed(&expected, PlanesOf(surface), third, {4, 2, 12, 10}, {2, 4, 10, 12}, 60, Sse2());
  const HeldSurface out = Composed(surface);
  EXPECT_EQ(WholeBlock(out), expected);
  for (const HeldSurface* child : {&first, &second, &third}) EXPECT_EQ(CountOf(child->get()), 1u);
}

TEST_P(Compose, EmptyDestinationOfTheLastChildIsTheResultThoughTwoWereDrawn) {
  for (const bool masked : {false, true}) {
    const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUV420, 1));
    const HeldSurface first = Child(16, 16, FORMAT_YUV420, 2, kAll16, kAll16, 90);
    const HeldSurface second = Child(16, 16, FORMAT_YUV420, 3, kAll16, kAll16, 70);
    // Of opacity 256 too: the rectangle is looked at first.
    const HeldSurface third = Child(16, 16, FORMAT_YUV420, 4, {4, 12, 12, 12}, kAll16, 256);
    const HeldSurface mask = Noisy(16, 16, FORMAT_GRAY8, 5);
    if (masked) third->SetMask(mask.get());
    for (const HeldSurface* child : {&first, &second, &third}) surface->AddChild(child->get());
    Bytes expected = WholeBlock(surface);
    BlendKeyed(&expected, PlanesOf(surface), first, kAll16, kAll16, 90, Sse2());
    BlendKeyed(&expected, PlanesOf(surface), second, kAll16, kAll16, 70, Sse2());
    const HeldSurface out = Composed(surface, VED_E_INVALIDARG);
    EXPECT_EQ(out.get(), surface.get());
    EXPECT_EQ(WholeBlock(out), expected);
    EXPECT_EQ(surface->GetChildCount(), 0);
    EXPECT_EQ(CountOf(third.get()), 1u);
    EXPECT_EQ(CountOf(mask.get()), masked ? 2u : 1u);
  }
}

TEST_P(Compose, ChildWithMaskAndOpacity256IsDrawn) {
  const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUV420, 1));
  const HeldSurface child = Child(16, 16, FORMAT_YUV420, 2, kAll16, kAll16, 256, 0);
  const HeldSurface mask = MakeEven(Describe(16, 16, FORMAT_GRAY8), 0);
  child->SetMask(mask.get());
  surface->AddChild(child.get());
  const HeldSurface out = Composed(surface);
  EXPECT_EQ(WholeBlock(out), WholeBlock(child));
}

TEST_P(Compose, Opacity0WithoutKeyCopiesTheChildExactly) {
  const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUV420, 1));
  const HeldSurface child = Child(16, 16, FORMAT_YUV420, 2, kAll16, kAll16);
  surface->AddChild(child.get());
  const HeldSurface out = Composed(surface);
  EXPECT_EQ(WholeBlock(out), WholeBlock(child));
}

TEST_P(Compose, Opacity256DrawsNothingAndSucceedsBeforeAnyStretch) {
  const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUV420, 1));
  const HeldSurface failing = Child(16, 16, FORMAT_YUV420, 2, {0, 0, 0, 0}, kAll16);
  const HeldSurface clear = Child(16, 16, FORMAT_YUV420, 2, {0, 0, 3, 3}, kAll16, 256);
  surface->AddChild(failing.get());
  surface->AddChild(clear.get());
  const Bytes before = WholeBlock(surface);
  const HeldSurface out = Composed(surface);
  EXPECT_EQ(WholeBlock(out), before);
  EXPECT_EQ(CountOf(clear.get()), 1u);
}

TEST_P(Compose, LaterChildrenLieOnTop) {
  const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUV420, 1));
  const HeldSurface below = Child(16, 16, FORMAT_YUV420, 2, kAll16, kAll16);
  const HeldSurface above = Child(16, 16, FORMAT_YUV420, 3, kAll16, kAll16);
  surface->AddChild(above.get());
  surface->AddChild(below.get());
  surface->MoveChild(above.get(), 1);
  const HeldSurface out = Composed(surface);
  EXPECT_EQ(WholeBlock(out), WholeBlock(above));
}

TEST_P(Compose, OneChildTwiceInTheListIsDrawnTwiceAndReleasedTwice) {
  const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUV420, 1));
  const HeldSurface child = Child(16, 16, FORMAT_YUV420, 2, kAll16, kAll16, 128);
  surface->AddChild(child.get());
  surface->AddChild(child.get());
  Bytes expected = WholeBlock(surface);
  for (int i = 0; i < 2; ++i) {
    BlendKeyed(&expected, {16, 16}, child, kAll16, kAll16, 128, Sse2());
  }
  const HeldSurface out = Composed(surface);
  EXPECT_EQ(WholeBlock(out), expected);
  EXPECT_EQ(CountOf(child.get()), 1u);
}

TEST_P(Compose, SurfaceThatIsItsOwnChildIsLeftAsItIsOverItself) {
  for (const bool inPlace : {false, true}) {
    const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUV420, 1), inPlace);
    SetRects(surface, kAll16, kAll16);
    surface->SetOpacity(128);
    surface->AddChild(surface.get());
    const Bytes before = WholeBlock(surface);
    const HeldSurface out = Composed(surface);
    EXPECT_EQ(WholeBlock(out), before);
    EXPECT_EQ(surface->GetChildCount(), 0);
    EXPECT_EQ(CountOf(surface.get()), inPlace ? 2u : 1u);
  }
}

TEST_P(Compose, SurfaceThatIsItsOwnChildAndMaskIsComposed) {
  const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUV420, 1));
  SetRects(surface, {0, 0, 12, 12}, {4, 4, 16, 16});
  surface->SetMask(surface.get());
  surface->AddChild(surface.get());
  const HeldSurface out = Composed(surface);
  EXPECT_EQ(CountOf(surface.get()), 3u);
  const HeldSurface other = Noisy(16, 16, FORMAT_GRAY8, 2);
  surface->SetMask(other.get());  // the circle is opened again
}

TEST_P(Compose, SurfaceHeldByItsOwnListAloneOutlivesTheCall) {
  HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUV420, 1));
  SetRects(surface, kAll16, kAll16);
  IZorSurface* raw = surface.get();
  raw->AddChild(raw);
  surface.Reset();
  IZorSurface* out = nullptr;
  EXPECT_EQ(raw->Compose(&out), VED_OK);
  EXPECT_EQ(out, raw);
  EXPECT_EQ(CountOf(raw), 1u);
  raw->Release();
}

}  // namespace
}  // namespace zor::test
