// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Where results go: one interface, one implementation per kind of file.

#include <memory>
#include <string>

#include "frame_source.h"

namespace zorhost {

class FrameSink {
 public:
  virtual ~FrameSink() = default;
  /// @param info the source's: rate, aspect and the like for formats that hold them.
  /// @throws OutputError
  virtual void Write(const Frame& frame, const StreamInfo& info) = 0;
  /// Makes the result whole and gives it its name. @throws OutputError
  virtual void Finish() = 0;
};

/// How the end of a path decides.
enum class SinkKind { kY4m, kPng, kBmp, kPpm, kRaw, kVideo, kNone };

/// "-" and .y4m, .png, .bmp, .ppm (also .pgm), .raw, with FFmpeg .mp4, .mkv and .webm; an empty
/// path means none.
/// @throws UsageError for any other ending.
SinkKind SinkKindOf(const std::string& path);
/// Whether a file of this kind can hold the layout.
bool SinkTakes(SinkKind kind, Layout layout);
/// The layouts that a kind takes, for messages.
std::string SinkLayouts(SinkKind kind);

/// A sink by the path's ending; a numbered name such as "out%04d.png" gives one file per frame,
/// a plain picture name refuses a second frame.
std::unique_ptr<FrameSink> MakeSink(const std::string& path);

}  // namespace zorhost
