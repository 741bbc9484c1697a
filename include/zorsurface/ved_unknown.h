// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The root of every interface.

#include <zorsurface/types.h>

namespace VideoEdit {

/// The root interface: three slots, counted ownership. There is no virtual destructor; the last
/// `Release` destroys the object.
struct IVedUnknown {
  /// Takes one more reference. @return the count after it.
  virtual std::uint32_t AddRef() = 0;
  /// Gives one reference back; the last one destroys the object. @return the count after it.
  virtual std::uint32_t Release() = 0;
  /// Asks for another interface of the object.
  /// @param id the interface wanted.
  /// @param out receives the interface with a reference of its own; untouched on failure.
  /// @return `VED_OK`; `VED_E_UNSUPPORTED` for an unknown interface, whatever @p out is;
  ///         `VED_E_INVALIDARG` for a null @p out.
  virtual std::int32_t QueryInterface(const GUID* id, void** out) = 0;

 protected:
  ~IVedUnknown() = default;
};

}  // namespace VideoEdit
