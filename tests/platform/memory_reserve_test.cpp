// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/memory_reserve.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <cstring>
#include <set>
#include <thread>
#include <vector>

#include "platform/memory.h"

namespace {

using zor::MemoryReserve;

constexpr std::size_t kPicture = std::size_t{1} << 20;

/// The allocator behind: counts what it gave and got back, and can be out of memory.
std::atomic<int> given{0};
std::atomic<int> gotBack{0};
std::atomic<int> refusals{0};

zor::MemoryCalls Behind() {
  given = gotBack = refusals = 0;
  return {[](std::size_t bytes) -> void* {
            if (refusals > 0) {
              --refusals;
              return nullptr;
            }
            void* const block = zor::NativeMemoryCalls().allocate(bytes);
            if (block != nullptr) ++given;
            return block;
          },
          [](void* block) {
            ++gotBack;
            zor::NativeMemoryCalls().free(block);
          }};
}

/// A reserve whose blocks are all let go in the end.
class WatchedReserve {
 public:
  WatchedReserve() : reserve_(Behind()) {}
  ~WatchedReserve() {
    for (void* block : out_) reserve_.Free(block);
  }

  void* Allocate(std::size_t bytes) {
    void* const block = reserve_.Allocate(bytes);
    if (block != nullptr) out_.insert(block);
    return block;
  }
  void Free(void* block) {
    out_.erase(block);
    reserve_.Free(block);
  }
  void Close() { reserve_.Close(); }

