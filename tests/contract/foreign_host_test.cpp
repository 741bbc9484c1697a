// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include "contract/msvc_host.h"

// What objects of the other compiler expect wherever a double is used.
extern "C" int _fltused;
int _fltused = 0;

namespace {

TEST(ForeignHost, ObjectOfTheOtherCompilersAbiDrivesTheTables) {
  EXPECT_EQ(0, RunForeignHost());
  EXPECT_EQ(kForeignSteps, foreignSteps);
}

int answer = -1;
void RunAndKeep() { answer = RunForeignHost(); }

TEST(ForeignHost, StackMayBeAlignedToFourBytesOnly) {
  for (const int shift : {0, 4, 8, 12}) {
    answer = -1;
    void (*run)() = RunAndKeep;
    __asm__ volatile(
        "movl %%esp, %%esi\n\t"
        "andl $-16, %%esp\n\t"
        "subl %0, %%esp\n\t"
        "call *%1\n\t"
        "movl %%esi, %%esp"
        :
        : "r"(shift), "r"(run)
        : "esi", "eax", "ecx", "edx", "memory", "cc");
    EXPECT_EQ(0, answer) << "shift " << shift;
  }
}

}  // namespace
