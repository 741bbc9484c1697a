// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include "compose_cases.h"
#include "platform/memory.h"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

namespace zor::test {
namespace {

/// Lets the leak checker pass over what is allocated meanwhile.
class LeaksAreMeant {
 public:
#if defined(__SANITIZE_ADDRESS__)
  LeaksAreMeant() {
    __lsan_disable();
  }
  ~LeaksAreMeant() {
    __lsan_enable();
  }
#else
  LeaksAreMeant() {}
#endif
  LeaksAreMeant(const LeaksAreMeant&) = delete;
  LeaksAreMeant& operator=(const LeaksAreMeant&) = delete;
};

/// Builds the same scene again for each request that is refused.
class RefusedMemory : public testing::Test {
 protected:
  ~RefusedMemory() override { RefuseAllocation(0); }
};

TEST_F(RefusedMemory, FailedCloneLeavesTheChildrenAndTheHostsPointer) {
  int failures = 0;
  for (std::uint64_t request = 1; request < 50; ++request) {
    const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUV420, 1), false);
    const HeldSurface mask = Noisy(16, 16, FORMAT_GRAY8, 2);
    surface->SetMask(mask.get());
    const HeldSurface child = Child(16, 16, FORMAT_YUV420, 3, {0, 0, 0, 0}, kAll16);
    surface->AddChild(child.get());
    const std::int64_t live = LiveAllocations();
    IZorSurface* out = child.get();
    RefuseAllocation(request);
    const std::int32_t result = surface->Compose(&out);
    const bool reached = CountAllocations() >= request;
    RefuseAllocation(0);
    if (result == E_FAIL) {
      ++failures;
      EXPECT_EQ(out, child.get());
      EXPECT_EQ(surface->GetChildCount(), 1);
      EXPECT_EQ(CountOf(child.get()), 2u);
      EXPECT_EQ(CountOf(surface.get()), 1u);
      EXPECT_EQ(LiveAllocations(), live);
    } else {
      EXPECT_EQ(result, VED_E_INVALIDARG) << request;  // the child's
      out->Release();
    }
    if (!reached) break;
  }
  // Builder, surface and block of the clone, and of its mask.
  EXPECT_EQ(failures, 6);
}

TEST_F(RefusedMemory, EachRefusalInTheStretchLosesThatChildAlone) {
  const RECT dest = {0, 0, 8, 8};
  int failures = 0;
  int kept = 0;
  for (std::uint64_t request = 1; request < 200; ++request) {
    const HeldSurface surface = InPlace(Noisy(16, 16, FORMAT_YUV420, 1));
    const HeldSurface child = Child(16, 16, FORMAT_YUV420, 2, dest, kAll16);
    const HeldSurface mask = Noisy(16, 16, FORMAT_GRAY8, 3);
    child->SetMask(mask.get());
    surface->AddChild(child.get());
    const std::int64_t live = LiveAllocations();
    HeldSurface out;
    const LeaksAreMeant leaks;
    RefuseAllocation(request);
    const std::int32_t result = surface->Compose(out.Reset());
    const bool reached = CountAllocations() >= request;
    RefuseAllocation(0);
    EXPECT_EQ(out.get(), surface.get());
    EXPECT_EQ(surface->GetChildCount(), 0);
    EXPECT_EQ(CountOf(child.get()), 1u);
    EXPECT_EQ(CountOf(mask.get()), 2u);
    if (result != VED_OK) {
      EXPECT_EQ(result, VED_E_OUTOFMEMORY);
      ++failures;
    }
    // The list's node is gone; where the mask's scratch surface fails, the child's stays for good.
    const std::int64_t left = LiveAllocations() - live;
    kept += left > 0 ? 1 : 0;
    if (!reached) break;
    ASSERT_LT(request, 199u);
  }
  EXPECT_EQ(failures, 4);  // surface and block, of the child and of the mask
  EXPECT_EQ(kept, 2);      // those of the mask
}

}  // namespace
}  // namespace zor::test
