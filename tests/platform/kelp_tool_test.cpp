// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/kelp_tool.h"

#include <gtest/gtest.h>

#include <cstring>

#include "support/kelp_handle.h"

namespace {

using zor::test::KelpHandle;

TEST(KelpTool, IsFoundAtRunTimeAndGivesTheFourWords) {
  const std::uint8_t pixels[4 * 12] = {};
  const KelpHandle handle(3, 4, 24, 12, pixels, sizeof pixels);
  zor::KelpInfo info{};
  EXPECT_EQ(zor::KelpGetInfo(handle.get(), &info), 0);
  EXPECT_EQ(info.width, 3);
  EXPECT_EQ(info.height, 4);
  EXPECT_EQ(info.bitCount, 24);
  EXPECT_EQ(info.stride, 12);
}

TEST(KelpTool, LocksGiveThePixelsAndAreCounted) {
  std::uint8_t pixels[48];
  for (int i = 0; i < 48; ++i) pixels[i] = static_cast<std::uint8_t>(i * 5);
  const KelpHandle handle(3, 4, 24, 12, pixels, sizeof pixels);
  EXPECT_EQ(handle.Locks(), 0);
  void* address = nullptr;
  ASSERT_EQ(zor::KelpLockData(handle.get(), &address), 0);
  EXPECT_EQ(handle.Locks(), 1);
  ASSERT_NE(address, nullptr);
  EXPECT_EQ(std::memcmp(address, pixels, sizeof pixels), 0);
  zor::KelpUnlockData(handle.get());
  EXPECT_EQ(handle.Locks(), 0);
  EXPECT_EQ(handle.LockCalls(), 1);
}

TEST(KelpTool, PassesTheFarSidesFailuresOn) {
  zor::KelpInfo info{};
  void* address = nullptr;
  EXPECT_EQ(zor::KelpGetInfo(nullptr, &info), 1);
  EXPECT_EQ(zor::KelpLockData(nullptr, &address), 1);
  EXPECT_EQ(address, nullptr);
}

}  // namespace
