// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The blends written out sample by sample, for tests. Bytes outside of a block read as 0 and are
/// not written.

#include <zorsurface/types.h>

#include <cstdint>
#include <vector>

namespace zor::test {

using Bytes = std::vector<std::uint8_t>;

inline int At(const Bytes& b, long long i) {
  return i >= 0 && i < static_cast<long long>(b.size()) ? b[static_cast<std::size_t>(i)] : 0;
}
inline void Set(Bytes& b, long long i, int v) {
  if (i >= 0 && i < static_cast<long long>(b.size())) {
    b[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(v);
  }
}
/// ((256 - w) c + w d) >> 8, by division, as the sum is never negative.
inline int Mix(int c, int d, int w) { return ((256 - w) * c + w * d) / 256; }

struct Geometry {
  long long stride, height;
};

/// The masked planar blend. @param groups whether whole groups of 16 columns take the lower left
/// mask sample for chroma.
inline void ReferenceMasked(Bytes& target, const Bytes& child, const Bytes& mask, Geometry tg,
                            Geometry cg, const RECT& d, const RECT& s, bool groups) {
  const long long rows = (d.bottom - d.top) / 2;
  const long long columns = (d.right - d.left) / 2;
  if (d.bottom - d.top < 2 || d.right - d.left < 2) return;
  auto chromaRow = [&](long long top, long long stride) {
    return groups ? top / 2 * (stride / 2) : top / 2 * stride / 2;
  };
  const long long tu = tg.stride * tg.height + chromaRow(d.top, tg.stride) + d.left / 2;
  const long long tv = tu + tg.stride / 2 * tg.height / 2;
  const long long cu = cg.stride * cg.height + chromaRow(s.top, cg.stride) + s.left / 2;
  const long long cv = cu + cg.stride / 2 * cg.height / 2;
  for (long long j = 0; j < rows; ++j) {
    for (long long i = 0; i < columns; ++i) {
      auto maskAt = [&](long long dy, long long dx) {
        return At(mask, (s.top + 2 * j + dy) * cg.stride + s.left + 2 * i + dx);
      };
      for (int dy = 0; dy < 2; ++dy) {
        for (int dx = 0; dx < 2; ++dx) {
          const long long to = (d.top + 2 * j + dy) * tg.stride + d.left + 2 * i + dx;
          const long long from = (s.top + 2 * j + dy) * cg.stride + s.left + 2 * i + dx;
          Set(target, to, Mix(At(child, from), At(target, to), maskAt(dy, dx)));
        }
      }
      const bool inGroup = groups && 2 * i < (d.right - d.left) / 16 * 16;
      const int weight = maskAt(1, inGroup ? 0 : 1);
      const long long ct = j * (tg.stride / 2) + i;
      const long long cc = j * (cg.stride / 2) + i;
      Set(target, tu + ct, Mix(At(child, cu + cc), At(target, tu + ct), weight));
      Set(target, tv + ct, Mix(At(child, cv + cc), At(target, tv + ct), weight));
    }
  }
}

/// The masked packed blend; @param maskTop the first mask row.
inline void ReferencePacked(Bytes& target, const Bytes& child, const Bytes& mask,
                            long long targetStride, long long childStride, long long childWidth,
                            const RECT& d, const RECT& s, long long maskTop) {
  for (long long r = 0; r < d.bottom - d.top; ++r) {
    for (long long x = 0; x < d.right - d.left; ++x) {
      const int w = At(mask, (maskTop + r) * childWidth + s.left + x);
      for (int b = 0; b < 2; ++b) {
        const long long to = (d.top + r) * targetStride + 2 * (d.left + x) + b;
        const long long from = (s.top + r) * childStride + 2 * (s.left + x) + b;
        Set(target, to, Mix(At(child, from), At(target, to), w));
      }
    }
  }
}

struct Key {
  int y, u, v;
};

/// The keyed blend. @param batches the rule of the batches of eight instead of pixel by pixel.
inline void ReferenceKeyed(Bytes& target, const Bytes& child, Geometry tg, Geometry cg,
                           const RECT& d, const RECT& s, int w, Key key, bool batches) {
  struct Pair {
    long long to, from;
  };
  const long long tu = tg.height * tg.stride, tv = tu + tg.height * tg.stride / 4;
  const long long cu = cg.height * cg.stride, cv = cu + cg.height * cg.stride / 4;
  std::vector<Pair> luma(8), u(4), v(4);
  std::size_t n = 0;
  auto blend = [&](Pair p) { Set(target, p.to, Mix(At(child, p.from), At(target, p.to), w)); };
  for (long long r = 0; r < d.bottom - d.top; ++r) {
    for (long long x = 0; x < d.right - d.left; ++x) {
      const Pair y{(d.top + r) * tg.stride + d.left + x, (s.top + r) * cg.stride + s.left + x};
      const long long to = (d.top / 2 + r / 2) * (tg.stride / 2) + d.left / 2 + x / 2;
      const long long from = (s.top / 2 + r / 2) * (cg.stride / 2) + s.left / 2 + x / 2;
      const Pair pu{tu + to, cu + from}, pv{tv + to, cv + from};
      if (At(child, y.from) == key.y && At(child, pu.from) == key.u &&
          At(child, pv.from) == key.v) {
        continue;
      }
      if (!batches) {
        blend(y);
        blend(pu);
        blend(pv);
        continue;
      }
      luma[n] = y;
      u[n / 2] = pu;
      v[n / 2] = pv;
      if (++n < 8) continue;
      const Bytes before = target;
      for (const auto* list : {&luma, &u, &v}) {
        for (Pair p : *list) Set(target, p.to, Mix(At(child, p.from), At(before, p.to), w));
      }
      n = 0;
    }
    for (std::size_t i = 0; batches && i < n; ++i) {
      blend(luma[i]);
      blend(v[i / 2]);
      blend(u[i / 2]);
    }
  }
}

}  // namespace zor::test
