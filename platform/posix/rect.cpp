// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/rect.h"

#include <algorithm>

namespace zor {

bool IsRectEmpty(const RECT* rect) noexcept {
  return rect == nullptr || rect->right <= rect->left || rect->bottom <= rect->top;
}

bool UnionRect(RECT* out, const RECT* a, const RECT* b) noexcept {
  if (out == nullptr) return false;
  RECT both{};  // apart from *out, which may be one of the arguments
  if (!IsRectEmpty(a) && !IsRectEmpty(b)) {
    both = {std::min(a->left, b->left), std::min(a->top, b->top), std::max(a->right, b->right),
            std::max(a->bottom, b->bottom)};
  } else if (!IsRectEmpty(a)) {
    both = *a;
  } else if (!IsRectEmpty(b)) {
    both = *b;
  }
  *out = both;
  return !IsRectEmpty(&both);
}

void CopyRect(RECT* out, const RECT* in) noexcept {
  if (out != nullptr && in != nullptr) *out = *in;
}

}  // namespace zor
