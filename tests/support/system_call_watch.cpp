// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "support/system_call_watch.h"

#include <type_traits>

#include "platform/system_calls.h"

namespace zor::test {
namespace {

struct Record {
  int count = 0;
  int failsAt = 0;
  std::int32_t code = 0;
};
Record records[static_cast<int>(SystemCall::kCount)];

Record& RecordOf(SystemCall call) {
  return records[static_cast<int>(call)];
}

/// One function of the table, found by its part and its member, as a function that counts.
template <SystemCall call, auto Part, auto Function>
struct Watched;

template <SystemCall call, class P, P SystemCalls::*Part, class R, class... A,
          R (*P::*Function)(A...)>
struct Watched<call, Part, Function> {
  static R Call(A... arguments) {
    Record& record = RecordOf(call);
    if (++record.count == record.failsAt) {
      if constexpr (std::is_same_v<R, std::int32_t>) return record.code;
      return R();
    }
    return (NativeSystemCalls().*Part.*Function)(arguments...);
  }
  static void Install() { CurrentSystemCalls().*Part.*Function = Call; }
};

}  // namespace

SystemCallWatch::SystemCallWatch() {
  for (Record& record : records) record = {};
  using S = SystemCalls;
  using C = SystemCall;
  using G = GlobalMemoryCalls;
  using D = DirectDrawCalls;
  using F = DirectDrawSurfaceCalls;
  using K = KelpToolCalls;
  using L = SharedLibraryCalls;
  Watched<C::kAllocate, &S::memory, &MemoryCalls::allocate>::Install();
  Watched<C::kFree, &S::memory, &MemoryCalls::free>::Install();
  Watched<C::kGlobalAlloc, &S::globalMemory, &G::alloc>::Install();
  Watched<C::kGlobalLock, &S::globalMemory, &G::lock>::Install();
  Watched<C::kGlobalUnlock, &S::globalMemory, &G::unlock>::Install();
  Watched<C::kGlobalSize, &S::globalMemory, &G::size>::Install();
  Watched<C::kGlobalFree, &S::globalMemory, &G::free>::Install();
  Watched<C::kDirectDrawCreateEx, &S::directDraw, &D::createEx>::Install();
  Watched<C::kSetCooperativeLevel, &S::directDraw, &D::setCooperativeLevel>::Install();
  Watched<C::kCreateSurface, &S::directDraw, &D::createSurface>::Install();
  Watched<C::kReleaseDirectDraw, &S::directDraw, &D::release>::Install();
  Watched<C::kGetSurfaceDesc, &S::directDrawSurface, &F::getSurfaceDesc>::Install();
  Watched<C::kLock, &S::directDrawSurface, &F::lock>::Install();
  Watched<C::kUnlock, &S::directDrawSurface, &F::unlock>::Install();
  Watched<C::kReleaseSurface, &S::directDrawSurface, &F::release>::Install();
  Watched<C::kKelpGetInfo, &S::kelpTool, &K::getInfo>::Install();
  Watched<C::kKelpLockData, &S::kelpTool, &K::lockData>::Install();
  Watched<C::kKelpUnlockData, &S::kelpTool, &K::unlockData>::Install();
  Watched<C::kOpenLibrary, &S::sharedLibrary, &L::open>::Install();
  Watched<C::kFindFunction, &S::sharedLibrary, &L::find>::Install();
}

SystemCallWatch::~SystemCallWatch() {
  CurrentSystemCalls() = NativeSystemCalls();
}

void SystemCallWatch::Fail(SystemCall call, std::int32_t code, int nth) {
  Record& record = RecordOf(call);
  record.failsAt = record.count + nth;
  record.code = code;
}

int SystemCallWatch::Count(SystemCall call) const {
  return RecordOf(call).count;
}

}  // namespace zor::test
