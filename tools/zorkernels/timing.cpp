// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "timing.h"

#include <algorithm>
#include <chrono>

#include "route.h"

namespace zorkernels {

double TimeEntry(const zor::KernelRows& table, std::size_t row, bool smoothed, std::int32_t width,
                 std::int32_t height) {
  if ((smoothed ? table[row].smoothed : table[row].straight).index() == 0) return -1;
  using Clock = std::chrono::steady_clock;
  constexpr int kRuns = 5;
  const zor::KernelLayouts layouts = zor::LayoutsOfRow(row);
  RawPicture source(layouts.source, width, height);
  std::vector<std::uint8_t> noise(source.fileBytes());
  std::uint32_t state = 1;
  for (std::uint8_t& byte : noise) {
    state = state * 1664525u + 1013904223u;
    byte = static_cast<std::uint8_t>(state >> 24);
  }
  source.FromFile(noise);
  RawPicture target(layouts.target, width, height);
  double best = 0;
  for (int run = 0; run < kRuns; ++run) {
    const Clock::time_point start = Clock::now();
    RunEntry(table, row, {.smoothed = smoothed}, source, target);
    const double took = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
    best = run == 0 ? took : std::min(best, took);
  }
  return best;
}

}  // namespace zorkernels
