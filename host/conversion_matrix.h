// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// What the library converts to what, and by which arithmetic, as a table to print.

#include <string>

#include "pixel_layout.h"

namespace zorhost {

/// @return whether a surface of @p from can be converted to @p to in one step, or is that already.
bool Converts(Layout from, Layout to);

/// The grid of formats and the formulas, for people.
std::string ConversionMatrixText();
/// The same as a JSON object: "conversions" names pairs and the family of each, "families" holds
/// the formulas.
std::string ConversionMatrixJson();

}  // namespace zorhost
