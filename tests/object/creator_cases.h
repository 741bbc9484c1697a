// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Runs of the builder's creators that must fail.

#include <gtest/gtest.h>

#include <cstdint>

#include "platform/memory.h"
#include "support/surfaces.h"

namespace zor::test {

/// Stands where a creator stores its surface, and must stay there if it fails.
inline IZorSurface* const kUntouched = reinterpret_cast<IZorSurface*>(std::uintptr_t{0x40});

/// Runs a creator that must fail, and checks that nothing is left of it. @return its result.
/// @param create takes the builder and the place for the surface.
/// @param refused which of its requests for memory is refused, counted from 1; 0 for none.
template <class Create>
std::int32_t FailToCreate(const Create& create, std::uint64_t refused = 0) {
  const HeldBuilder builder = MakeBuilder();
  const std::int64_t before = LiveAllocations();
  IZorSurface* out = kUntouched;
  RefuseAllocation(refused);
  const std::int32_t result = create(builder.get(), &out);
  RefuseAllocation(0);
  EXPECT_EQ(out, kUntouched);
  EXPECT_EQ(LiveAllocations(), before);
  return result;
}

}  // namespace zor::test
