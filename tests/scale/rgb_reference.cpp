// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/rgb_reference.h"

#include <algorithm>
#include <cmath>

#include "scale/reduction_rows.h"

namespace zor::test {
namespace {

using Pixel = std::array<int, 4>;

int LerpByte(int a, int b, int weight) {
  return a + static_cast<int>(std::floor((b - a) * weight / 256.0));
}
Pixel LerpPixel(const Pixel& a, const Pixel& b, std::uint32_t word) {
  Pixel out{};
  for (unsigned k = 0; k < 4; ++k) {
    out[k] = LerpByte(a[k], b[k], static_cast<int>((word >> (8 * k)) & 255));
  }
  return out;
}

/// The engine's walk over one pair of pictures.
class Walk {
 public:
  Walk(const RgbRef& target, const RgbRef& source, const RgbRefAxes& axes, ScaleMode mode,
       std::uint32_t background)
      : t_(target), s_(source), axes_(axes), mode_(mode) {
    for (unsigned k = 0; k < 4; ++k)
      background_[k] = static_cast<int>((background >> (8 * k)) & 255);
    across_ = RefAxis(t_.width, s_.width, s_.channels, axes.startX, axes.stepX,
                      mode == 5 ? SCALE_BILINEAR : mode);
    down_ = RefAxis(t_.height, s_.height, s_.stride, axes.startY, axes.stepY, mode);
    if (t_.channels == 3) {
      across_.last = std::max(across_.first, std::min(across_.last, t_.width - 1));
    } else if (s_.channels == 3) {
      across_.last = std::min(across_.last, t_.width - 1);
    }
    left_ = across_.first;
    right_ = t_.width - across_.last;
    middle_ = left_ + right_ < t_.width ? across_.last - across_.first : 0;
  }

  void Run() {
    if (mode_ == 0) {
      for (int y = 0; y < t_.height; ++y) Nearest(y);
    } else if (mode_ == 3 || mode_ == 4) {
      for (int y = 0; y < t_.height; ++y) BoxRow(y);
    } else {
      const bool held = (t_.channels == 3 && s_.channels == 3) ||
                        (s_.channels == 4 && t_.channels == 3 && mode_ == 2);
      if (held) down_.last = std::min(down_.last, t_.height - 1);
      for (int y = 0; y < t_.height; ++y) Interpolate(y);
    }
  }

 private:
  std::int64_t SourceAt(int y) const {
    return s_.start + down_.places[static_cast<std::size_t>(y)];
  }
  std::int64_t TargetAt(int y, int x) const { return t_.start + y * t_.stride + x * t_.channels; }
  std::uint32_t AcrossWord(int x) const { return across_.words[static_cast<std::size_t>(x)]; }
  std::int64_t AcrossPlace(int x) const { return across_.places[static_cast<std::size_t>(x)]; }
  std::uint32_t DownWord(int y) const { return down_.words[static_cast<std::size_t>(y)]; }

  Pixel Load(std::int64_t place) const {
    return {s_.Read(place), s_.Read(place + 1), s_.Read(place + 2), s_.Read(place + 3)};
  }
  /// Four bytes, whatever the pixel's size; what a 3-byte source leaves in the fourth is cleared
  /// in 4-byte pixels.
  void Store(std::int64_t place, const Pixel& pixel) const {
    for (unsigned k = 0; k < 3; ++k) t_.Write(place + k, pixel[k]);
    t_.Write(place + 3, t_.channels == 4 && s_.channels == 3 ? 0 : pixel[3]);
  }
  /// A pixel and nothing else.
  void StoreExact(std::int64_t place, const Pixel& pixel) const {
    t_.channels == 4 ? Store(place, pixel) : StoreThree(place, pixel);
  }
  void StoreThree(std::int64_t place, const Pixel& pixel) const {
    for (unsigned k = 0; k < 3; ++k) t_.Write(place + k, pixel[k]);
  }

