// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/osa_layer.h"

#include <zorsurface/types.h>

#include <new>

namespace zor {
namespace {

static_assert(sizeof(CRITICAL_SECTION) <= sizeof(OsaCriticalSection::storage), "fits the storage");
static_assert(alignof(CRITICAL_SECTION) <= alignof(OsaCriticalSection), "fits the storage");

CRITICAL_SECTION* Section(OsaCriticalSection* section) {
  return std::launder(reinterpret_cast<CRITICAL_SECTION*>(section->storage));
}

}  // namespace

void OsaInitCriticalSection(OsaCriticalSection* section) noexcept {
  InitializeCriticalSection(new (section->storage) CRITICAL_SECTION);
}

void OsaDeleteCriticalSection(OsaCriticalSection* section) noexcept {
  DeleteCriticalSection(Section(section));
}

void OsaEnterCriticalSection(OsaCriticalSection* section) noexcept {
  EnterCriticalSection(Section(section));
}

void OsaLeaveCriticalSection(OsaCriticalSection* section) noexcept {
  LeaveCriticalSection(Section(section));
}

}  // namespace zor
