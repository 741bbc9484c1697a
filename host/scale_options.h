// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The words of the command line about scaling.

#include <cstdint>
#include <string>

#include "stream_info.h"
#include "text.h"

namespace zorhost {

enum class Fit { kStretch, kContain, kCover };
/// @throws UsageError
Fit FitFromName(const std::string& name);
/// A `ScaleMode` by its name, such as "box-fade". @throws UsageError
std::uint32_t ModeFromName(const std::string& name);
std::string KnownModes();
/// "1/2" or "3". @throws UsageError
Rational ParseScale(const std::string& text);
/// The size times a ratio, rounded to whole pixels, or to even ones. @throws UsageError
Size ScaledSize(int width, int height, const Rational& ratio, bool even);

}  // namespace zorhost
