// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// What the engines serve: the one table that the drivers ask. A pair that isn't in it is answered
/// with `VED_E_UNSUPPORTED`.

#include <cstdint>

namespace zor {

/// A conversion wrapper in its widest form; see convert/wrappers.h.
using ConversionWrapper = std::uint32_t (*)(const std::uint8_t* source, std::int32_t sourceStride,
                                            std::uint8_t* target, std::int32_t targetStride,
                                            std::int32_t width, std::int32_t height,
                                            std::uint32_t features, std::int32_t bitDepth,
                                            std::uint32_t orientation);

/// Which orientation argument a wrapper is given.
enum class OrientationArgument {
  kRowOrder,  ///< into a new block the surface's `Orientation`; into the host's memory whether the
              ///< two row orders differ
  kOne        ///< always 1: rows stay as they are
};

/// One pair of formats.
struct Conversion {
  std::int32_t from;
  std::int32_t to;
  ConversionWrapper wrapper;  ///< null: the pair is done in place by exchanging planes
  std::int32_t bitDepth;      ///< 0: that of the surface's description
  OrientationArgument orientation;
};

/// @return the conversion of a pair, or null if there is none.
const Conversion* FindConversion(std::int32_t from, std::int32_t to) noexcept;

}  // namespace zor
