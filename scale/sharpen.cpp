// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/sharpen.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>

#include "platform/compiler.h"
#include "platform/memory.h"

namespace zor {
namespace {

/// How far below the strongest detail the limit lies; what is beyond it is held.
constexpr std::int32_t kMargin = 30;

/// One column of the pass across, with the window cut at the row's ends.
float BlurAcrossAt(const std::uint8_t* row, std::int32_t width, std::int32_t x,
                   const GaussianKernel& kernel) noexcept {
  const std::int32_t reach = kernel.length >> 1;
  float sum = 0;
  float total = 0;
  for (std::int32_t t = -reach; t <= reach; ++t) {
    if (x + t < 0 || x + t >= width) continue;
    sum += static_cast<float>(row[x + t]) * kernel.weights[t + reach];
    total += kernel.weights[t + reach];
  }
  return sum / total;
}

void BlurAcross(const std::uint8_t* row, std::int32_t width, const GaussianKernel& kernel,
                float* out) noexcept {
  const std::int32_t reach = kernel.length >> 1;
  const std::int32_t left = std::min(reach, width);
  const std::int32_t right = std::max(left, width - reach);
  for (std::int32_t x = 0; x < left; ++x) out[x] = BlurAcrossAt(row, width, x, kernel);
  for (std::int32_t x = right; x < width; ++x) out[x] = BlurAcrossAt(row, width, x, kernel);

  // Away from the ends every window is whole, so columns can be summed side by side.
  float total = 0;
  for (std::int32_t t = 0; t < kernel.length; ++t) total += kernel.weights[t];
  constexpr std::int32_t kTogether = 16;
  std::int32_t x = left;
  for (; x + kTogether <= right; x += kTogether) {
    float sums[kTogether] = {};
    for (std::int32_t t = 0; t < kernel.length; ++t) {
      const float weight = kernel.weights[t];
      const std::uint8_t* in = row + x + t - reach;
      for (std::int32_t i = 0; i < kTogether; ++i) sums[i] += static_cast<float>(in[i]) * weight;
    }
    for (std::int32_t i = 0; i < kTogether; ++i) out[x + i] = sums[i] / total;
  }
  for (; x < right; ++x) out[x] = BlurAcrossAt(row, width, x, kernel);
}

/// The rows of the pass across that the pass down still needs, each in its place by row number.
class AcrossRing {
 public:
  AcrossRing(float* memory, std::int32_t width, std::int32_t length)
      : memory_(memory), width_(width), length_(length) {}
  float* Row(std::int32_t y) const noexcept {
    return memory_ + static_cast<std::ptrdiff_t>(y % length_) * width_;
  }

