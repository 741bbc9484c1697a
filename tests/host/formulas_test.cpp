// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

// The formulas as `info --matrix` prints them: read from its text, worked out, and compared with
// the bytes that conversions give; and looked for on the pages about the conversions.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "conversion_matrix.h"
#include "library.h"

namespace zorhost {
namespace {

using Values = std::map<std::string, std::int64_t>;

/// Works out a formula of the table: sums, products by juxtaposition, shifts and clamp.
class Evaluator {
 public:
  Evaluator(std::string text, Values values) : text_(std::move(text)), values_(std::move(values)) {}
  std::int64_t Result() {
    const std::int64_t value = Shift();
    EXPECT_EQ(at_, text_.size()) << text_;
    return value;
  }

 private:
  bool Take(const std::string& token) {
    while (at_ < text_.size() && text_[at_] == ' ') ++at_;
    if (text_.compare(at_, token.size(), token) != 0) return false;
    at_ += token.size();
    return true;
  }
  std::int64_t Shift() {
    std::int64_t value = Sum();
    while (Take(">>")) value >>= Sum();
    return value;
  }
  std::int64_t Sum() {
    std::int64_t value = Product();
    for (;;) {
      if (Take("+")) {
        value += Product();
      } else if (Take("-")) {
        value -= Product();
      } else {
        return value;
      }
    }
  }
  bool AtFactor() {
    Take("");
    return at_ < text_.size() && (text_[at_] == '(' || std::isalnum(text_[at_]));
  }
  std::int64_t Product() {
    std::int64_t value = 1;
    EXPECT_TRUE(AtFactor()) << text_.substr(at_);
    while (AtFactor()) value *= Factor();
    return value;
  }
  std::int64_t Factor() {
    std::string word;
    while (at_ < text_.size() && std::isalnum(text_[at_])) word += text_[at_++];
    if (!word.empty() && std::isdigit(word.front())) return std::stoll(word);
    if (!word.empty() && word != "clamp") {
      EXPECT_TRUE(values_.count(word)) << word;
      return values_[word];
    }
    EXPECT_TRUE(Take("(")) << text_;
    const std::int64_t value = Shift();
    EXPECT_TRUE(Take(")")) << text_;
    if (word == "clamp") return std::clamp<std::int64_t>(value, 0, 255);
    return value;
  }

