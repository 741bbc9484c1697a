// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Sequences of calls of the public tables, chosen by bytes. A run ends the process where the
/// library breaks its contract; what it reads outside of its blocks is for guard pages and
/// sanitizers to find.

#include <cstddef>
#include <cstdint>

namespace zor::fuzz {

/// A run's result codes and pixels in one number: equal for every inner vector level.
using Trace = std::uint64_t;

/// Children with masks, keys, opacities and rectangles of all kinds, drawn by `Compose`.
Trace RunCompose(const std::uint8_t* data, std::size_t size);

/// The queue, conversions, resizes, stretches, fills, rotations and the ways out.
Trace RunOperations(const std::uint8_t* data, std::size_t size);

}  // namespace zor::fuzz
