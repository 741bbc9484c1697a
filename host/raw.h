// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Frames without any header: the bytes of one picture after the other.

#include <memory>
#include <string>

#include "frame_sink.h"
#include "frame_source.h"

namespace zorhost {

/// "1920x1080:yvu420". @throws UsageError
RawShape ParseRawShape(const std::string& text);
std::unique_ptr<FrameSource> OpenRaw(const std::string& path, const RawShape& shape);
/// Writes each picture's bytes as they lie in memory, padding and row order included.
std::unique_ptr<FrameSink> MakeRawSink(const std::string& path);

}  // namespace zorhost
