// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "progress.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>

#include "exit_code.h"
#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace zorhost {
namespace {

constexpr double kBarInterval = 0.1;
constexpr double kJsonInterval = 0.25;
constexpr int kBarWidth = 24;

bool ErrorIsTerminal() {
#ifdef _WIN32
  return _isatty(_fileno(stderr)) != 0;
#else
  return isatty(STDERR_FILENO) != 0;
#endif
}

}  // namespace

ProgressMode ProgressModeFromName(const std::string& name) {
  if (name == "auto") return ProgressMode::kAuto;
  if (name == "bar") return ProgressMode::kBar;
  if (name == "json") return ProgressMode::kJson;
  if (name == "none") return ProgressMode::kNone;
  throw UsageError("--progress " + name + ": known are auto, bar, json, none");
}

std::string ProgressLine(const std::string& verb, std::int64_t done, std::int64_t total,
                         double seconds) {
  const double rate = seconds > 0.0 ? static_cast<double>(done) / seconds : 0.0;
  char text[160];
  if (total <= 0) {
    std::snprintf(text, sizeof text, "%s  %" PRId64 " frames  %.1f fps", verb.c_str(), done, rate);
    return text;
  }
  const double share = std::min(1.0, static_cast<double>(done) / static_cast<double>(total));
  const int filled = static_cast<int>(share * kBarWidth);
  const std::string bar = std::string(filled, '#') + std::string(kBarWidth - filled, '.');
  const int left =
      rate > 0.0 ? static_cast<int>(static_cast<double>(total - done) / rate + 0.5) : 0;
  std::snprintf(text, sizeof text,
                "%s  [%s]  %" PRId64 "/%" PRId64 "  %3.0f %%  %.1f fps  %d:%02d left", verb.c_str(),
                bar.c_str(), done, total, share * 100.0, rate, std::max(left, 0) / 60,
                std::max(left, 0) % 60);
  return text;
}

Progress::Progress(std::string verb, std::int64_t total, ProgressMode mode)
    : verb_(std::move(verb)), total_(total), mode_(mode), start_(std::chrono::steady_clock::now()) {
  if (mode_ == ProgressMode::kAuto) {
    mode_ = ErrorIsTerminal() ? ProgressMode::kBar : ProgressMode::kNone;
  }
}

Progress::~Progress() {
  if (mode_ == ProgressMode::kBar && shownWidth_ > 0) {
    std::fprintf(stderr, "\r%*s\r", static_cast<int>(shownWidth_), "");
  }
}

double Progress::seconds() const {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
}

void Progress::Step(std::int64_t done) {
  if (mode_ == ProgressMode::kNone) return;
  const double now = seconds();
  const double interval = mode_ == ProgressMode::kBar ? kBarInterval : kJsonInterval;
  if (shownAt_ >= 0.0 && now - shownAt_ < interval && done != total_) return;
  shownAt_ = now;
  if (mode_ == ProgressMode::kJson) {
    std::fprintf(stderr,
                 "{\"verb\":\"%s\",\"done\":%" PRId64 ",\"total\":%" PRId64 ",\"seconds\":%.3f}\n",
                 verb_.c_str(), done, total_, now);
    return;
  }
  std::string line = ProgressLine(verb_, done, total_, now);
  const std::size_t width = line.size();
  line.resize(std::max(width, shownWidth_), ' ');
  shownWidth_ = width;
  std::fprintf(stderr, "\r%s", line.c_str());
  std::fflush(stderr);
}

}  // namespace zorhost
