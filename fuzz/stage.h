// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The surfaces of a run, and what every run checks.

#include <vector>
#include <zorsurface/ref.hpp>

#include "byte_reader.h"
#include "runs.h"
#include "support/guarded_memory.h"

namespace zor::fuzz {

/// Ends the process if the library broke its contract.
void Demand(bool holds, const char* what);

class Stage {
 public:
  /// Chooses the forms by the word of the processor's features for the length of the run.
  explicit Stage(ByteReader* bytes);
  /// Opens circles of masks and children, lets go of everything and restores the word. References
  /// that `Compose` is defined to keep are given back.
  ~Stage();
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  /// @return one of the surfaces.
  IZorSurface* Any();
  /// Adds a surface of a chosen format, size and content to the table.
  void Make();
  /// Adds a surface to the table, with its reference.
  void Take(IZorSurface* surface);
  /// Puts the masks that conversions and clones made beside the surfaces that hold them.
  void TakeMasks();

  RECT AnyRect();
  /// @return a rectangle that often fits a picture of this size.
  RECT AnyRect(std::int32_t width, std::int32_t height);

  /// Adds a call's result to the trace.
  std::int32_t Note(std::int32_t result);
  void Note(const std::uint8_t* bytes, std::size_t count);
  /// Adds a surface's description and its pixels, read through `ReadPixels`.
  void Note(IZorSurface* surface);
  Trace End();

  /// Reads into memory of exactly the size that a read-out may write.
  /// @param bytes of the host's memory.
  /// @param apart whether the rows don't overlap there; where they do, the order in which they are
  ///        written shows, and forms differ in it.
  std::int32_t Read(IZorSurface* surface, std::size_t bytes, std::int32_t stride,
                    std::uint32_t orientation, bool apart);

 private:
  void MakeBlank(const SurfaceDescription& description);
  void MakeFromMemory(const SurfaceDescription& description);

  ByteReader& bytes_;
  std::uint32_t featuresBefore_;
  Ref<ISurfaceBuilder> builder_;
  std::vector<IZorSurface*> surfaces_;
  Trace trace_;
};

SurfaceDescription DescriptionOf(IZorSurface* surface);

/// @return the bytes of a picture whose rows lie @p stride apart, planes included.
std::size_t PictureBytes(std::int32_t format, std::int32_t stride, std::int32_t height);

}  // namespace zor::fuzz
