// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// How far a run is, on standard error: a bar for people, one object per line for programs.

#include <chrono>
#include <cstdint>
#include <string>

namespace zorhost {

enum class ProgressMode { kAuto, kBar, kJson, kNone };
/// @throws UsageError
ProgressMode ProgressModeFromName(const std::string& name);

/// "convert  [#####.....]  20/41  48 %  18.4 fps  0:01 left"; without a total the bar is left out.
std::string ProgressLine(const std::string& verb, std::int64_t done, std::int64_t total,
                         double seconds);

class Progress {
 public:
  /// @param total frames to come, or -1.
  /// `kAuto` draws a bar if standard error is a terminal, else nothing.
  Progress(std::string verb, std::int64_t total, ProgressMode mode);
  /// Wipes the bar.
  ~Progress();
  void Step(std::int64_t done);
  double seconds() const;

 private:
  std::string verb_;
  std::int64_t total_;
  ProgressMode mode_;
  std::chrono::steady_clock::time_point start_;
  double shownAt_ = -1.0;
  std::size_t shownWidth_ = 0;
};

}  // namespace zorhost
