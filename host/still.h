// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Single pictures and numbered runs of them: BMP, PNG, JPEG and PPM.

#include <memory>
#include <string>

#include "frame_source.h"
#include "text.h"

namespace zorhost {

/// Whether the ending of @p path names a picture kind that the host reads itself.
bool IsStillPath(const std::string& path);

struct Still {
  Picture picture;
  StreamInfo info;
};
/// Reads one picture whole. @throws InputError
Still ReadStill(const std::string& path);

std::unique_ptr<FrameSource> OpenStill(const std::string& path);
/// The run begins at the lowest of the numbers 0 to 9 whose file exists, and ends before the first
/// gap. Every picture must have the first one's size.
std::unique_ptr<FrameSource> OpenSequence(const NumberedName& name, const std::string& path);

}  // namespace zorhost
