// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/scale_reference.h"

#include <cmath>
#include <cstring>

namespace zor::test {
namespace {

int FloorLerp(int a, int b, int w) {
  return a + static_cast<int>(std::floor((b - a) * w / 256.0));
}

struct RefAxis {
  std::vector<int> weight;
  std::vector<int> index;
  int first = 0;
  int last = 0;
};

RefAxis NearestAxis(int n, int length, double start, double step) {
  RefAxis axis{std::vector<int>(n), std::vector<int>(n), 0, n};
  double pos = start + 0.5 * step - 0.5;
  for (int i = 0; i < n; ++i) {
    if (pos < 0) {
      axis.first = std::max(axis.first, i + 1);
    } else if (pos > length - 1) {
      axis.last = std::min(axis.last, i);
      axis.index[i] = length - 1;
    } else {
      axis.index[i] = static_cast<int>(std::trunc(pos + 1e-9));
    }
    pos += step;
  }
  return axis;
}

RefAxis BilinearAxis(int n, int length, double pos, double step) {
  RefAxis axis{std::vector<int>(n), std::vector<int>(n), 0, n};
  for (int i = 0; i < n; ++i) {
    if (pos < 0) {
      axis.first = std::max(axis.first, i + 1);
    } else if (pos >= length - 1) {
      axis.last = std::min(axis.last, i);
      axis.index[i] = length - 1;
    } else {
      axis.index[i] = static_cast<int>(std::trunc(pos));
      const double frac = pos - axis.index[i];
      axis.weight[i] = frac > 0 ? static_cast<int>(std::trunc(frac * 255 + 0.5)) : 0;
    }
    pos += step;
  }
  return axis;
}

/// Indices of rows; the edges stay counts of pairs.
RefAxis PairAxis(int n, int length, double start, double step) {
  const RefAxis pairs = BilinearAxis(n >> 1, length >> 1, start + 0.5 * step - 0.5, step);
  RefAxis axis{std::vector<int>(n), std::vector<int>(n), pairs.first, n};
  if (pairs.last < (n >> 1)) axis.last = pairs.last;
  for (int i = 0; i < n; ++i) {
    const int row = i == n - 1 && n % 2 == 1 ? n - 2 : i;
    axis.weight[i] = pairs.weight[row / 2];
    axis.index[i] = 2 * pairs.index[row / 2] + row % 2;
  }
  return axis;
}

}  // namespace

void RefGray8(const RefTarget& target, const RefSource& source, double startX, double stepX,
              double startY, double stepY, ScaleMode mode) {
  const int width = target.width;
  const RefAxis across = mode == 0
                             ? NearestAxis(width, source.width, startX, stepX)
                             : BilinearAxis(width, source.width, startX + 0.5 * stepX - 0.5, stepX);
  const RefAxis down = mode == 0   ? NearestAxis(target.height, source.height, startY, stepY)
                       : mode == 5 ? PairAxis(target.height, source.height, startY, stepY)
                                   : BilinearAxis(target.height, source.height, startY, stepY);
  // The table block up to the end of the offsets: weight bytes, then offset words, low byte first.
  std::vector<int> block;
  for (int weight : across.weight) block.push_back(weight);
  for (int index : across.index) {
    for (int shift = 0; shift < 32; shift += 8) block.push_back((index >> shift) & 255);
  }
  const bool narrow = startX == 0.0 && width == source.width;
  const int left = across.first;
  const int right = width - across.last;
  const int middle = left + right < width ? across.last - across.first : 0;
  for (int y = 0; y < target.height; ++y) {
    const int row = down.index[y];
    const int wy = down.weight[y];
    const bool top = y < down.first;
    const bool bottom = !top && y >= down.last;
    for (int x = 0; x < width; ++x) {
      const int column = across.index[x];
      int value = source.At(row, column);
      const int i = x - left;
      if (mode == 0) {
        if (width == source.width) value = source.At(row, x);
      } else if (narrow && (top || (!bottom && wy == 0))) {
        value = source.At(row, x);
      } else if (!top && !bottom && i >= 0 && i < middle) {
        if (narrow) {
          value = FloorLerp(source.At(row, x), source.At(row + 1, x), wy);
        } else {
          const bool single = i >= middle - middle % 4;
          const int wx = single ? block[left + 4 * i] : across.weight[x];
          const int upper = FloorLerp(value, source.At(row, column + 1), wx);
          const int lower =
              FloorLerp(source.At(row + 1, column), source.At(row + 1, column + 1), wx);
          value = FloorLerp(upper, lower, wy);
        }
      }
      target.pixels[y * target.stride + x] = static_cast<std::uint8_t>(value);
    }
  }
}

void RefArea(const RefTarget& target, const RefSource& source) {
  struct Entry {
    int offset;
    int index;
    float weight;
  };
  const int channels = source.channels;
  const float sx = static_cast<float>(static_cast<double>(source.width) / target.width);
  const float sy = static_cast<float>(static_cast<double>(source.height) / target.height);
  const float norm = static_cast<float>(1.0 / (static_cast<double>(sy) * static_cast<double>(sx)));
  std::vector<Entry> list;
  for (int j = 0; j < target.width; ++j) {
    const float x1 = static_cast<float>(static_cast<double>(j) * sx);
    const int c = static_cast<int>(std::ceil(static_cast<double>(x1)));
    const float x2 = static_cast<float>(static_cast<double>(x1) + sx);
    const int f = static_cast<int>(std::floor(static_cast<double>(x2)));
    const int d = j * channels;
    if (x1 < static_cast<float>(c)) {
      list.push_back(
          {(c - 1) * channels, d, static_cast<float>((static_cast<double>(c) - x1) * norm)});
    }
    for (int k = c; k <= f - 1; ++k) list.push_back({k * channels, d, norm});
    const float r = static_cast<float>(static_cast<double>(x2) - f);
    if (r > 0.001) {
      list.push_back({f * channels, d, static_cast<float>(static_cast<double>(norm) * r)});
    }
  }
  const int values = target.width * channels;
  std::vector<float> a(values, 0.0f);
  std::vector<float> b(values, 0.0f);
  int dest = 1;
  for (int y = 0; y < source.height; ++y) {
    for (const Entry& entry : list) {
      for (int channel = 0; channel < channels; ++channel) {
        const float product =
            static_cast<float>(source.At(y, entry.offset + channel)) * entry.weight;
        a[entry.index + channel] = a[entry.index + channel] + product;
      }
    }
    const float edge = static_cast<float>(dest) * sy;
    const float top = static_cast<float>(y + 1);
    if (top >= edge || y == source.height - 1) {
      float f = top - edge;
      if (!(f > 0)) f = 0;
      std::uint8_t* out = target.pixels + (dest - 1) * target.stride;
      for (int v = 0; v < values; ++v) {
        if (std::fabs(static_cast<double>(f)) >= 0.001) {
          const float sum = a[v] * (1.0f - f) + b[v] + 0.5f;
          out[v] = static_cast<std::uint8_t>(static_cast<int>(sum));
          b[v] = a[v] * f;
        } else {
          out[v] = static_cast<std::uint8_t>(static_cast<int>(a[v] + b[v] + 0.5f));
          b[v] = 0;
        }
        a[v] = 0;
      }
      ++dest;
    } else {
      for (int v = 0; v < values; ++v) {
        b[v] = b[v] + a[v];
        a[v] = 0;
      }
    }
  }
}

void RefYuy2(const RefTarget& target, const RefSource& source) {
  const float sx = static_cast<float>(source.width) / static_cast<float>(target.width);
  const float sy = static_cast<float>(source.height) / static_cast<float>(target.height);
  const auto sample = [&](int x, int y, int byte) {
    y = y < 0 ? 0 : y >= source.height ? source.height - 1 : y;
    const int place = x < 0 ? 0 : x >= source.width ? source.width * 2 - 2 : x * 2;
    return static_cast<int>(source.pixels[y * source.stride + place + byte]);
  };
  for (int y = 0; y < target.height; ++y) {
    const float yy = static_cast<float>(y) * sy;
    const int y0 = static_cast<int>(yy);
    const double fy = yy - static_cast<float>(y0);
    for (int x = 0; x < target.width; ++x) {
      const float xx = static_cast<float>(x) * sx;
      const int x0 = static_cast<int>(xx);
      const double fx = xx - static_cast<float>(x0);
      for (int byte = 0; byte < 2; ++byte) {
        const int a = sample(x0, y0, byte);
        const int b = sample(x0 + 1, y0, byte);
        const int c = sample(x0, y0 + 1, byte);
        const int d = sample(x0 + 1, y0 + 1, byte);
        const float top = static_cast<float>(a - (a - b) * fx);
        const double bottom = c - (c - d) * fx;
        const double out = top - (top - bottom) * fy;
        target.pixels[y * target.stride + 2 * x + byte] =
            static_cast<std::uint8_t>(static_cast<int>(out));
      }
    }
  }
}

std::vector<float> RefGaussian(float sigma) {
  const int r = static_cast<int>(sigma * 3.0);
  std::vector<float> g(2 * r + 1);
  float sum = 0;
  for (int t = -r; t <= r; ++t) {
    const double s = sigma;
    g[t + r] =
        static_cast<float>(std::exp(-0.5 * t * t / (s * s)) / (std::sqrt(6.283185005187988) * s));
    sum += g[t + r];
  }
  for (float& weight : g) weight = weight / sum;
  return g;
}

std::vector<std::uint8_t> RefBlur(const std::vector<std::uint8_t>& plane, int width, int height,
                                  float sigma) {
  const std::vector<float> g = RefGaussian(sigma);
  const int r = static_cast<int>(g.size()) >> 1;
  std::vector<float> image(static_cast<std::size_t>(width) * height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      float s = 0;
      float w = 0;
      for (int t = -r; t <= r; ++t) {
        if (x + t < 0 || x + t >= width) continue;
        s += static_cast<float>(plane[y * width + x + t]) * g[t + r];
        w += g[t + r];
      }
      image[y * width + x] = s / w;
    }
  }
  std::vector<std::uint8_t> out(plane.size());
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      float s = 0;
      float w = 0;
      for (int t = -r; t <= r; ++t) {
        if (y + t < 0 || y + t >= height) continue;
        s += image[(y + t) * width + x] * g[t + r];
        w += g[t + r];
      }
      const float low = static_cast<float>(static_cast<int>(s) & 255);
      out[y * width + x] = static_cast<std::uint8_t>(static_cast<int>(low / w));
    }
  }
  return out;
}

