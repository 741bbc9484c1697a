// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

/// Every form of every row kernel against its statement, on columns that no picture needs to have.

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "platform/memory.h"
#include "scale/area_rows.h"
#include "scale/gray_rows.h"
#include "scale/scale_cases.h"

namespace zor::test {
namespace {

int Blend(int a, int b, int w) {
  return (a * (256 - w) + b * w) >> 8;
}

/// Columns with random distances of up to @p widest pixels.
struct RandomColumns {
  RandomColumns(Noise* noise, int count, double widest)
      : offsets(static_cast<std::size_t>(count)), weights(static_cast<std::size_t>(count)) {
    double position = noise->Range(0, 3);
    for (int i = 0; i < count; ++i) {
      offsets[i] = static_cast<std::int32_t>(position);
      weights[i] = noise->Byte();
      position += widest * noise->Range(0, 100) / 100.0;
    }
    width = offsets.back() + 2 + noise->Range(0, 2);
  }
  GrayColumns Columns() const {
    return {offsets.data(), weights.data(), static_cast<std::int32_t>(offsets.size()), width};
  }
  std::vector<std::int32_t> offsets;
  std::vector<std::uint8_t> weights;
  std::int32_t width;
};

class GrayForms : public testing::TestWithParam<int> {
 protected:
  const GrayRowForm& Form() const { return *kGrayRowForms[GetParam()]; }
  bool AtHand() const { return GetParam() <= WidestForm(kGrayRowForms); }
};

TEST_P(GrayForms, PickAcrossAndBothMatchTheStatement) {
  if (!AtHand()) GTEST_SKIP() << "this processor has no " << Form().name;
  Noise noise(1);
  int picked = 0;
  int interpolated = 0;
  for (int count = 1; count <= 200; ++count) {
    for (const double widest : {0.4, 1.0, 1.8, 3.5, 9.0}) {
      const RandomColumns random(&noise, count, widest);
      const GrayColumns columns = random.Columns();
      GuardedPicture source(columns.sourceWidth, 2, columns.sourceWidth, 1,
                            EdgeOf(static_cast<unsigned>(count)), noise.Next());
      GuardedPicture out(count, 1, count, 1, EdgeOf(static_cast<unsigned>(count / 2)), 5);
      const std::uint8_t* row = source.data();
      const std::uint8_t* next = row + columns.sourceWidth;
      const std::int32_t weight = noise.Range(1, 255);
      if (const std::uint64_t bytes = Form().pick.planBytes(columns)) {
        ++picked;
        WorkArray<std::uint8_t> plan(bytes);
        Form().pick.plan(columns, plan.data());
        Form().pick.row(out.data(), row, plan.data());
        for (int i = 0; i < count; ++i) ASSERT_EQ(row[random.offsets[i]], out.data()[i]) << i;
      }
      const std::uint64_t bytes = Form().lerp.planBytes(columns);
      if (bytes == 0) continue;
      ++interpolated;
      WorkArray<std::uint8_t> plan(bytes);
      Form().lerp.plan(columns, plan.data());
      Form().lerp.across(out.data(), row, plan.data());
      const auto across = [&](const std::uint8_t* r, int i) {
        return Blend(r[random.offsets[i]], r[random.offsets[i] + 1], random.weights[i]);
      };
      for (int i = 0; i < count; ++i) {
        ASSERT_EQ(across(row, i), out.data()[i]) << i << " of " << count;
      }
      Form().lerp.both(out.data(), row, next, plan.data(), weight);
      for (int i = 0; i < count; ++i) {
        ASSERT_EQ(Blend(across(row, i), across(next, i), weight), out.data()[i])
            << i << " of " << count;
      }
      ASSERT_TRUE(out.GuardsIntact());
    }
  }
  if (Form().pick.plan != nullptr) {
    EXPECT_GT(picked, 100);
  }
  EXPECT_GT(interpolated, 100);
}

TEST_P(GrayForms, AcrossIsRightForAllPairsAndWeights) {
  if (!AtHand()) GTEST_SKIP() << "this processor has no " << Form().name;
  // Columns 0 to 255 carry all weights; the row's pixels alternate between two values.
  std::vector<std::int32_t> offsets(256);
  std::vector<std::uint8_t> weights(256);
  for (int i = 0; i < 256; ++i) {
    offsets[i] = i / 8 * 2;
    weights[i] = static_cast<std::uint8_t>(i);
  }
  const GrayColumns columns{offsets.data(), weights.data(), 256, 130};
  WorkArray<std::uint8_t> plan(Form().lerp.planBytes(columns));
  ASSERT_TRUE(static_cast<bool>(plan));
  Form().lerp.plan(columns, plan.data());
  std::uint8_t row[130];
  std::uint8_t out[256];
  for (int a = 0; a < 256; a += 5) {
    for (int b = 0; b < 256; ++b) {
      for (int i = 0; i < 130; ++i) row[i] = static_cast<std::uint8_t>(i % 2 == 0 ? a : b);
      Form().lerp.across(out, row, plan.data());
      for (int i = 0; i < 256; ++i) ASSERT_EQ(Blend(a, b, i), out[i]) << a << " " << b << " " << i;
    }
  }
}

TEST_P(GrayForms, DownMatchesTheStatement) {
  if (!AtHand()) GTEST_SKIP() << "this processor has no " << Form().name;
  Noise noise(2);
  for (int count = 1; count <= 200; ++count) {
    const GuardedMemory::Edge edge = EdgeOf(static_cast<unsigned>(count));
    GuardedPicture a(count, 1, count, 1, edge, noise.Next());
    GuardedPicture b(count, 1, count, 1, edge, noise.Next());
    GuardedPicture out(count, 1, count, 1, edge, 5);
    for (const int weight : {1, 2, 127, 128, 129, 254, 255, noise.Range(1, 255)}) {
      Form().down(out.data(), a.data(), b.data(), weight, count);
      for (int i = 0; i < count; ++i) {
        ASSERT_EQ(Blend(a.data()[i], b.data()[i], weight), out.data()[i]) << i << " of " << count;
      }
      ASSERT_TRUE(out.GuardsIntact());
    }
  }
}

std::string FormName(const testing::TestParamInfo<int>& info) {
  return kGrayRowForms[info.param]->name;
}
INSTANTIATE_TEST_SUITE_P(Forms, GrayForms, testing::Range(0, int{std::size(kGrayRowForms)}),
                         FormName);

class AreaForms : public testing::TestWithParam<int> {
 protected:
  const AreaRowForm& Form() const { return *kAreaRowForms[GetParam()]; }
};

TEST_P(AreaForms, RowsMatchTheStatement) {
  if (GetParam() > WidestForm(kAreaRowForms)) {
    GTEST_SKIP() << "this processor has no " << Form().name;
  }
  Noise noise(3);
  int run = 0;
  for (const int channels : {1, 3, 4}) {
    for (int width = 1; width <= 70; ++width) {
      const int mostTaps = noise.Range(1, 9);
      // Columns share their last pixel with the next one at random.
      std::vector<AreaEntry> entries;
      int pixel = 0;
      for (int column = 0; column < width; ++column) {
        const int taps = noise.Range(1, mostTaps);
        for (int t = 0; t < taps; ++t) {
          entries.push_back({(pixel + t) * channels, column * channels,
                             static_cast<float>(noise.Range(1, 1000)) / 9000.0f});
        }
        pixel += taps - (noise.Next() % 2 == 0 ? 1 : 0);
      }
      ++pixel;
      const AreaList list{entries.data(),   static_cast<std::int32_t>(entries.size()),
                          channels,         width * channels,
                          pixel * channels, pixel * channels};
      const std::uint64_t bytes = Form().planBytes(list);
      if (bytes == 0) continue;
      WorkArray<std::uint8_t> plan(bytes);
      if (!Form().plan(list, plan.data())) continue;
      ++run;
      constexpr int kTargets = 3;
      constexpr int kMostRows = 3;
      const int rowBytes = pixel * channels;
      const int outBytes = width * channels;
      GuardedPicture source(pixel, kTargets * kMostRows, rowBytes, channels, EdgeOf(noise.Next()),
                            noise.Next());
      GuardedPicture out(width, kTargets, outBytes, channels, EdgeOf(noise.Next()), 5);
      const auto values = static_cast<std::size_t>(outBytes);
      WorkArray<float> gathered(values + kAreaGroup);
      std::fill_n(gathered.data(), values + kAreaGroup, 0.0f);
      std::vector<float> b(values);
      for (std::size_t v = 0; v < values; ++v) {
        b[v] = gathered[v] = static_cast<float>(noise.Range(0, 2000)) / 64.0f;
      }
      const std::uint8_t* rows[kTargets * kMostRows];
      for (int y = 0; y < kTargets * kMostRows; ++y) rows[y] = source.data() + y * rowBytes;
      AreaTargetRow targets[kTargets];
      const int targetCount = noise.Range(1, kTargets);
      for (int t = 0; t < targetCount; ++t) {
        const float share =
            noise.Range(0, 2) == 0 ? 0.0f : static_cast<float>(noise.Range(1, 99)) / 100.0f;
        targets[t] = {out.data() + t * outBytes, rows + t * kMostRows, noise.Range(1, kMostRows),
                      share, 1.0f - share};
      }
      Form().rows(targets, targetCount, gathered.data(), plan.data());

      std::vector<float> a(values);
      for (int t = 0; t < targetCount; ++t) {
        for (int y = 0; y < targets[t].count; ++y) {
          std::fill(a.begin(), a.end(), 0.0f);
          for (const AreaEntry& entry : entries) {
            for (int c = 0; c < channels; ++c) {
              a[entry.value + c] +=
                  static_cast<float>(targets[t].rows[y][entry.source + c]) * entry.weight;
            }
          }
          if (y == targets[t].count - 1) break;
          for (std::size_t v = 0; v < values; ++v) b[v] += a[v];
        }
        for (std::size_t v = 0; v < values; ++v) {
          const float sum = a[v] * (1.0f - targets[t].share) + b[v] + 0.5f;
          ASSERT_EQ(static_cast<std::uint8_t>(static_cast<int>(sum)), targets[t].out[v])
              << v << " of " << width << " x " << channels << ", row " << t;
          b[v] = a[v] * targets[t].share;
        }
      }
      for (std::size_t v = 0; v < values; ++v) ASSERT_EQ(b[v], gathered[v]);
      ASSERT_TRUE(out.GuardsIntact());
    }
  }
  EXPECT_GT(run, 20);
}

std::string AreaFormName(const testing::TestParamInfo<int>& info) {
  return kAreaRowForms[info.param]->name;
}
INSTANTIATE_TEST_SUITE_P(Forms, AreaForms,
                         testing::Range(0, static_cast<int>(std::size(kAreaRowForms))),
                         AreaFormName);

}  // namespace
}  // namespace zor::test
