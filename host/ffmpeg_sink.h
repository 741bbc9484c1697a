// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Compressed video through FFmpeg's encoders.

#include <memory>
#include <string>

#include "frame_sink.h"

namespace zorhost {

/// The ending decides the container; its usual coding is taken, or MPEG-4 part 2 where this FFmpeg
/// has no encoder for that. Takes `kYuv420` and `kYvu420`. Times of a variable rate are kept.
std::unique_ptr<FrameSink> MakeFfmpegSink(const std::string& path);

}  // namespace zorhost
