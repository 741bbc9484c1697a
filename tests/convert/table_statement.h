// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// What every row of the kernel table is expected to do, written out in plain integers at run time,
/// without any of the kernels' policies.

#include "convert/expected_colour.h"
#include "convert/operand.h"
#include "convert/table/kernel_layouts.h"

namespace zor::test {

/// Which bytes of the four of a pair hold what.
struct PairBytes {
  int y0, y1, u, v;
};

inline PairBytes BytesOfPair(Layout layout) {
  switch (layout) {
    case Layout::kYuy2:
      return {0, 2, 1, 3};
    case Layout::kYvyu:
      return {0, 2, 3, 1};
    case Layout::kUyvy:
      return {1, 3, 0, 2};
    case Layout::kVyuy:
      return {1, 3, 2, 0};
    default:
      ADD_FAILURE() << "no packing";
      return {};
  }
}

inline bool IsPacking(Layout layout) {
  return layout == Layout::kYuy2 || layout == Layout::kYvyu || layout == Layout::kUyvy ||
         layout == Layout::kVyuy;
}
inline bool IsThreePlanes(Layout layout) {
  return layout == Layout::kYuv420 || layout == Layout::kYvu420;
}

/// Bytes of a pixel of the packed layouts; of planes 1.
inline int PixelBytes(Layout layout) {
  switch (layout) {
    case Layout::kRgb32:
    case Layout::kRgb32Luma:
    case Layout::kRgb32Keyed:
      return 4;
    case Layout::kRgb24:
      return 3;
    case Layout::kRgb565:
    case Layout::kRgb555:
      return 2;
    default:
      return IsPacking(layout) ? 2 : 1;
  }
}

inline Bgr ReadColour(Layout layout, Operand& from, std::ptrdiff_t at) {
  if (PixelBytes(layout) == 4) from.Get(at + 3);  // a whole pixel may be read
  if (PixelBytes(layout) > 2) return {from.Get(at), from.Get(at + 1), from.Get(at + 2)};
  const int word = from.Get(at) + 256 * from.Get(at + 1);
  if (layout == Layout::kRgb565) {
    return {word % 32 * 8, word / 32 % 64 * 4, word / 2048 % 32 * 8};
  }
  return {word % 32 * 8, word / 32 % 32 * 8, word / 1024 % 32 * 8};
}

inline void WriteColour(Layout layout, Operand& to, std::ptrdiff_t at, const Bgr& c, int fourth) {
  if (layout == Layout::kRgb565 || layout == Layout::kRgb555) {
    const int word = layout == Layout::kRgb565 ? c.r / 8 * 2048 + c.g / 4 * 32 + c.b / 8
                                               : c.r / 8 * 1024 + c.g / 8 * 32 + c.b / 8;
    to.Put(at, word % 256);
    to.Put(at + 1, word / 256);
    return;
  }
  to.Put(at, c.b);
  to.Put(at + 1, c.g);
  to.Put(at + 2, c.r);
  if (PixelBytes(layout) == 4) to.Put(at + 3, fourth);
}

inline int Smooth3(int above, int centre, int below) {
  return Avg(Avg(above, below), centre);
}

/// One run of a kernel: what it converts and over which pictures.
struct TableRun {
  Layout source;
  Layout target;
  bool smoothed;
  int block;  ///< columns of a block with 6-bit colours; 0 if all come from tables
  std::int32_t width;
  std::int32_t height;
  std::int32_t threshold;

  int rows() const { return height < 0 ? -height : height; }
  int odd() const { return width % 2; }
  int targetStride() const { return width * PixelBytes(target) + 5; }
  int targetChroma() const { return width / 2 + 3; }
  int sourceStride() const { return width * PixelBytes(source) + 7; }
  int sourceChroma() const { return source == Layout::kLumaChroma ? width + 1 : width / 2 + 2; }
};

/// Operands: target or luma, U, V; source or luma, U, V.
struct TableOperands {
  Operand to[3] = {Operand(11), Operand(12), Operand(13)};
  Operand from[3] = {Operand(21), Operand(22), Operand(23)};
};

class TableStatement {
 public:
  TableStatement(const TableRun& run, TableOperands& operands) : r(run), o(operands) {}

  void State() {
    if (r.width <= 0) return;
    if (r.source == Layout::kPlane || (r.source == r.target && IsByteCopy())) {
      CopyPlane(o.to[0], 0, r.targetStride(), o.from[0], r.sourceStride(),
                r.width * PixelBytes(r.source), r.rows());
    } else if (IsThreePlanes(r.source) && IsThreePlanes(r.target)) {
      CopyPlanes();
    } else if (r.target == Layout::kLumaChroma16) {
      CopyToLumaChroma();
    } else if (r.source == Layout::kYuv420 || r.source == Layout::kLumaChroma) {
      FromPlanes();
    } else if (r.target == Layout::kYuv420) {
      ToPlanes();
    } else {
      PackedToPacked();
    }
  }

