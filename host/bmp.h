// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Windows bitmaps in memory: the library's device-independent bitmap behind a file header.

#include <cstdint>
#include <string>
#include <vector>

#include "picture.h"

namespace zorhost {

/// Uncompressed bitmaps of 8 (palette), 24 and 32 bits, both row orders: a positive height says
/// bottom-up, a negative one top-down. Eight bits come out as `kGray8` if the palette is gray,
/// else as `kRgb24`. The order of the file's rows is kept and shows in `bottomUp`.
/// @throws InputError
Picture DecodeBmp(const std::vector<std::uint8_t>& file, const std::string& name);

/// @p picture of `kRgb24`, `kRgb32` or `kGray8`; its rows are written in the order they have in
/// memory, and the sign of the height says which order that is.
std::vector<std::uint8_t> EncodeBmp(const Picture& picture);

}  // namespace zorhost
