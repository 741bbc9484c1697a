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

/// The masked planar blend, every load and store in the order of the form. @param groups whether
/// whole groups of 16 columns go first, with the lower left mask sample for chroma.
inline void ReferenceMasked(Bytes& target, const Bytes& child, const Bytes& mask, Geometry tg,
                            Geometry cg, const RECT& d, const RECT& s, bool groups) {
  struct Step {
    long long to, from, weight;
  };
  if (d.bottom - d.top < 2 || d.right - d.left < 2) return;
  const long long rows = (d.bottom - d.top) / 2;
  const long long columns = (d.right - d.left) / 2;
  auto chromaRow = [&](long long top, long long stride) {
    return groups ? top / 2 * (stride / 2) : top / 2 * stride / 2;
  };
  const long long tu = tg.stride * tg.height + chromaRow(d.top, tg.stride) + d.left / 2;
  const long long tv = tu + tg.stride / 2 * tg.height / 2;
  const long long cu = cg.stride * cg.height + chromaRow(s.top, cg.stride) + s.left / 2;
  const long long cv = cu + cg.stride / 2 * cg.height / 2;
  // All samples of the steps are read before any is written.
  auto together = [&](const std::vector<Step>& steps) {
    std::vector<int> mixed;
    for (const Step& p : steps) {
      mixed.push_back(Mix(At(child, p.from), At(target, p.to), At(mask, p.weight)));
    }
    for (std::size_t i = 0; i < steps.size(); ++i) Set(target, steps[i].to, mixed[i]);
  };
  for (long long j = 0; j < rows; ++j) {
    auto luma = [&](long long dy, long long x) {
      const long long from = (s.top + 2 * j + dy) * cg.stride + s.left + x;
      return Step{(d.top + 2 * j + dy) * tg.stride + d.left + x, from, from};
    };
    // The chroma of column i, weighed by the lower mask row's sample of luma column x.
    auto chroma = [&](long long plane, long long i, long long x) {
      const bool u = plane == 0;
      return Step{(u ? tu : tv) + j * (tg.stride / 2) + i, (u ? cu : cv) + j * (cg.stride / 2) + i,
                  luma(1, x).from};
    };
    const long long grouped = groups ? columns / 8 * 8 : 0;
    for (long long i = 0; i < grouped; i += 8) {
      std::vector<Step> both, lower, upper;
      for (const long long plane : {1, 0}) {
        for (long long k = i; k < i + 8; ++k) both.push_back(chroma(plane, k, 2 * k));
      }
      for (long long x = 2 * i; x < 2 * i + 16; ++x) {
        lower.push_back(luma(1, x));
        upper.push_back(luma(0, x));
      }
      together(both);
      together(lower);
      together(upper);
    }
    for (long long i = grouped; i < columns; ++i) {
      const Step y00 = luma(0, 2 * i), y01 = luma(0, 2 * i + 1);
      const Step y10 = luma(1, 2 * i), y11 = luma(1, 2 * i + 1);
      const Step u = chroma(0, i, 2 * i + 1), v = chroma(1, i, 2 * i + 1);
      const Step sse2[] = {y00, y01, y10, y11, v, u}, plain[] = {y00, y01, u, v, y10, y11};
      for (const Step& p : groups ? sse2 : plain) {
        Set(target, p.to, Mix(At(child, p.from), At(target, p.to), At(mask, p.weight)));
      }
    }
  }
}

/// The masked packed blend; @param maskTop the first mask row. @param groups whether whole groups
/// of 8 pixels are read before they are written, which shows where operands share memory.
inline void ReferencePacked(Bytes& target, const Bytes& child, const Bytes& mask,
                            long long targetStride, long long childStride, long long childWidth,
                            const RECT& d, const RECT& s, long long maskTop, bool groups = false) {
  const long long width = d.right - d.left;
  for (long long r = 0; r < d.bottom - d.top; ++r) {
    for (long long x = 0; x < width;) {
      const long long count = groups && width - x >= 8 ? 8 : 1;
      // Both bytes of a pixel take one mask sample, but a byte of the child may be the one just
      // written where the pixels go singly.
      std::vector<int> weights;
      for (long long i = 0; i < count; ++i) {
        weights.push_back(At(mask, (maskTop + r) * childWidth + s.left + x + i));
      }
      const Bytes before = groups ? target : Bytes();
      const bool own = &child == &target;
      for (long long b = 0; b < 2 * count; ++b) {
        const long long to = (d.top + r) * targetStride + 2 * (d.left + x) + b;
        const long long from = (s.top + r) * childStride + 2 * (s.left + x) + b;
        const Bytes& source = own && count > 1 ? before : child;
        Set(target, to,
            Mix(At(source, from), At(target, to), weights[static_cast<std::size_t>(b / 2)]));
      }
      x += count;
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
      const Bytes& source = &child == &target ? before : child;
      auto store = [&](Pair p) {
        Set(target, p.to, Mix(At(source, p.from), At(before, p.to), w));
      };
      for (Pair p : luma) store(p);
      for (std::size_t i = 0; i < 4; ++i) {
        store(u[i]);
        store(v[i]);
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
