// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Anything FFmpeg opens, decoded frame by frame with the times the container states. Built where
/// libavformat is found.

#include <memory>
#include <string>

#include "frame_source.h"

namespace zorhost {

/// Takes the best video stream. Frames come as they were coded: none is doubled or dropped to even
/// out a variable rate. @throws InputError
std::unique_ptr<FrameSource> OpenWithFfmpeg(const std::string& path);

}  // namespace zorhost
