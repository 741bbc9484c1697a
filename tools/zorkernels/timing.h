// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// How long the entries of the kernel table take.

#include <cstdint>

#include "convert/table/kernel_table.h"

namespace zorkernels {

/// Runs an entry on a picture of noise a few times.
/// @return milliseconds of the fastest run, or a negative number for an empty entry
double TimeEntry(const zor::KernelRows& table, std::size_t row, bool smoothed, std::int32_t width,
                 std::int32_t height);

}  // namespace zorkernels
