// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The back colour that leaves a colour of a picture out.

#include <cstdint>
#include <optional>

#include "library.h"

namespace zorhost {

/// Luma and the two chroma planes in the order of a planar surface.
struct YuvSample {
  int luma;
  int first;
  int second;
  bool operator==(const YuvSample&) const = default;
};

/// What the library compares a child's samples with for a back colour.
YuvSample KeySample(std::uint32_t backColour);

/// `Compose` compares converted samples with samples that it works out of the back colour by
/// another matrix: luma isn't scaled to video range, so that white as a back colour meets nothing.
/// @return the back colour whose samples are those of @p sample, if there is one.
std::optional<std::uint32_t> BackColourFor(const YuvSample& sample);

/// What a colour becomes in a planar surface, by the library's own conversion.
YuvSample SampleOf(const Library& library, std::uint32_t colour);

}  // namespace zorhost
