// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "support/kelp_handle.h"

#include <stdexcept>

#include "kelp/kelp_tool.h"

#ifdef _WIN32
#include <zorsurface/types.h>  // and with it <windows.h>, without its macros min and max
#else
#include <dlfcn.h>
#endif

namespace zor::test {
namespace {

void* Find(const char* name) {
#ifdef _WIN32
  static const HMODULE library = LoadLibraryA("uKelpTool.dll");
  void* function =
      library != nullptr ? reinterpret_cast<void*>(GetProcAddress(library, name)) : nullptr;
#else
  static void* const library = dlopen("libuKelpTool.so", RTLD_NOW);
  void* function = library != nullptr ? dlsym(library, name) : nullptr;
#endif
  if (function == nullptr) throw std::runtime_error("no uKelpTool beside the program");
  return function;
}

}  // namespace

KelpHandle::KelpHandle(std::int32_t width, std::int32_t height, std::int32_t bitCount,
                       std::int32_t stride, const std::uint8_t* pixels, std::size_t bytes) {
  const std::int32_t info[4] = {width, height, bitCount, stride};
  handle_ = reinterpret_cast<decltype(&KelpTestMake)>(Find("KelpTestMake"))(
      info, pixels, static_cast<std::uint32_t>(bytes));
  if (handle_ == nullptr) throw std::runtime_error("no memory for a video-DIB");
}

KelpHandle::~KelpHandle() {
  reinterpret_cast<decltype(&KelpTestFree)>(Find("KelpTestFree"))(handle_);
}

int KelpHandle::Locks() const {
  return reinterpret_cast<decltype(&KelpTestLocks)>(Find("KelpTestLocks"))(handle_);
}

int KelpHandle::LockCalls() const {
  return reinterpret_cast<decltype(&KelpTestLockCalls)>(Find("KelpTestLockCalls"))(handle_);
}

}  // namespace zor::test
