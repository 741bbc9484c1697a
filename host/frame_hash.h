// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// A fingerprint of a picture's bytes, the same on every machine.

#include <cstdint>
#include <string>

#include "picture.h"

namespace zorhost {

/// FNV-1a, 64 bits, over the rows of each plane from the top, without padding. Pitch and row order
/// in memory therefore don't show; a single changed sample does.
std::uint64_t HashPicture(const Picture& picture);
/// 16 lower-case hexadecimal digits.
std::string HashText(std::uint64_t hash);

}  // namespace zorhost
