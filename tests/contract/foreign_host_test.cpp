// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include "contract/msvc_host.h"

// What objects of the other compiler expect wherever a double is used.
extern "C" int _fltused;
int _fltused = 0;

namespace {

/// Calls @p run with the stack pointer @p shift bytes below a multiple of 16. Nothing stands
/// between the call and the host, whose frames keep whatever alignment they find.
int CallWithStackAt(int shift, int (*run)()) {
  int result;
  __asm__ volatile(
      "movl %%esp, %%esi\n\t"
      "andl $-16, %%esp\n\t"
      "subl %1, %%esp\n\t"
      "call *%2\n\t"
      "movl %%esi, %%esp"
      : "=a"(result)
      : "c"(shift), "d"(run)
      : "esi", "memory", "cc");
  return result;
}

TEST(ForeignHost, ObjectOfTheOtherCompilersAbiDrivesTheTables) {
  EXPECT_EQ(0, RunForeignHost());
  EXPECT_EQ(kForeignSteps, foreignSteps);
}

TEST(ForeignHost, StackMayBeAlignedToFourBytesOnly) {
  unsigned offsets = 0;
  for (const int shift : {0, 4, 8, 12}) {
    EXPECT_EQ(0, CallWithStackAt(shift, RunForeignHost)) << "shift " << shift;
    EXPECT_EQ(kForeignSteps, foreignSteps);
    offsets |= 1u << (foreignStackOffset / 4);
  }
  EXPECT_EQ(0xFu, offsets) << "the calls came from every offset within 16 bytes";
}

}  // namespace
