// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "interrupt.h"

#include <csignal>

namespace zorhost {
namespace {

volatile std::sig_atomic_t interrupted = 0;

void OnSignal(int number) {
  interrupted = 1;
  std::signal(number, SIG_DFL);
}

}  // namespace

void CatchInterrupts() {
#ifdef _WIN32
  std::signal(SIGINT, OnSignal);
#else
  // Without SA_RESTART a read that waits on a pipe comes back, so that the run can end.
  struct sigaction action = {};
  action.sa_handler = OnSignal;
  sigaction(SIGINT, &action, nullptr);
  sigaction(SIGTERM, &action, nullptr);
  // A reader that goes away shows as a failed write.
  std::signal(SIGPIPE, SIG_IGN);
#endif
}

bool Interrupted() {
  return interrupted != 0;
}

}  // namespace zorhost
