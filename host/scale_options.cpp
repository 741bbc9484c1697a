// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "scale_options.h"

#include <zorsurface/scale_mode.h>

#include "exit_code.h"

namespace zorhost {
namespace {

struct NamedMode {
  const char* name;
  std::uint32_t mode;
};
constexpr NamedMode kModes[] = {
    {"nearest", SCALE_NEAREST},
    {"bilinear", SCALE_BILINEAR},
    {"bilinear-fade", SCALE_BILINEAR_FADE},
    {"box", SCALE_BOX},
    {"box-fade", SCALE_BOX_FADE},
    {"row-pairs", SCALE_ROW_PAIRS},
    {"area", SCALE_AREA},
    {"planar-nearest", SCALE_PLANAR_NEAREST},
    {"planar-sharpen", SCALE_PLANAR_SHARPEN},
    {"planar-area", SCALE_PLANAR_AREA},
};

}  // namespace

Fit FitFromName(const std::string& name) {
  if (name == "stretch") return Fit::kStretch;
  if (name == "contain") return Fit::kContain;
  if (name == "cover") return Fit::kCover;
  throw UsageError("--fit " + name + ": known are stretch, contain, cover");
}

std::uint32_t ModeFromName(const std::string& name) {
  for (const NamedMode& known : kModes) {
    if (name == known.name) return known.mode;
  }
  throw UsageError("--mode " + name + ": known are " + KnownModes());
}

std::string KnownModes() {
  std::string names;
  for (const NamedMode& known : kModes) {
    if (!names.empty()) names += ", ";
    names += known.name;
  }
  return names;
}

Rational ParseScale(const std::string& text) {
  const std::size_t slash = text.find('/');
  const auto num = ParseWhole(std::string_view(text).substr(0, slash));
  const auto den = slash == std::string::npos
                       ? std::optional<std::int64_t>(1)
                       : ParseWhole(std::string_view(text).substr(slash + 1));
  constexpr std::int64_t kLargest = 65535;
  if (!num || !den || *num < 1 || *den < 1 || *num > kLargest || *den > kLargest) {
    throw UsageError("--scale: '" + text + "' is no ratio; write N/M, such as 1/2");
  }
  return {*num, *den};
}

Size ScaledSize(int width, int height, const Rational& ratio, bool even) {
  const auto scaled = [&](int side) {
    const std::int64_t unit = even ? 2 : 1;
    const std::int64_t value =
        (2 * side * ratio.num + unit * ratio.den) / (2 * unit * ratio.den) * unit;
    if (value < 4 || value > 65535) {
      throw UsageError("--scale " + std::to_string(ratio.num) + "/" + std::to_string(ratio.den) +
                       " of " + std::to_string(width) + "x" + std::to_string(height) +
                       " leaves the sizes 4 to 65535");
    }
    return static_cast<int>(value);
  };
  return {scaled(width), scaled(height)};
}

}  // namespace zorhost
