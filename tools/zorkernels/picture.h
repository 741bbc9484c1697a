// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Raw pictures in the layouts of the kernel table: their names, their bytes in a file, and where
/// kernels find them in memory.

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "convert/table/kernel_layouts.h"

namespace zorkernels {

using zor::Layout;

/// The command line or a file asks for what can't be.
struct Refusal : std::runtime_error {
  using std::runtime_error::runtime_error;
};

struct LayoutName {
  Layout layout;
  const char* name;
  const char* bytes;  ///< what a file holds
};

/// All layouts. Files of planes have the order that the library's formats have: V in front of U for
/// "yuv420", U in front for "yvu420", which decoders call I420.
const std::vector<LayoutName>& LayoutNames();
const char* NameOf(Layout layout);
/// @throws Refusal naming the known layouts
Layout LayoutFromName(std::string_view name);

/// A picture with rows that lie close together, amid zeros that take what kernels touch outside.
class RawPicture {
 public:
  RawPicture(Layout layout, std::int32_t width, std::int32_t height);

  Layout layout() const { return layout_; }
  std::int32_t width() const { return width_; }
  std::int32_t height() const { return height_; }
  /// Bytes from row to row: of luma in planar layouts.
  std::int32_t stride() const { return stride_; }
  std::int32_t chromaStride() const { return chromaStride_; }

  std::uint8_t* pixels() { return bytes_.data() + margin_; }
  std::uint8_t* u() { return pixels() + u_; }
  std::uint8_t* v() { return pixels() + v_; }
  /// The plane of interleaved chroma; in memory it always stands behind a multiple of 16 rows.
  std::uint8_t* chroma() { return u(); }

  /// @return the bytes of a file
  std::size_t fileBytes() const;
  /// @throws Refusal if @p file has another size
  void FromFile(const std::vector<std::uint8_t>& file);
  std::vector<std::uint8_t> ToFile();

 private:
  std::size_t LumaBytes() const;

  Layout layout_;
  std::int32_t width_;
  std::int32_t height_;
  std::int32_t stride_;
  std::int32_t chromaStride_ = 0;
  std::size_t u_ = 0;
  std::size_t v_ = 0;
  std::size_t used_ = 0;
  std::size_t margin_;
  std::vector<std::uint8_t> bytes_;
};

}  // namespace zorkernels