 private:
  MemoryReserve reserve_;
  std::set<void*> out_;
};

/// Takes @p count blocks and lets go of them in the same order.
template <class Reserve>
void TakeAndLetGo(Reserve& reserve, std::size_t bytes, int count = 1) {
  std::vector<void*> blocks;
  for (int i = 0; i < count; ++i) blocks.push_back(reserve.Allocate(bytes));
  for (void* block : blocks) reserve.Free(block);
}

TEST(MemoryReserve, GivesALargeBlockToTheNextTaker) {
  WatchedReserve reserve;
  void* const first = reserve.Allocate(kPicture);
  reserve.Free(first);
  EXPECT_EQ(gotBack, 0);
  EXPECT_EQ(reserve.Allocate(kPicture), first);
  EXPECT_EQ(given, 1);
  EXPECT_NE(reserve.Allocate(kPicture), first) << "which is out already";
  EXPECT_EQ(given, 2);
}

TEST(MemoryReserve, GivesABlockThatIsAtMostAnEighthTooLarge) {
  WatchedReserve reserve;
  const std::size_t least = kPicture / 9 * 8 + 8;
  ASSERT_LE(kPicture - least, least / 8);
  ASSERT_GT(kPicture - (least - 16), (least - 16) / 8);
  void* const block = reserve.Allocate(kPicture);
  reserve.Free(block);
  EXPECT_NE(reserve.Allocate(kPicture + 1), block);
  EXPECT_NE(reserve.Allocate(least - 16), block);
  EXPECT_EQ(reserve.Allocate(least), block);
  reserve.Free(block);
  EXPECT_EQ(reserve.Allocate(kPicture), block) << "it's still as large as it was made";
}

TEST(MemoryReserve, HandsSmallBlocksStraightThrough) {
  WatchedReserve reserve;
  TakeAndLetGo(reserve, 0);
  TakeAndLetGo(reserve, MemoryReserve::kLeastBytes - 1);
  EXPECT_EQ(gotBack, 2);
  TakeAndLetGo(reserve, MemoryReserve::kLeastBytes);
  EXPECT_EQ(gotBack, 2);
}

TEST(MemoryReserve, KeepsNoMoreThanItsBytesAndLetsGoOfTheOldest) {
  WatchedReserve reserve;
  constexpr std::size_t kThird = MemoryReserve::kMostBytes / 3;
  void* const oldest = reserve.Allocate(kThird);
  void* const middle = reserve.Allocate(kThird);
  void* const newest = reserve.Allocate(kThird);
  void* const more = reserve.Allocate(MemoryReserve::kLeastBytes);
  reserve.Free(oldest);
  reserve.Free(middle);
  reserve.Free(newest);
  EXPECT_EQ(gotBack, 0);
  reserve.Free(more);
  EXPECT_EQ(gotBack, 1);
  EXPECT_EQ(reserve.Allocate(kThird), middle);
  EXPECT_EQ(reserve.Allocate(kThird), newest);
  reserve.Free(reserve.Allocate(MemoryReserve::kMostBytes + 1));
  EXPECT_EQ(gotBack, 2) << "a block that is more than all that may wait";
  EXPECT_EQ(reserve.Allocate(MemoryReserve::kLeastBytes), more) << "which made no room for it";
}

TEST(MemoryReserve, LetsGoOfABlockThatNobodyTakesAfterAsManyOthers) {
  WatchedReserve reserve;
  TakeAndLetGo(reserve, 2 * MemoryReserve::kLeastBytes);
  for (std::size_t i = 1; i < MemoryReserve::kPlaces; ++i) TakeAndLetGo(reserve, kPicture);
  EXPECT_EQ(gotBack, 0);
  TakeAndLetGo(reserve, kPicture);
  EXPECT_EQ(gotBack, 1);
  EXPECT_EQ(given, 2);
}

TEST(MemoryReserve, GivesAllThatWaitsBackBeforeItSaysNo) {
  WatchedReserve reserve;
  TakeAndLetGo(reserve, kPicture, 3);
  refusals = 1;
  void* const block = reserve.Allocate(4 * kPicture);
  EXPECT_NE(block, nullptr);
  EXPECT_EQ(gotBack, 3);
  refusals = 1;
  EXPECT_EQ(reserve.Allocate(4 * kPicture), nullptr) << "nothing waits that could help";
  EXPECT_EQ(refusals, 0);
  reserve.Free(block);
  refusals = 2;
  EXPECT_EQ(reserve.Allocate(kPicture), nullptr);
  EXPECT_EQ(refusals, 0);
}

TEST(MemoryReserve, GivesEverythingBackWhenItCloses) {
  WatchedReserve reserve;
  void* const late = reserve.Allocate(kPicture);
  TakeAndLetGo(reserve, kPicture, 5);
  reserve.Close();
  EXPECT_EQ(gotBack, 5);
  reserve.Free(late);
  EXPECT_EQ(gotBack, 6);
  TakeAndLetGo(reserve, kPicture);
  EXPECT_EQ(gotBack, 7);
}

TEST(MemoryReserve, LeavesNothingBehindWhenItEnds) {
  {
    MemoryReserve reserve(Behind());
    TakeAndLetGo(reserve, kPicture, 5);
  }
  EXPECT_EQ(gotBack, 5);
}

TEST(MemoryReserve, AlignsBlocksTo64AndKnowsWhatNoBlockCanBe) {
  WatchedReserve reserve;
  for (const std::size_t bytes : {std::size_t{0}, std::size_t{1}, kPicture}) {
    void* const block = reserve.Allocate(bytes);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 64, 0u) << bytes;
    reserve.Free(block);
  }
  EXPECT_EQ(reserve.Allocate(SIZE_MAX), nullptr);
  EXPECT_EQ(reserve.Allocate(SIZE_MAX - 63), nullptr);
}

TEST(MemoryReserve, GivesNoBlockToTwoThreads) {
  std::atomic<int> shared{0};
  {
    MemoryReserve reserve(Behind());
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
      threads.emplace_back([&, t] {
        for (int i = 0; i < 3000; ++i) {
          const std::size_t bytes =
              MemoryReserve::kLeastBytes * static_cast<std::size_t>(1 + i % 3);
          auto* const block = static_cast<std::uint8_t*>(reserve.Allocate(bytes));
          std::memset(block, t, 64);
          std::this_thread::yield();
          for (int k = 0; k < 64; ++k) shared += block[k] != t;
          reserve.Free(block);
        }
      });
    }
    for (std::thread& thread : threads) thread.join();
  }
  EXPECT_EQ(shared, 0);
  EXPECT_EQ(given, gotBack);
  EXPECT_LT(given, 4 * 3000) << "some blocks were given more than once";
}

#ifndef __SANITIZE_ADDRESS__
TEST(MemoryReserve, StandsBehindTheLibrarysOwnBlocks) {
  void* const first = zor::AllocateBytes(3 * kPicture);
  zor::FreeBytes(first);
  void* const second = zor::AllocateBytes(3 * kPicture);
  EXPECT_EQ(second, first);
  zor::FreeBytes(second);
}
#endif

}  // namespace
