// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include <cstring>

#include "object/surface_builder.h"
#include "object/ved_unknown.h"
#include "platform/memory.h"
#include "support/raw_table.h"
#include "support/surfaces.h"

namespace zor::test {
namespace {

std::uint32_t WordOf(const GUID& id, int word) {
  std::uint32_t words[4];
  std::memcpy(words, &id, sizeof words);
  return words[word];
}

TEST(Identifiers, AreTheseFourWords) {
  const struct {
    GUID id;
    std::uint32_t words[4];
  } kExpected[] = {
      {CLSID_SurfaceBuilder, {0x49BE0814, 0x44684606, 0x7395D3A9, 0x0B91DC6E}},
      {IID_ISurfaceBuilder, {0x30C98E58, 0x448FABA6, 0x542F3588, 0xCD43A5C4}},
      {IID_IZorSurface, {0x704FC983, 0x4FCCA9B8, 0x5FAA9AB2, 0x99AD3C97}},
      {IID_IVedUnknown, {0xC9339D5D, 0x4970AEFF, 0xD6F9FAB0, 0x8D9D2E84}},
  };
  for (const auto& expected : kExpected) {
    for (int word = 0; word < 4; ++word) {
      EXPECT_EQ(WordOf(expected.id, word), expected.words[word]);
    }
  }
}

TEST(ResultCodes, HaveTheseValues) {
  EXPECT_EQ(VED_OK, 0);
  EXPECT_EQ(static_cast<std::uint32_t>(VED_E_UNSUPPORTED), 0x81000001u);
  EXPECT_EQ(static_cast<std::uint32_t>(VED_E_INVALIDARG), 0x81000002u);
  EXPECT_EQ(static_cast<std::uint32_t>(VED_E_COMPOSE), 0x81000003u);
  EXPECT_EQ(static_cast<std::uint32_t>(VED_E_OUTOFMEMORY), 0x81000004u);
  EXPECT_EQ(static_cast<std::uint32_t>(VED_E_KERNEL), 0x82000002u);
  EXPECT_EQ(static_cast<std::uint32_t>(E_FAIL), 0x80004005u);
}

TEST(CreateObject, AnotherClassFailsAndLeavesTheResultAlone) {
  const std::int64_t before = LiveAllocations();
  for (int word = 0; word < 4; ++word) {
    GUID other = CLSID_SurfaceBuilder;
    reinterpret_cast<std::uint8_t*>(&other)[4 * word + 1] ^= 0x10;
    int here = 0;
    void* out = &here;
    EXPECT_EQ(CreateObject(&other, &IID_ISurfaceBuilder, &out), E_FAIL);
    EXPECT_EQ(out, &here);
  }
  EXPECT_EQ(LiveAllocations(), before);
}

TEST(CreateObject, AnUnknownInterfaceIsUnsupportedAndTheBuilderIsGone) {
  const std::int64_t before = LiveAllocations();
  int here = 0;
  void* out = &here;
  EXPECT_EQ(CreateObject(&CLSID_SurfaceBuilder, &IID_IZorSurface, &out), VED_E_UNSUPPORTED);
  EXPECT_EQ(out, &here);
  EXPECT_EQ(CreateObject(&CLSID_SurfaceBuilder, &IID_IZorSurface, nullptr), VED_E_UNSUPPORTED);
  EXPECT_EQ(LiveAllocations(), before);
}

TEST(CreateObject, ANullResultIsInvalidAndTheBuilderIsGone) {
  const std::int64_t before = LiveAllocations();
  EXPECT_EQ(CreateObject(&CLSID_SurfaceBuilder, &IID_ISurfaceBuilder, nullptr), VED_E_INVALIDARG);
  EXPECT_EQ(CreateObject(&CLSID_SurfaceBuilder, &IID_IVedUnknown, nullptr), VED_E_INVALIDARG);
  EXPECT_EQ(LiveAllocations(), before);
}

TEST(CreateObject, BothInterfacesOfTheBuilderComeWithOneReference) {
  for (const GUID* id : {&IID_ISurfaceBuilder, &IID_IVedUnknown}) {
    const std::int64_t before = LiveAllocations();
    void* out = nullptr;
    ASSERT_EQ(CreateObject(&CLSID_SurfaceBuilder, id, &out), VED_OK);
    auto* builder = static_cast<ISurfaceBuilder*>(out);
    EXPECT_EQ(CountOf(builder), 1u);
    EXPECT_EQ(builder->Release(), 0u);
    EXPECT_EQ(LiveAllocations(), before);
  }
}

TEST(CreateObject, WithoutMemoryFails) {
  int here = 0;
  void* out = &here;
  RefuseAllocation(1);
  EXPECT_EQ(CreateObject(&CLSID_SurfaceBuilder, &IID_ISurfaceBuilder, &out), E_FAIL);
  RefuseAllocation(0);
  EXPECT_EQ(out, &here);
}

TEST(QueryInterface, OfASurfaceKnowsNoBuilder) {
  const HeldSurface surface = MakeBlank(Describe(8, 8, FORMAT_RGB32));
  int here = 0;
  void* out = &here;
  EXPECT_EQ(surface->QueryInterface(&IID_ISurfaceBuilder, &out), VED_E_UNSUPPORTED);
  EXPECT_EQ(surface->QueryInterface(&IID_ISurfaceBuilder, nullptr), VED_E_UNSUPPORTED);
  EXPECT_EQ(out, &here);
  EXPECT_EQ(CountOf(surface.get()), 1u);
}

TEST(QueryInterface, GivesTheSamePointerForTheRootAndTakesAReference) {
  const HeldSurface surface = MakeBlank(Describe(8, 8, FORMAT_RGB32));
  std::uint32_t count = 1;
  for (const GUID* id : {&IID_IZorSurface, &IID_IVedUnknown}) {
    void* out = nullptr;
    EXPECT_EQ(surface->QueryInterface(id, &out), VED_OK);
    EXPECT_EQ(out, surface.get());
    EXPECT_EQ(CountOf(surface.get()), ++count);
  }
  EXPECT_EQ(surface->QueryInterface(&IID_IZorSurface, nullptr), VED_E_INVALIDARG);
  EXPECT_EQ(CountOf(surface.get()), count);
  while (--count > 0) surface->Release();
}

TEST(ReferenceCount, AsManyReleasesAsAddRefsDestroy) {
  const std::int64_t before = LiveAllocations();
  auto* builder = CSurfaceBuilder::Create();
  ASSERT_NE(builder, nullptr);
  for (std::uint32_t count = 1; count <= 5; ++count) EXPECT_EQ(builder->AddRef(), count);
  for (std::uint32_t count = 5; count-- > 1;) EXPECT_EQ(builder->Release(), count);
  EXPECT_EQ(LiveAllocations(), before + 1);
  EXPECT_EQ(builder->Release(), 0u);
  EXPECT_EQ(LiveAllocations(), before);
}

TEST(DeletingDestructor, FreesTheMemoryOnlyWithBitZero) {
  const std::int64_t before = LiveAllocations();
  CSurfaceBuilder* builder = CSurfaceBuilder::Create();
  EXPECT_EQ(builder->ScalarDeletingDestructor(2), builder);
  EXPECT_EQ(LiveAllocations(), before + 1);
  FreeBytes(builder);
  builder = CSurfaceBuilder::Create();
  EXPECT_EQ(builder->ScalarDeletingDestructor(1), builder);
  EXPECT_EQ(LiveAllocations(), before);
}

/// A class that adds nothing to the root implementation.
class Plain final : public VideoEdit::CVedUnknown {
 public:
  void* ScalarDeletingDestructor(std::uint32_t flags) override {
    flagsSeen = flags;
    return this;
  }
  std::uint32_t flagsSeen = 0;
};

TEST(RootClass, KnowsNoInterface) {
  Plain object;
  int here = 0;
  void* out = &here;
  EXPECT_EQ(object.QueryInterface(&IID_IVedUnknown, &out), VED_E_UNSUPPORTED);
  EXPECT_EQ(object.QueryInterface(&IID_IVedUnknown, nullptr), VED_E_UNSUPPORTED);
  EXPECT_EQ(out, &here);
}

TEST(RootClass, TheLastReleaseDestroysAndFrees) {
  Plain object;
  object.AddRef();
  object.AddRef();
  EXPECT_EQ(object.Release(), 1u);
  EXPECT_EQ(object.flagsSeen, 0u);
  EXPECT_EQ(object.Release(), 0u);
  EXPECT_EQ(object.flagsSeen, 1u);
}

TEST(RootClass, TheCountIsNotTestedForGoingBelowZero) {
  Plain object;
  EXPECT_EQ(object.Release(), 0xFFFFFFFFu);
  EXPECT_EQ(object.flagsSeen, 0u);
}

TEST(Tables, TheSecondOneHoldsDestructorCountsAndQuery) {
  const std::int64_t before = LiveAllocations();
  void* builder = nullptr;
  ASSERT_EQ(CreateObject(&CLSID_SurfaceBuilder, &IID_ISurfaceBuilder, &builder), VED_OK);
  void* const second = SecondBase(builder);
  EXPECT_EQ(CallSlot<std::uint32_t>(second, 1), 2u);
  EXPECT_EQ(CallSlot<std::uint32_t>(second, 2), 1u);
  void* out = nullptr;
  EXPECT_EQ(CallSlot<std::int32_t>(second, 3, &IID_ISurfaceBuilder, &out), VED_OK);
  EXPECT_EQ(out, builder);
  EXPECT_EQ(CallSlot<std::uint32_t>(builder, 1), 1u);
  EXPECT_EQ(CallSlot<void*>(second, 0, std::uint32_t{1}), builder);
  EXPECT_EQ(LiveAllocations(), before);
}

/// Calls the slots that work on pixels at places @p rotate and so on: those that flush, or those
/// that do not.
void DriveWorkingSlots(int rotate, int warp, int stretchTo, int stretchFrom, int fill) {
  HeldSurface held = MakeBlank(Describe(16, 8, FORMAT_RGB24));
  void* const surface = held.get();
  SurfaceDescription description = {};
  EXPECT_EQ(CallSlot<std::int32_t>(surface, fill, nullptr, 0x030201u), VED_OK);
  std::uint8_t* pixels = nullptr;
  held->GetPixels(&pixels);
  EXPECT_EQ(pixels[0], 3);  // byte 2 of the colour is blue
  EXPECT_EQ(pixels[2], 1);
  std::uint8_t memory[8 * 24] = {};
  EXPECT_EQ(CallSlot<std::int32_t>(surface, stretchTo, nullptr, nullptr, &memory[0], 8, 8, 24, 0u),
            VED_OK);
  EXPECT_EQ(memory[8 * 24 - 3], 3);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, stretchTo, nullptr, nullptr, nullptr, 8, 8, 24, 0u),
            VED_E_INVALIDARG);
  HeldSurface target = MakeBlank(Describe(8, 4, FORMAT_RGB24));
  EXPECT_EQ(CallSlot<std::int32_t>(target.get(), stretchFrom, nullptr, surface, nullptr, 0u),
            VED_OK);
  target->GetPixels(&pixels);
  EXPECT_EQ(pixels[4 * 24 - 3], 3);
  const auto warpWith = [&](std::int32_t handle, double a, double c) {
    return CallSlot<std::int32_t>(surface, warp, handle, 0u, a, -1.0, c, -1.0, 0);
  };
  EXPECT_EQ(warpWith(0, 1.0, 1.0), VED_E_INVALIDARG);
  EXPECT_EQ(warpWith(1, -1.0, 1.0), VED_E_INVALIDARG);
  EXPECT_EQ(warpWith(1, 1.0, -1.0), VED_E_INVALIDARG);
  EXPECT_EQ(warpWith(1, 1.0, 1.0), VED_E_UNSUPPORTED);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, rotate, 90), VED_OK);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 3, &description), VED_OK);
  EXPECT_EQ(description.width, 8);
  EXPECT_EQ(description.height, 16);
}

