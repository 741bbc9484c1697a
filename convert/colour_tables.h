// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The lookup tables of the colour arithmetic from Y, U and V: video-range BT.601 with 13 bits of
/// fraction and no rounding term, indexed by the raw sample.

#include <cstdint>

namespace zor {

extern std::int32_t LumaScaleTable[256];   ///< 9535 x (Y - 16)
extern std::int32_t BlueFromUTable[256];   ///< 16531 x (U - 128)
extern std::int32_t GreenFromUTable[256];  ///< 3203 x (U - 128)
extern std::int32_t GreenFromVTable[256];  ///< 6660 x (V - 128)
extern std::int32_t RedFromVTable[256];    ///< 13074 x (V - 128)

/// Fills the five tables by repeated addition.
void FillColourTables() noexcept;

}  // namespace zor
