// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// What a composition consists of: a base and the pictures or clips drawn over it, in order.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zorhost {

/// Weight of a child that covers what is below it.
inline constexpr int kCovers = 256;

/// One child of a scene. Frames are counted as those of the base, from 0.
struct ChildSpec {
  std::string file;
  int x = 0;
  int y = 0;
  int w = 0;  ///< 0: the child's own width, after it was turned
  int h = 0;
  int opacity = kCovers;             ///< 0 shows nothing of the child, 256 nothing below it
  std::string mask;                  ///< empty, "alpha", or a picture: white shows the child
  std::optional<std::uint32_t> key;  ///< 0xRRGGBB: pixels of exactly this colour are left out
  int rotate = 0;                    ///< clockwise: 0, 90, 180, 270
  std::string scale;                 ///< a scaling mode, or empty for what `Compose` does itself
  std::int64_t from = 0;             ///< the first frame with this child
  std::int64_t to = -1;              ///< the last one; -1: while there is something to show
  int fadeIn = 0;                    ///< frames until the child stands at its full opacity
  int fadeOut = 0;

  bool masked() const { return !mask.empty(); }
  /// For messages: "--child logo.png".
  std::string Name() const { return "--child " + file; }
};

struct Scene {
  std::string base;
  std::vector<ChildSpec> children;
};

/// "file=logo.png,x=540,y=220,w=400,...". @throws UsageError naming the word at fault.
ChildSpec ParseChild(const std::string& text);

/// @throws InputError for what isn't a scene, UsageError for a child at fault.
Scene ReadScene(const std::string& path);
/// Writes a scene that `ReadScene` gives back; words at their defaults are left out.
void WriteScene(const Scene& scene, const std::string& path);

/// How much of the child shows in a frame: its opacity under both fades, 0 to 256.
/// @param last the child's last frame, or -1 where it isn't known.
int Visibility(const ChildSpec& child, std::int64_t frame, std::int64_t last);

}  // namespace zorhost
