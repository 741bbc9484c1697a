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

/// Calls a function of the library. @return its result, or `kMissing`.
template <class Function, class... Arguments>
std::int32_t Call(const char* name, Arguments... arguments) {
  const auto function = reinterpret_cast<Function>(FindKelpFunction(name));
  return function != nullptr ? function(arguments...) : kMissing;
}

std::int32_t ZOR_KELP_CALL GetInfo(void* handle, KelpInfo* info) {
  return Call<decltype(KelpToolCalls::getInfo)>("KelpGetInfo", handle, info);
}

std::int32_t ZOR_KELP_CALL LockData(void* handle, void** pixels) {
  return Call<decltype(KelpToolCalls::lockData)>("KelpLockData", handle, pixels);
}

std::int32_t ZOR_KELP_CALL UnlockData(void* handle) {
  return Call<decltype(KelpToolCalls::unlockData)>("KelpUnlockData", handle);
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