void RefSharpen(std::uint8_t* plane, int width, int height, int stride) {
  std::vector<std::uint8_t> packed;
  for (int y = 0; y < height; ++y) {
    packed.insert(packed.end(), plane + y * stride, plane + y * stride + width);
  }
  const std::vector<std::uint8_t> blurred = RefBlur(packed, width, height, 1.5f);
  int least = packed.empty() ? 0 : 1000;
  int most = packed.empty() ? 0 : -1000;
  for (std::size_t i = 0; i < packed.size(); ++i) {
    least = std::min(least, packed[i] - blurred[i]);
    most = std::max(most, packed[i] - blurred[i]);
  }
  const int hi = most - 30;
  const int lo = least + 30;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const int value = packed[y * width + x];
      const int d = value - blurred[y * width + x];
      int result = value;
      if (d > 0 && hi > 0) result = value + ((255 - value) * d) / hi;
      if (d < 0 && lo < 0) result = value - (value * d) / lo;
      plane[y * stride + x] = static_cast<std::uint8_t>(result < 0     ? 0
                                                        : result > 255 ? 255
                                                                       : result);
    }
  }
}

void RefScalePlane(const RefTarget& target, const RefSource& source, double stepX, double stepY,
                   ScaleMode mode) {
  if (stepX < 2.0 || stepY < 2.0) {
    if (mode == SCALE_BOX_FADE) mode = SCALE_BILINEAR_FADE;
    if (mode == SCALE_BOX) mode = SCALE_BILINEAR;
  }
  if (source.width == 1 || source.height == 1 || target.width == 1 || target.height == 1) mode = 0;
  if (source.width == 0 || source.height == 0 || target.width == 0 || target.height == 0) return;
  if (mode == SCALE_AREA && source.width > target.width && source.height > target.height) {
    return RefArea(target, source);
  }
  RefGray8(target, source, 0.0, stepX, 0.0, stepY, mode == SCALE_AREA ? SCALE_BOX : mode);
}