 private:
  bool IsByteCopy() const {
    const bool words = r.source == Layout::kRgb565 || r.source == Layout::kRgb555;
    return !IsThreePlanes(r.source) && !(words && r.smoothed);
  }

  // Planes and copies: sizes are exact, the source is upside down at a negative height.

  int PlaneSample(Operand& from, int stride, int rows, int y, int x) {
    const auto at = [&](int row) {
      return from.Get((r.height < 0 ? rows - 1 - row : row) * stride + x);
    };
    if (!r.smoothed || y == 0 || y == rows - 1) return at(y);
    return Smooth3(at(y - 1), at(y), at(y + 1));
  }
  void CopyPlane(Operand& to, int toOffset, int toStride, Operand& from, int stride, int bytes,
                 int rows) {
    for (int y = 0; y < rows; ++y) {
      for (int x = 0; x < bytes; ++x) {
        to.Put(toOffset + y * toStride + x, PlaneSample(from, stride, rows, y, x));
      }
    }
  }
  void CopyPlanes() {
    const bool exchanged = r.source != r.target;
    CopyPlane(o.to[0], 0, r.targetStride(), o.from[0], r.sourceStride(), r.width, r.rows());
    for (int i = 1; i <= 2; ++i) {
      CopyPlane(o.to[exchanged ? 3 - i : i], 0, r.targetChroma(), o.from[i], r.sourceChroma(),
                r.width / 2, r.rows() / 2);
    }
  }
  void CopyToLumaChroma() {
    CopyPlane(o.to[0], 0, r.targetStride(), o.from[0], r.sourceStride(), r.width, r.rows());
    const int rows = r.rows() / 2;
    const int begin = r.targetStride() * ((r.rows() + 15) / 16 * 16);
    for (int y = 0; y < rows; ++y) {
      for (int x = 0; x < r.width / 2; ++x) {
        for (int i = 1; i <= 2; ++i) {
          o.to[0].Put(begin + y * r.targetStride() + 2 * x + i - 1,
                      PlaneSample(o.from[i], r.sourceChroma(), rows, y, x));
        }
      }
    }
  }

  // From planes.

  /// Luma of row y; its place follows the drift: by the row when straight, by the pair when not.
  int LumaAt(int y, int x) {
    const int stride = r.sourceStride();
    if (!r.smoothed) return o.from[0].Get(y * (stride - r.odd()) + x);
    const int pairs = r.rows() / 2;
    const auto at = [&](int row) { return o.from[0].Get(row * stride - y / 2 * r.odd() + x); };
    if (y == 0 || y == 2 * pairs - 1) return at(y);
    return Smooth3(at(y - 1), at(y), at(y + 1));
  }
  int ChromaAt(int plane, int pair, int x) {
    const bool interleaved = r.source == Layout::kLumaChroma;
    return o.from[interleaved ? 1 : plane].Get(pair * r.sourceChroma() +
                                               (interleaved ? 2 * x + plane - 1 : x));
  }
  int ChromaOf(int plane, int y, int x, bool inBlock) {
    const int pairs = r.rows() / 2;
    const int p = y / 2;
    if (!r.smoothed || pairs == 1) return ChromaAt(plane, p, x);
    const bool averaged = inBlock || IsPacking(r.target);
    if (p == 0) {
      return averaged ? Avg(ChromaAt(plane, 0, x), ChromaAt(plane, 1, x)) : ChromaAt(plane, 0, x);
    }
    if (p == pairs - 1) {
      return averaged ? Avg(ChromaAt(plane, p - 1, x), ChromaAt(plane, p, x))
                      : ChromaAt(plane, p - 1, x);
    }
    return Smooth3(ChromaAt(plane, p - 1, x), ChromaAt(plane, p, x), ChromaAt(plane, p + 1, x));
  }
  void FromPlanes() {
    const int bytes = PixelBytes(r.target);
    const int rows = r.smoothed ? r.rows() / 2 * 2 : r.rows();
    for (int y = 0; y < rows; ++y) {
      const int line = r.height < 0 ? r.rows() - 1 - y : y;
      const int start = line * r.targetStride() - (r.smoothed ? y / 2 : y) * r.odd() * bytes;
      for (int x = 0; x < r.width - r.odd(); ++x) {
        const bool inBlock = InBlock(x);
        PutYuv(start, x, LumaAt(y, x), ChromaOf(1, y, x / 2, inBlock),
               ChromaOf(2, y, x / 2, inBlock));
      }
    }
  }

  bool InBlock(int x) const { return r.block != 0 && x < r.width / r.block * r.block; }

  /// Puts column x of a row by its Y, U and V.
  void PutYuv(int start, int x, int y, int u, int v) {
    if (IsPacking(r.target)) {
      const PairBytes pair = BytesOfPair(r.target);
      const int at = start + x / 2 * 4;
      o.to[0].Put(at + (x % 2 == 0 ? pair.y0 : pair.y1), y);
      o.to[0].Put(at + pair.u, u);
      o.to[0].Put(at + pair.v, v);
      return;
    }
    const int fourth = r.target == Layout::kRgb32Luma    ? y
                       : r.target == Layout::kRgb32Keyed ? (y > r.threshold ? 255 : 0)
                                                         : 0;
    WriteColour(r.target, o.to[0], start + x * PixelBytes(r.target),
                InBlock(x) ? ExpectedVectorColour(y, u, v) : ExpectedTableColour(y, u, v), fourth);
  }

