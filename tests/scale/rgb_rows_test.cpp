// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "scale/rgb_rows.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/memory.h"
#include "scale/box_rows.h"
#include "scale/reduction_rows.h"
#include "scale/scale_cases.h"

namespace zor::test {
namespace {

/// Columns over a row of some pixels, as an axis might make them.
struct Columns {
  std::vector<std::int32_t> offsets;
  std::vector<std::uint32_t> words;
  int pixelBytes;
  int pixels;

  Columns(int pixels, int count, int pixelBytes, Noise& noise)
      : pixelBytes(pixelBytes), pixels(pixels) {
    for (int i = 0; i < count; ++i) {
      // The pixel behind a column's is within the row too.
      offsets.push_back(static_cast<int>(std::int64_t{i} * (pixels - 1) / count) * pixelBytes);
      words.push_back(noise.Byte() * 0x01010101u);
    }
  }
  RgbColumns Get() const {
    return {offsets.data(), words.data(), static_cast<std::int32_t>(offsets.size()), pixelBytes,
            std::int64_t{pixels} * pixelBytes};
  }
};

/// Runs one kernel of a form if it takes the columns, with a plan of its own.
bool RunKernel(const RgbColumnKernel& kernel, const Columns& columns, const std::uint8_t* row,
               std::uint8_t* out) {
  const std::int64_t bytes = kernel.planBytes(columns.Get());
  if (bytes < 0) return false;
  WorkArray<std::uint8_t> plan(static_cast<std::uint64_t>(bytes) + 1);
  kernel.plan(columns.Get(), plan.data());
  kernel.row(out, row, columns.Get(), plan.data());
  return true;
}

/// Every form of one kernel against @p expected, which gives byte k of column i.
template <class Expected>
void ExpectForms(RgbColumnKernel RgbRowForm::*kernel, Expected expected) {
  Noise noise(31);
  int runs[3] = {};
  for (const int bytes : {3, 4}) {
    for (int pixels = 2; pixels <= 300; pixels += 1 + pixels / 5) {
      for (int count = 1; count <= 150; count += 1 + count / 6) {
        const Columns columns(pixels, count, bytes, noise);
        GuardedMemory row(static_cast<std::size_t>(pixels * bytes), EdgeOf(noise.Next()));
        noise.Fill(row.data(), row.size());
        for (int form = 0; form <= WidestRgbRowForm(InnerVectorLevel()); ++form) {
          GuardedMemory out(static_cast<std::size_t>(4 * count), EdgeOf(noise.Next()));
          if (!RunKernel(kRgbRowForms[form]->*kernel, columns, row.data(), out.data())) continue;
          ++runs[form];
          for (int i = 0; i < 4 * count; ++i) {
            const int value = i % 4 >= bytes ? 0 : expected(columns, row.data(), i / 4, i % 4);
            ASSERT_EQ(value, out.data()[i])
                << kRgbRowForms[form]->name << ", " << pixels << " of " << bytes
                << " bytes to column " << i / 4 << " of " << count;
          }
          ASSERT_TRUE(out.GuardsIntact() && row.GuardsIntact());
        }
      }
    }
  }
  for (int form = 0; form <= WidestRgbRowForm(InnerVectorLevel()); ++form)
    EXPECT_GT(runs[form], 99);
}

TEST(RgbRows, EveryFormPicksThePixelAtEachOffset) {
  ExpectForms(&RgbRowForm::pick, [](const Columns& columns, const std::uint8_t* row, int i, int k) {
    return row[columns.offsets[static_cast<std::size_t>(i)] + k];
  });
}

TEST(RgbRows, EveryFormInterpolatesAcrossWithAFloor) {
  ExpectForms(&RgbRowForm::across,
              [](const Columns& columns, const std::uint8_t* row, int i, int k) {
                const auto at = static_cast<std::size_t>(i);
                const int p = row[columns.offsets[at] + k];
                const int q = row[columns.offsets[at] + columns.pixelBytes + k];
                const int w = static_cast<int>(columns.words[at] & 255);
                return (p * 256 + (q - p) * w) / 256;  // never negative
              });
}

TEST(RgbRows, EveryFormPacksExactlyThreeBytesAPixel) {
  Noise noise(32);
  for (int count = 1; count <= 200; ++count) {
    GuardedMemory in(static_cast<std::size_t>(4 * count), EdgeOf(noise.Next()));
    noise.Fill(in.data(), in.size());
    for (int form = 0; form <= WidestRgbRowForm(InnerVectorLevel()); ++form) {
      GuardedMemory out(static_cast<std::size_t>(3 * count), EdgeOf(noise.Next()));
      kRgbRowForms[form]->pack(out.data(), in.data(), count);
      for (int i = 0; i < 3 * count; ++i) {
        ASSERT_EQ(in.data()[i / 3 * 4 + i % 3], out.data()[i]) << kRgbRowForms[form]->name;
      }
      ASSERT_TRUE(out.GuardsIntact());
    }
  }
}

TEST(RgbRows, AllPairsOfBytesAndWeightsInterpolateAlikeInEveryForm) {
  // One row holds every second byte behind every first one; the weight is that of the round.
  std::vector<std::uint8_t> row;
  for (int p = 0; p < 256; p += 5) {
    for (int q = 0; q < 256; q += 3) {
      row.insert(row.end(), 4, static_cast<std::uint8_t>(p));
      row.insert(row.end(), 4, static_cast<std::uint8_t>(q));
    }
  }
  Noise noise(33);
  const int count = static_cast<int>(row.size() / 8);
  Columns columns(static_cast<int>(row.size() / 4), count, 4, noise);
  for (int i = 0; i < count; ++i) columns.offsets[static_cast<std::size_t>(i)] = 8 * i;
  for (std::uint32_t w = 0; w < 256; ++w) {
    std::fill(columns.words.begin(), columns.words.end(), w * 0x01010101u);
    for (int form = 0; form <= WidestRgbRowForm(InnerVectorLevel()); ++form) {
      std::vector<std::uint8_t> out(static_cast<std::size_t>(4 * count));
      if (!RunKernel(kRgbRowForms[form]->across, columns, row.data(), out.data())) continue;
      for (std::size_t i = 0; i < out.size(); ++i) {
        const int p = row[i / 4 * 8];
        const int q = row[i / 4 * 8 + 4];
        ASSERT_EQ(p + ((q - p) * static_cast<int>(w) - (q < p ? 255 : 0)) / 256, out[i])
            << kRgbRowForms[form]->name << ": " << p << ", " << q << ", " << w;
      }
    }
  }
}

}  // namespace
}  // namespace zor::test
