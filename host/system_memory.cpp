// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "system_memory.h"

#ifdef _WIN32
#define PSAPI_VERSION 2  // the function is in kernel32 then
#include <windows.h>
// windows.h stands in front of its dependants.
#include <psapi.h>
#else
#include <sys/resource.h>
#endif

namespace zorhost {

std::uint64_t PeakMemoryBytes() {
#ifdef _WIN32
  PROCESS_MEMORY_COUNTERS counters = {};
  if (!K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters)) return 0;
  return counters.PeakWorkingSetSize;
#else
  rusage usage = {};
  if (getrusage(RUSAGE_SELF, &usage) != 0) return 0;
  return static_cast<std::uint64_t>(usage.ru_maxrss) * 1024;
#endif
}

}  // namespace zorhost