  void Nearest(int y) const {
    for (int x = 0; x < t_.width; ++x) {
      const bool same = s_.width == t_.width;
      Pixel p = Load(SourceAt(y) + (same ? x * s_.channels : AcrossPlace(x)));
      StoreExact(TargetAt(y, x), p);
      if (same && s_.channels == 3 && t_.channels == 4) t_.Write(TargetAt(y, x) + 3, 0xFF);
    }
  }

  // --- Interpolation -------------------------------------------------------------------

  Pixel P(int y, int x) const { return Load(SourceAt(y) + AcrossPlace(x)); }
  Pixel Q(int y, int x) const { return Load(SourceAt(y) + AcrossPlace(x) + s_.channels); }
  Pixel S(int y, int x) const { return Load(SourceAt(y) + s_.stride + AcrossPlace(x)); }
  Pixel T(int y, int x) const {
    return Load(SourceAt(y) + s_.stride + AcrossPlace(x) + s_.channels);
  }

  Pixel TwoByTwo(int y, int x, const Pixel& a, const Pixel& b, const Pixel& c,
                 const Pixel& d) const {
    return LerpPixel(LerpPixel(a, b, AcrossWord(x)), LerpPixel(c, d, AcrossWord(x)), DownWord(y));
  }
  void Copy(int y, int x) const {
    Pixel p = P(y, x);
    if (s_.channels == 3 && t_.channels == 3) p = {p[0], p[0], p[1], 0};
    StoreExact(TargetAt(y, x), p);
  }
  void Corner(int y, int x) const {
    std::uint32_t word = 0;
    for (int k = 0; k < 32; k += 8) {
      word |= ((((AcrossWord(x) >> k) & 255) * ((DownWord(y) >> k) & 255)) >> 8) << k;
    }
    Store(TargetAt(y, x), LerpPixel(background_, P(y, x), word));
  }
  void EdgeH(int y, int x) const {
    Store(TargetAt(y, x),
          LerpPixel(background_, LerpPixel(P(y, x), Q(y, x), AcrossWord(x)), DownWord(y)));
  }
  void EdgeVLeft(int y, int x) const {
    Store(TargetAt(y, x), LerpPixel(LerpPixel(background_, P(y, x), AcrossWord(x)),
                                    LerpPixel(background_, S(y, x), AcrossWord(x)), DownWord(y)));
  }
  void EdgeVRight(int y, int x) const {
    Store(TargetAt(y, x),
          LerpPixel(background_, LerpPixel(P(y, x), S(y, x), DownWord(y)), AcrossWord(x)));
  }
  void Full(int y, int x) const {
    Store(TargetAt(y, x), TwoByTwo(y, x, P(y, x), Q(y, x), S(y, x), T(y, x)));
  }
  void HorizontalOnly(int y, int x, int rowsOn = 0) const {
    const std::int64_t place = SourceAt(y) + rowsOn * s_.stride + AcrossPlace(x);
    Pixel q = Load(place + s_.channels);
    if (s_.channels == 3) {
      const Pixel early = Load(place + 2);
      q = {early[1], early[2], early[3], 0};
    }
    Store(TargetAt(y, x), LerpPixel(Load(place), q, AcrossWord(x)));
  }
  void VerticalOnly(int y, int x) const {
    StoreExact(TargetAt(y, x), LerpPixel(P(y, x), S(y, x), DownWord(y)));
  }

