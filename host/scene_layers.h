// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The children of a scene as surfaces of the library, frame by frame.

#include <memory>
#include <string>
#include <vector>

#include "plan.h"
#include "scene.h"

namespace zorhost {

/// Opens the children of a scene. @param baseFrames how many frames the base has, or -1.
/// @param width,height the base's size: a child that leaves it is refused.
/// @throws HostError
std::shared_ptr<Drawing> MakeLayers(const Scene& scene, int width, int height,
                                    std::int64_t baseFrames, std::vector<std::string>& notes);

}  // namespace zorhost
