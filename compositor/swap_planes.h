// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Exchange of two runs of bytes.

#include <cstdint>

namespace zor {

/// Exchanges @p length bytes of two runs that don't overlap, 16 at a time.
/// @return 1, also for a length of 0 or less, which does nothing.
std::int32_t SwapPlanes(std::uint8_t* first, std::uint8_t* second, std::int32_t length) noexcept;

}  // namespace zor