  /// One region of one row. Bands: 't', 'm', 'b'; runs: 'l', 'm', 'r'.
  void Region(char band, char run, int y, int x) const {
    const bool mixed = s_.channels != t_.channels;
    const bool four = !mixed && s_.channels == 4;
    const Pixel& bg = background_;
    if (band == 'm' && run == 'm') return Full(y, x);
    if (mode_ != 2 && !four) {  // no background at all
      if (band != 'm' && run != 'm') return Copy(y, x);
      return band == 'm' ? VerticalOnly(y, x) : HorizontalOnly(y, x);
    }
    if (!mixed) {
      if (band == 'm') return run == 'l' ? EdgeVLeft(y, x) : EdgeVRight(y, x);
      if (run == 'm') return EdgeH(y, x);
      const bool outermost = band == 't' ? y == 0 : y == t_.height - 1;
      if (run == 'r' && !four && outermost) return Copy(y, x);
      return Corner(y, x);
    }
    if (band != 'm' && run == 'r') return Copy(y, x);
    Pixel out{};
    if (band == 't') {
      out = run == 'l' ? TwoByTwo(y, x, bg, bg, bg, P(y, x))
                       : TwoByTwo(y, x, bg, bg, P(y, x), Q(y, x));
    } else if (band == 'b') {
      out = run == 'l' ? TwoByTwo(y, x, bg, P(y, x), bg, bg)
                       : TwoByTwo(y, x, P(y, x), Q(y, x), bg, bg);
    } else {
      out = run == 'l' ? TwoByTwo(y, x, bg, P(y, x), bg, S(y, x))
                       : TwoByTwo(y, x, P(y, x), bg, S(y, x), bg);
    }
    Store(TargetAt(y, x), out);
  }

  void Interpolate(int y) const {
    const char band = y < down_.first ? 't' : y < down_.last ? 'm' : 'b';
    const std::uint32_t word = DownWord(y);
    const bool four = s_.channels == 4 && t_.channels == 4 && band == 'm';
    const bool sideBySide = four && axes_.startX == 0.0 && s_.width == t_.width;
    const bool atEnd = word == 0 || word == 0xFFFFFFFF;
    if (sideBySide && atEnd) {
      for (int x = 0; x < t_.width; ++x) {
        Store(TargetAt(y, x), Load(SourceAt(y) + (word == 0 ? 0 : s_.stride) + 4 * x));
      }
      return;
    }
    for (int i = 0; i < left_; ++i) Region(band, 'l', y, i);
    for (int i = 0; i < middle_; ++i) {
      const int x = across_.first + i;
      if (sideBySide) {
        const std::int64_t place = SourceAt(y) + 4 * x;
        Store(TargetAt(y, x), LerpPixel(Load(place), Load(place + s_.stride), word));
      } else if (four && atEnd) {
        HorizontalOnly(y, x, word == 0 ? 0 : 1);
      } else {
        Region(band, 'm', y, x);
      }
    }
    for (int i = 0; i < right_; ++i) Region(band, 'r', y, across_.last + i);
  }

  // --- Boxes ---------------------------------------------------------------------------

  void BoxRow(int y) const {
    const auto largest = std::max(std::trunc(axes_.stepX), std::trunc(axes_.stepY));
    const bool unrolled = largest <= 15;
    const bool mixed = s_.channels != t_.channels;
    // Below 16 the mixed pairs take each other's pixel size.
    const int fadeFrom = mixed && unrolled ? t_.channels : s_.channels;
    const int fadeTo = mixed && unrolled ? s_.channels : t_.channels;
    auto averages = [&](int first, int count) {
      unrolled ? Unrolled(y, first, count) : Generic(y, first, count);
    };
    if (mode_ == 3) return averages(0, t_.width);
    if (y < down_.first) {
      Fade(y, 0, t_.width, fadeFrom, fadeTo);
    } else if (y < down_.last) {
      Fade(y, 0, left_, fadeFrom, fadeTo);
      averages(across_.first, middle_);
      Fade(y, across_.last, right_, fadeFrom, fadeTo);
    } else if (!(s_.channels == 4 && t_.channels == 3 && unrolled)) {
      Fade(y, 0, t_.width, fadeFrom, fadeTo);
    }
  }

  void Unrolled(int y, int first, int count) const {
    const int rows = static_cast<int>(DownWord(y) & 0xFFFF);
    if (rows < 1 || rows > 16) return;
    int taken = first;  // boxes of no pixels take no place
    for (int i = 0; i < count; ++i) {
      const int columns = static_cast<int>(AcrossWord(first + i));
      Pixel out{};
      if (columns != 0) {
        Pixel sum{};
        const std::int64_t place = SourceAt(y) + AcrossPlace(taken++);
        for (int v = 0; v < rows; ++v) {
          for (int h = 0; h < columns; ++h) {
            const Pixel p = Load(place + v * s_.stride + h * s_.channels);
            for (unsigned k = 0; k < 4; ++k) sum[k] += p[k];
          }
        }
        const ReductionRow& row = ReductionOf(rows, columns, s_.channels, t_.channels);
        for (unsigned k = 0; k < 4; ++k) out[k] = std::min(255, Reduce(sum[k], row));
      }
      Store(TargetAt(y, first + i), out);
    }
  }

