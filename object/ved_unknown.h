// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The root implementation class and how an object joins it with its interface.

#include <zorsurface/ved_unknown.h>

#include "platform/osa_layer.h"

namespace VideoEdit {

/// Counts references; the second table of every object. A new object starts at count 0.
class CVedUnknown {
 public:
  CVedUnknown() noexcept;
  CVedUnknown(const CVedUnknown&) = delete;
  CVedUnknown& operator=(const CVedUnknown&) = delete;

  /// Destroys the object and frees its memory if bit 0 of @p flags is set. An ordinary virtual
  /// function, so that it is slot 0 with every compiler. @return the object.
  virtual void* ScalarDeletingDestructor(std::uint32_t flags) = 0;
  virtual std::uint32_t AddRef();
  virtual std::uint32_t Release();
  /// @return `VED_E_UNSUPPORTED`; concrete classes know their interfaces.
  virtual std::int32_t QueryInterface(const GUID* id, void** out);

 protected:
  ~CVedUnknown();

 private:
  /// Adds @p step to the count. @return the count after it.
  std::uint32_t Count(std::uint32_t step) noexcept;

  std::uint32_t referenceCount_ = 0;
  zor::OsaCriticalSection countLock_;
};

/// @return whether two identifiers are equal in all four words.
bool SameIdentifier(const GUID& a, const GUID& b) noexcept;

/// The `QueryInterface` of a concrete class: gives @p object for @p own and for `IID_IVedUnknown`.
/// @param object the object's first base.
/// @return see `IVedUnknown::QueryInterface`.
std::int32_t AnswerInterface(IVedUnknown* object, const GUID& own, const GUID* id, void** out);

}  // namespace VideoEdit
