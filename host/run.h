// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// A run: every frame of a source through a plan into a sink, with everything a user sees of it.

#include <functional>
#include <string>
#include <vector>

#include "exit_code.h"
#include "plan.h"
#include "progress.h"

namespace zorhost {

/// What the command line of a run says, besides the operations themselves.
struct RunOptions {
  std::string verb;  ///< for messages
  std::string input;
  std::string output;  ///< empty: frames are only hashed or compared
  std::string raw;     ///< shape of raw input, or empty
  std::string hash;    ///< empty: none; "-": standard output; else a file
  std::string frames;  ///< "A-B", counted from 0, or empty
  int every = 1;       ///< of the frames chosen, take each n-th
  int writeEvery = 1;  ///< of the frames taken, write each n-th; all are processed
  bool eager = false;
  bool dib = false;
  bool verify = false;
  bool bottomUp = false;
  bool obeysOrientation = false;  ///< the plan turns the picture as the source asks
  int pitch = 0;
  bool json = false;
  bool quiet = false;
  std::string progress = "auto";
};

/// Works out the operations for a source.
using Planner = std::function<Plan(const StreamInfo& info, std::vector<std::string>& notes)>;

/// @return `kOk` or `kInterrupted`. @throws HostError; where frames had come through before an
/// input failed, they are kept as a whole file.
ExitCode RunFrames(const RunOptions& options, const Planner& planner);

}  // namespace zorhost
