// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include "drivers/driver_cases.h"

namespace zor::test {
namespace {

TEST(WarpRegionNow, ReportsCodesOnly) {
  const HeldSurface surface = MakeTarget(8, 8, FORMAT_RGB32);
  EXPECT_EQ(surface->WarpRegionNow(0, 0, 0, 0, 0, 0, 0), VED_E_INVALIDARG);
  EXPECT_EQ(surface->WarpRegionNow(1, 0, 0.0, 0.0, 0.0, 0.0, 0), VED_E_UNSUPPORTED);
  EXPECT_EQ(surface->WarpRegionNow(-1, 0, 1.0, -1.0, 1.0, -1.0, -1), VED_E_UNSUPPORTED);
  EXPECT_EQ(surface->WarpRegionNow(1, 0, -0.5, 0.0, 0.0, 0.0, 0), VED_E_INVALIDARG);
  EXPECT_EQ(surface->WarpRegionNow(1, 0, 0.0, 0.0, -0.5, 0.0, 0), VED_E_INVALIDARG);
  EXPECT_EQ(surface->WarpRegionNow(1, 0, -0.0, 0.0, -0.0, 0.0, 0), VED_E_UNSUPPORTED);
  EXPECT_EQ(PictureOf(surface), Bytes(256, 0x55));
}

TEST(WarpRegion, PerformsTheQueueThoughItFailsThen) {
  const HeldSurface surface = MakeTarget(8, 8, FORMAT_RGB32);
  surface->QueueResize(4, 4, 0, 0);
  EXPECT_EQ(surface->WarpRegion(1, 0, 0, 0, 0, 0, 0), VED_E_UNSUPPORTED);
  EXPECT_EQ(DescriptionOf(surface.get()).width, 4);
}

}  // namespace
}  // namespace zor::test
