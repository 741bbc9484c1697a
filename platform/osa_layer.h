// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The locks of the library. Each takes a pointer to storage in the object that it guards; a
/// thread may enter a lock that it holds already.

#include <cstddef>

namespace zor {

/// Storage of one lock; its contents belong to the operating system layer. Aligned like a pointer,
/// so that the second table of an object stands right behind the first.
struct OsaCriticalSection {
  alignas(void*) unsigned char storage[64];
};

void OsaInitCriticalSection(OsaCriticalSection* section) noexcept;
void OsaDeleteCriticalSection(OsaCriticalSection* section) noexcept;
void OsaEnterCriticalSection(OsaCriticalSection* section) noexcept;
void OsaLeaveCriticalSection(OsaCriticalSection* section) noexcept;

/// Holds a lock for the length of a scope.
class OsaGuard {
 public:
  explicit OsaGuard(OsaCriticalSection* section) noexcept : section_(section) {
    OsaEnterCriticalSection(section_);
  }
  ~OsaGuard() { OsaLeaveCriticalSection(section_); }
  OsaGuard(const OsaGuard&) = delete;
  OsaGuard& operator=(const OsaGuard&) = delete;

 private:
  OsaCriticalSection* section_;
};

}  // namespace zor
