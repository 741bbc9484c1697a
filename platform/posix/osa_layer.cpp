// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "platform/osa_layer.h"

#include <pthread.h>

#include <new>

namespace zor {
namespace {

static_assert(sizeof(pthread_mutex_t) <= sizeof(OsaCriticalSection::storage), "fits the storage");
static_assert(alignof(pthread_mutex_t) <= alignof(OsaCriticalSection), "fits the storage");

pthread_mutex_t* Mutex(OsaCriticalSection* section) {
  return std::launder(reinterpret_cast<pthread_mutex_t*>(section->storage));
}

}  // namespace

void OsaInitCriticalSection(OsaCriticalSection* section) noexcept {
  pthread_mutexattr_t attributes;
  pthread_mutexattr_init(&attributes);
  pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
  pthread_mutex_init(new (section->storage) pthread_mutex_t, &attributes);
  pthread_mutexattr_destroy(&attributes);
}

void OsaDeleteCriticalSection(OsaCriticalSection* section) noexcept {
  pthread_mutex_destroy(Mutex(section));
}

void OsaEnterCriticalSection(OsaCriticalSection* section) noexcept {
  pthread_mutex_lock(Mutex(section));
}

void OsaLeaveCriticalSection(OsaCriticalSection* section) noexcept {
  pthread_mutex_unlock(Mutex(section));
}

}  // namespace zor
