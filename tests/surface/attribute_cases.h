// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// A small surface, and rectangles as words that a test can compare and print.

#include <gtest/gtest.h>

#include <array>

#include "support/surfaces.h"

namespace zor::test {

using Words = std::array<std::int32_t, 4>;

inline HeldSurface Small() {
  return MakeBlank(Describe(16, 8, FORMAT_RGB24));
}

inline Words WordsOf(const RECT& rect) {
  return {static_cast<std::int32_t>(rect.left), static_cast<std::int32_t>(rect.top),
          static_cast<std::int32_t>(rect.right), static_cast<std::int32_t>(rect.bottom)};
}

}  // namespace zor::test
