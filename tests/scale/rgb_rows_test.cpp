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
  RgbColumns Get(int targetBytes) const {
    return {offsets.data(), words.data(), static_cast<std::int32_t>(offsets.size()),
            pixelBytes,     targetBytes,  std::int64_t{pixels} * pixelBytes};
  }
  /// lerp(p, q, w) of one byte of a column.
  int Across(const std::uint8_t* row, int i, int k) const {
    const auto at = static_cast<std::size_t>(i);
    const int p = row[offsets[at] + k];
    const int q = row[offsets[at] + pixelBytes + k];
    return (p * 256 + (q - p) * static_cast<int>(words[at] & 255)) / 256;  // never negative
  }
};

/// Makes a plan for a kernel and calls run(columns, plan), if the kernel takes the columns.
template <class Kernel, class Run>
bool WithPlan(const Kernel& kernel, const Columns& columns, int targetBytes, Run run) {
  const RgbColumns given = columns.Get(targetBytes);
  const std::int64_t bytes = kernel.planBytes(given);
  if (bytes < 0) return false;
  WorkArray<std::uint8_t> plan(static_cast<std::uint64_t>(bytes) + 1);
  kernel.plan(given, plan.data());
  run(given, plan.data());
  return true;
}

/// Two source rows and columns over them.
struct Rows {
  GuardedMemory first;
  GuardedMemory second;

  Rows(const Columns& columns, Noise& noise)
      : first(static_cast<std::size_t>(columns.pixels * columns.pixelBytes), EdgeOf(noise.Next())),
        second(first.size(), EdgeOf(noise.Next())) {
    noise.Fill(first.data(), first.size());
    noise.Fill(second.data(), second.size());
  }
};

/// Every form between all pixel sizes: @p run works on a form's rows and tells whether the form
/// takes the columns, @p expected gives byte k of column i.
template <class Run, class Expected>
void ExpectForms(Run run, Expected expected) {
  Noise noise(31);
  int runs[3] = {};
  for (const int bytes : {3, 4}) {
    for (int pixels = 2; pixels <= 300; pixels += 1 + pixels / 5) {
      for (int count = 1; count <= 150; count += 1 + count / 6) {
        const Columns columns(pixels, count, bytes, noise);
        Rows rows(columns, noise);
        for (int form = 0; form <= WidestForm(kRgbRowForms); ++form) {
          const int targetBytes = 3 + static_cast<int>(noise.Next() % 2);
          GuardedMemory out(static_cast<std::size_t>(targetBytes * count), EdgeOf(noise.Next()));
          if (!run(*kRgbRowForms[form], columns, targetBytes, out.data(), rows)) continue;
          ++runs[form];
          for (int i = 0; i < targetBytes * count; ++i) {
            const int k = i % targetBytes;
            const int value = k >= bytes ? 0 : expected(columns, rows, i / targetBytes, k);
            ASSERT_EQ(value, out.data()[i]) << kRgbRowForms[form]->name << ", " << pixels << " of "
                                            << bytes << " bytes to column " << i / targetBytes
                                            << " of " << count << " of " << targetBytes;
          }
          ASSERT_TRUE(out.GuardsIntact() && rows.first.GuardsIntact());
        }
      }
    }
  }
  for (int form = 0; form <= WidestForm(kRgbRowForms); ++form) EXPECT_GT(runs[form], 99);
}

TEST(RgbRows, EveryFormPicksThePixelAtEachOffset) {
  ExpectForms(
      [](const RgbRowForm& form, const Columns& columns, int targetBytes, std::uint8_t* out,
         Rows& rows) {
        return WithPlan(form.pick, columns, targetBytes, [&](const RgbColumns& c, auto* plan) {
          form.pick.row(out, rows.first.data(), c, plan);
        });
      },
      [](const Columns& columns, Rows& rows, int i, int k) {
        return rows.first.data()[columns.offsets[static_cast<std::size_t>(i)] + k];
      });
}

TEST(RgbRows, EveryFormInterpolatesAcrossWithAFloor) {
  ExpectForms(
      [](const RgbRowForm& form, const Columns& columns, int targetBytes, std::uint8_t* out,
         Rows& rows) {
        return WithPlan(form.lerp, columns, targetBytes, [&](const RgbColumns& c, auto* plan) {
          form.lerp.across(out, rows.first.data(), c, plan);
        });
      },
      [](const Columns& columns, Rows& rows, int i, int k) {
        return columns.Across(rows.first.data(), i, k);
      });
}

TEST(RgbRows, EveryFormInterpolatesAcrossThenDownWithAFloorAfterEach) {
  for (const int weight : {1, 77, 128, 255}) {
    ExpectForms(
        [=](const RgbRowForm& form, const Columns& columns, int targetBytes, std::uint8_t* out,
            Rows& rows) {
          return WithPlan(form.lerp, columns, targetBytes, [&](const RgbColumns& c, auto* plan) {
            form.lerp.both(out, rows.first.data(), rows.second.data(), c, plan, weight);
          });
        },
        [=](const Columns& columns, Rows& rows, int i, int k) {
          const int a = columns.Across(rows.first.data(), i, k);
          const int b = columns.Across(rows.second.data(), i, k);
          return (a * 256 + (b - a) * weight) / 256;
        });
  }
}

TEST(RgbRows, EveryFormPacksExactlyThreeBytesAPixel) {
  Noise noise(32);
  for (int count = 1; count <= 200; ++count) {
    GuardedMemory in(static_cast<std::size_t>(4 * count), EdgeOf(noise.Next()));
    noise.Fill(in.data(), in.size());
    for (int form = 0; form <= WidestForm(kRgbRowForms); ++form) {
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
    for (int form = 0; form <= WidestForm(kRgbRowForms); ++form) {
      std::vector<std::uint8_t> out(static_cast<std::size_t>(4 * count));
      const RgbLerpKernel& kernel = kRgbRowForms[form]->lerp;
      const auto across = [&](const RgbColumns& c, const std::uint8_t* plan) {
        kernel.across(out.data(), row.data(), c, plan);
      };
      if (!WithPlan(kernel, columns, 4, across)) continue;
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
