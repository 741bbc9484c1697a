// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/memory.h"

#include <gtest/gtest.h>

#include <cstring>
#include <thread>
#include <vector>

#ifdef __SANITIZE_ADDRESS__
/// Lets impossible sizes answer null, as the heap itself does.
extern "C" __attribute__((visibility("default"))) const char* __asan_default_options() {
  return "allocator_may_return_null=1";
}
#endif

namespace {

using zor::AllocateBytes;
using zor::FreeBytes;

TEST(AllocateBytes, AlignsEveryBlockTo64) {
  for (const std::size_t bytes : {0u, 1u, 63u, 64u, 65u, 1000u, 100000u, 5000000u}) {
    void* const block = AllocateBytes(bytes);
    ASSERT_NE(block, nullptr) << bytes;
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 64, 0u) << bytes;
    std::memset(block, 0x5A, bytes);
    FreeBytes(block);
  }
}

TEST(AllocateBytes, GivesNullForMoreThanTheSystemHas) {
  const std::int64_t live = zor::LiveAllocations();
  EXPECT_EQ(AllocateBytes(SIZE_MAX / 2 + 1), nullptr);
  EXPECT_EQ(zor::LiveAllocations(), live);
}

TEST(FreeBytes, TakesNull) {
  const std::int64_t live = zor::LiveAllocations();
  FreeBytes(nullptr);
  EXPECT_EQ(zor::LiveAllocations(), live);
}

TEST(RefuseAllocation, RefusesJustTheRequestNamed) {
  zor::RefuseAllocation(2);
  void* const first = AllocateBytes(10);
  void* const second = AllocateBytes(10);
  void* const third = AllocateBytes(10);
  EXPECT_NE(first, nullptr);
  EXPECT_EQ(second, nullptr);
  EXPECT_NE(third, nullptr);
  EXPECT_EQ(zor::CountAllocations(), 3u);
  FreeBytes(first);
  FreeBytes(third);
  zor::RefuseAllocation(0);
}

TEST(RefuseAllocation, CountsAnewEachTimeAndRefusesNoneForZero) {
  zor::RefuseAllocation(1);
  EXPECT_EQ(AllocateBytes(10), nullptr);
  zor::RefuseAllocation(0);
  EXPECT_EQ(zor::CountAllocations(), 0u);
  void* const block = AllocateBytes(10);
  EXPECT_NE(block, nullptr);
  EXPECT_EQ(zor::CountAllocations(), 1u);
  FreeBytes(block);
}

TEST(LiveAllocations, FollowsBlocksAcrossThreads) {
  const std::int64_t live = zor::LiveAllocations();
  std::vector<void*> kept(4);
  std::vector<std::thread> threads;
  zor::RefuseAllocation(0);
  for (void*& keep : kept) {
    threads.emplace_back([&keep] {
      for (int i = 0; i < 2000; ++i) FreeBytes(AllocateBytes(16));
      keep = AllocateBytes(16);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(zor::LiveAllocations(), live + 4);
  EXPECT_EQ(zor::CountAllocations(), 4u * 2001u);
  for (void* block : kept) FreeBytes(block);
  EXPECT_EQ(zor::LiveAllocations(), live);
}

TEST(WorkArray, HoldsItsElementsAndFreesThem) {
  const std::int64_t live = zor::LiveAllocations();
  {
    zor::WorkArray<double> array(100);
    ASSERT_TRUE(array);
    array[99] = 2.5;
    EXPECT_EQ(array.data()[99], 2.5);
    EXPECT_EQ(zor::LiveAllocations(), live + 1);
  }
  EXPECT_EQ(zor::LiveAllocations(), live);
}

TEST(WorkArray, IsFalseWhenTheBytesPassTheAddressSpace) {
  zor::WorkArray<double> array(std::uint64_t{SIZE_MAX} / sizeof(double) + 1);
  EXPECT_FALSE(array);
}

TEST(WorkArray, IsFalseWhenRefused) {
  zor::RefuseAllocation(1);
  zor::WorkArray<int> array(4);
  zor::RefuseAllocation(0);
  EXPECT_FALSE(array);
}

}  // namespace