 private:
  float* memory_;
  std::int32_t width_;
  std::int32_t length_;
};

/// One row of the pass down. @p sums is scratch of one row.
void BlurDown(const AcrossRing& ring, std::int32_t width, std::int32_t height, std::int32_t y,
              const GaussianKernel& kernel, float* ZOR_RESTRICT sums,
              std::uint8_t* ZOR_RESTRICT out) noexcept {
  const std::int32_t reach = kernel.length >> 1;
  const std::int32_t first = std::max(-reach, -y);
  const std::int32_t last = std::min(reach, height - 1 - y);
  std::memset(sums, 0, static_cast<std::size_t>(width) * sizeof(float));
  float total = 0;
  for (std::int32_t t = first; t <= last; ++t) {
    const float weight = kernel.weights[t + reach];
    const float* ZOR_RESTRICT row = ring.Row(y + t);
    for (std::int32_t x = 0; x < width; ++x) sums[x] += row[x] * weight;
    total += weight;
  }
  for (std::int32_t x = 0; x < width; ++x) {
    const std::int32_t low = static_cast<std::int32_t>(sums[x]) & 255;
    out[x] = static_cast<std::uint8_t>(static_cast<std::int32_t>(static_cast<float>(low) / total));
  }
}

/// Detail is what a plane has more than its blur, or less. What reaches these limits is stretched
/// to the end of the byte range.
struct DetailLimits {
  std::int32_t low;
  std::int32_t high;
};

DetailLimits LimitsOf(const std::uint8_t* plane, const std::uint8_t* blurred,
                      std::uint64_t size) noexcept {
  std::int32_t least = 255;
  std::int32_t most = -255;
  for (std::uint64_t i = 0; i < size; ++i) {
    const std::int32_t detail = plane[i] - blurred[i];
    least = std::min(least, detail);
    most = std::max(most, detail);
  }
  return {least + kMargin, most - kMargin};
}

std::uint8_t Held(std::int32_t value) noexcept {
  return static_cast<std::uint8_t>(std::clamp(value, 0, 255));
}

/// Stretches the detail of a row to its limits; a limit of the wrong sign leaves its side alone.
void StretchDetail(const std::uint8_t* row, const std::uint8_t* blurred, std::int32_t width,
                   const DetailLimits& limits, std::uint8_t* out) noexcept {
  for (std::int32_t x = 0; x < width; ++x) {
    const std::int32_t value = row[x];
    const std::int32_t detail = value - blurred[x];
    if (detail > 0 && limits.high > 0) {
      out[x] = Held(value + (255 - value) * detail / limits.high);
    } else if (detail < 0 && limits.low < 0) {
      out[x] = Held(value - value * detail / limits.low);
    }
  }
}

}  // namespace

GaussianKernel MakeGaussianKernel(float sigma) noexcept {
  GaussianKernel kernel{};
  const auto reach = static_cast<std::int32_t>(
      std::min(static_cast<double>(sigma) * 3.0, (kMostGaussianWeights - 1) / 2.0));
  kernel.length = 2 * reach + 1;
  const double s = sigma;
  float sum = 0;
  for (std::int32_t i = 0; i < kernel.length; ++i) {
    const double t = i - (kernel.length >> 1);
    kernel.weights[i] =
        static_cast<float>(std::exp(-0.5 * t * t / (s * s)) / (std::sqrt(6.283185005187988) * s));
    sum += kernel.weights[i];
  }
  for (std::int32_t i = 0; i < kernel.length; ++i) kernel.weights[i] /= sum;
  return kernel;
}

bool GaussianBlurPlane(const std::uint8_t* in, std::int32_t width, std::int32_t height, float sigma,
                       std::uint8_t* out) noexcept {
  if (width <= 0 || height <= 0) return true;
  const GaussianKernel kernel = MakeGaussianKernel(sigma);
  const auto rowLength = static_cast<std::uint64_t>(width);
  WorkArray<float> rows(rowLength * static_cast<std::uint64_t>(kernel.length + 1));
  if (!rows) return false;
  const AcrossRing ring(rows.data(), width, kernel.length);
  float* sums = rows.data() + rowLength * static_cast<std::uint64_t>(kernel.length);
  std::int32_t ready = 0;
  for (std::int32_t y = 0; y < height; ++y) {
    for (; ready < height && ready <= y + (kernel.length >> 1); ++ready) {
      BlurAcross(in + static_cast<std::ptrdiff_t>(ready) * width, width, kernel, ring.Row(ready));
    }
    BlurDown(ring, width, height, y, kernel, sums, out + static_cast<std::ptrdiff_t>(y) * width);
  }
  return true;
}

bool SharpenPlane(std::uint8_t* plane, std::int32_t width, std::int32_t height,
                  std::int32_t stride) noexcept {
  if (width <= 0 || height <= 0) return true;
  const std::uint64_t size = static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height);
  WorkArray<std::uint8_t> packed(size);
  WorkArray<std::uint8_t> blurred(size);
  if (!packed || !blurred) return false;
  for (std::int32_t y = 0; y < height; ++y) {
    std::memcpy(packed.data() + static_cast<std::ptrdiff_t>(y) * width,
                plane + static_cast<std::ptrdiff_t>(y) * stride, static_cast<std::size_t>(width));
  }
  if (!GaussianBlurPlane(packed.data(), width, height, kSharpenSigma, blurred.data())) return false;

  const DetailLimits limits = LimitsOf(packed.data(), blurred.data(), size);
  if (limits.high <= 0 && limits.low >= 0) return true;
  for (std::int32_t y = 0; y < height; ++y) {
    const std::ptrdiff_t row = static_cast<std::ptrdiff_t>(y) * width;
    StretchDetail(packed.data() + row, blurred.data() + row, width, limits,
                  plane + static_cast<std::ptrdiff_t>(y) * stride);
  }
  return true;
}

}  // namespace zor
