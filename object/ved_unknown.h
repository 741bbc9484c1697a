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
  std::int32_t referenceCount_ = 0;
  zor::OsaCriticalSection countLock_;
};

}  // namespace VideoEdit
