// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "compositor/blend_lanes_avx2.h"

namespace zor {

const BlendRows kBlendRowsAvx2 = RowsOf<Lanes32, Lanes16, Lanes8>::kTable;

}  // namespace zor
