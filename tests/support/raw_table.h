// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Calls by slot number, as a host of another compiler makes them.

#include <cstdint>

#if defined(_WIN32) && defined(__i386__)
#define ZOR_SLOT_CALL __attribute__((thiscall))
#else
#define ZOR_SLOT_CALL
#endif

namespace zor::test {

/// @return the object's second base: its table stands right behind the first one.
inline void* SecondBase(void* object) {
  return static_cast<void**>(object) + 1;
}

/// Calls slot @p slot of the table at the start of @p object.
template <class Result, class... Arguments>
Result CallSlot(void* object, int slot, Arguments... arguments) {
  using Function = Result(ZOR_SLOT_CALL*)(void*, Arguments...);
  void** const table = *static_cast<void***>(object);
  return reinterpret_cast<Function>(table[slot])(object, arguments...);
}

}  // namespace zor::test
