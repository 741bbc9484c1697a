// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "conversion_matrix.h"
#include "library.h"

namespace zorhost {
namespace {

constexpr Layout kAll[] = {Layout::kRgb24,  Layout::kRgb32, Layout::kGray8,
                           Layout::kYuv420, Layout::kYuy2,  Layout::kYvu420};

TEST(Matrix, SaysWhatTheLibraryDoes) {
  const Library library;
  for (const Layout from : kAll) {
    if (from == Layout::kYvu420) continue;  // no surface has it
    for (const Layout to : kAll) {
      const Ref<IZorSurface> surface = library.Blank(from, 16, 16);
      EXPECT_EQ(VED_OK, surface->QueueConvert(Traits(to).format));
      EXPECT_EQ(Converts(from, to), surface->Flush() == VED_OK)
          << Traits(from).name << " to " << Traits(to).name;
    }
  }
}

TEST(Matrix, TextHasARowForEachSurfaceFormat) {
  const std::string text = ConversionMatrixText();
  EXPECT_NE(text.find("yuv420         yes      yes        -        =      yes      yes\n"),
            std::string::npos)
      << text;
  EXPECT_NE(text.find("gray             -        -        =        -        -        -\n"),
            std::string::npos)
      << text;
  EXPECT_EQ(text.find("\nyvu420"), std::string::npos) << text;
  EXPECT_NE(text.find("\nrgb to yuv420\n  Y = "), std::string::npos) << text;
}

TEST(Matrix, EveryPairHasFormulas) {
  const auto json = nlohmann::json::parse(ConversionMatrixJson());
  EXPECT_EQ(13u, json["conversions"].size());
  for (const auto& pair : json["conversions"]) {
    const auto family = json["families"].find(pair["family"].get<std::string>());
    ASSERT_NE(json["families"].end(), family) << pair;
    EXPECT_FALSE(family->empty()) << pair;
  }
}

// The formulas that the table prints, worked out for one colour and asked of the library.
TEST(Matrix, PrintedFormulasGiveTheLibrarysBytes) {
  ASSERT_NE(ConversionMatrixText().find("Y = ((25 B + 129 G + 66 R) >> 8) + 16"),
            std::string::npos);
  const Library library;
  Picture picture(Layout::kRgb32, 16, 16);
  for (int y = 0; y < 16; ++y) {
    for (int x = 0; x < 16; ++x) {
      const std::uint8_t pixel[4] = {200, 90, 30, 255};
      std::copy(pixel, pixel + 4, picture.row(0, y) + 4 * x);
    }
  }
  const Ref<IZorSurface> surface = library.HandIn(picture);
  surface->QueueConvert(Traits(Layout::kYuv420).format);
  std::uint8_t* pixels = nullptr;
  ASSERT_EQ(VED_OK, surface->GetPixels(&pixels));
  EXPECT_EQ(((25 * 200 + 129 * 90 + 66 * 30) >> 8) + 16, pixels[17]);
  EXPECT_EQ(((112 * 120 - 94 * 360 - 18 * 800) >> 10) + 128, pixels[256 + 9]);
  EXPECT_EQ(((112 * 800 - 74 * 360 - 38 * 120) >> 10) + 128, pixels[256 + 64 + 9]);
}

}  // namespace
}  // namespace zorhost
