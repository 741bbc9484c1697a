// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

// What several threads may do to one surface or builder at the same time. The results hold in every
// build; the races show in the one with ThreadSanitizer.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "platform/memory.h"
#include "support/probe_surface.h"
#include "support/surfaces.h"

namespace zor::test {
namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 500;

template <class Work>
void RunTogether(Work work) {
  std::atomic<bool> go{false};
  std::vector<std::thread> threads;
  for (int index = 0; index < kThreads; ++index) {
    threads.emplace_back([&, index] {
      while (!go) std::this_thread::yield();
      work(index);
    });
  }
  go = true;
  for (std::thread& thread : threads) thread.join();
}

TEST(Threads, CountsAreExact) {
  const HeldSurface surface = MakeBlank(Describe(8, 8, FORMAT_RGB24));
  RunTogether([&](int) {
    for (int round = 0; round < kRounds; ++round) surface->AddRef();
  });
  EXPECT_EQ(CountOf(surface.get()), 1u + kThreads * kRounds);
  RunTogether([&](int) {
    for (int round = 0; round < kRounds; ++round) surface->Release();
  });
  EXPECT_EQ(CountOf(surface.get()), 1u);
}

TEST(Threads, TheLastReleaseDestroysOnceWhoeverMakesIt) {
  const std::int64_t before = LiveAllocations();
  for (int round = 0; round < kRounds; ++round) {
    HeldSurface held = MakeBlank(Describe(8, 8, FORMAT_RGB24));
    IZorSurface* const surface = held.get();
    for (int index = 0; index < kThreads; ++index) surface->AddRef();
    held.Reset();
    std::atomic<int> zeros{0};
    RunTogether([&](int) {
      if (surface->Release() == 0) ++zeros;
    });
    ASSERT_EQ(zeros, 1);
    ASSERT_EQ(LiveAllocations(), before);
  }
}

TEST(Threads, NoRecordIsLostOrRunTwice) {
  ProbeSurface probe(Describe(8, 8, FORMAT_RGB24));
  RunTogether([&](int index) {
    for (int round = 0; round < kRounds; ++round) {
      if (index == 0) {
        probe.Flush();
      } else if (index % 2 == 0) {
        probe.QueueResize(8 + index, 8 + round % 16, 0, 0);
      } else {
        probe.QueueConvert(1 + round % 2);
      }
    }
  });
  probe.Flush();
  EXPECT_TRUE(probe.queue().empty());
  EXPECT_EQ(probe.calls.size(), static_cast<std::size_t>((kThreads - 1) * kRounds));
}

TEST(Threads, FlushesOfARealSurfaceWaitForEachOther) {
  const HeldSurface surface = MakeBlank(Describe(16, 16, FORMAT_YUV420));
  RunTogether([&](int index) {
    for (int round = 0; round < 50; ++round) {
      surface->AddRef();
      if (index % 2 == 0) {
        surface->QueueConvert(FORMAT_YUV420);
        surface->QueueResize(16, 16, 0, 0);
      } else {
        surface->Flush();
      }
      surface->Release();
    }
  });
  surface->Flush();
  EXPECT_EQ(CountOf(surface.get()), 1u);
}

TEST(Threads, OneBuilderServesThemAll) {
  const HeldBuilder builder = MakeBuilder();
  const std::int64_t before = LiveAllocations();
  RunTogether([&](int index) {
    for (int round = 0; round < 100; ++round) {
      const SurfaceDescription description = Describe(8 + index, 8, FORMAT_YUV420);
      HeldSurface surface;
      std::int32_t bytes = 0;
      EXPECT_EQ(builder->CreateBlank(&description, &bytes, surface.Reset()), VED_OK);
      HeldSurface clone;
      EXPECT_EQ(surface->Clone(clone.Reset()), VED_OK);
    }
  });
  EXPECT_EQ(LiveAllocations(), before);
}

}  // namespace
}  // namespace zor::test
