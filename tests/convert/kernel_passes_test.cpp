// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <vector>

#include "convert/fast_mem_copy.h"
#include "convert/feature_word.h"
#include "convert/rgb_packing.h"
#include "convert/rgb_to_yuv420.h"
#include "convert/rgb_to_yuy2.h"
#include "convert/table/forwards.h"
#include "convert/table/kernel_layouts.h"
#include "convert/table/kernel_table.h"
#include "convert/yuv420_to_rgb.h"
#include "convert/yuv420_to_yuy2.h"
#include "convert/yuy2_rgb.h"
#include "convert/yuy2_to_yuv420.h"
#include "support/guarded_memory.h"

namespace zor::test {
namespace {

KernelRows RowsFor(std::uint32_t word) {
  KernelRows rows = kPlainKernelRows;
  WriteKernelForms(rows, word);
  return rows;
}

const KernelEntry& EntryOf(const KernelRows& rows, std::size_t row, bool smoothed) {
  return smoothed ? rows[row].smoothed : rows[row].straight;
}

/// A kernel that a wrapper calls, in its forms; empty where the table holds something else.
struct Called {
  std::size_t row;
  bool smoothed;
  KernelEntry plain;
  KernelEntry mmx;
  KernelEntry sse2;
};

const std::vector<Called>& CalledKernels() {
  static const std::vector<Called> called = {
      {0, false, {}, MemCopyMmx, {}},
      {6, true, ConvertYuv420ToYuy2Plain, ConvertYuv420ToYuy2Mmx, ConvertYuv420ToYuy2Sse2},
      {10, true, ConvertYuv420ToRgb32Plain, ConvertYuv420ToRgb32Mmx, ConvertYuv420ToRgb32Sse2},
      {11, true, ConvertYuv420ToRgb24Plain, {}, {}},
      {11, false, {}, {}, ConvertYuv420ToRgb24Sse2},
      {17, true, ConvertYuy2ToYuv420Plain, ConvertYuy2ToYuv420Mmx, ConvertYuy2ToYuv420Sse2},
      {22, false, ConvertYuy2ToRgb32Plain, ConvertYuy2ToRgb32Mmx, ConvertYuy2ToRgb32Sse2},
      {23, false, ConvertYuy2ToRgb24Plain, ConvertYuy2ToRgb24Mmx, ConvertYuy2ToRgb24Sse2},
      {53, false, ConvertRgb32ToYuv420Plain, ConvertRgb32ToYuv420Mmx, ConvertRgb32ToYuv420Sse2},
      {54, false, ConvertRgb32ToYuy2Plain, {}, ConvertRgb32ToYuy2Sse2},
      {59, false, ConvertRgb32ToRgb24, {}, {}},
      {62, false, ConvertRgb24ToYuv420Plain, ConvertRgb24ToYuv420Mmx, ConvertRgb24ToYuv420Sse2},
      {63, false, ConvertRgb24ToYuy2Plain, {}, ConvertRgb24ToYuy2Sse2},
      {67, false, ConvertRgb24ToRgb32, {}, {}},
  };
  return called;
}

TEST(KernelPasses, KernelsOfTheWrappersStandInTheirRowsAndForms) {
  for (const Called& kernel : CalledKernels()) {
    const auto expect = [&kernel](const KernelEntry& form, std::uint32_t word) {
      if (form.index() == 0) return;
      EXPECT_TRUE(EntryOf(RowsFor(word), kernel.row, kernel.smoothed) == form)
          << "row " << kernel.row << ", word " << word;
    };
    expect(kernel.plain, 0);
    expect(kernel.mmx, kFeatureMmx);
    expect(kernel.sse2, kFeatureMmx | kFeatureSse | kFeatureSse2);
  }
}

TEST(KernelPasses, FirstContentsArePlainFormsAndOnlyTheFilterOfAMemoryBlockIsEmpty) {
  for (std::size_t row = 0; row < kKernelRows; ++row) {
    EXPECT_NE(kPlainKernelRows[row].straight.index(), 0u) << row;
    EXPECT_EQ(kPlainKernelRows[row].smoothed.index() == 0, row == 0) << row;
  }
  EXPECT_TRUE(std::holds_alternative<MemoryKernel*>(kPlainKernelRows[0].straight));
}

TEST(KernelPasses, TheSsePassWritesSecondEntriesAndTheTwoCopiesOnly) {
  for (std::size_t row = 0; row < kKernelRows; ++row) {
    EXPECT_EQ(kSseKernelRows[row].straight.index() != 0, row <= 1) << row;
    EXPECT_EQ(kSseKernelRows[row].smoothed.index() != 0, row != 0) << row;
  }
  EXPECT_TRUE(kSseKernelRows[0].straight == KernelEntry(MemCopyStream));
}

TEST(KernelPasses, OtherPassesWriteEveryEntryInItsArgumentList) {
  for (const KernelRows* pass : {&kMmxKernelRows, &kSse2KernelRows}) {
    for (std::size_t row = 0; row < kKernelRows; ++row) {
      for (const bool smoothed : {false, true}) {
        EXPECT_EQ(EntryOf(*pass, row, smoothed).index(),
                  EntryOf(kPlainKernelRows, row, smoothed).index())
            << row;
      }
    }
  }
}

TEST(KernelPasses, ALaterPassWritesOverAnEarlierOneAndEachAsksItsOwnBit) {
  for (std::uint32_t bits = 0; bits < 8; ++bits) {
    const std::uint32_t word = (bits & 1 ? kFeatureMmx : 0) | (bits & 2 ? kFeatureSse : 0) |
                               (bits & 4 ? kFeatureSse2 : 0) | 1u << 4 | 1u << 15;
    const KernelRows rows = RowsFor(word);
    for (std::size_t row = 0; row < kKernelRows; ++row) {
      for (const bool smoothed : {false, true}) {
        const KernelRows* last = &kPlainKernelRows;
        if (bits & 1) last = &kMmxKernelRows;
        if ((bits & 2) && (row == 0 ? !smoothed : smoothed || row == 1)) last = &kSseKernelRows;
        if (bits & 4) last = &kSse2KernelRows;
        EXPECT_TRUE(EntryOf(rows, row, smoothed) == EntryOf(*last, row, smoothed))
            << "row " << row << ", word " << word;
      }
    }
  }
}

TEST(KernelPasses, LoadingTheLibraryWritesTheTableForItsProcessor) {
  const KernelRows expected = RowsFor(DetectCpuFeatures());
  for (std::size_t row = 0; row < kKernelRows; ++row) {
    EXPECT_TRUE(ConversionKernelTable[row].straight == expected[row].straight) << row;
    EXPECT_TRUE(ConversionKernelTable[row].smoothed == expected[row].smoothed) << row;
  }
}

TEST(KernelPasses, AnEffectiveGuardKeepsTheTableAsItStands) {
  const KernelRow kept = ConversionKernelTable[88];
  ConversionKernelTable[88] = {};
  InitPixelConversion();
  EXPECT_EQ(ConversionKernelTable[88].straight.index(), 0u);
  ConversionKernelTable[88] = kept;
}

/// The rows of a pass whose straight, or smoothed, entries are more than forwards.
std::set<std::size_t> OwnKernels(const KernelRows& pass, bool smoothed) {
  static constexpr KernelRows kForwards = Forwards<false>();
  std::set<std::size_t> rows;
  for (std::size_t row = 0; row < kKernelRows; ++row) {
    const KernelEntry& entry = EntryOf(pass, row, smoothed);
    if (entry.index() != 0 && !(entry == EntryOf(kForwards, row, smoothed))) rows.insert(row);
  }
  return rows;
}

TEST(KernelPasses, KernelsOfTheirOwnStandInTheseEntriesAndForwardsInAllOthers) {
  // A block, a plane, planes, and every packed picture in its own format.
  const std::set<std::size_t> copies = {0, 1, 4, 5, 18, 28, 38, 48, 58, 68, 78, 88};
  const auto with = [](std::set<std::size_t> rows, const std::set<std::size_t>& more) {
    rows.insert(more.begin(), more.end());
    return rows;
  };
  EXPECT_EQ(OwnKernels(kMmxKernelRows, false), with(copies, {22, 23, 53, 62}));
  EXPECT_EQ(OwnKernels(kMmxKernelRows, true), (std::set<std::size_t>{6, 10, 17}));
  EXPECT_EQ(OwnKernels(kSseKernelRows, false), (std::set<std::size_t>{0, 1}));
  EXPECT_EQ(OwnKernels(kSseKernelRows, true), std::set<std::size_t>{});
  // All that isn't from RGB, and from RGB to planes.
  std::set<std::size_t> blocks = {53, 62, 71, 80};
  for (std::size_t row = 1; row < 53; ++row) blocks.insert(row);
  EXPECT_EQ(OwnKernels(kSse2KernelRows, false), with(with(blocks, copies), {54, 63}));
  EXPECT_EQ(OwnKernels(kSse2KernelRows, true), with(blocks, {58, 68}));
}

TEST(KernelPasses, ForwardsAreFunctionsOfTheirOwn) {
  // RGB packing has one form; the vector passes hold forwards to it.
  for (const std::size_t row : {std::size_t{59}, std::size_t{67}}) {
    EXPECT_FALSE(kMmxKernelRows[row].straight == kPlainKernelRows[row].straight);
    EXPECT_TRUE(kMmxKernelRows[row].straight == kSse2KernelRows[row].straight) << "the same one";
  }
  EXPECT_FALSE(kMmxKernelRows[54].straight == kPlainKernelRows[54].straight);
  EXPECT_FALSE(kMmxKernelRows[63].straight == kPlainKernelRows[63].straight);
}

/// Rows in a run: their common source, and its targets in row order.
struct RunOfRows {
  std::size_t first;
  Layout source;
  std::vector<Layout> targets;
};

TEST(KernelLayouts, EveryRowStandsAtItsNumber) {
  using enum Layout;
  const std::vector<Layout> nine = {kYuv420, kYuy2,  kYvyu,   kUyvy,  kVyuy,
                                    kRgb32,  kRgb24, kRgb565, kRgb555};
  const RunOfRows runs[] = {{0, kMemory, {kMemory}},
                            {1, kPlane, {kPlane}},
                            {2, kLumaChroma, {kRgb24, kRgb32}},
                            {4, kYuv420, {kYuv420, kYvu420}},
                            {6, kYuv420, {kYuy2, kYvyu, kUyvy, kVyuy}},
                            {10, kYuv420, {kRgb32, kRgb24, kRgb565, kRgb555}},
                            {14, kYuv420, {kRgb32Luma, kLumaChroma16, kRgb32Keyed}},
                            {17, kYuy2, nine},
                            {26, kYvyu, nine},
                            {35, kUyvy, nine},
                            {44, kVyuy, nine},
                            {53, kRgb32, nine},
                            {62, kRgb24, nine},
                            {71, kRgb565, nine},
                            {80, kRgb555, nine}};
  std::size_t row = 0;
  for (const RunOfRows& run : runs) {
    EXPECT_EQ(row, run.first);
    for (const Layout target : run.targets) {
      EXPECT_EQ(LayoutsOfRow(row).source, run.source) << row;
      EXPECT_EQ(LayoutsOfRow(row).target, target) << row;
      ++row;
    }
  }
  EXPECT_EQ(row, 89u);
  EXPECT_EQ(kKernelRows, 89u);
}

/// Runs row @p row of the plain table on tight packed pictures.
std::vector<std::uint8_t> Convert(std::size_t row, const std::vector<std::uint8_t>& source,
                                  int sourceBytes, int targetBytes, int width, int height) {
  std::vector<std::uint8_t> target(static_cast<std::size_t>(targetBytes * width * height));
  auto* const* kernel = std::get_if<PackedKernel*>(&ConversionKernelTable[row].straight);
  if (kernel == nullptr) {
    ADD_FAILURE() << row;
    return target;
  }
  (*kernel)(target.data(), targetBytes * width, source.data(), sourceBytes * width, width, height);
  return target;
}

TEST(KernelTableRoundTrips, PackingsComeBackFromEachOther) {
  const std::vector<std::uint8_t> picture = Noise(4).Bytes(2 * 38 * 5);
  for (std::size_t from = 0; from < 4; ++from) {
    for (std::size_t to = 0; to < 4; ++to) {
      const auto there = Convert(17 + 9 * from + 1 + to, picture, 2, 2, 38, 5);
      EXPECT_EQ(Convert(17 + 9 * to + 1 + from, there, 2, 2, 38, 5), picture);
      EXPECT_EQ(there == picture, from == to);
    }
  }
}

TEST(KernelTableRoundTrips, WordsOfRgbComeBackFromWiderPixels) {
  std::vector<std::uint8_t> words(2 * 65536);
  for (std::size_t i = 0; i < 65536; ++i) {
    words[2 * i] = static_cast<std::uint8_t>(i);
    words[2 * i + 1] = static_cast<std::uint8_t>(i >> 8);
  }
  for (const std::size_t wide : {std::size_t{0}, std::size_t{1}}) {  // RGB32, RGB24
    const int bytes = wide == 0 ? 4 : 3;
    const auto from565 = Convert(76 + wide, words, 2, bytes, 256, 256);
    EXPECT_EQ(Convert(60 + 9 * wide, from565, bytes, 2, 256, 256), words);
    std::vector<std::uint8_t> masked = words;
    for (std::size_t i = 1; i < masked.size(); i += 2) masked[i] &= 0x7F;
    const auto from555 = Convert(85 + wide, words, 2, bytes, 256, 256);
    EXPECT_EQ(Convert(61 + 9 * wide, from555, bytes, 2, 256, 256), masked);
  }
}

TEST(KernelTableRoundTrips, ExchangedPlanesExchangedAgainAreThePicture) {
  const std::vector<std::uint8_t> luma = Noise(1).Bytes(20 * 6);
  const std::vector<std::uint8_t> u = Noise(2).Bytes(10 * 3);
  const std::vector<std::uint8_t> v = Noise(3).Bytes(10 * 3);
  std::vector<std::uint8_t> y1(120), u1(30), v1(30), y2(120), u2(30), v2(30);
  auto* const* exchange = std::get_if<PlanesToPlanesKernel*>(&ConversionKernelTable[5].straight);
  ASSERT_NE(exchange, nullptr);
  (*exchange)(y1.data(), u1.data(), v1.data(), 20, 10, luma.data(), u.data(), v.data(), 20, 10, 20,
              6);
  EXPECT_EQ(y1, luma);
  EXPECT_EQ(u1, v);
  EXPECT_EQ(v1, u);
  (*exchange)(y2.data(), u2.data(), v2.data(), 20, 10, y1.data(), u1.data(), v1.data(), 20, 10, 20,
              6);
  EXPECT_EQ(u2, u);
  EXPECT_EQ(v2, v);
}

TEST(KernelTableFilter, FlatPicturesStayFlatAndAnInnerRowWeighsHalf) {
  // Rows 0, 100, 0: the middle one becomes Avg(Avg(0, 0), 100) = 50, the outer two stay.
  std::uint8_t rows[3 * 20];
  std::memset(rows, 0, sizeof(rows));
  std::memset(rows + 20, 100, 20);
  std::uint8_t smoothed[3 * 20];
  auto* const* kernel = std::get_if<PackedKernel*>(&ConversionKernelTable[1].smoothed);
  ASSERT_NE(kernel, nullptr);
  (*kernel)(smoothed, 20, rows, 20, 20, 3);
  for (int x = 0; x < 20; ++x) {
    EXPECT_EQ(smoothed[x], 0);
    EXPECT_EQ(smoothed[20 + x], 50);
    EXPECT_EQ(smoothed[40 + x], 0);
  }
}

}  // namespace
}  // namespace zor::test
