// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <gtest/gtest.h>

#include <string>

#include "convert/feature_word.h"
#include "route.h"
#include "support/guarded_memory.h"

namespace zorkernels {
namespace {

using Bytes = std::vector<std::uint8_t>;

RawPicture Picture(Layout layout, std::int32_t width, std::int32_t height, const Bytes& file) {
  RawPicture picture(layout, width, height);
  picture.FromFile(file);
  return picture;
}

Bytes Convert(Layout from, Layout to, std::int32_t width, std::int32_t height, const Bytes& file,
              const Conversion& conversion = {}) {
  return ConvertBy(zor::kPlainKernelRows, FindRoute(from, to), Picture(from, width, height, file),
                   to, conversion)
      .ToFile();
}

TEST(ZorkernelsPictures, FilesHaveTheBytesOfTheirLayouts) {
  const std::pair<Layout, std::size_t> sizes[] = {
      {Layout::kMemory, 60},      {Layout::kPlane, 60},         {Layout::kLumaChroma, 90},
      {Layout::kYuv420, 90},      {Layout::kYuy2, 120},         {Layout::kRgb32, 240},
      {Layout::kRgb24, 180},      {Layout::kRgb565, 120},       {Layout::kRgb32Luma, 240},
      {Layout::kRgb32Keyed, 240}, {Layout::kLumaChroma16, 190}, {Layout::kVyuy, 120}};
  for (const auto& [layout, bytes] : sizes) {
    EXPECT_EQ(RawPicture(layout, 10, 6).fileBytes(), bytes) << NameOf(layout);
    EXPECT_EQ(LayoutFromName(NameOf(layout)), layout);
  }
  EXPECT_THROW(LayoutFromName("yuy3"), Refusal);
  EXPECT_THROW(Picture(Layout::kRgb24, 10, 6, Bytes(179)), Refusal);
}

TEST(ZorkernelsPictures, ComeBackAsTheyWere) {
  for (const LayoutName& name : LayoutNames()) {
    RawPicture picture(name.layout, 12, 10);
    const Bytes file = zor::test::Noise(7).Bytes(picture.fileBytes());
    picture.FromFile(file);
    EXPECT_EQ(picture.ToFile(), file) << name.name;
  }
}

TEST(ZorkernelsRoutes, ARowOfTheTableIsARouteOfOne) {
  for (std::size_t row = 0; row < zor::kKernelRows; ++row) {
    const zor::KernelLayouts layouts = zor::LayoutsOfRow(row);
    EXPECT_EQ(FindRoute(layouts.source, layouts.target), std::vector<std::size_t>{row});
  }
}

TEST(ZorkernelsRoutes, LeadFromEveryPictureToEveryOther) {
  for (const LayoutName& from : LayoutNames()) {
    for (const LayoutName& to : LayoutNames()) {
      const bool bare = from.layout <= Layout::kPlane || to.layout <= Layout::kPlane;
      if (bare && from.layout != to.layout) {
        EXPECT_THROW(FindRoute(from.layout, to.layout), Refusal);
        continue;
      }
      const Bytes file(RawPicture(from.layout, 16, 16).fileBytes(), 128);
      const Bytes result = Convert(from.layout, to.layout, 16, 16, file);
      EXPECT_EQ(result.size(), RawPicture(to.layout, 16, 16).fileBytes());
    }
  }
}

TEST(ZorkernelsRoutes, ChromaKeepsItsPlaceInEveryOrderOfPlanes) {
  // Two columns, two rows: luma 50, U 90, V 170.
  const std::pair<Layout, Bytes> files[] = {{Layout::kYuv420, {50, 50, 50, 50, 170, 90}},
                                            {Layout::kYvu420, {50, 50, 50, 50, 90, 170}},
                                            {Layout::kYuy2, {50, 90, 50, 170, 50, 90, 50, 170}},
                                            {Layout::kVyuy, {170, 50, 90, 50, 170, 50, 90, 50}}};
  for (const auto& [from, source] : files) {
    for (const auto& [to, target] : files) {
      EXPECT_EQ(Convert(from, to, 2, 2, source), target) << NameOf(from) << " to " << NameOf(to);
    }
  }
  EXPECT_EQ(Convert(Layout::kYvu420, Layout::kLumaChroma, 2, 2, files[1].second), files[1].second);
}

TEST(ZorkernelsRoutes, InterleavedChromaStandsBehindAMultipleOf16Rows) {
  for (const std::int32_t height : {2, 14, 16, 17, 18, 32}) {
    // Two columns: luma counts the rows, V is 160 and more, U 80 and more.
    const auto rows = static_cast<std::size_t>(height);
    const std::size_t begin = (rows + 15) / 16 * 16 * 2;
    Bytes planes, expected(begin + rows / 2 * 2);
    for (std::size_t i = 0; i < 2 * rows; ++i) {
      planes.push_back(static_cast<std::uint8_t>(i));
      expected[i] = static_cast<std::uint8_t>(i);
    }
    for (const int first : {160, 80}) {
      for (std::size_t i = 0; i < rows / 2; ++i) {
        const auto sample = static_cast<std::uint8_t>(first + static_cast<int>(i));
        planes.push_back(sample);
        expected[begin + 2 * i + (first == 160 ? 1 : 0)] = sample;
      }
    }
    const Bytes block = Convert(Layout::kYuv420, Layout::kLumaChroma16, 2, height, planes);
    EXPECT_EQ(block, expected) << height;
    if (height % 2 != 0) continue;  // straight, a last row reads chroma that the planes haven't
    // It is read from there again; RGB tells by its red and blue.
    const Bytes rgb = Convert(Layout::kLumaChroma16, Layout::kRgb24, 2, height, block);
    EXPECT_EQ(rgb, Convert(Layout::kYuv420, Layout::kRgb24, 2, height, planes)) << height;
  }
}

TEST(ZorkernelsRoutes, TheFilterWorksOnceAndTheThresholdKeysLuma) {
  Bytes rows = {0, 0, 200, 200, 0, 0};
  EXPECT_EQ(Convert(Layout::kPlane, Layout::kPlane, 2, 3, rows, {.smoothed = true}),
            (Bytes{0, 0, 100, 100, 0, 0}));
  const Bytes keyed = Convert(Layout::kYuv420, Layout::kRgb32Keyed, 2, 2,
                              {99, 100, 101, 255, 128, 128}, {.threshold = 100});
  EXPECT_EQ((Bytes{keyed[3], keyed[7], keyed[11], keyed[15]}), (Bytes{0, 0, 255, 255}));
  EXPECT_THROW(Convert(Layout::kMemory, Layout::kMemory, 2, 3, rows, {.smoothed = true}), Refusal);
}

TEST(ZorkernelsForms, AreToldApart) {
  zor::KernelRows rows = zor::kPlainKernelRows;
  EXPECT_STREQ(FormOf(rows, 10, true), "plain");
  EXPECT_STREQ(FormOf(rows, 0, true), "-");
  zor::WriteKernelForms(rows, zor::kFeatureMmx);
  EXPECT_STREQ(FormOf(rows, 10, true), "mmx");
  EXPECT_STREQ(FormOf(rows, 10, false), "forward to plain");
  zor::WriteKernelForms(rows, zor::kFeatureSse);
  EXPECT_STREQ(FormOf(rows, 0, false), "sse");
  EXPECT_STREQ(FormOf(rows, 10, true), "forward to plain");
  zor::WriteKernelForms(rows, zor::kFeatureSse2);
  EXPECT_STREQ(FormOf(rows, 10, true), "sse2");
  EXPECT_STREQ(FormOf(rows, 59, false), "forward to plain");
}

}  // namespace
}  // namespace zorkernels