  static int Reduce(int sum, const ReductionRow& row) {
    int t = row.halve ? sum / 2 : sum;
    int acc = t;
    for (const char* c = row.shifts; *c != 0; ++c) {
      if (*c == ' ') continue;
      for (int k = *c - '0'; k > 0; --k) t /= 2;
      acc += t;
    }
    for (int k = row.finalShift; k > 0; --k) acc /= 2;
    return acc;
  }

  void SumBox(std::uint32_t* sums, int y, int x, std::uint32_t columns, std::uint32_t rows,
              int step) const {
    for (std::uint32_t v = 0; v < rows; ++v) {
      for (std::uint32_t h = 0; h < columns; ++h) {
        for (unsigned k = 0; k < 3; ++k) {
          sums[k] += static_cast<std::uint32_t>(s_.Read(
              SourceAt(y) + v * s_.stride + AcrossPlace(x) + h * static_cast<unsigned>(step) + k));
        }
      }
    }
  }

  void Generic(int y, int first, int count) const {
    const std::uint32_t rows = DownWord(y) & 0xFFFF;
    for (int i = 0; i < count; ++i) {
      const std::uint32_t columns = AcrossWord(first + i);
      if (columns * rows == 0) continue;
      std::uint32_t sums[3] = {};
      SumBox(sums, y, first + i, columns, rows, s_.channels);
      for (unsigned k = 0; k < 3; ++k) {
        t_.Write(TargetAt(y, first + i) + k, static_cast<int>(sums[k] / (columns * rows)));
      }
    }
  }

  void Fade(int y, int first, int count, int from, int to) const {
    const std::uint32_t rows = DownWord(y) & 0xFFFF;
    const std::uint32_t rowKeep = 255 - (DownWord(y) >> 16);
    std::int64_t place = TargetAt(y, first);
    for (int i = 0; i < count; ++i, place += to) {
      const std::uint32_t columns = AcrossWord(first + i) & 0xFFFF;
      const std::uint32_t keep = ((255 - (AcrossWord(first + i) >> 16)) * rowKeep) >> 8;
      std::uint32_t sums[3] = {};
      if (columns * rows != 0) SumBox(sums, y, first + i, columns, rows, from);
      for (unsigned k = 0; k < 3; ++k) {
        const std::uint32_t value =
            columns * rows == 0 ? 0 : (sums[k] * keep / (columns * rows)) / 255;
        t_.Write(place + k, static_cast<int>(value & 255));
      }
    }
  }

  const RgbRef& t_;
  const RgbRef& s_;
  const RgbRefAxes& axes_;
  const ScaleMode mode_;
  Pixel background_{};
  RgbRefAxis across_;
  RgbRefAxis down_;
  int left_ = 0;
  int middle_ = 0;
  int right_ = 0;
};

}  // namespace

void RefScaleRgb(const RgbRef& target, const RgbRef& source, const RgbRefAxes& axes, ScaleMode mode,
                 std::uint32_t background) {
  if (axes.stepX < 2.0 || axes.stepY < 2.0) {
    if (mode == SCALE_BOX) mode = SCALE_BILINEAR;
    if (mode == SCALE_BOX_FADE) mode = SCALE_BILINEAR_FADE;
  }
  if (target.width == 1 || target.height == 1 || source.width == 1 || source.height == 1) {
    mode = SCALE_NEAREST;
  }
  if (target.width == 0 || target.height == 0 || source.width == 0 || source.height == 0) return;
  if (mode == SCALE_AREA && target.channels == source.channels) mode = SCALE_BOX;
  Walk(target, source, axes, mode, background).Run();
}

}  // namespace zor::test
