// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "convert/fast_mem_copy.h"

#include <cstring>

#include "convert/feature_word.h"

namespace zor {

void FastMemCopy(void* destination, const void* source, std::size_t bytes) noexcept {
  if ((CpuFeatureWord & kFeatureSse2) != 0) {
    MemCopyStream(destination, source, bytes);
  } else if ((CpuFeatureWord & kFeatureMmx) != 0) {
    MemCopyMmx(destination, source, bytes);
  } else {
    std::memcpy(destination, source, bytes);
  }
}

}  // namespace zor
