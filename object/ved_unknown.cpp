// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "object/ved_unknown.h"

#include <zorsurface/identifiers.h>
#include <zorsurface/result_codes.h>

#include <cstring>

namespace VideoEdit {

bool SameIdentifier(const GUID& a, const GUID& b) noexcept {
  return std::memcmp(&a, &b, sizeof(GUID)) == 0;
}

CVedUnknown::CVedUnknown() noexcept {
  zor::OsaInitCriticalSection(&countLock_);
}

CVedUnknown::~CVedUnknown() {
  zor::OsaDeleteCriticalSection(&countLock_);
}

std::uint32_t CVedUnknown::Count(std::uint32_t step) noexcept {
  const zor::OsaGuard guard(&countLock_);
  return referenceCount_ += step;
}

std::uint32_t CVedUnknown::AddRef() {
  return Count(1);
}

std::uint32_t CVedUnknown::Release() {
  // Of threads that let go at the same time exactly one sees its own step reach 0. Behind the lock
  // the object may be gone already.
  const std::uint32_t count = Count(0u - 1u);
  if (count == 0) ScalarDeletingDestructor(1);
  return count;
}

std::int32_t CVedUnknown::QueryInterface(const GUID*, void**) {
  return VED_E_UNSUPPORTED;
}

std::int32_t AnswerInterface(IVedUnknown* object, const GUID& own, const GUID* id, void** out) {
  if (!SameIdentifier(*id, own) && !SameIdentifier(*id, IID_IVedUnknown)) return VED_E_UNSUPPORTED;
  if (out == nullptr) return VED_E_INVALIDARG;
  *out = object;
  object->AddRef();
  return VED_OK;
}

}  // namespace VideoEdit
