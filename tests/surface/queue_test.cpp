// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

#include "platform/memory.h"
#include "support/probe_surface.h"
#include "support/surfaces.h"

namespace zor::test {
namespace {

using Calls = std::vector<std::string>;

class Queue : public testing::Test {
 protected:
  ProbeSurface probe{Describe(64, 48, FORMAT_RGB24)};
  ProbeSurface packed{Describe(64, 48, FORMAT_YUY2)};
};

TEST_F(Queue, ResizesUnderFourAreInvalidAndQueueNothing) {
  EXPECT_EQ(probe.QueueResize(3, 100, 0, 0), VED_E_INVALIDARG);
  EXPECT_EQ(probe.QueueResize(100, 3, 0, 0), VED_E_INVALIDARG);
  EXPECT_EQ(probe.QueueResize(-100, 100, 0, 0), VED_E_INVALIDARG);
  EXPECT_EQ(probe.QueueResize(100, INT32_MIN, 0, 0), VED_E_INVALIDARG);
  EXPECT_TRUE(probe.queue().empty());
  EXPECT_EQ(probe.QueueResize(4, 4, 0, 0), VED_OK);
  EXPECT_EQ(probe.queue().size(), 1u);
}

TEST_F(Queue, RecordsHoldTheirArguments) {
  probe.QueueResize(10, 20, 5, -3);
  probe.QueueConvert(-9);
  const SurfaceOperation& resize = probe.queue().front();
  EXPECT_EQ(resize.type, 1);
  EXPECT_EQ(resize.width, 10);
  EXPECT_EQ(resize.height, 20);
  EXPECT_EQ(resize.fit, 5);
  EXPECT_EQ(resize.quality, 0xFFFFFFFDu);
  const SurfaceOperation& convert = probe.queue().back();
  EXPECT_EQ(convert.type, 2);
  EXPECT_EQ(convert.width, 0);
  EXPECT_EQ(convert.height, 0);
  EXPECT_EQ(convert.fit, 0);
  EXPECT_EQ(convert.quality, 0u);
  EXPECT_EQ(convert.format, -9);
}

TEST_F(Queue, QueuingChangesNothingUntilTheFlush) {
  const HeldSurface surface = MakeBlank(Describe(8, 8, FORMAT_YUV420));
  surface->QueueResize(16, 16, 0, 0);
  surface->QueueConvert(FORMAT_RGB24);
  EXPECT_EQ(DescriptionOf(surface.get()).format, FORMAT_YUV420);
  EXPECT_EQ(DescriptionOf(surface.get()).width, 8);
}

TEST_F(Queue, AFlushRunsTheRecordsInOrderAndOnce) {
  probe.QueueResize(32, 24, 1, 3);
  probe.QueueConvert(FORMAT_YUV420);
  probe.QueueResize(8, 8, 0, 0xFF01);
  EXPECT_EQ(probe.Flush(), VED_OK);
  const Calls expected = {"resize 32x24 fit 1 mode 3 direct 0", "convert 4 direct 0",
                          "resize 8x8 fit 0 mode 65281 direct 0"};
  EXPECT_EQ(probe.calls, expected);
  EXPECT_TRUE(probe.queue().empty());
  EXPECT_EQ(probe.Flush(), VED_OK);
  EXPECT_EQ(probe.calls, expected);
}

TEST_F(Queue, FlushingAnEmptyQueueGivesZero) {
  EXPECT_EQ(probe.Flush(), 0);
  EXPECT_TRUE(probe.calls.empty());
}

TEST_F(Queue, AnUnknownFormatFailsInTheFlushAndIsGone) {
  const HeldSurface surface = MakeBlank(Describe(8, 8, FORMAT_RGB24));
  EXPECT_EQ(surface->QueueConvert(99), VED_OK);
  EXPECT_EQ(surface->Flush(), VED_E_UNSUPPORTED);
  EXPECT_EQ(surface->Flush(), VED_OK);
}

TEST_F(Queue, AFailureBeforeAGoodRecordIsLost) {
  probe.results = {VED_E_UNSUPPORTED, VED_OK};
  probe.QueueConvert(99);
  probe.QueueConvert(FORMAT_RGB32);
  EXPECT_EQ(probe.Flush(), VED_OK);
  EXPECT_EQ(probe.calls.size(), 2u);
  EXPECT_TRUE(probe.queue().empty());
}

TEST_F(Queue, AFailureAfterAGoodRecordIsTheResultAndTheGoodOneTookEffect) {
  probe.results = {VED_OK, VED_E_OUTOFMEMORY};
  probe.QueueConvert(FORMAT_RGB32);
  probe.QueueConvert(99);
  EXPECT_EQ(probe.Flush(), VED_E_OUTOFMEMORY);
  EXPECT_EQ(probe.description().format, FORMAT_RGB32);
  EXPECT_TRUE(probe.queue().empty());
}

TEST_F(Queue, APositiveResultOfTheLastRecordComesBack) {
  probe.results = {7};
  probe.QueueConvert(FORMAT_RGB32);
  EXPECT_EQ(probe.Flush(), 7);
}

TEST_F(Queue, RecordsOfOtherTypesRunAsNothingAndKeepTheResult) {
  probe.QueueConvert(FORMAT_RGB32);
  probe.queue().Append({3, 8, 8, 0, 0, 0});
  probe.results = {VED_E_UNSUPPORTED};
  EXPECT_EQ(probe.Flush(), VED_E_UNSUPPORTED);
  EXPECT_EQ(probe.calls.size(), 1u);
  EXPECT_TRUE(probe.queue().empty());
}

TEST_F(Queue, APackedPictureIsResizedInItsPlanarForm) {
  packed.QueueResize(32, 24, 1, 3);
  EXPECT_EQ(packed.Flush(), VED_OK);
  EXPECT_EQ(packed.calls, (Calls{"convert 4 direct 0", "resize 32x24 fit 1 mode 3 direct 0",
                                 "convert 5 direct 0"}));
  EXPECT_EQ(packed.description().format, FORMAT_YUY2);
}

TEST_F(Queue, AFailureEndsThePackedChainOnly) {
  packed.QueueResize(32, 24, 0, 0);
  packed.QueueConvert(FORMAT_RGB24);
  packed.results = {VED_E_OUTOFMEMORY};
  EXPECT_EQ(packed.Flush(), VED_OK);
  EXPECT_EQ(packed.calls, (Calls{"convert 4 direct 0", "convert 1 direct 0"}));

  ProbeSurface second(Describe(64, 48, FORMAT_YUY2));
  second.QueueResize(32, 24, 0, 0);
  second.results = {VED_OK, E_FAIL};
  EXPECT_EQ(second.Flush(), E_FAIL);
  EXPECT_EQ(second.calls, (Calls{"convert 4 direct 0", "resize 32x24 fit 0 mode 0 direct 0"}));
  EXPECT_EQ(second.description().format, FORMAT_YUV420);
}

TEST_F(Queue, TheFormatIsReadWhenARecordsTurnComes) {
  probe.QueueConvert(FORMAT_YUY2);
  probe.QueueResize(32, 24, 0, 0);
  probe.Flush();
  EXPECT_EQ(probe.calls, (Calls{"convert 5 direct 0", "convert 4 direct 0",
                                "resize 32x24 fit 0 mode 0 direct 0", "convert 5 direct 0"}));
}

TEST_F(Queue, RunningACountUnderOneDoesNothing) {
  probe.QueueConvert(FORMAT_RGB32);
  EXPECT_EQ(probe.RunQueuedOperations(0), VED_OK);
  EXPECT_EQ(probe.RunQueuedOperations(-5), VED_OK);
  EXPECT_EQ(probe.queue().size(), 1u);
}

TEST_F(Queue, DirectOutputIsActiveForTheLastRecordOnly) {
  probe.QueueResize(32, 24, 0, 0);
  probe.QueueConvert(FORMAT_YUV420);
  EXPECT_EQ(probe.FlushQueue(1), VED_OK);
  EXPECT_EQ(probe.calls, (Calls{"resize 32x24 fit 0 mode 0 direct 0", "convert 4 direct 1"}));
  EXPECT_EQ(probe.direct().active, 1u);
  EXPECT_TRUE(probe.queue().empty());
}

TEST_F(Queue, DirectOutputOfAPackedResizeRunsTheWholeChainDirectly) {
  packed.QueueResize(32, 24, 0, 2);
  EXPECT_EQ(packed.FlushQueue(1), VED_OK);
  EXPECT_EQ(packed.calls, (Calls{"convert 4 direct 1", "resize 32x24 fit 0 mode 2 direct 1",
                                 "convert 5 direct 1"}));
  EXPECT_EQ(packed.description().format, FORMAT_YUY2);
}

TEST_F(Queue, DirectOutputStaysInactiveForAnEmptyQueue) {
  EXPECT_EQ(probe.FlushQueue(1), VED_OK);
  EXPECT_EQ(probe.direct().active, 0u);
}

TEST_F(Queue, AFailureBeforeTheDirectRecordLeavesItQueued) {
  probe.QueueConvert(99);
  probe.QueueConvert(FORMAT_RGB32);
  probe.results = {VED_E_UNSUPPORTED};
  EXPECT_EQ(probe.FlushQueue(1), VED_E_UNSUPPORTED);
  EXPECT_EQ(probe.queue().size(), 1u);
  EXPECT_EQ(probe.queue().front().format, FORMAT_RGB32);
  EXPECT_EQ(probe.direct().active, 0u);
  EXPECT_EQ(probe.Flush(), VED_OK);
  EXPECT_EQ(probe.calls, (Calls{"convert 99 direct 0", "convert 2 direct 0"}));
}

TEST_F(Queue, OnlyTheLastResultBeforeTheDirectRecordCounts) {
  probe.QueueConvert(99);
  probe.QueueConvert(FORMAT_RGB32);
  probe.QueueConvert(FORMAT_RGB24);
  probe.results = {VED_E_UNSUPPORTED, VED_OK, 5};
  EXPECT_EQ(probe.FlushQueue(1), 5);
  EXPECT_EQ(probe.calls.size(), 3u);
}

TEST_F(Queue, ADirectRecordOfAnotherTypeKeepsTheResultOfTheOnesBefore) {
  probe.QueueConvert(FORMAT_RGB32);
  probe.queue().Append({3, 8, 8, 0, 0, 0});
  probe.results = {7};
  EXPECT_EQ(probe.FlushQueue(1), 7);
  EXPECT_EQ(probe.direct().active, 1u);
  EXPECT_TRUE(probe.queue().empty());
  probe.queue().Append({0, 8, 8, 0, 0, 0});
  EXPECT_EQ(probe.FlushQueue(1), VED_OK);
  EXPECT_TRUE(probe.queue().empty());
  EXPECT_EQ(probe.calls.size(), 1u);
}

TEST_F(Queue, AFailingDirectRecordIsGoneAndTheNextFlushIsNotDirect) {
  probe.QueueConvert(99);
  probe.results = {VED_E_UNSUPPORTED};
  EXPECT_EQ(probe.FlushQueue(1), VED_E_UNSUPPORTED);
  EXPECT_TRUE(probe.queue().empty());
  EXPECT_EQ(probe.direct().active, 1u);
  probe.QueueConvert(FORMAT_RGB32);
  EXPECT_EQ(probe.Flush(), VED_OK);
  EXPECT_EQ(probe.calls.back(), "convert 2 direct 0");
}

TEST_F(Queue, AnEmptyFlushAfterAFailedReadOutIsNotDirect) {
  probe.direct().active = 1;
  EXPECT_EQ(probe.FlushQueue(1), VED_OK);
  EXPECT_EQ(probe.direct().active, 0u);
}

/// A slot that flushes and then calls its `Now` slot.
struct FlushingSlot {
  const char* call;
  std::int32_t (*run)(ProbeSurface&);
};
const FlushingSlot kFlushingSlots[] = {
    {"rotate 90", [](ProbeSurface& s) { return s.Rotate(90); }},
    {"warp 6", [](ProbeSurface& s) { return s.WarpRegion(6, 0, 1, 2, 3, 4, 5); }},
    {"stretch to 3",
     [](ProbeSurface& s) { return s.StretchToMemory(nullptr, nullptr, nullptr, 1, 1, 1, 3); }},
    {"stretch from 4",
     [](ProbeSurface& s) { return s.StretchFromSurface(nullptr, nullptr, nullptr, 4); }},
    {"fill 5", [](ProbeSurface& s) { return s.Fill(nullptr, 5); }},
};

TEST_F(Queue, ThinSlotsFlushThenCallTheirNowSlot) {
  for (const FlushingSlot& slot : kFlushingSlots) {
    ProbeSurface surface(Describe(8, 8, FORMAT_RGB24));
    surface.QueueConvert(FORMAT_RGB32);
    surface.results = {VED_OK, 9};
    EXPECT_EQ(slot.run(surface), 9);
    EXPECT_EQ(surface.calls, (Calls{"convert 2 direct 0", slot.call}));
  }
}

TEST_F(Queue, ThinSlotsReturnAFailureOfTheFlushAtOnce) {
  for (const FlushingSlot& slot : kFlushingSlots) {
    ProbeSurface surface(Describe(8, 8, FORMAT_RGB24));
    surface.QueueConvert(99);
    surface.results = {VED_E_UNSUPPORTED};
    EXPECT_EQ(slot.run(surface), VED_E_UNSUPPORTED);
    EXPECT_EQ(surface.calls, (Calls{"convert 99 direct 0"}));
  }
}

TEST_F(Queue, PixelSlotsReturnAFailureOfTheFlushAndTouchNothing) {
  const HeldSurface surface = MakeBlank(Describe(8, 8, FORMAT_RGB24));
  std::uint8_t here = 0;
  std::uint8_t* pixels = &here;
  surface->QueueConvert(99);
  EXPECT_EQ(surface->GetPixels(&pixels), VED_E_UNSUPPORTED);
  EXPECT_EQ(pixels, &here);
  void* image = &here;
  std::uint32_t flag = 77;
  surface->QueueConvert(99);
  EXPECT_EQ(surface->ExportImage(2, &image, &flag), VED_E_UNSUPPORTED);
  EXPECT_EQ(image, &here);
  EXPECT_EQ(flag, 77u);
}

TEST_F(Queue, AFullQueueThrowsLeavesTheLockAndQueuesNothing) {
  EXPECT_EQ(probe.queue().kBound, 0x0AAAAAAAu);
  probe.queue().LowerBound(2);
  probe.QueueConvert(FORMAT_RGB32);
  probe.QueueResize(8, 8, 0, 0);
  for (int i = 0; i < 2; ++i) {
    try {
      if (i == 0) {
        probe.QueueConvert(FORMAT_RGB24);
      } else {
        probe.QueueResize(16, 16, 0, 0);
      }
      FAIL() << "no exception";
    } catch (const std::length_error& error) {
      EXPECT_STREQ(error.what(), "list<T> too long");
    }
  }
  // A size that is refused anyway doesn't meet the bound.
  EXPECT_EQ(probe.QueueResize(3, 3, 0, 0), VED_E_INVALIDARG);
  EXPECT_EQ(probe.queue().size(), 2u);
  std::thread other([&] { EXPECT_EQ(probe.Flush(), VED_OK); });
  other.join();
  EXPECT_TRUE(probe.queue().empty());
}

TEST_F(Queue, WithoutMemoryNothingIsQueued) {
  RefuseAllocation(1);
  EXPECT_EQ(probe.QueueConvert(FORMAT_RGB24), VED_E_OUTOFMEMORY);
  RefuseAllocation(1);
  EXPECT_EQ(probe.QueueResize(8, 8, 0, 0), VED_E_OUTOFMEMORY);
  RefuseAllocation(0);
  EXPECT_TRUE(probe.queue().empty());
}

}  // namespace
}  // namespace zor::test
