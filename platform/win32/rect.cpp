// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/rect.h"

namespace zor {

bool IsRectEmpty(const RECT* rect) noexcept {
  return ::IsRectEmpty(rect) != FALSE;
}

bool UnionRect(RECT* out, const RECT* a, const RECT* b) noexcept {
  return ::UnionRect(out, a, b) != FALSE;
}

void CopyRect(RECT* out, const RECT* in) noexcept {
  ::CopyRect(out, in);
}

}  // namespace zor