void RefYuv420(std::uint8_t* source, int sourceWidth, int sourceHeight, int sourceStride,
               const int* sourceRect, std::uint8_t* target, int targetWidth, int targetHeight,
               int targetStride, const int* targetRect, ScaleMode mode) {
  std::uint8_t* in[3] = {source, source + sourceHeight * sourceStride, nullptr};
  in[2] = in[1] + (sourceHeight / 2) * (sourceStride / 2);
  std::uint8_t* out[3] = {target, target + targetHeight * targetStride, nullptr};
  out[2] = out[1] + ((targetStride / 2) * targetHeight) / 2;
  const std::uint8_t* ends[3] = {out[1], out[2], out[2] + (targetHeight / 2) * (targetStride / 2)};
  int w = sourceWidth;
  int h = sourceHeight;
  if (sourceRect != nullptr) {
    w = (sourceRect[2] - sourceRect[0]) & ~1;
    h = (sourceRect[3] - sourceRect[1]) & ~1;
    in[0] += sourceRect[1] * sourceStride + sourceRect[0];
    for (int k = 1; k < 3; ++k) {
      in[k] += sourceRect[0] / 2 + ((sourceRect[1] / 2) * sourceStride) / 2;
    }
  }
  int dw = targetWidth;
  int dh = targetHeight;
  if (targetRect != nullptr) {
    dw = (targetRect[2] - targetRect[0]) & ~1;
    dh = (targetRect[3] - targetRect[1]) & ~1;
    out[0] += targetRect[1] * targetStride + targetRect[0];
    for (int k = 1; k < 3; ++k) {
      out[k] += (targetRect[1] / 2) * (targetStride / 2) + targetRect[0] / 2;
    }
  }
  if (w <= 0 || h <= 0 || dw <= 0 || dh <= 0) return;
  const auto src = [&](int k, int stride) {
    return k == 0 ? RefSource{in[0], w, h, sourceStride, 1}
                  : RefSource{in[k], w / 2, h / 2, stride, 1};
  };
  const auto dst = [&](int k) {
    return k == 0 ? RefTarget{out[0], dw, dh, targetStride}
                  : RefTarget{out[k], dw / 2, dh / 2, targetStride / 2};
  };
  const auto area = [&](int k, int stride) {
    const RefSource from = src(k, stride);
    const RefTarget to = dst(k);
    if (to.width == 0 || to.height == 0) return;
    if (from.width != to.width || from.height != to.height) return RefArea(to, from);
    for (int i = 0; i < from.height * from.stride && to.pixels + i < ends[k]; ++i) {
      to.pixels[i] = from.pixels[i];
    }
  };
  const double stepX = static_cast<double>(w) / dw;
  const double stepY = static_cast<double>(h) / dh;
  const auto planes = [&](ScaleMode luma, ScaleMode chroma) {
    RefScalePlane(dst(0), src(0, sourceStride), stepX, stepY, luma);
    RefScalePlane(dst(1), src(1, sourceStride / 2), stepX, stepY, chroma);
    RefScalePlane(dst(2), src(2, sourceStride / 2), stepX, stepY, chroma);
  };
  const bool larger = w > dw && h > dh;
  if (mode >= 0xFF00 && mode <= 0xFF02) {
    if (w == dw && h == dh) {
      for (int y = 0; y < h; ++y) {
        std::memcpy(out[0] + y * targetStride, in[0] + y * sourceStride, w);
      }
      for (int y = 0; y < h / 2; ++y) {
        for (int k = 2; k > 0; --k) {
          for (int x = 0; x < w / 2; ++x) {
            const int place = y * (sourceStride / 2) + x;
            if (out[k] + place < ends[2]) out[k][place] = in[k][place];
          }
        }
      }
    } else if (mode == 0xFF00) {
      planes(0, 0);
    } else if (mode == 0xFF01) {
      RefSharpen(in[0], w, h, sourceStride);
      planes(1, 1);
    } else if (larger) {
      area(0, sourceStride);
      area(2, w / 2);
      area(1, sourceStride / 2);
    } else {
      planes(2, 2);
    }
    return;
  }
  if (mode == SCALE_AREA && larger) {
    for (int k = 0; k < 3; ++k) area(k, sourceStride / 2);
    return;
  }
  if (mode == SCALE_AREA) mode = SCALE_BILINEAR_FADE;
  planes(mode, mode == SCALE_ROW_PAIRS ? SCALE_BILINEAR : mode);
}

}  // namespace zor::test
