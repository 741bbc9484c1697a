// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/colour_tables.h"

namespace zor {

std::int32_t LumaScaleTable[256];
std::int32_t BlueFromUTable[256];
std::int32_t GreenFromUTable[256];
std::int32_t GreenFromVTable[256];
std::int32_t RedFromVTable[256];

void FillColourTables() noexcept {
  constexpr std::int32_t kLumaStep = 9535;
  constexpr std::int32_t kLumaEnd = 2288400;  // one step behind the 256th entry
  std::int32_t blueFromU = -2115968;
  std::int32_t greenFromU = -409984;
  std::int32_t greenFromV = -852480;
  std::int32_t redFromV = -1673472;
  std::int32_t i = 0;
  for (std::int32_t luma = -152560; luma != kLumaEnd; luma += kLumaStep, ++i) {
    LumaScaleTable[i] = luma;
    BlueFromUTable[i] = blueFromU;
    GreenFromUTable[i] = greenFromU;
    GreenFromVTable[i] = greenFromV;
    RedFromVTable[i] = redFromV;
    blueFromU += 16531;
    greenFromU += 3203;
    greenFromV += 6660;
    redFromV += 13074;
  }
}

}  // namespace zor
