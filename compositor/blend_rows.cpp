// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <zorsurface/types.h>

#include "compositor/blend_rows.h"
#include "convert/feature_word.h"

namespace zor {

const BlendRows& InnerBlendRows() noexcept {
  switch (InnerVectorLevel()) {
    case VectorLevel::kAvx512:
      return kBlendRowsAvx512;
    case VectorLevel::kAvx2:
      return kBlendRowsAvx2;
    case VectorLevel::kSse2:
      break;
  }
  return kBlendRowsSse2;
}

}  // namespace zor