  std::string text_;
  Values values_;
  std::size_t at_ = 0;
};

/// The right side of a formula, which begins at @p first: up to a comma or semicolon that isn't in
/// brackets.
std::string RightSide(const std::string& line, std::size_t first) {
  int depth = 0;
  std::size_t end = first;
  for (; end < line.size() && (depth > 0 || (line[end] != ',' && line[end] != ';')); ++end) {
    depth += (line[end] == '(') - (line[end] == ')');
  }
  return line.substr(first, end - first);
}

/// What the table prints about a family.
std::vector<std::string> LinesOf(const std::string& family) {
  static const auto json = nlohmann::json::parse(ConversionMatrixJson());
  return json["families"][family];
}

/// The right side of "@p name = ..." in the line of a family that begins with @p start.
std::string FormulaOf(const char* family, const std::string& name, const std::string& start) {
  for (const std::string& line : LinesOf(family)) {
    const std::size_t at = (" " + line).find(" " + name + " = ");
    if (line.rfind(start, 0) != 0 || at == std::string::npos) continue;
    return RightSide(line, at + name.size() + 3);
  }
  ADD_FAILURE() << family << " has no formula for " << name << " " << start;
  return "0";
}

std::int64_t ByTable(const char* family, const std::string& name, const std::string& start,
                     const Values& values) {
  return Evaluator(FormulaOf(family, name, start), values).Result();
}

std::uint8_t* PixelsOf(IZorSurface& surface) {
  std::uint8_t* pixels = nullptr;
  Check(surface.GetPixels(&pixels), "GetPixels");
  return pixels;
}

constexpr int kWidth = 36;  // two blocks of 16 columns, and a tail
constexpr int kHeight = 8;
// Corners of the cubes, and values whose floors differ.
constexpr int kSamples[] = {0, 1, 16, 77, 128, 129, 201, 240, 255};

/// Calls back for every triple of samples.
template <class Work>
void ForTriples(const Work& work) {
  for (const int a : kSamples) {
    for (const int b : kSamples) {
      for (const int c : kSamples) work(a, b, c);
    }
  }
}

TEST(Formulas, RgbToYuvIsAsItsFormulasSay) {
  const Library library;
  for (const Layout from : {Layout::kRgb24, Layout::kRgb32}) {
    const int step = Traits(from).bitsPerPixel / 8;
    ForTriples([&](int b, int g, int r) {
      const auto filled = [&] {
        Ref<IZorSurface> surface = library.Blank(from, kWidth, kHeight);
        std::uint8_t* pixels = PixelsOf(*surface.get());
        for (int i = 0; i < kWidth * kHeight; ++i) {
          const int colour[4] = {b, g, r, 99};
          for (int c = 0; c < step; ++c) {
            pixels[i * step + c] = static_cast<std::uint8_t>(colour[c]);
          }
        }
        return surface;
      };
      const Values values = {{"B", b},      {"G", g},      {"R", r},  {"SB", 4 * b},
                             {"SG", 4 * g}, {"SR", 4 * r}, {"B1", b}, {"G1", g},
                             {"R1", r},     {"B0", b},     {"G0", g}, {"R0", r}};
      Ref<IZorSurface> surface = filled();
      ASSERT_EQ(surface->ConvertNow(FORMAT_YUV420), VED_OK);
      const std::uint8_t* planes = PixelsOf(*surface.get());
      constexpr int kLuma = kWidth * kHeight;
      EXPECT_EQ(planes[5], ByTable("rgb to yuv420", "Y", "", values));
      EXPECT_EQ(planes[kLuma + 3], ByTable("rgb to yuv420", "V", "", values));
      EXPECT_EQ(planes[kLuma * 5 / 4 + 3], ByTable("rgb to yuv420", "U", "", values));
      surface = filled();
      ASSERT_EQ(surface->ConvertNow(FORMAT_YUY2), VED_OK);
      const std::uint8_t* packed = PixelsOf(*surface.get());
      EXPECT_EQ(packed[4], ByTable("rgb to yuy2", "Y", "", values));
      for (const char* form : {"plain:", "SSE2:"}) {  // alike where both pixels are
        EXPECT_EQ(packed[5], ByTable("rgb to yuy2", "U", form, values)) << form;
        EXPECT_EQ(packed[7], ByTable("rgb to yuy2", "V", form, values)) << form;
      }
    });
  }
}

TEST(Formulas, BlocksOfYuy2TakeChromaOfTheSecondPixel) {
  const Library library;
  const Ref<IZorSurface> surface = library.Blank(Layout::kRgb32, 16, 4);
  std::uint8_t* pixels = PixelsOf(*surface.get());
  for (int i = 0; i < 16 * 4; ++i) {
    pixels[4 * i] = static_cast<std::uint8_t>(i % 2 ? 200 : 10);
    pixels[4 * i + 1] = static_cast<std::uint8_t>(i % 2 ? 30 : 250);
    pixels[4 * i + 2] = static_cast<std::uint8_t>(i % 2 ? 90 : 60);
  }
  ASSERT_EQ(surface->ConvertNow(FORMAT_YUY2), VED_OK);
  const Values second = {{"B1", 200}, {"G1", 30}, {"R1", 90}};
  const std::uint8_t* packed = PixelsOf(*surface.get());
  EXPECT_EQ(packed[1], ByTable("rgb to yuy2", "U", "SSE2:", second));
  EXPECT_EQ(packed[3], ByTable("rgb to yuy2", "V", "SSE2:", second));
}

TEST(Formulas, YuvToRgbIsAsItsFormulasSay) {
  const Library library;
  ForTriples([&](int y, int u, int v) {
    for (const Layout from : {Layout::kYuv420, Layout::kYuy2}) {
      for (const Layout to : {Layout::kRgb32, Layout::kRgb24}) {
        const Ref<IZorSurface> surface = library.Blank(from, kWidth, kHeight);
        std::uint8_t* pixels = PixelsOf(*surface.get());
        constexpr int kLuma = kWidth * kHeight;
        if (from == Layout::kYuv420) {
          std::fill_n(pixels, kLuma, static_cast<std::uint8_t>(y));
          std::fill_n(pixels + kLuma, kLuma / 4, static_cast<std::uint8_t>(v));
          std::fill_n(pixels + kLuma * 5 / 4, kLuma / 4, static_cast<std::uint8_t>(u));
        } else {
          for (int i = 0; i < kLuma / 2; ++i) {
            const int pair[4] = {y, u, y, v};
            for (int c = 0; c < 4; ++c) pixels[4 * i + c] = static_cast<std::uint8_t>(pair[c]);
          }
        }
        ASSERT_EQ(surface->ConvertNow(Traits(to).format), VED_OK);
        const int step = Traits(to).bitsPerPixel / 8;
        for (const bool tail : {false, true}) {
          const char* where = tail ? "tables:" : "vectors:";
          const char* family = from == Layout::kYuy2 ? "yuy2 to rgb" : "yuv420 to rgb";
          const bool exchanged = tail && from == Layout::kYuv420 && to == Layout::kRgb24;
          const Values values = {{"Y", y}, {"U", u}, {"V", v}};
          const std::uint8_t* pixel = PixelsOf(*surface.get()) + (tail ? 34 : 9) * step;
          EXPECT_EQ(pixel[exchanged ? 2 : 0], ByTable(family, "B", where, values));
          EXPECT_EQ(pixel[1], ByTable(family, "G", where, values));
          EXPECT_EQ(pixel[exchanged ? 0 : 2], ByTable(family, "R", where, values));
        }
      }
    }
  });
}

/// A page of docs/conversions, its lines joined.
std::string PageText(const std::string& name) {
  std::ifstream page(ZOR_CONVERSION_PAGES "/" + name);
  EXPECT_TRUE(page) << name;
  std::string text;
  for (std::string word; page >> word;) text += word + " ";
  return text;
}

/// @return whether a formula stands in a text, and not as the beginning of a longer number.
bool Holds(const std::string& text, const std::string& formula) {
  const std::size_t at = text.find(formula);
  return at != std::string::npos && std::isalnum(text[at + formula.size()]) == 0;
}

TEST(Formulas, StandOnTheConversionsPages) {
  constexpr std::pair<const char*, const char*> kPages[] = {
      {"rgb to yuv420", "rgb_to_yuv420.md"}, {"rgb to yuy2", "rgb_yuy2.md"},
      {"yuy2 to rgb", "rgb_yuy2.md"},        {"yuv420 to rgb", "yuv420_to_rgb.md"},
      {"yuv420 to yuy2", "yuv420_yuy2.md"},  {"yuy2 to yuv420", "yuv420_yuy2.md"}};
  int formulas = 0;
  for (const auto& [family, page] : kPages) {
    const std::string text = PageText(page);
    for (const std::string& line : LinesOf(family)) {
      for (std::size_t at = line.find(" = "); at != std::string::npos;
           at = line.find(" = ", at + 3)) {
        const std::string formula = RightSide(line, at + 3);
        EXPECT_TRUE(Holds(text, formula)) << page << " lacks " << formula;
        ++formulas;
      }
    }
  }
  EXPECT_EQ(formulas, 26);  // 3, 5, 6, 8, 2 and 2
}

}  // namespace
}  // namespace zorhost
