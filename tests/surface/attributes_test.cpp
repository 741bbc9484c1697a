// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "support/probe_surface.h"
#include "surface/attribute_cases.h"

namespace zor::test {
namespace {

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

}  // namespace
}  // namespace zor::test
