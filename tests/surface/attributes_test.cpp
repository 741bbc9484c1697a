// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <stdexcept>

#include "platform/memory.h"
#include "support/guarded_memory.h"
#include "support/probe_surface.h"
#include "support/surfaces.h"

namespace {

using zor::LiveAllocations;
using zor::test::CountOf;
using zor::test::Describe;
using zor::test::DescriptionOf;
using zor::test::HeldSurface;
using zor::test::MakeBlank;
using zor::test::ProbeSurface;
using Words = std::array<std::int32_t, 4>;

HeldSurface Small() {
  return MakeBlank(Describe(16, 8, FORMAT_RGB24));
}

Words WordsOf(const RECT& rect) {
  return {static_cast<std::int32_t>(rect.left), static_cast<std::int32_t>(rect.top),
          static_cast<std::int32_t>(rect.right), static_cast<std::int32_t>(rect.bottom)};
}

// ------------------------------------------------------------------------------ description

TEST(Description, NullIsInvalid) {
  EXPECT_EQ(Small()->GetDescription(nullptr), VED_E_INVALIDARG);
}

TEST(Description, TheSizeWordIsAlwaysFiftyTwo) {
  SurfaceDescription description = Describe(8, 8, FORMAT_RGB24);
  description.size = 7;
  const ProbeSurface probe(description);
  SurfaceDescription actual = {};
  EXPECT_EQ(const_cast<ProbeSurface&>(probe).GetDescription(&actual), VED_OK);
  EXPECT_EQ(actual.size, 52u);
  EXPECT_EQ(DescriptionOf(MakeBlank(description).get()).size, 52u);
}

TEST(Description, TheReadersSizeWordIsNotLookedAt) {
  SurfaceDescription actual = {};
  actual.size = 3;
  EXPECT_EQ(Small()->GetDescription(&actual), VED_OK);
  EXPECT_EQ(actual.size, 52u);
}

TEST(Attributes, StartWithTheirDefaults) {
  const HeldSurface surface = Small();
  std::int32_t a = 1;
  std::int32_t b = 1;
  std::uint32_t word = 1;
  RECT rect = {1, 1, 1, 1};
  surface->GetAspectRatio(&a, &b);
  EXPECT_EQ(a, 0);
  EXPECT_EQ(b, 0);
  surface->GetBackColor(&word);
  EXPECT_EQ(word, 0xFF000000u);
  surface->GetOpacity(&word);
  EXPECT_EQ(word, 0u);
  surface->GetSourceRect(&rect);
  EXPECT_EQ(WordsOf(rect), Words{});
  rect = {1, 1, 1, 1};
  surface->GetDestRect(&rect);
  EXPECT_EQ(WordsOf(rect), Words{});
  EXPECT_EQ(surface->GetChildCount(), 0);
}

TEST(Attributes, TheDirectOutputStartsInactiveWithStrideMinusOne) {
  ProbeSurface probe(Describe(8, 8, FORMAT_RGB24));
  EXPECT_EQ(probe.direct().active, 0u);
  EXPECT_EQ(probe.direct().memory, nullptr);
  EXPECT_EQ(probe.direct().stride, -1);
  EXPECT_EQ(probe.direct().orientation, 0u);
}

TEST(Attributes, NullPointersOfGettersAreInvalid) {
  const HeldSurface surface = Small();
  std::int32_t word = 5;
  EXPECT_EQ(surface->GetAspectRatio(nullptr, &word), VED_E_INVALIDARG);
  EXPECT_EQ(surface->GetAspectRatio(&word, nullptr), VED_E_INVALIDARG);
  EXPECT_EQ(word, 5);
  EXPECT_EQ(surface->GetComposeInPlace(nullptr), VED_E_INVALIDARG);
  EXPECT_EQ(surface->GetBackColor(nullptr), VED_E_INVALIDARG);
  EXPECT_EQ(surface->GetOpacity(nullptr), VED_E_INVALIDARG);
  EXPECT_EQ(surface->GetSourceRect(nullptr), VED_E_INVALIDARG);
  EXPECT_EQ(surface->GetDestRect(nullptr), VED_E_INVALIDARG);
  EXPECT_EQ(surface->GetMask(nullptr), VED_E_INVALIDARG);
  EXPECT_EQ(surface->GetPixels(nullptr), VED_E_INVALIDARG);
  EXPECT_EQ(surface->ComputeFitRect(4, 4, nullptr), VED_E_INVALIDARG);
}

TEST(AspectRatio, NegativeWordsAreInvalidAndZerosAreNot) {
  const HeldSurface surface = Small();
  EXPECT_EQ(surface->SetAspectRatio(4, 3), VED_OK);
  EXPECT_EQ(surface->SetAspectRatio(-1, 3), VED_E_INVALIDARG);
  EXPECT_EQ(surface->SetAspectRatio(4, -1), VED_E_INVALIDARG);
  std::int32_t a = 0;
  std::int32_t b = 0;
  surface->GetAspectRatio(&a, &b);
  EXPECT_EQ(a, 4);
  EXPECT_EQ(b, 3);
  EXPECT_EQ(surface->SetAspectRatio(0, 0), VED_OK);
}

TEST(ComposeInPlace, IsWordTwelveOfTheDescription) {
  const HeldSurface surface = Small();
  EXPECT_EQ(surface->SetComposeInPlace(0xDEADBEEF), VED_OK);
  EXPECT_EQ(DescriptionOf(surface.get()).ComposeInPlace, 0xDEADBEEFu);
  std::uint32_t flag = 0;
  EXPECT_EQ(surface->GetComposeInPlace(&flag), VED_OK);
  EXPECT_EQ(flag, 0xDEADBEEFu);
}

TEST(BackColor, IsStoredUnchecked) {
  const HeldSurface surface = Small();
  for (const std::uint32_t colour : {0u, 0x00ABCDEFu, 0xFFFFFFFFu}) {
    std::uint32_t actual = ~colour;
    EXPECT_EQ(surface->SetBackColor(colour), VED_OK);
    EXPECT_EQ(surface->GetBackColor(&actual), VED_OK);
    EXPECT_EQ(actual, colour);
  }
}

TEST(Opacity, EndsAt256) {
  const HeldSurface surface = Small();
  EXPECT_EQ(surface->SetOpacity(256), VED_OK);
  EXPECT_EQ(surface->SetOpacity(257), VED_E_INVALIDARG);
  EXPECT_EQ(surface->SetOpacity(0xFFFFFFFF), VED_E_INVALIDARG);
  std::uint32_t opacity = 0;
  surface->GetOpacity(&opacity);
  EXPECT_EQ(opacity, 256u);
}

TEST(StorageFlags, AnswerOne) {
  const HeldSurface surface = Small();
  EXPECT_EQ(surface->SetStorageFlags(5), 1);
  EXPECT_EQ(surface->SetStorageFlags(1), 1);
}

// ------------------------------------------------------------------------------ rectangles

TEST(SourceRect, NegativeStartsAreInvalidAndTurnedOnesAreNot) {
  const HeldSurface surface = Small();
  EXPECT_EQ(surface->SetSourceRect(-1, 0, 4, 4), VED_E_INVALIDARG);
  EXPECT_EQ(surface->SetSourceRect(0, -1, 4, 4), VED_E_INVALIDARG);
  EXPECT_EQ(surface->SetSourceRect(2, 2, 1, 1), VED_OK);
  RECT rect = {};
  EXPECT_EQ(surface->GetSourceRect(&rect), VED_OK);
  EXPECT_EQ(WordsOf(rect), (Words{2, 2, 1, 1}));
}

TEST(SourceRect, EndsAreComparedAsUnsignedWithThePresentSize) {
  const HeldSurface surface = Small();  // 16 x 8
  EXPECT_EQ(surface->SetSourceRect(0, 0, 16, 8), VED_OK);
  EXPECT_EQ(surface->SetSourceRect(1, 1, 17, 8), VED_E_INVALIDARG);
  EXPECT_EQ(surface->SetSourceRect(1, 1, 16, 9), VED_E_INVALIDARG);
  EXPECT_EQ(surface->SetSourceRect(1, 1, -1, 8), VED_E_INVALIDARG);
  EXPECT_EQ(surface->SetSourceRect(1, 1, 16, -1), VED_E_INVALIDARG);
  EXPECT_EQ(surface->QueueResize(100, 100, 0, 0), VED_OK);
  EXPECT_EQ(surface->SetSourceRect(0, 0, 100, 100), VED_E_INVALIDARG);
  RECT rect = {};
  surface->GetSourceRect(&rect);
  EXPECT_EQ(WordsOf(rect), (Words{0, 0, 16, 8}));
}

TEST(DestRect, HasNoUpperBound) {
  const HeldSurface surface = Small();
  EXPECT_EQ(surface->SetDestRect(0, 0, 100000, 100000), VED_OK);
  RECT rect = {};
  EXPECT_EQ(surface->GetDestRect(&rect), VED_OK);
  EXPECT_EQ(WordsOf(rect), (Words{0, 0, 100000, 100000}));
  EXPECT_EQ(surface->SetDestRect(-1, 0, 4, 4), VED_E_INVALIDARG);
  EXPECT_EQ(surface->SetDestRect(0, -1, 4, 4), VED_E_INVALIDARG);
  EXPECT_EQ(surface->SetDestRect(5, 6, -7, -8), VED_OK);
}

// ------------------------------------------------------------------------------ mask

TEST(Mask, WithoutOneGetMaskFailsAndStoresNull) {
  const HeldSurface surface = Small();
  IZorSurface* mask = surface.get();
  EXPECT_EQ(surface->GetMask(&mask), E_FAIL);
  EXPECT_EQ(mask, nullptr);
}

TEST(Mask, NullIsInvalidAndTheOldOneStays) {
  const HeldSurface surface = Small();
  const HeldSurface mask = Small();
  EXPECT_EQ(surface->SetMask(mask.get()), VED_OK);
  EXPECT_EQ(surface->SetMask(nullptr), VED_E_INVALIDARG);
  EXPECT_EQ(CountOf(mask.get()), 2u);
}

TEST(Mask, HoldsOneReferenceAndHandsOutAnother) {
  HeldSurface surface = Small();
  const HeldSurface first = Small();
  const HeldSurface second = Small();
  EXPECT_EQ(surface->SetMask(first.get()), VED_OK);
  EXPECT_EQ(CountOf(first.get()), 2u);
  IZorSurface* given = nullptr;
  EXPECT_EQ(surface->GetMask(&given), VED_OK);
  EXPECT_EQ(given, first.get());
  EXPECT_EQ(given->Release(), 2u);
  EXPECT_EQ(surface->SetMask(second.get()), VED_OK);
  EXPECT_EQ(CountOf(first.get()), 1u);
  EXPECT_EQ(CountOf(second.get()), 2u);
  surface.Reset();
  EXPECT_EQ(CountOf(second.get()), 1u);
}

TEST(Mask, SettingTheOneHeldAlreadyChangesNothing) {
  const HeldSurface surface = Small();
  HeldSurface mask = Small();
  IZorSurface* const held = mask.get();
  surface->SetMask(held);
  mask.Reset();  // the surface is the only owner
  EXPECT_EQ(surface->SetMask(held), VED_OK);
  EXPECT_EQ(CountOf(held), 1u);
}

// ------------------------------------------------------------------------------ children

struct Family {
  HeldSurface parent = Small();
  std::array<HeldSurface, 4> children = {Small(), Small(), Small(), Small()};
  IZorSurface* operator[](std::size_t i) const { return children[i].get(); }
  void AddAll() {
    for (const HeldSurface& child : children) EXPECT_EQ(parent->AddChild(child.get()), VED_OK);
  }
  /// @return the children's places in this family, in the order of the list.
  std::vector<int> Order() {
    std::vector<int> order;
    for (std::int32_t i = 0; i < parent->GetChildCount(); ++i) {
      IZorSurface* child = parent->GetChild(i);
      for (int k = 0; k < 4; ++k) {
        if (child == children[static_cast<std::size_t>(k)].get()) order.push_back(k);
      }
      child->Release();
    }
    return order;
  }
};
using Order = std::vector<int>;

TEST(Children, AreAppendedEachWithAReference) {
  Family family;
  EXPECT_EQ(family.parent->AddChild(nullptr), VED_E_INVALIDARG);
  family.AddAll();
  EXPECT_EQ(family.parent->GetChildCount(), 4);
  EXPECT_EQ(family.Order(), (Order{0, 1, 2, 3}));
  EXPECT_EQ(CountOf(family[0]), 2u);
  EXPECT_EQ(family.parent->AddChild(family[0]), VED_OK);
  EXPECT_EQ(family.Order(), (Order{0, 1, 2, 3, 0}));
  EXPECT_EQ(CountOf(family[0]), 3u);
  family.parent.Reset();
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(CountOf(family[i]), 1u);
}

TEST(Children, RemovingChecksTheIndexAndReleases) {
  Family family;
  EXPECT_EQ(family.parent->RemoveChild(0), VED_E_INVALIDARG);
  family.AddAll();
  EXPECT_EQ(family.parent->RemoveChild(-1), VED_E_INVALIDARG);
  EXPECT_EQ(family.parent->RemoveChild(4), VED_E_INVALIDARG);
  EXPECT_EQ(family.parent->RemoveChild(1), VED_OK);
  EXPECT_EQ(family.Order(), (Order{0, 2, 3}));
  EXPECT_EQ(CountOf(family[1]), 1u);
  EXPECT_EQ(family.parent->RemoveChild(2), VED_OK);
  EXPECT_EQ(family.Order(), (Order{0, 2}));
}

TEST(Children, FindGivesTheFirstOccurrence) {
  Family family;
  EXPECT_EQ(family.parent->FindChild(family[0]), -1);
  EXPECT_EQ(family.parent->FindChild(nullptr), -1);
  family.AddAll();
  family.parent->AddChild(family[2]);
  EXPECT_EQ(family.parent->FindChild(family[2]), 2);
  EXPECT_EQ(family.parent->FindChild(family.parent.get()), -1);
  EXPECT_EQ(family.parent->FindChild(nullptr), -1);
}

TEST(Children, GetGivesAReferenceOrNull) {
  Family family;
  EXPECT_EQ(family.parent->GetChild(0), nullptr);
  family.AddAll();
  EXPECT_EQ(family.parent->GetChild(-1), nullptr);
  EXPECT_EQ(family.parent->GetChild(4), nullptr);
  IZorSurface* child = family.parent->GetChild(3);
  EXPECT_EQ(child, family[3]);
  EXPECT_EQ(child->Release(), 2u);
}

TEST(Children, MovingChecksItsArguments) {
  Family family;
  EXPECT_EQ(family.parent->MoveChild(family[0], 0), E_FAIL);
  family.AddAll();
  EXPECT_EQ(family.parent->MoveChild(nullptr, 0), VED_E_INVALIDARG);
  EXPECT_EQ(family.parent->MoveChild(family[0], -1), VED_E_INVALIDARG);
  EXPECT_EQ(family.parent->MoveChild(family.parent.get(), 0), E_FAIL);
}

TEST(Children, MovingCountsInTheListWithoutTheChild) {
  const struct {
    std::size_t child;
    std::int32_t index;
    Order order;
  } kMoves[] = {
      {0, 0, {0, 1, 2, 3}},       {0, 1, {1, 0, 2, 3}}, {0, 2, {1, 2, 0, 3}}, {0, 3, {1, 2, 3, 0}},
      {3, 0, {3, 0, 1, 2}},       {3, 1, {0, 3, 1, 2}}, {2, 1, {0, 2, 1, 3}}, {1, 4, {0, 2, 3, 1}},
      {1, 1000000, {0, 2, 3, 1}}, {3, 3, {0, 1, 2, 3}}, {3, 9, {0, 1, 2, 3}},
  };
  for (const auto& move : kMoves) {
    Family family;
    family.AddAll();
    EXPECT_EQ(family.parent->MoveChild(family[move.child], move.index), VED_OK);
    EXPECT_EQ(family.Order(), move.order) << move.child << " to " << move.index;
    EXPECT_EQ(CountOf(family[move.child]), 2u);
  }
}

TEST(Children, MovingTakesTheFirstOccurrence) {
  Family family;
  family.AddAll();
  family.parent->AddChild(family[1]);
  EXPECT_EQ(family.parent->MoveChild(family[1], 3), VED_OK);
  EXPECT_EQ(family.Order(), (Order{0, 2, 3, 1, 1}));
}

TEST(Children, MovingTakesNoMemory) {
  Family family;
  family.AddAll();
  zor::RefuseAllocation(1);
  EXPECT_EQ(family.parent->MoveChild(family[0], 3), VED_OK);
  zor::RefuseAllocation(0);
  EXPECT_EQ(family.Order(), (Order{1, 2, 3, 0}));
}

TEST(Children, WithoutMemoryTheListAndTheChildStayAsTheyAre) {
  Family family;
  zor::RefuseAllocation(1);
  EXPECT_EQ(family.parent->AddChild(family[0]), VED_E_OUTOFMEMORY);
  zor::RefuseAllocation(0);
  EXPECT_EQ(family.parent->GetChildCount(), 0);
  EXPECT_EQ(CountOf(family[0]), 1u);
}

TEST(Children, AFullListThrowsAndKeepsNoReference) {
  ProbeSurface parent(Describe(8, 8, FORMAT_RGB24));
  const HeldSurface child = Small();
  EXPECT_EQ(parent.children().kBound, 0x3FFFFFFFu);
  parent.children().LowerBound(2);
  parent.AddChild(child.get());
  parent.AddChild(child.get());
  try {
    parent.AddChild(child.get());
    FAIL() << "no exception";
  } catch (const std::length_error& error) {
    EXPECT_STREQ(error.what(), "list<T> too long");
  }
  EXPECT_EQ(parent.GetChildCount(), 2);
  EXPECT_EQ(CountOf(child.get()), 3u);
}

TEST(Children, GoWithTheirParentAndSoDoMaskAndQueue) {
  const std::int64_t before = LiveAllocations();
  {
    Family family;
    family.AddAll();
    family.parent->SetMask(family[0]);
    family.parent->QueueConvert(99);
    family.parent->QueueResize(8, 8, 0, 0);
  }
  EXPECT_EQ(LiveAllocations(), before);
}

// ------------------------------------------------------------------------------ fit rectangle

struct Fit {
  std::int32_t width, height, aspectWidth, aspectHeight;
};

/// Marks every word, so that those that aren't written show.
constexpr std::int32_t kMark = -999;

Words FitInto(const Fit& picture, std::int32_t width, std::int32_t height) {
  ProbeSurface probe(Describe(picture.width, picture.height, FORMAT_RGB24));
  probe.SetAspectRatio(picture.aspectWidth, picture.aspectHeight);
  RECT rect = {kMark, kMark, kMark, kMark};
  EXPECT_EQ(probe.ComputeFitRect(width, height, &rect), VED_OK);
  return WordsOf(rect);
}

TEST(FitRect, ANarrowerPictureStandsBetweenLeftAndRight) {
  EXPECT_EQ(FitInto({640, 480, 0, 0}, 640, 360), (Words{80, kMark, 560, 360}));
}

TEST(FitRect, AWiderPictureStandsBetweenTopAndBottom) {
  EXPECT_EQ(FitInto({640, 480, 0, 0}, 320, 480), (Words{kMark, 120, 320, 360}));
}

TEST(FitRect, AnEqualShapeFillsTheTargetByItsHeight) {
  EXPECT_EQ(FitInto({640, 480, 0, 0}, 320, 240), (Words{kMark, 0, 320, 240}));
}

TEST(FitRect, OddRoomsAreHalvedTowardsZero) {
  // r = 4 / 3; 10 x 4: w' = 5 of 10, left = 5 / 2 = 2.
  EXPECT_EQ(FitInto({8, 6, 0, 0}, 10, 4), (Words{2, kMark, 7, 4}));
  // r = 4 / 3; 5 x 10: h' = 3 of 10, top = 7 / 2 = 3.
  EXPECT_EQ(FitInto({8, 6, 0, 0}, 5, 10), (Words{kMark, 3, 5, 6}));
}

TEST(FitRect, AnAspectRatioNarrowerThanThePictureShortensTheWidth) {
  // 720 x 576 at 1:1: w / a = 720 is above h / b = 576, so w = 576.
  EXPECT_EQ(FitInto({720, 576, 1, 1}, 1000, 500), (Words{250, kMark, 750, 500}));
}

TEST(FitRect, AnAspectRatioWiderThanThePictureShortensTheHeight) {
  // 720 x 576 at 16:9: w / a = 45 is at most h / b = 64, so h = 9 x 720 / 16 = 405.
  // r = 1.777...; 1000 x 1000: h' = 562, top = 219.
  EXPECT_EQ(FitInto({720, 576, 16, 9}, 1000, 1000), (Words{kMark, 219, 1000, 781}));
}

TEST(FitRect, OneZeroWordMeansNoAspectRatio) {
  const Words plain = FitInto({640, 480, 0, 0}, 640, 360);
  EXPECT_EQ(FitInto({640, 480, 16, 0}, 640, 360), plain);
  EXPECT_EQ(FitInto({640, 480, 0, 9}, 640, 360), plain);
}

TEST(FitRect, ADifferenceWithinAMillionthDoesNotCount) {
  // 2000001 : 2000000 differs from 1 by 5e-7: the picture keeps its 1000 rows. Counted, it would
  // have 2000000 x 1000 / 2000001 = 999.
  EXPECT_EQ(FitInto({1000, 1000, 2000001, 2000000}, 1000, 1000), (Words{kMark, 0, 1000, 1000}));
  // 500001 : 500000 differs by 2e-6: 999 rows. r = 1000 / 999; h' = 1000 / r is just below 999.
  EXPECT_EQ(FitInto({1000, 1000, 500001, 500000}, 1000, 1000), (Words{kMark, 1, 1000, 999}));
}

TEST(FitRect, ProductsOfTheAspectRatioWrapIn32Bits) {
  // 70000 x 70000 at 70000 : 60000: 60000 x 70000 = 4200000000, wrapped -94967296;
  // / 70000 = -1356. r = 70000 / -1356 is negative: t = 1 is above it.
  // w' = -51.62... x 100 = -5162; left = 5262 / 2 = 2631; right = -2531.
  EXPECT_EQ(FitInto({70000, 70000, 70000, 60000}, 100, 100), (Words{2631, kMark, -2531, 100}));
}

TEST(FitRect, WithoutAQuotientTheBarsStandLeftAndRight) {
  // 0 / 0 is no number. w' = r x 0 = 0.
  EXPECT_EQ(FitInto({640, 480, 0, 0}, 0, 0), (Words{0, kMark, 0, 0}));
}

TEST(FitRect, AnInfiniteTargetShapeIsAboveEveryPicture) {
  EXPECT_EQ(FitInto({640, 480, 0, 0}, 100, 0), (Words{50, kMark, 50, 0}));
}

TEST(FitRect, ValuesBeyond32BitsAreHeldToTheNearest) {
  constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
  // 4 x 4 at kMax : 1 makes h = 1 x 4 / kMax = 0 and r infinite; t = 1 is below it.
  // h' = 100 / infinity = 0.
  EXPECT_EQ(FitInto({4, 4, kMax, 1}, 100, 100), (Words{kMark, 50, 100, 50}));
  // 4 x 4 at 1 : kMax makes w = 0 and r = 0: t = 1 is above it, w' = 0.
  EXPECT_EQ(FitInto({4, 4, 1, kMax}, 100, 100), (Words{50, kMark, 50, 100}));
  // r = 0 and t = -1: h' = -100 / 0 is minus infinity; top = (100 + 2^31) / 2, bottom = top + h'.
  EXPECT_EQ(FitInto({4, 4, 1, kMax}, -100, 100), (Words{kMark, 1073741874, -100, -1073741774}));
  // r = 70000 / -1356 as above; w' = -51.62... x kMax is held to -2^31, left = (100 + 2^31) / 2.
  EXPECT_EQ(FitInto({70000, 70000, 70000, 60000}, 100, kMax),
            (Words{1073741874, kMark, -1073741774, kMax}));
}

}  // namespace
