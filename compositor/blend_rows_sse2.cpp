// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "compositor/blend_lanes_sse2.h"

namespace zor {

const BlendRows kBlendRowsSse2 = RowsOf<Lanes16, Lanes8>::kTable;

}  // namespace zor
