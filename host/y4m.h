// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// YUV4MPEG2: a line of text, then frames of bare planes. The one video form that every tool pipes.

#include <memory>
#include <string>

#include "frame_sink.h"
#include "frame_source.h"

namespace zorhost {

/// What the first line of a stream says. @param line without its line end.
/// @throws InputError naming what can't be read: another magic word, no size, a chroma form other
///         than 4:2:0 with 8 bits or mono.
StreamInfo ParseY4mHeader(const std::string& line, const std::string& name);

/// Reads 8-bit 4:2:0 (C420, C420jpeg, C420mpeg2, C420paldv) and Cmono from a file or "-".
std::unique_ptr<FrameSource> OpenY4m(const std::string& path);

/// Writes `kYuv420` and `kYvu420` as C420, `kGray8` as Cmono. Where frames carry times that a
/// constant rate doesn't tell, each frame's line gets an `XPTS=` word, which the reader takes back
/// and other programs skip.
std::unique_ptr<FrameSink> MakeY4mSink(const std::string& path);

}  // namespace zorhost
