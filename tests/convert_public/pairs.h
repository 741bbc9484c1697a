// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The thirteen conversions of a surface, and deterministic pictures to convert.

#include <gtest/gtest.h>
#include <zorsurface/zorsurface.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "support/guarded_memory.h"
#include "support/surfaces.h"
#include "support/with_features.h"

namespace zor::test {

struct FormatPair {
  std::int32_t from;
  std::int32_t to;
};

inline constexpr FormatPair kPairs[] = {{1, 2}, {1, 4}, {1, 5}, {2, 1}, {2, 4}, {2, 5}, {4, 1},
                                        {4, 2}, {4, 5}, {4, 6}, {5, 1}, {5, 2}, {5, 4}};

inline std::string NameOf(const FormatPair& pair) {
  return std::to_string(pair.from) + " to " + std::to_string(pair.to);
}

/// A picture of smooth slopes with a few hard edges and some grain; every byte of the block is set.
inline Bytes Picture(const SurfaceDescription& d) {
  Noise grain(static_cast<std::uint64_t>(d.format));
  Bytes bytes(PictureBytes(d));
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto x = static_cast<std::int32_t>(i % static_cast<std::size_t>(d.stride));
    const auto y = static_cast<std::int32_t>(i / static_cast<std::size_t>(d.stride));
    const std::int32_t slope = (x * 2 + y * 3 + static_cast<std::int32_t>(i % 4) * 40) % 256;
    const std::int32_t edge = (x / 24 + y / 9) % 3 == 0 ? 90 : 0;
    bytes[i] =
        static_cast<std::uint8_t>(slope + edge + static_cast<std::int32_t>(grain.Next() % 9));
  }
  return bytes;
}

/// A surface of any format and row order whose whole block is as given.
inline HeldSurface MakePicture(const SurfaceDescription& d, const Bytes& bytes) {
  HeldSurface surface = MakeBlank(d);
  std::memcpy(PixelsOf(surface), bytes.data(), bytes.size());
  return surface;
}

}  // namespace zor::test
