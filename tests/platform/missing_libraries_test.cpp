// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include "platform/direct_draw.h"
#include "platform/kelp_tool.h"
#include "platform/shared_library.h"

namespace {

// This program runs where no uKelpTool can be found.
TEST(KelpToolMissing, EveryCallFailsAndTouchesNothing) {
  int dib = 0;
  for (int round = 0; round < 2; ++round) {
    zor::KelpInfo info{1, 2, 3, 4};
    void* address = &dib;
    EXPECT_NE(zor::KelpGetInfo(&dib, &info), 0);
    EXPECT_NE(zor::KelpLockData(&dib, &address), 0);
    zor::KelpUnlockData(&dib);
    EXPECT_EQ(info.width, 1);
    EXPECT_EQ(info.stride, 4);
    EXPECT_EQ(address, &dib);
  }
}

TEST(SharedLibrary, OneThatIsNowhereIsNull) {
  EXPECT_EQ(zor::OpenSharedLibrary("nowhere-to-be-found"), nullptr);
}

#ifdef _WIN32
TEST(DirectDrawMissing, CreationFailsAndTouchesNothing) {
  if (zor::OpenSharedLibrary("ddraw.dll") != nullptr) {
    GTEST_SKIP() << "DirectDraw is here: run with WINEDLLOVERRIDES=ddraw=";
  }
  IDirectDraw7* directDraw = nullptr;
  EXPECT_EQ(zor::DirectDrawCreateEx(&directDraw), E_FAIL);
  EXPECT_EQ(directDraw, nullptr);
}
#endif

}  // namespace
