// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include <array>

#include "convert/expected_colour.h"
#include "convert/operand.h"
#include "convert/yuv420_to_yuy2.h"
#include "convert/yuy2_to_yuv420.h"

namespace zor::test {
namespace {

/// A form with the width of its truncating blocks; 0 if all averages round.
template <class Kernel>
struct SmoothingForm : Form<Kernel> {
  int truncating;
};

const SmoothingForm<Yuv420ToYuy2Kernel> kToYuy2[] = {
    {{"plain", ConvertYuv420ToYuy2Plain}, 0},
    {{"mmx", ConvertYuv420ToYuy2Mmx}, 16},
    {{"sse2", ConvertYuv420ToYuy2Sse2}, 0},
    {{"sse2 with avx2", ConvertYuv420ToYuy2Sse2, VectorLevel::kAvx2}, 0},
    {{"sse2 with avx512", ConvertYuv420ToYuy2Sse2, VectorLevel::kAvx512}, 0}};
const SmoothingForm<Yuy2ToYuv420Kernel> kToYuv420[] = {
    {{"plain", ConvertYuy2ToYuv420Plain}, 0},
    {{"mmx", ConvertYuy2ToYuv420Mmx}, 8},
    {{"sse2", ConvertYuy2ToYuv420Sse2}, 0},
    {{"sse2 with avx2", ConvertYuy2ToYuv420Sse2, VectorLevel::kAvx2}, 0},
    {{"sse2 with avx512", ConvertYuy2ToYuv420Sse2, VectorLevel::kAvx512}, 0}};

int Average(bool truncating, int a, int b) {
  return truncating ? AvgT(a, b) : Avg(a, b);
}

int RowSmooth(bool truncating, int a, int b, int c) {
  return Average(truncating, Average(truncating, a, c), b);
}

struct Shape {
  std::int32_t lumaStride;
  std::int32_t chromaStride;
  std::int32_t packedStride;
  std::int32_t width;
  std::int32_t height;
};

/// Offset of a row, counted from the picture's first one in walking order, of a packed operand.
int PackedRow(const Shape& s, int row) {
  const int rows = s.height < 0 ? -s.height : s.height;
  return (s.height < 0 ? rows - 1 - row : row) * s.packedStride;
}

void StateToYuy2(const Shape& s, int block, Operand& target, Operand& luma, Operand& u,
                 Operand& v) {
  const int pairs = (s.height < 0 ? -s.height : s.height) / 2;
  const int odd = s.width % 2;
  const int inBlocks = block == 0 ? 0 : s.width / block * block;
  for (int p = 0; p < pairs; ++p) {
    for (int x = 0; x < s.width - odd; ++x) {
      const bool t = x < inBlocks;
      // Row r of luma as the walk sees it from pair p.
      const auto y = [&](int r) { return int{luma.Get(r * s.lumaStride + x - p * odd)}; };
      const auto c = [&](Operand& plane, int row) {
        return int{plane.Get(row * s.chromaStride + x / 2)};
      };
      const auto chroma = [&](Operand& plane) {
        if (pairs == 1) return c(plane, 0);
        if (p == 0) return Average(t, c(plane, 0), c(plane, 1));
        if (p == pairs - 1) return Average(t, c(plane, p - 1), c(plane, p));
        return RowSmooth(t, c(plane, p - 1), c(plane, p), c(plane, p + 1));
      };
      const int upper = p == 0 ? y(0) : RowSmooth(t, y(2 * p - 1), y(2 * p), y(2 * p + 1));
      const int lower =
          p == pairs - 1 ? y(2 * p + 1) : RowSmooth(t, y(2 * p), y(2 * p + 1), y(2 * p + 2));
      for (int row = 0; row < 2; ++row) {
        const int to = PackedRow(s, 2 * p + row) + 2 * (x - p * odd);
        target.Put(to, row == 0 ? upper : lower);
        target.Put(to + 1, x % 2 == 0 ? chroma(u) : chroma(v));
      }
    }
  }
}

void StateToYuv420(const Shape& s, int block, Operand& source, Operand& luma, Operand& u,
                   Operand& v) {
  const int pairs = (s.height < 0 ? -s.height : s.height) / 2;
  const int odd = s.width % 2;
  const int inBlocks = block == 0 || pairs == 1 ? 0 : s.width / block * block;
  for (int p = 0; p < pairs; ++p) {
    for (int x = 0; x < s.width - odd; ++x) {
      const bool t = x < inBlocks;
      // Byte `i` (luma or chroma) of column x in the smoothed row r.
      const auto smoothed = [&](int r, int i) {
        const auto at = [&](int row) {
          return int{source.Get(PackedRow(s, row) + 2 * (x - p * odd) + i)};
        };
        return r == 0 || r == 2 * pairs - 1 ? at(r) : RowSmooth(t, at(r - 1), at(r), at(r + 1));
      };
      for (int row = 0; row < 2; ++row) {
        luma.Put((2 * p + row) * s.lumaStride + x - p * odd, smoothed(2 * p + row, 0));
      }
      (x % 2 == 0 ? u : v)
          .Put(p * s.chromaStride + x / 2, Average(t, smoothed(2 * p, 1), smoothed(2 * p + 1, 1)));
    }
  }
}

Shape ShapeOf(std::int32_t width, std::int32_t height) {
  return {width + 3, width / 2 + 2, 2 * width + 5, width, height};
}

TEST(Yuv420ToYuy2, EveryFormGivesTheStatedBytesAndTouchesNoOthers) {
  Operand target(41), luma(42), u(43), v(44);
  OperandSet operands({&target, &luma, &u, &v});
  for (const auto& form : kToYuy2) {
    const PinnedVectorLevel pinned(form.level);
    ForEachShape([&](std::int32_t width, std::int32_t height, std::ptrdiff_t shift) {
      const Shape s = ShapeOf(width, height);
      operands.Reset();
      StateToYuy2(s, form.truncating, target, luma, u, v);
      const std::string wrong = operands.Check(shift, [&](const std::vector<std::uint8_t*>& p) {
        form.kernel(p[0], s.packedStride, p[1], p[2], p[3], s.lumaStride, s.chromaStride, width,
                    height);
      });
      EXPECT_EQ(wrong, "") << form.name << ", " << width << " x " << height << ", shift " << shift;
      return wrong.empty();
    });
  }
}

TEST(Yuy2ToYuv420, EveryFormGivesTheStatedBytesAndTouchesNoOthers) {
  Operand source(51), luma(52), u(53), v(54);
  OperandSet operands({&luma, &u, &v, &source});
  for (const auto& form : kToYuv420) {
    const PinnedVectorLevel pinned(form.level);
    ForEachShape([&](std::int32_t width, std::int32_t height, std::ptrdiff_t shift) {
      const Shape s = ShapeOf(width, height);
      operands.Reset();
      StateToYuv420(s, form.truncating, source, luma, u, v);
      const std::string wrong = operands.Check(shift, [&](const std::vector<std::uint8_t*>& p) {
        form.kernel(p[0], p[1], p[2], s.lumaStride, s.chromaStride, p[3], s.packedStride, width,
                    height);
      });
      EXPECT_EQ(wrong, "") << form.name << ", " << width << " x " << height << ", shift " << shift;
      return wrong.empty();
    });
  }
}

/// Converts a planar picture of 64 columns with rows of one value; @return the rows of YUY2 by
/// their first pixels' bytes.
std::vector<std::array<std::uint8_t, 4>> ToYuy2(const SmoothingForm<Yuv420ToYuy2Kernel>& form,
                                                const std::vector<int>& lumaRows,
                                                const std::vector<int>& uRows,
                                                const std::vector<int>& vRows) {
  const PinnedVectorLevel pinned(form.level);
  const auto plane = [](const std::vector<int>& rows, std::size_t width) {
    std::vector<std::uint8_t> bytes;
    for (int value : rows) bytes.insert(bytes.end(), width, static_cast<std::uint8_t>(value));
    return bytes;
  };
  const auto luma = plane(lumaRows, 64);
  const auto u = plane(uRows, 32);
  const auto v = plane(vRows, 32);
  std::vector<std::uint8_t> target(128 * lumaRows.size(), 99);
  form.kernel(target.data(), 128, luma.data(), u.data(), v.data(), 64, 32, 64,
              static_cast<std::int32_t>(lumaRows.size()));
  std::vector<std::array<std::uint8_t, 4>> rows;
  for (std::size_t y = 0; y < lumaRows.size(); ++y) {
    const std::uint8_t* row = target.data() + 128 * y;
    rows.push_back({row[0], row[1], row[2], row[3]});
    for (int x = 4; x < 128; ++x) EXPECT_EQ(row[x], row[x % 4]) << form.name;
  }
  return rows;
}

TEST(Yuv420ToYuy2, TopAndBottomPairsAverageTwoChromaRowsAlsoInThePlainForm) {
  for (const auto& form : kToYuy2) {
    const auto rows = ToYuy2(form, {10, 20, 31, 40}, {10, 21}, {100, 111});
    const bool t = form.truncating != 0;
    EXPECT_EQ(rows[0][0], 10) << form.name;
    EXPECT_EQ(rows[1][0], t ? 20 : 21) << form.name;  // Avg(10, 31), then with 20
    EXPECT_EQ(rows[2][0], t ? 30 : 31) << form.name;  // Avg(20, 40), then with 31
    EXPECT_EQ(rows[3][0], 40) << form.name;
    for (int y = 0; y < 4; ++y) {
      EXPECT_EQ(rows[static_cast<std::size_t>(y)][1], t ? 15 : 16) << form.name;
      EXPECT_EQ(rows[static_cast<std::size_t>(y)][3], t ? 105 : 106) << form.name;
    }
  }
}

TEST(Yuv420ToYuy2, TwoOrThreeRowsAreTakenUnchangedWithTheFirstChromaRow) {
  for (const auto& form : kToYuy2) {
    for (const auto& luma : {std::vector<int>{11, 33}, std::vector<int>{11, 33, 55}}) {
      const auto rows = ToYuy2(form, luma, {201}, {77});
      EXPECT_EQ(rows[0], (std::array<std::uint8_t, 4>{11, 201, 11, 77})) << form.name;
      EXPECT_EQ(rows[1], (std::array<std::uint8_t, 4>{33, 201, 33, 77})) << form.name;
      EXPECT_EQ(rows.back()[0], luma.size() == 3 ? 99 : 33) << form.name;
    }
  }
}

TEST(Yuv420ToYuy2, BelowTwoRowsNothingIsWritten) {
  const std::uint8_t planes[64] = {};
  for (const auto& form : kToYuy2) {
    for (std::int32_t height : {-1, 0, 1}) {
      std::uint8_t target[96];
      std::memset(target, 6, sizeof(target));
      form.kernel(target + 32, 32, planes, planes, planes, 16, 8, 16, height);
      for (std::uint8_t byte : target) EXPECT_EQ(byte, 6) << form.name;
    }
  }
}

TEST(Yuv420ToYuy2, NegativeHeightWritesTheTargetFromItsLastRow) {
  for (const auto& form : kToYuy2) {
    const PinnedVectorLevel pinned(form.level);
    std::vector<std::uint8_t> luma(64 * 2, 1), chroma(32, 9), target(256, 0);
    std::fill(luma.begin() + 64, luma.end(), std::uint8_t{2});
    form.kernel(target.data(), 128, luma.data(), chroma.data(), chroma.data(), 64, 32, 64, -2);
    EXPECT_EQ(target[0], 2) << form.name;
    EXPECT_EQ(target[128], 1) << form.name;
  }
}

TEST(Yuv420ToYuy2, OddWidthDriftsInTargetAndLumaButNotInChroma) {
  for (const auto& form : kToYuy2) {
    const PinnedVectorLevel pinned(form.level);
    // Width 3, 4 rows; the second pair is read and written one pixel further left. Its last row is
    // taken as it is: samples 8 and 9 of luma.
    std::vector<std::uint8_t> luma(12, 0), chroma(2, 0), target(24, 7);
    luma[8] = 50;
    luma[9] = 60;
    luma[10] = luma[11] = 200;
    form.kernel(target.data(), 6, luma.data(), chroma.data(), chroma.data(), 3, 1, 3, 4);
    for (const std::size_t at : {4u, 5u, 14u, 15u, 20u, 21u, 22u, 23u}) {
      EXPECT_EQ(target[at], 7) << form.name << ", byte " << at;
    }
    EXPECT_EQ(std::vector<std::uint8_t>(target.begin() + 16, target.begin() + 20),
              (std::vector<std::uint8_t>{50, 0, 60, 0}))
        << form.name;
  }
}

TEST(Yuv420ToYuy2, EveryPairOfSamplesIsAveragedAsStated) {
  // The top pair averages two chroma rows: U holds a, then b; 256 columns of a for every b.
  std::vector<std::uint8_t> luma(512 * 4, 0), u(256 * 2), target(1024 * 4);
  for (const auto& form : kToYuy2) {
    const PinnedVectorLevel pinned(form.level);
    for (int b = 0; b < 256; ++b) {
      for (int a = 0; a < 256; ++a) {
        u[static_cast<std::size_t>(a)] = static_cast<std::uint8_t>(a);
        u[static_cast<std::size_t>(256 + a)] = static_cast<std::uint8_t>(b);
      }
      form.kernel(target.data(), 1024, luma.data(), u.data(), u.data(), 512, 256, 512, 4);
      for (int a = 0; a < 256; ++a) {
        ASSERT_EQ(target[static_cast<std::size_t>(4 * a + 1)], Average(form.truncating != 0, a, b))
            << form.name << ", " << a << " and " << b;
      }
    }
  }
}

TEST(Yuy2ToYuv420, TwoRowsAreTakenUnchangedAndTheirChromaRoundsInEveryForm) {
  std::vector<std::uint8_t> source(2 * 128);
  for (std::size_t i = 0; i < 128; ++i) {
    const std::uint8_t first[4] = {10, 20, 11, 40};
    const std::uint8_t second[4] = {30, 21, 31, 43};
    source[i] = first[i % 4];
    source[128 + i] = second[i % 4];
  }
  for (const auto& form : kToYuv420) {
    const PinnedVectorLevel pinned(form.level);
    std::vector<std::uint8_t> luma(128), u(32), v(32);
    form.kernel(luma.data(), u.data(), v.data(), 64, 32, source.data(), 128, 64, 2);
    for (std::size_t x = 0; x < 64; ++x) {
      ASSERT_EQ(luma[x], x % 2 == 0 ? 10 : 11) << form.name;
      ASSERT_EQ(luma[64 + x], x % 2 == 0 ? 30 : 31) << form.name;
      ASSERT_EQ(u[x / 2], 21) << form.name;
      ASSERT_EQ(v[x / 2], 42) << form.name;
    }
  }
}

TEST(Yuy2ToYuv420, ChromaIsFilteredBeforeItIsAveraged) {
  // U by rows 0, 100, 0, 0: S = 0, Avg(Avg(0, 0), 100) = 50, Avg(Avg(100, 0), 0) = 25, 0.
  std::vector<std::uint8_t> source(4 * 128, 0);
  for (std::size_t i = 1; i < 128; i += 4) source[128 + i] = 100;
  for (const auto& form : kToYuv420) {
    const PinnedVectorLevel pinned(form.level);
    std::vector<std::uint8_t> luma(256), u(64), v(64);
    form.kernel(luma.data(), u.data(), v.data(), 64, 32, source.data(), 128, 64, 4);
    EXPECT_EQ(u[0], 25) << form.name;
    EXPECT_EQ(u[32], form.truncating != 0 ? 12 : 13) << form.name;
    EXPECT_EQ(v[0], 0) << form.name;
  }
}

TEST(Yuy2ToYuv420, BelowTwoRowsNothingIsWrittenAndAnOddLastRowIsNeverRead) {
  for (const auto& form : kToYuv420) {
    const PinnedVectorLevel pinned(form.level);
    GuardedMemory source(4 * 128, GuardedMemory::Edge::kEnd, 50);
    std::vector<std::uint8_t> luma(5 * 64, 3), u(3 * 32, 3), v(3 * 32, 3);
    for (std::int32_t height : {-1, 0, 1}) {
      form.kernel(luma.data(), u.data(), v.data(), 64, 32, source.data(), 128, 64, height);
      EXPECT_EQ(luma[0], 3) << form.name;
    }
    form.kernel(luma.data(), u.data(), v.data(), 64, 32, source.data(), 128, 64, 5);
    EXPECT_EQ(luma[4 * 64 - 1], 50) << form.name;
    EXPECT_EQ(luma[4 * 64], 3) << form.name;
    EXPECT_EQ(u[2 * 32], 3) << form.name;
  }
}

TEST(Yuy2ToYuv420, OddWidthDriftsInSourceAndLumaButNotInChroma) {
  for (const auto& form : kToYuv420) {
    const PinnedVectorLevel pinned(form.level);
    // Width 3, 4 rows of 6 bytes; the second pair is read and written one pixel further left.
    std::vector<std::uint8_t> source(24, 0), luma(12, 7), u(2, 7), v(2, 7);
    form.kernel(luma.data(), u.data(), v.data(), 3, 1, source.data(), 6, 3, 4);
    EXPECT_EQ(luma, (std::vector<std::uint8_t>{0, 0, 7, 0, 0, 0, 0, 7, 0, 0, 7, 7})) << form.name;
    EXPECT_EQ(u, (std::vector<std::uint8_t>{0, 0})) << form.name;
  }
}

}  // namespace
}  // namespace zor::test
