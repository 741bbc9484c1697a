// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Where frames come from: one interface, one implementation per kind of file.

#include <memory>
#include <string>

#include "picture.h"
#include "stream_info.h"

namespace zorhost {

/// A frame and when it is shown, in units of `timeBase` seconds.
struct Frame {
  Picture picture;
  std::int64_t time = -1;  ///< -1: the constant rate tells
  Rational timeBase;
  bool keyFrame = true;
};

/// A run of frames, read one at a time; a clip is never held as a whole.
class FrameSource {
 public:
  virtual ~FrameSource() = default;
  virtual const StreamInfo& info() const = 0;
  /// Reads the next frame. @return false at the end.
  /// @throws InputError for a damaged or truncated source.
  virtual bool Read(Frame& frame) = 0;
};

/// Raw frames have no header, so the command line gives their shape.
struct RawShape {
  int width = 0;
  int height = 0;
  Layout layout = Layout::kYvu420;
  bool set() const { return width > 0; }
};

/// Opens "-" (Y4M, or raw with a shape), a Y4M, BMP, PNG, JPEG or PPM file, a numbered sequence
/// such as "img%04d.png", raw frames with a shape, and where FFmpeg is built in whatever it opens.
/// @throws InputError
std::unique_ptr<FrameSource> OpenSource(const std::string& path, const RawShape& raw = {});

}  // namespace zorhost
