// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The platform's rectangle functions. Right and bottom are exclusive.

#include <zorsurface/types.h>

namespace zor {

/// @return whether right is not above left or bottom not above top.
bool IsRectEmpty(const RECT* rect) noexcept;

/// Stores the smallest rectangle that holds both; an empty argument counts for nothing.
/// @return whether the union is not empty; an empty one is stored as all zeros.
bool UnionRect(RECT* out, const RECT* a, const RECT* b) noexcept;

/// Copies the four words.
void CopyRect(RECT* out, const RECT* in) noexcept;

}  // namespace zor
