// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/osa_layer.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

namespace {

class OsaLock : public testing::Test {
 protected:
  OsaLock() { zor::OsaInitCriticalSection(&lock_); }
  ~OsaLock() override { zor::OsaDeleteCriticalSection(&lock_); }

  zor::OsaCriticalSection lock_;
};

/// Waits for another thread, though not for ever. @return whether it came.
bool SoonTrue(const std::atomic<bool>& flag) {
  for (int i = 0; i < 5000 && !flag; ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return flag;
}

TEST_F(OsaLock, AThreadMayEnterALockThatItHolds) {
  std::atomic<bool> passed{false};
  std::thread other([&] {
    for (int i = 0; i < 3; ++i) zor::OsaEnterCriticalSection(&lock_);
    for (int i = 0; i < 3; ++i) zor::OsaLeaveCriticalSection(&lock_);
    passed = true;
  });
  ASSERT_TRUE(SoonTrue(passed));  // a thread that hangs can't be joined: the process ends here
  other.join();
  const zor::OsaGuard again(&lock_);
}

TEST_F(OsaLock, AnotherThreadWaitsUntilTheLastLeave) {
  std::atomic<bool> started{false};
  std::atomic<bool> entered{false};
  zor::OsaEnterCriticalSection(&lock_);
  zor::OsaEnterCriticalSection(&lock_);
  std::thread other([&] {
    started = true;
    const zor::OsaGuard guard(&lock_);
    entered = true;
  });
  while (!started) std::this_thread::yield();
  std::this_thread::sleep_for(std::chrono::milliseconds(30));
  EXPECT_FALSE(entered);
  zor::OsaLeaveCriticalSection(&lock_);
  std::this_thread::sleep_for(std::chrono::milliseconds(30));
  EXPECT_FALSE(entered) << "one of two entries was left";
  zor::OsaLeaveCriticalSection(&lock_);
  other.join();
  EXPECT_TRUE(entered);
}

TEST_F(OsaLock, KeepsACountExactAcrossThreads) {
  constexpr int kThreads = 4;
  constexpr int kRounds = 5000;
  volatile int count = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < kRounds; ++i) {
        const zor::OsaGuard guard(&lock_);
        const int seen = count;
        if (i % 64 == 0) std::this_thread::yield();
        count = seen + 1;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(count, kThreads * kRounds);
}

TEST_F(OsaLock, LocksAreIndependent) {
  zor::OsaCriticalSection second;
  zor::OsaInitCriticalSection(&second);
  std::atomic<bool> entered{false};
  zor::OsaEnterCriticalSection(&lock_);
  std::thread other([&] {
    const zor::OsaGuard inner(&second);
    entered = true;
  });
  EXPECT_TRUE(SoonTrue(entered));
  zor::OsaLeaveCriticalSection(&lock_);
  other.join();
  zor::OsaDeleteCriticalSection(&second);
}

}  // namespace