TEST(Tables, TheSurfacesWorkingSlotsStandInTheirOrder) {
  DriveWorkingSlots(10, 11, 12, 13, 14);
  DriveWorkingSlots(39, 43, 42, 41, 44);
  HeldSurface held = MakeBlank(Describe(16, 8, FORMAT_RGB24));
  void* const surface = held.get();
  void* out = nullptr;
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 2, &IID_IZorSurface, &out), VED_OK);
  EXPECT_EQ(out, surface);
  held->Release();
  SurfaceDescription description = {};
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 38, 12, 6, 0, 0u), VED_OK);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 40, FORMAT_RGB32), VED_OK);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 3, &description), VED_OK);
  EXPECT_EQ(description.width, 12);
  EXPECT_EQ(description.height, 6);
  EXPECT_EQ(description.format, FORMAT_RGB32);
  // Children are let go of by Compose alone.
  const HeldSurface child = MakeBlank(Describe(12, 6, FORMAT_YUV420));
  held = MakeBlank(Describe(12, 6, FORMAT_YUV420));
  held->SetComposeInPlace(1);
  child->SetDestRect(0, 0, 12, 6);
  child->SetSourceRect(0, 0, 12, 6);
  held->AddChild(child.get());
  out = nullptr;
  EXPECT_EQ(CallSlot<std::int32_t>(held.get(), 36, &out), VED_OK);
  EXPECT_EQ(out, held.get());
  EXPECT_EQ(held->GetChildCount(), 0);
  held->Release();
}

