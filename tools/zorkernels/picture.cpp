// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "picture.h"

#include <cstring>

namespace zorkernels {
namespace {

std::int32_t PixelBytes(Layout layout) {
  switch (layout) {
    case Layout::kRgb32:
    case Layout::kRgb32Luma:
    case Layout::kRgb32Keyed:
      return 4;
    case Layout::kRgb24:
      return 3;
    case Layout::kYuy2:
    case Layout::kYvyu:
    case Layout::kUyvy:
    case Layout::kVyuy:
    case Layout::kRgb565:
    case Layout::kRgb555:
      return 2;
    default:
      return 1;
  }
}

bool IsThreePlanes(Layout layout) {
  return layout == Layout::kYuv420 || layout == Layout::kYvu420;
}
bool IsLumaChroma(Layout layout) {
  return layout == Layout::kLumaChroma || layout == Layout::kLumaChroma16;
}

}  // namespace

const std::vector<LayoutName>& LayoutNames() {
  static const std::vector<LayoutName> names = {
      {Layout::kMemory, "memory", "bytes"},
      {Layout::kPlane, "plane", "Y Y Y ..."},
      {Layout::kLumaChroma, "luma-chroma", "luma plane, then rows U V U V ..."},
      {Layout::kYuv420, "yuv420", "planes Y, V, U"},
      {Layout::kYvu420, "yvu420", "planes Y, U, V"},
      {Layout::kYuy2, "yuy2", "Y0 U Y1 V"},
      {Layout::kYvyu, "yvyu", "Y0 V Y1 U"},
      {Layout::kUyvy, "uyvy", "U Y0 V Y1"},
      {Layout::kVyuy, "vyuy", "V Y0 U Y1"},
      {Layout::kRgb32, "rgb32", "B G R 0"},
      {Layout::kRgb24, "rgb24", "B G R"},
      {Layout::kRgb565, "rgb565", "words of 5 bits red, 6 green, 5 blue, low byte first"},
      {Layout::kRgb555, "rgb555", "words of 5 bits red, 5 green, 5 blue, low byte first"},
      {Layout::kRgb32Luma, "rgb32-luma", "B G R Y"},
      {Layout::kLumaChroma16, "luma-chroma16",
       "luma plane taken up to a multiple of 16 rows, then rows U V U V ..."},
      {Layout::kRgb32Keyed, "rgb32-keyed", "B G R and 255 where luma is above --threshold, else 0"},
  };
  return names;
}

const char* NameOf(Layout layout) {
  for (const LayoutName& name : LayoutNames()) {
    if (name.layout == layout) return name.name;
  }
  throw std::logic_error("a layout without a name");
}

Layout LayoutFromName(std::string_view text) {
  std::string known;
  for (const LayoutName& name : LayoutNames()) {
    if (text == name.name) return name.layout;
    known += std::string(known.empty() ? "" : ", ") + name.name;
  }
  throw Refusal("unknown layout '" + std::string(text) + "'; known: " + known);
}

RawPicture::RawPicture(Layout layout, std::int32_t width, std::int32_t height)
    : layout_(layout), width_(width), height_(height), stride_(width * PixelBytes(layout)) {
  const std::size_t luma = LumaBytes();
  const std::size_t chromaRows = static_cast<std::size_t>(height / 2);
  used_ = luma;
  if (IsThreePlanes(layout)) {
    chromaStride_ = width / 2;
    const std::size_t plane = static_cast<std::size_t>(chromaStride_) * chromaRows;
    u_ = luma + (layout == Layout::kYuv420 ? plane : 0);
    v_ = luma + (layout == Layout::kYuv420 ? 0 : plane);
    used_ = luma + 2 * plane;
  } else if (IsLumaChroma(layout)) {
    chromaStride_ = stride_;
    u_ = static_cast<std::size_t>(stride_) * ((static_cast<std::size_t>(height) + 15) / 16 * 16);
    v_ = u_ + 1;
    used_ = u_ + static_cast<std::size_t>(stride_) * chromaRows;
  }
  // Rows of 3-byte pixels are read with gaps, and some tails run on: a row or two covers that.
  margin_ = 8 * static_cast<std::size_t>(width) + 4096 + static_cast<std::size_t>(height);
  bytes_.resize(used_ + 2 * margin_);
}

std::size_t RawPicture::LumaBytes() const {
  return static_cast<std::size_t>(stride_) * static_cast<std::size_t>(height_);
}

std::size_t RawPicture::fileBytes() const {
  return layout_ == Layout::kLumaChroma ? LumaBytes() + used_ - u_ : used_;
}

void RawPicture::FromFile(const std::vector<std::uint8_t>& file) {
  if (file.size() != fileBytes()) {
    throw Refusal("the file has " + std::to_string(file.size()) + " bytes; a picture of " +
                  std::to_string(width_) + " x " + std::to_string(height_) + " in " +
                  NameOf(layout_) + " has " + std::to_string(fileBytes()));
  }
  if (file.empty()) return;
  const std::size_t first = layout_ == Layout::kLumaChroma ? LumaBytes() : file.size();
  std::memcpy(pixels(), file.data(), first);
  if (first < file.size()) std::memcpy(chroma(), file.data() + first, file.size() - first);
}

std::vector<std::uint8_t> RawPicture::ToFile() {
  std::vector<std::uint8_t> file(pixels(), pixels() + used_);
  if (layout_ == Layout::kLumaChroma) {
    file.erase(file.begin() + static_cast<std::ptrdiff_t>(LumaBytes()),
               file.begin() + static_cast<std::ptrdiff_t>(u_));
  }
  return file;
}

}  // namespace zorkernels
