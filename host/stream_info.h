// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// What a source tells about itself before its first frame.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "pixel_layout.h"

namespace zorhost {

struct Rational {
  std::int64_t num = 0;
  std::int64_t den = 1;
  bool set() const { return num > 0 && den > 0; }
  double value() const { return den ? static_cast<double>(num) / static_cast<double>(den) : 0.0; }
};

enum class Range { kUnknown, kLimited, kFull };
enum class Matrix { kUnknown, kBt601, kBt709, kOther };

struct StreamInfo {
  std::string path;
  std::string container;            ///< "y4m", "png", "mov,mp4,..."
  std::string codec;                ///< empty where the container says it all
  std::string pixelFormat;          ///< as the source calls it
  Layout layout = Layout::kYvu420;  ///< as the host reads it
  int width = 0;
  int height = 0;
  Rational frameRate;            ///< unset for stills
  Rational sampleAspect;         ///< unset or 1:1 for square pixels
  bool variableRate = false;     ///< frames carry timestamps that the rate doesn't tell
  std::int64_t frameCount = -1;  ///< -1: not known before the end
  Range range = Range::kUnknown;
  Matrix matrix = Matrix::kUnknown;
  std::string matrixName;  ///< the source's own word, for messages
  std::string chromaSiting;
  int rotation = 0;  ///< clockwise degrees that a viewer should turn the picture by
  bool mirrored = false;
  bool bottomUp = false;  ///< row order in the file, where the file says
  bool hasAlpha = false;
};

const char* RangeName(Range range);
const char* MatrixName(const StreamInfo& info);

/// What the user should know about colour before YUV meets RGB: the library has one matrix,
/// BT.601 in video range. Empty for RGB and gray sources.
std::vector<std::string> ColourNotes(const StreamInfo& info);

}  // namespace zorhost