TEST(Tables, TheSurfaceAnswersInTheOrderOfItsSlots) {
  HeldSurface held = MakeBlank(Describe(16, 8, FORMAT_RGB24));
  const HeldSurface child = MakeBlank(Describe(8, 8, FORMAT_RGB24));
  void* const surface = held.get();
  EXPECT_EQ(CallSlot<std::uint32_t>(surface, 0), 2u);
  EXPECT_EQ(CallSlot<std::uint32_t>(surface, 1), 1u);
  SurfaceDescription description = {};
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 3, &description), VED_OK);
  EXPECT_EQ(description.width, 16);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 5, 16, 9), VED_OK);
  std::int32_t a = 0;
  std::int32_t b = 0;
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 4, &a, &b), VED_OK);
  EXPECT_EQ(a, 16);
  EXPECT_EQ(b, 9);
  std::uint32_t word = 0;
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 6, 7u), VED_OK);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 7, &word), VED_OK);
  EXPECT_EQ(word, 7u);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 8, 3, 100, 0, 0), VED_E_INVALIDARG);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 9, 99), VED_OK);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 18), VED_E_UNSUPPORTED);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 18), VED_OK);
  std::uint8_t* pixels = nullptr;
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 17, &pixels), VED_OK);
  EXPECT_NE(pixels, nullptr);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 15, pixels, 0, 0u), VED_E_INVALIDARG);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 16, 3u, nullptr, nullptr), VED_E_UNSUPPORTED);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 19, nullptr), VED_E_INVALIDARG);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 20, 0x123456u), VED_OK);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 21, &word), VED_OK);
  EXPECT_EQ(word, 0x123456u);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 22, 257u), VED_E_INVALIDARG);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 22, 77u), VED_OK);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 23, &word), VED_OK);
  EXPECT_EQ(word, 77u);
  void* mask = surface;
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 25, &mask), E_FAIL);
  EXPECT_EQ(mask, nullptr);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 24, child.get()), VED_OK);
  EXPECT_EQ(CountOf(child.get()), 2u);
  RECT rect = {};
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 26, 1, 2, 3, 4), VED_OK);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 28, 5, 6, 7, 8), VED_OK);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 27, &rect), VED_OK);
  EXPECT_EQ(rect.bottom, 4);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 29, &rect), VED_OK);
  EXPECT_EQ(rect.bottom, 8);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 31, child.get()), VED_OK);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 30), 1);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 34, child.get()), 0);
  EXPECT_EQ(CallSlot<void*>(surface, 35, 0), child.get());
  child->Release();
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 33, child.get(), 0), VED_OK);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 32, 0), VED_OK);
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 37, 1u), 1);
  RECT fit = {};
  EXPECT_EQ(CallSlot<std::int32_t>(surface, 45, 32, 18, &fit), VED_OK);
  // 16 x 8 at 16:9 is 14 x 8, which fills 31 of the 32 columns.
  EXPECT_EQ(fit.right, 31);
  EXPECT_EQ(fit.bottom, 18);
}

}  // namespace
}  // namespace zor::test
