// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Conversions through the kernel table.

#include <cstddef>
#include <vector>

#include "convert/table/kernel_table.h"
#include "picture.h"

namespace zorkernels {

/// @return the rows that lead from one layout to another, the fewest there are: a single one where
///         the table has it.
/// @throws Refusal if none lead there
std::vector<std::size_t> FindRoute(Layout source, Layout target);

struct Conversion {
  bool smoothed = false;         ///< the first row through the filter, the others straight
  std::int32_t threshold = 127;  ///< of rgb32-keyed
};

/// Runs one entry between pictures of the same size, in layouts that go by its row's.
/// @throws Refusal if the entry is empty
void RunEntry(const zor::KernelRows& table, std::size_t row, const Conversion& conversion,
              RawPicture& source, RawPicture& target);

/// Converts a picture by the rows of a route.
RawPicture ConvertBy(const zor::KernelRows& table, const std::vector<std::size_t>& route,
                     RawPicture source, Layout target, const Conversion& conversion);

/// @return "plain", "mmx", "sse", "sse2", "forward to plain", or "-" for an empty entry.
const char* FormOf(const zor::KernelRows& table, std::size_t row, bool smoothed);

}  // namespace zorkernels
