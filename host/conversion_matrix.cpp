// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "conversion_matrix.h"

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <vector>

namespace zorhost {
namespace {

enum class Family {
  kPacking,
  kRgbToYuv420,
  kRgbToYuy2,
  kYuy2ToRgb,
  kYuv420ToRgb,
  kYuv420ToYuy2,
  kYuy2ToYuv420,
  kExchange
};

struct Conversion {
  Layout from;
  Layout to;
  Family family;
};

constexpr Conversion kConversions[] = {
    {Layout::kRgb24, Layout::kRgb32, Family::kPacking},
    {Layout::kRgb24, Layout::kYuv420, Family::kRgbToYuv420},
    {Layout::kRgb24, Layout::kYuy2, Family::kRgbToYuy2},
    {Layout::kRgb32, Layout::kRgb24, Family::kPacking},
    {Layout::kRgb32, Layout::kYuv420, Family::kRgbToYuv420},
    {Layout::kRgb32, Layout::kYuy2, Family::kRgbToYuy2},
    {Layout::kYuv420, Layout::kRgb24, Family::kYuv420ToRgb},
    {Layout::kYuv420, Layout::kRgb32, Family::kYuv420ToRgb},
    {Layout::kYuv420, Layout::kYuy2, Family::kYuv420ToYuy2},
    {Layout::kYuv420, Layout::kYvu420, Family::kExchange},
    {Layout::kYuy2, Layout::kRgb24, Family::kYuy2ToRgb},
    {Layout::kYuy2, Layout::kRgb32, Family::kYuy2ToRgb},
    {Layout::kYuy2, Layout::kYuv420, Family::kYuy2ToYuv420},
};

constexpr Layout kLayouts[] = {Layout::kRgb24,  Layout::kRgb32, Layout::kGray8,
                               Layout::kYuv420, Layout::kYuy2,  Layout::kYvu420};

struct FamilyText {
  Family family;
  const char* title;
  std::vector<const char*> lines;
};

constexpr const char* kTableColours =
    "tables:  B = clamp((9535 (Y-16) + 16531 (U-128)) >> 13), "
    "G = clamp((9535 (Y-16) - (3203 (U-128) + 6660 (V-128))) >> 13), "
    "R = clamp((9535 (Y-16) + 13074 (V-128)) >> 13)";
constexpr const char* kVectorColours =
    "vectors: B = clamp((74 (Y-16) + 129 (U-128)) >> 6), "
    "G = clamp((74 (Y-16) - (25 (U-128) + 52 (V-128))) >> 6), "
    "R = clamp((74 (Y-16) + 102 (V-128)) >> 6), sums saturate at 16 bits";
constexpr const char* kRgbLuma = "Y = ((25 B + 129 G + 66 R) >> 8) + 16";
constexpr const char* kFilter =
    "rows filtered downwards: Smooth(a, b, c) = Avg(Avg(a, c), b), Avg(a, b) = (a + b + 1) >> 1; "
    "MMX blocks take (a >> 1) + (b >> 1) for Avg";
constexpr const char* kPlaneRows =
    "luma rows Smooth of themselves and both neighbours, the first and the last as they are; "
    "chroma of a pair of rows Smooth(C[p-1], C[p], C[p+1])";

const std::vector<FamilyText>& Families() {
  static const std::vector<FamilyText> families = {
      {Family::kPacking,
       "rgb24 and rgb32",
       {"B, G, R are copied; the fourth byte becomes 0, or is dropped",
        "one form; rgb32 to anything keeps 255 - alpha as the surface's mask"}},
      {Family::kRgbToYuv420,
       "rgb to yuv420",
       {kRgbLuma,
        "U = ((112 SB - 74 SG - 38 SR) >> 10) + 128, V = ((112 SR - 94 SG - 18 SB) >> 10) + 128, "
        "SB, SG and SR the sums of the 2 x 2 pixels",
        "all forms give the same bytes; odd sizes are trimmed first"}},
      {Family::kRgbToYuy2,
       "rgb to yuy2",
       {kRgbLuma,
        "plain: U = ((112 (B0+B1) - 74 (G0+G1) - 38 (R0+R1)) >> 9) + 128, "
        "V = ((112 (R0+R1) - 94 (G0+G1) - 18 (B0+B1)) >> 9) + 128",
        "SSE2:  U = ((112 B1 - 74 G1 - 38 R1) >> 8) + 128, V = ((112 R1 - 94 G1 - 18 B1) >> 8) + "
        "128, in blocks of 8 columns; columns behind the last block stay unwritten",
        "SSE2 from rgb24 reads its pixels at steps of 4 bytes: go through rgb32"}},
      {Family::kYuy2ToRgb,
       "yuy2 to rgb",
       {kTableColours, kVectorColours,
        "plain: tables; MMX: vectors in blocks of 8 columns; SSE2: in blocks of 16; tails: "
        "tables"}},
      {Family::kYuv420ToRgb,
       "yuv420 to rgb",
       {kTableColours, kVectorColours, kFilter, kPlaneRows,
        "plain: tables; rgb32 with MMX: vectors in blocks of 8 columns, with SSE2 of 16; tails: "
        "tables",
        "rgb24 with SSE2: vectors in blocks of 16 columns without the row filter; its tail takes "
        "the row's first chroma sample, red and blue exchanged"}},
      {Family::kYuv420ToYuy2,
       "yuv420 to yuy2",
       {kFilter, kPlaneRows, "plain and SSE2 give the same bytes"}},
      {Family::kYuy2ToYuv420,
       "yuy2 to yuv420",
       {kFilter, "every row Smooth of itself and both neighbours; chroma of a pair Avg of its rows",
        "plain and SSE2 give the same bytes"}},
      {Family::kExchange,
       "yuv420 to yvu420",
       {"the two chroma planes change places; the surface still counts as yuv420"}},
  };
  return families;
}

const FamilyText& TextOf(Family family) {
  return *std::find_if(Families().begin(), Families().end(),
                       [family](const FamilyText& text) { return text.family == family; });
}

std::string Cell(const char* text, int width) {
  char cell[32];
  std::snprintf(cell, sizeof cell, "%*s", width, text);
  return cell;
}

}  // namespace

bool Converts(Layout from, Layout to) {
  if (from == to) return from != Layout::kYvu420;
  return std::any_of(
      std::begin(kConversions), std::end(kConversions),
      [from, to](const Conversion& pair) { return pair.from == from && pair.to == to; });
}

std::string ConversionMatrixText() {
  constexpr int kWidth = 9;
  std::string out = "from \\ to";
  for (const Layout to : kLayouts) out += Cell(Traits(to).name, kWidth);
  out += "\n";
  for (const Layout from : kLayouts) {
    if (from == Layout::kYvu420) continue;  // no surface has it
    char name[16];
    std::snprintf(name, sizeof name, "%-9s", Traits(from).name);
    out += name;
    for (const Layout to : kLayouts) {
      out += Cell(from == to ? "=" : Converts(from, to) ? "yes" : "-", kWidth);
    }
    out += "\n";
  }
  out +=
      "\nBT.601 in video range. >> rounds down, clamp holds to 0..255. The form is chosen by what\n"
      "the processor has: SSE2, else MMX, else plain. Other pairs go through a format between.\n";
  for (const FamilyText& family : Families()) {
    out += std::string("\n") + family.title + "\n";
    for (const char* line : family.lines) out += std::string("  ") + line + "\n";
  }
  return out;
}

std::string ConversionMatrixJson() {
  nlohmann::ordered_json out;
  for (const Conversion& pair : kConversions) {
    out["conversions"].push_back({{"from", Traits(pair.from).name},
                                  {"to", Traits(pair.to).name},
                                  {"family", TextOf(pair.family).title}});
  }
  for (const FamilyText& family : Families()) out["families"][family.title] = family.lines;
  return out.dump(2);
}

}  // namespace zorhost
