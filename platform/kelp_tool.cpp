// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/kelp_tool.h"

#include <atomic>

#include "platform/shared_library.h"
#include "platform/system_calls.h"

namespace zor {
namespace {

#ifdef _WIN32
constexpr char kLibraryName[] = "uKelpTool.dll";
#else
constexpr char kLibraryName[] = "libuKelpTool.so";
#endif

/// What a call answers while the library is missing.
constexpr std::int32_t kMissing = -1;

/// @return a function of the library, or null. A library that isn't there is looked for again with
///         the next call, as a host may bring it later.
void* FindKelpFunction(const char* name) noexcept {
  static std::atomic<void*> library{nullptr};
  void* found = library;
  if (found == nullptr) {
    found = OpenSharedLibrary(kLibraryName);
    library = found;
  }
  return found != nullptr ? FindFunction(found, name) : nullptr;
}

std::int32_t ZOR_KELP_CALL GetInfo(void* handle, KelpInfo* info) {
  const auto function =
      reinterpret_cast<decltype(KelpToolCalls::getInfo)>(FindKelpFunction("KelpGetInfo"));
  return function != nullptr ? function(handle, info) : kMissing;
}

std::int32_t ZOR_KELP_CALL LockData(void* handle, void** pixels) {
  const auto function =
      reinterpret_cast<decltype(KelpToolCalls::lockData)>(FindKelpFunction("KelpLockData"));
  return function != nullptr ? function(handle, pixels) : kMissing;
}

std::int32_t ZOR_KELP_CALL UnlockData(void* handle) {
  const auto function =
      reinterpret_cast<decltype(KelpToolCalls::unlockData)>(FindKelpFunction("KelpUnlockData"));
  return function != nullptr ? function(handle) : kMissing;
}

}  // namespace

KelpToolCalls NativeKelpToolCalls() noexcept {
  return {GetInfo, LockData, UnlockData};
}

std::int32_t KelpGetInfo(void* handle, KelpInfo* info) noexcept {
  return CurrentSystemCalls().kelpTool.getInfo(handle, info);
}

std::int32_t KelpLockData(void* handle, void** pixels) noexcept {
  return CurrentSystemCalls().kelpTool.lockData(handle, pixels);
}

void KelpUnlockData(void* handle) noexcept {
  CurrentSystemCalls().kelpTool.unlockData(handle);
}

}  // namespace zor
