// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Pictures as files: PNG, BMP, PPM and PGM, one or a numbered run.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "frame_sink.h"

namespace zorhost {

/// @p picture of `kRgb24`, `kRgb32` or `kGray8` as the bytes of a file. The fourth byte of `kRgb32`
/// is kept where the picture says that it is alpha, and by bitmaps always.
std::vector<std::uint8_t> EncodePicture(const Picture& picture, SinkKind kind);
void WritePicture(const Picture& picture, const std::string& path);

std::unique_ptr<FrameSink> MakePictureSink(const std::string& path);

}  // namespace zorhost
