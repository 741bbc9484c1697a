// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// An unsharp step that stretches the strongest detail of a plane to the limit of the byte range.

#include <cstdint>

namespace zor {

/// The spread of the blur that `SharpenPlane` subtracts.
inline constexpr float kSharpenSigma = 1.5f;
/// Most weights that `MakeGaussianKernel` makes.
inline constexpr std::int32_t kMostGaussianWeights = 33;

/// Weights that fall off to both sides of the middle one and sum to about 1.
struct GaussianKernel {
  float weights[kMostGaussianWeights];
  std::int32_t length;  ///< odd
};

/// @param sigma above 0; the kernel reaches 3 sigma, but no more than its 33 weights hold.
GaussianKernel MakeGaussianKernel(float sigma) noexcept;

/// Blurs a packed plane, across and then down. Samples outside of the plane are left out and the
/// rest weighted up: across by a division of floats, down by a division of the truncated sum, so
/// that the result there is the mean of a sum that has lost its fraction first.
/// @return false if memory was refused; @p out is then unset.
bool GaussianBlurPlane(const std::uint8_t* in, std::int32_t width, std::int32_t height, float sigma,
                       std::uint8_t* out) noexcept;

/// Sharpens a plane in place. A plane whose detail stays within 30 on either side is left as it is.
/// @return false if memory was refused; the plane is then as it was.
bool SharpenPlane(std::uint8_t* plane, std::int32_t width, std::int32_t height,
                  std::int32_t stride) noexcept;

}  // namespace zor
