// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The colour arithmetic as the tests expect it, written out in plain integers.

#include <algorithm>
#include <cstdint>

namespace zor::test {

struct Bgr {
  int b;
  int g;
  int r;
};

inline Bgr operator+(const Bgr& x, const Bgr& y) {
  return {x.b + y.b, x.g + y.g, x.r + y.r};
}

inline int FloorShift(int value, int shift) {
  const int unit = 1 << shift;
  return value >= 0 ? value / unit : -((-value + unit - 1) / unit);
}

inline int ExpectedLuma(const Bgr& p) {
  return (129 * p.g + 66 * p.r + 25 * p.b) / 256 + 16;
}
inline int ExpectedU(const Bgr& sum, int shift) {
  return FloorShift(112 * sum.b - 74 * sum.g - 38 * sum.r, shift) + 128;
}
inline int ExpectedV(const Bgr& sum, int shift) {
  return FloorShift(112 * sum.r - 94 * sum.g - 18 * sum.b, shift) + 128;
}

inline int ClampByte(int value) {
  return std::clamp(value, 0, 255);
}
inline int Saturate16(int value) {
  return std::clamp(value, -32768, 32767);
}

/// 13 bits of fraction, as tables hold it.
inline Bgr ExpectedTableColour(int y, int u, int v) {
  const int luma = 9535 * (y - 16);
  return {ClampByte(FloorShift(luma + 16531 * (u - 128), 13)),
          ClampByte(FloorShift(luma - (3203 * (u - 128) + 6660 * (v - 128)), 13)),
          ClampByte(FloorShift(luma + 13074 * (v - 128), 13))};
}

/// 6 bits of fraction in saturating 16-bit lanes.
inline Bgr ExpectedVectorColour(int y, int u, int v) {
  const int luma = (y - 16) * 74;
  const int green = Saturate16(25 * (u - 128) + 52 * (v - 128));
  return {ClampByte(FloorShift(Saturate16(luma + 129 * (u - 128)), 6)),
          ClampByte(FloorShift(Saturate16(luma - green), 6)),
          ClampByte(FloorShift(Saturate16(luma + 102 * (v - 128)), 6))};
}

inline int Avg(int a, int b) {
  return (a + b + 1) / 2;
}
inline int AvgT(int a, int b) {
  return a / 2 + b / 2;
}

}  // namespace zor::test
