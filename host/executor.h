// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Runs a plan on one frame, and tells how long the library took.

#include <map>

#include "backdrop.h"
#include "library.h"
#include "plan.h"

namespace zorhost {

/// How operations are run. Every way gives the same pictures.
enum class Way {
  kDeferred,  ///< all are queued; the last one writes straight into the host's memory
  kEager,     ///< each is flushed at once; then the finished rows are copied out
  kExport,    ///< all are queued; the picture leaves as a bitmap in global memory
};

struct Timing {
  double handIn = 0.0;   ///< seconds in making surfaces
  double process = 0.0;  ///< seconds in the queue and the read-out
};

class Executor {
 public:
  Executor(const Library& library, const Plan& plan) : library_(library), plan_(plan) {}

  /// Writes the plan's result for a frame into @p out, whose memory is kept from frame to frame.
  /// @param number of the frame in its source.
  /// @throws HostError with `ExitCode::kLibrary`.
  void Run(const Picture& frame, Way way, Picture& out, std::int64_t number = 0);
  /// The surface that a frame becomes; what is queued for it runs with the next call.
  Ref<IZorSurface> Make(const Picture& frame, Way way, std::int64_t number = 0);
  const Timing& timing() const { return timing_; }

 private:
  void Perform(Ref<IZorSurface>& surface, std::size_t index, Way way, std::int64_t number);
  void MakeRoom(Picture& out) const;
  void ReadOut(IZorSurface& surface, Way way, Picture& out) const;
  void ReadGray(IZorSurface& surface, Picture& out) const;
  void PaintBackdrop(IZorSurface& surface, std::size_t index);
  void ExpectShape(IZorSurface& surface, const PictureShape& shape) const;

  const Library& library_;
  const Plan& plan_;
  Picture scratch_;
  std::map<std::size_t, Backdrop> backdrops_;  ///< by operation, made for the first frame
  Timing timing_;
};

}  // namespace zorhost
