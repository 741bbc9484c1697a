// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "convert/expected_colour.h"
#include "convert/yuv420_to_rgb_forms.h"

namespace zor::test {
namespace {

struct Shape {
  int lumaStride, chromaStride, targetStride, width, height;
};

struct Operands {
  Operand& target;
  Operand& luma;
  Operand& u;
  Operand& v;
};

void PutPixel(Operand& target, int at, int pixel, const Bgr& colour) {
  target.Put(at, colour.b);
  target.Put(at + 1, colour.g);
  target.Put(at + 2, colour.r);
  if (pixel == 4) target.Put(at + 3, 0);
}

/// Offset of a row in walking order.
int TargetRow(const Shape& s, int row) {
  const int rows = s.height < 0 ? -s.height : s.height;
  return (s.height < 0 ? rows - 1 - row : row) * s.targetStride;
}

/// The forms that filter: pairs of rows, within one column by column.
void StateFiltered(const Shape& s, const RgbForm& form, Operands on) {
  const int pairs = (s.height < 0 ? -s.height : s.height) / 2;
  const int odd = s.width % 2;
  const int block = form.rules == Rules::kMmx ? 8 : form.rules == Rules::kSse2 ? 16 : 0;
  const int whole = block == 0 ? 0 : s.width / block * block;
  for (int p = 0; p < pairs; ++p) {
    const bool first = p == 0, last = p == pairs - 1;
    auto paint = [&](int x, bool inBlock) {  // both rows of column x
      const bool t = inBlock && form.rules == Rules::kMmx;
      auto average = [&](int a, int b) { return t ? AvgT(a, b) : Avg(a, b); };
      auto smooth = [&](int a, int b, int c) { return average(average(a, c), b); };
      auto y = [&](int r) { return int{on.luma.Get(r * s.lumaStride + x - p * odd)}; };
      auto chroma = [&](Operand& plane) {
        auto c = [&](int r) { return int{plane.Get(r * s.chromaStride + x / 2)}; };
        if (pairs == 1) return c(0);
        if (first) return inBlock ? average(c(0), c(1)) : c(0);
        if (last) return inBlock ? average(c(p - 1), c(p)) : c(p - 1);
        return smooth(c(p - 1), c(p), c(p + 1));
      };
      const int rows[2] = {first ? y(0) : smooth(y(2 * p - 1), y(2 * p), y(2 * p + 1)),
                           last ? y(2 * p + 1) : smooth(y(2 * p), y(2 * p + 1), y(2 * p + 2))};
      for (int row = 0; row < 2; ++row) {
        const Bgr colour = inBlock ? ExpectedVectorColour(rows[row], chroma(on.u), chroma(on.v))
                                   : ExpectedTableColour(rows[row], chroma(on.u), chroma(on.v));
        PutPixel(on.target, TargetRow(s, 2 * p + row) + (x - p * odd) * form.pixel, form.pixel,
                 colour);
      }
    };
    for (int x = 0; x < whole; ++x) paint(x, true);
    const int tailPairs = form.rules != Rules::kMmx ? (s.width / 2 * 2 - whole) / 2
                          : first                   ? s.width / 2 % 4
                                                    : s.width / 2 % 8;
    for (int x = whole; x < whole + 2 * tailPairs; ++x) paint(x, false);
  }
}

/// Single rows without the filter.
void StateRaw(const Shape& s, Operands on) {
  const int rows = s.height < 0 ? -s.height : s.height;
  const int odd = s.width % 2;
  const int whole = s.width / 16 * 16;
  for (int r = 0; r < rows; ++r) {
    for (int x = 0; x < s.width - odd; ++x) {
      const int y = on.luma.Get(r * s.lumaStride + x - r * odd);
      const int at = TargetRow(s, r) + 3 * (x - r * odd);
      const int row = r / 2 * s.chromaStride;
      if (x < whole) {
        PutPixel(on.target, at, 3,
                 ExpectedVectorColour(y, on.u.Get(row + x / 2), on.v.Get(row + x / 2)));
      } else {
        const Bgr c = ExpectedTableColour(y, on.u.Get(row), on.v.Get(row));
        PutPixel(on.target, at, 3, {c.r, c.g, c.b});
      }
    }
  }
}

TEST(Yuv420ToRgb, EveryFormGivesTheStatedBytesAndTouchesNoOthers) {
  Operand target(61), luma(62), u(63), v(64);
  OperandSet operands({&target, &luma, &u, &v});
  ForEachShape([&](std::int32_t width, std::int32_t height, std::ptrdiff_t shift) {
    bool right = true;
    const RgbForm* stated = nullptr;
    for (const RgbForm& form : kForms) {
      // A tight target: what runs past a row lands in its neighbour.
      const Shape s = {width + 3, width / 2 + 2, width * form.pixel + (width % 5), width, height};
      // Neighbours in the list that differ by their vector level only have one statement.
      if (stated == nullptr || stated->rules != form.rules || stated->pixel != form.pixel) {
        operands.Reset();
        if (form.rules == Rules::kSse2Raw) {
          StateRaw(s, {target, luma, u, v});
        } else {
          StateFiltered(s, form, {target, luma, u, v});
        }
        stated = &form;
      }
      const PinnedVectorLevel pinned(form.level);
      const std::string wrong = operands.Check(shift, [&](const std::vector<std::uint8_t*>& p) {
        form.kernel(p[0], s.targetStride, p[1], p[2], p[3], s.lumaStride, s.chromaStride, width,
                    height);
      });
      EXPECT_EQ(wrong, "") << form.name << ", " << width << " x " << height << ", shift " << shift;
      right = right && wrong.empty();
    }
    return right;
  });
}

TEST(Yuv420ToRgb, ColourArithmeticHoldsForAllYAndUAndV) {
  // A single pair of rows is taken without the filter in every form. 128 columns of both rows hold
  // every Y once, the 4 pixels of a chroma sample having 4 of them; 4 values of U stand in a row.
  constexpr int kOfOneU = 128, kColumns = 4 * kOfOneU;
  std::vector<std::uint8_t> luma(2 * kColumns), u(kColumns / 2), v(kColumns / 2);
  const auto lumaAt = [](int row, int x) { return x % kOfOneU * 2 + row; };
  for (int x = 0; x < kColumns; ++x) {
    for (int row = 0; row < 2; ++row) {
      luma[static_cast<std::size_t>(row * kColumns + x)] =
          static_cast<std::uint8_t>(lumaAt(row, x));
    }
  }
  std::vector<std::uint8_t> target(2 * kColumns * 4), expected[2][2];
  for (auto& ofRules : expected) {
    for (int pixel : {3, 4}) {
      ofRules[pixel - 3].resize(static_cast<std::size_t>(2 * kColumns * pixel));
    }
  }
  for (int cv = 0; cv < 256; ++cv) {
    std::fill(v.begin(), v.end(), static_cast<std::uint8_t>(cv));
    for (int cu = 0; cu < 256; cu += 4) {
      for (int x = 0; x < kColumns; ++x) {
        const int ownU = cu + x / kOfOneU;
        u[static_cast<std::size_t>(x / 2)] = static_cast<std::uint8_t>(ownU);
        for (int row = 0; row < 2; ++row) {
          const int y = lumaAt(row, x);
          const Bgr colours[2] = {ExpectedTableColour(y, ownU, cv),
                                  ExpectedVectorColour(y, ownU, cv)};
          for (int rules = 0; rules < 2; ++rules) {
            for (int pixel : {3, 4}) {
              std::uint8_t* at = expected[rules][pixel - 3].data() + (row * kColumns + x) * pixel;
              at[0] = static_cast<std::uint8_t>(colours[rules].b);
              at[1] = static_cast<std::uint8_t>(colours[rules].g);
              at[2] = static_cast<std::uint8_t>(colours[rules].r);
            }
          }
        }
      }
      for (const RgbForm& form : kForms) {
        const PinnedVectorLevel pinned(form.level);
        std::fill(target.begin(), target.end(), std::uint8_t{77});
        form.kernel(target.data(), kColumns * form.pixel, luma.data(), u.data(), v.data(), kColumns,
                    kColumns / 2, kColumns, 2);
        const auto& bytes = expected[form.rules == Rules::kPlain ? 0 : 1][form.pixel - 3];
        ASSERT_TRUE(std::memcmp(bytes.data(), target.data(), bytes.size()) == 0)
            << form.name << ", U from " << cu << ", V " << cv << ", byte "
            << std::mismatch(bytes.begin(), bytes.end(), target.begin()).first - bytes.begin();
      }
    }
  }
}

}  // namespace
}  // namespace zor::test
