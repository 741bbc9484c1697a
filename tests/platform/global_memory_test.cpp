// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/global_memory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

TEST(GlobalMemory, ABlockIsZeroedLockedWrittenAndReadBack) {
  zor::GlobalHandle handle = zor::GlobalAlloc(GMEM_MOVEABLE, 1000);
  ASSERT_NE(handle, nullptr);
  std::memset(zor::GlobalLock(handle), 0xEE, 1000);  // used heap for the next block
  zor::GlobalUnlock(handle);
  zor::GlobalFree(handle);

  handle = zor::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, 1000);
  ASSERT_NE(handle, nullptr);
  EXPECT_GE(zor::GlobalSize(handle), 1000u);
  auto* bytes = static_cast<std::uint8_t*>(zor::GlobalLock(handle));
  ASSERT_NE(bytes, nullptr);
  for (int i = 0; i < 1000; ++i) ASSERT_EQ(bytes[i], 0) << i;
  for (int i = 0; i < 1000; ++i) bytes[i] = static_cast<std::uint8_t>(i * 7);
  zor::GlobalUnlock(handle);

  bytes = static_cast<std::uint8_t*>(zor::GlobalLock(handle));
  ASSERT_NE(bytes, nullptr);
  for (int i = 0; i < 1000; ++i) ASSERT_EQ(bytes[i], static_cast<std::uint8_t>(i * 7)) << i;
  zor::GlobalUnlock(handle);
  zor::GlobalFree(handle);
}

TEST(GlobalMemory, TakesTheFlags66) {
  EXPECT_EQ(GMEM_MOVEABLE | GMEM_ZEROINIT, 66);
}

TEST(GlobalMemory, NullHasNoAddressAndNoSize) {
  EXPECT_EQ(zor::GlobalLock(nullptr), nullptr);
  EXPECT_EQ(zor::GlobalSize(nullptr), 0u);
  zor::GlobalUnlock(nullptr);
  zor::GlobalFree(nullptr);
}

TEST(GlobalMemory, AnImpossibleSizeGivesNull) {
  EXPECT_EQ(zor::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, SIZE_MAX / 2 + 1), nullptr);
}

#ifdef _WIN32

TEST(GlobalMemory, IsTheSystemsOwn) {
  const HGLOBAL ours = ::GlobalAlloc(GMEM_MOVEABLE, 123);
  ASSERT_NE(ours, nullptr);
  EXPECT_EQ(zor::GlobalSize(ours), ::GlobalSize(ours));
  void* const address = zor::GlobalLock(ours);
  EXPECT_NE(address, nullptr);
  EXPECT_NE(address, ours) << "a movable handle is no address";
  EXPECT_EQ(GlobalFlags(ours) & GMEM_LOCKCOUNT, 1u);
  zor::GlobalUnlock(ours);
  EXPECT_EQ(GlobalFlags(ours) & GMEM_LOCKCOUNT, 0u);
  zor::GlobalFree(ours);
}

TEST(GlobalMemory, AHandleThatIsNoneHasNoAddressAndNoSize) {
  EXPECT_EQ(zor::GlobalLock(reinterpret_cast<void*>(0x1230)), nullptr);
  EXPECT_EQ(zor::GlobalSize(reinterpret_cast<void*>(0x1230)), 0u);
}

#else

TEST(GlobalMemory, AHostReadsAndFreesABlockPlainly) {
  zor::GlobalHandle const handle = zor::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, 64);
  ASSERT_NE(handle, nullptr);
  std::memcpy(zor::GlobalLock(handle), "pixels", 7);
  zor::GlobalUnlock(handle);
  EXPECT_STREQ(static_cast<const char*>(handle), "pixels");
  std::free(handle);
}

TEST(GlobalMemory, ABlockOfAHostsMallocIsAHandle) {
  for (const std::size_t bytes : {1u, 40u, 100u, 4096u, 300000u}) {
    void* const block = std::malloc(bytes);
    ASSERT_NE(block, nullptr);
    EXPECT_GE(zor::GlobalSize(block), bytes);
    EXPECT_LT(zor::GlobalSize(block), bytes + 8192) << "the heap's rounding at most";
    EXPECT_EQ(zor::GlobalLock(block), block);
    zor::GlobalUnlock(block);
    zor::GlobalFree(block);
  }
}

#endif

}  // namespace
