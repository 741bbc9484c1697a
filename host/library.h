// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The library as this host uses it: codes as exceptions, pictures in.

#include <zorsurface/ref.hpp>

#include <string>

#include "exit_code.h"
#include "picture.h"

namespace zorhost {

using zor::Ref;

/// "VED_E_UNSUPPORTED (0x81000001): ..." for the result codes of the contract.
std::string ResultText(std::int32_t code);

/// @throws HostError with `ExitCode::kLibrary`, @p what and the code's text, if @p result is a
/// failure.
void Check(std::int32_t result, const std::string& what);

/// The library's builder, loaded once.
class Library {
 public:
  /// @throws HostError if the library makes no builder.
  Library();

  /// Makes a surface that holds a copy of @p picture. The planes of `kYvu420` (Y, U, V) are
  /// exchanged on the way, so that the surface has the order that the kernels expect.
  /// Pictures of `kGray8` go in through a blank surface.
  Ref<IZorSurface> HandIn(const Picture& picture) const;
  /// A surface of zeroed or black pixels. RGB is bottom-up, everything else top-down.
  Ref<IZorSurface> Blank(Layout layout, int width, int height) const;

 private:
  Ref<ISurfaceBuilder> builder_;
};

/// @return a surface's description.
SurfaceDescription Describe(IZorSurface& surface);

}  // namespace zorhost