  // To planes: `start(row)` is where a row of the source begins, seen from the pair that reads it.

  int PairStart(int row, int pair) const {
    const int line = r.height < 0 ? r.rows() - 1 - row : row;
    return line * r.sourceStride() - pair * r.odd() * PixelBytes(r.source);
  }
  /// What `read(start)` gives at row y, smoothed where that is due.
  template <class Read>
  auto InPair(int y, const Read& read) {
    const int last = r.rows() / 2 * 2 - 1;
    const auto centre = read(PairStart(y, y / 2));
    if (!r.smoothed || y == 0 || y == last) return centre;
    return SmoothAny(read(PairStart(y - 1, y / 2)), centre, read(PairStart(y + 1, y / 2)));
  }
  static int SmoothAny(int a, int b, int c) { return Smooth3(a, b, c); }
  static Bgr SmoothAny(const Bgr& a, const Bgr& b, const Bgr& c) {
    return {Smooth3(a.b, b.b, c.b), Smooth3(a.g, b.g, c.g), Smooth3(a.r, b.r, c.r)};
  }
  void ToPlanes() {
    for (int y = 0; y < r.rows() / 2 * 2; y += 2) {
      for (int x = 0; x < r.width - r.odd(); x += 2) {
        int u[2] = {};
        int v[2] = {};
        Bgr sum = {};
        for (int row = y; row < y + 2; ++row) {
          const int to = row * r.targetStride() - y / 2 * r.odd() + x;
          if (IsPacking(r.source)) {
            const PairBytes pair = BytesOfPair(r.source);
            const auto sample = [&](int byte) {
              return InPair(row,
                            [&](int start) -> int { return o.from[0].Get(start + 2 * x + byte); });
            };
            o.to[0].Put(to, sample(pair.y0));
            o.to[0].Put(to + 1, sample(pair.y1));
            u[row - y] = sample(pair.u);
            v[row - y] = sample(pair.v);
            continue;
          }
          for (int i = 0; i < 2; ++i) {
            const Bgr c = InPair(row, [&](int start) {
              return ReadColour(r.source, o.from[0], start + (x + i) * PixelBytes(r.source));
            });
            o.to[0].Put(to + i, ExpectedLuma(c));
            sum = sum + c;
          }
        }
        const bool averages = IsPacking(r.source);
        const int at = y / 2 * r.targetChroma() + x / 2;
        o.to[1].Put(at, averages ? Avg(u[0], u[1]) : ExpectedU(sum, 10));
        o.to[2].Put(at, averages ? Avg(v[0], v[1]) : ExpectedV(sum, 10));
      }
    }
  }

  // Between packed pictures.

  bool Drifts() const { return IsPacking(r.source) || IsPacking(r.target); }
  /// What `read(start)` gives of row y, smoothed with the rows that are walked before and after it.
  template <class Read>
  auto InRow(int y, const Read& read) {
    const auto at = [&](int row) {
      const int line = r.height < 0 ? r.rows() - 1 - row : row;
      return read(line * r.sourceStride() - (Drifts() ? row * r.odd() * PixelBytes(r.source) : 0));
    };
    if (!r.smoothed || y == 0 || y == r.rows() - 1) return at(y);
    return SmoothAny(at(y - 1), at(y), at(y + 1));
  }
  void PackedToPacked() {
    const int bytes = PixelBytes(r.target);
    for (int y = 0; y < r.rows(); ++y) {
      const int start = y * r.targetStride() - (Drifts() ? y * r.odd() * bytes : 0);
      const auto colour = [&](int x) {
        return InRow(y, [&](int row) {
          return ReadColour(r.source, o.from[0], row + x * PixelBytes(r.source));
        });
      };
      for (int x = 0; x < r.width - (Drifts() ? r.odd() : 0); ++x) {
        if (IsPacking(r.source)) {
          const PairBytes pair = BytesOfPair(r.source);
          const auto sample = [&](int byte) {
            return InRow(y, [&](int row) -> int { return o.from[0].Get(row + x / 2 * 4 + byte); });
          };
          PutYuv(start, x, sample(x % 2 == 0 ? pair.y0 : pair.y1), sample(pair.u), sample(pair.v));
        } else if (IsPacking(r.target)) {
          const Bgr sum = colour(x / 2 * 2) + colour(x / 2 * 2 + 1);
          PutYuv(start, x, ExpectedLuma(colour(x)), ExpectedU(sum, 9), ExpectedV(sum, 9));
        } else {
          WriteColour(r.target, o.to[0], start + x * bytes, colour(x), 0);
        }
      }
    }
  }

  const TableRun& r;
  TableOperands& o;
};

}  // namespace zor::test
