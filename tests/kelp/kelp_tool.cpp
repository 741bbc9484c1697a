// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "kelp/kelp_tool.h"

#include <stdlib.h>
#include <string.h>

namespace {

struct Dib {
  int32_t info[4];
  int32_t locks;
  int32_t lockCalls;
  void* pixels;
};

}  // namespace

extern "C" {

int32_t KELP_CALL KelpGetInfo(void* handle, int32_t* info) {
  if (handle == nullptr || info == nullptr) return 1;
  memcpy(info, static_cast<Dib*>(handle)->info, sizeof(Dib::info));
  return 0;
}

int32_t KELP_CALL KelpLockData(void* handle, void** pixels) {
  if (handle == nullptr || pixels == nullptr) return 1;
  auto* const dib = static_cast<Dib*>(handle);
  ++dib->locks;
  ++dib->lockCalls;
  *pixels = dib->pixels;
  return 0;
}

int32_t KELP_CALL KelpUnlockData(void* handle) {
  auto* const dib = static_cast<Dib*>(handle);
  if (dib == nullptr || dib->locks == 0) return 1;
  --dib->locks;
  return 0;
}

void* KELP_CALL KelpTestMake(const int32_t* info, const void* pixels, uint32_t bytes) {
  auto* const dib = static_cast<Dib*>(calloc(1, sizeof(Dib)));
  if (dib == nullptr) return nullptr;
  dib->pixels = malloc(bytes != 0 ? bytes : 1);
  if (dib->pixels == nullptr) {
    free(dib);
    return nullptr;
  }
  memcpy(dib->info, info, sizeof(Dib::info));
  if (bytes != 0) memcpy(dib->pixels, pixels, bytes);
  return dib;
}

void KELP_CALL KelpTestFree(void* handle) {
  if (handle == nullptr) return;
  free(static_cast<Dib*>(handle)->pixels);
  free(handle);
}

int32_t KELP_CALL KelpTestLocks(void* handle) {
  return static_cast<Dib*>(handle)->locks;
}

int32_t KELP_CALL KelpTestLockCalls(void* handle) {
  return static_cast<Dib*>(handle)->lockCalls;
}

}  // extern "C"
