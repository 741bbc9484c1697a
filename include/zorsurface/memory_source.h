// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// What a host implements to lend pixels to `ISurfaceBuilder::CreateFromMemory`.

#include <zorsurface/ved_unknown.h>

/// A lender of pixels. The builder calls nothing but `GetData`, and has copied the pixels when
/// `CreateFromMemory` returns.
struct IZorMemorySource : VideoEdit::IVedUnknown {
  /// @return the address of the picture's first byte, or null if there is none.
  virtual void* GetData() = 0;

 protected:
  ~IZorMemorySource() = default;
};
