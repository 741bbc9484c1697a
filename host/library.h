// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The library as this host uses it: owned references, codes as exceptions, pictures in.

#include <zorsurface/zorsurface.h>

#include <string>
#include <utility>

#include "exit_code.h"
#include "picture.h"

namespace zorhost {

/// One reference of an interface of the library.
template <class Interface>
class Ref {
 public:
  Ref() = default;
  ~Ref() { Reset(); }
  Ref(Ref&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
  Ref& operator=(Ref&& other) noexcept {
    std::swap(pointer_, other.pointer_);
    return *this;
  }
  Interface* operator->() const { return pointer_; }
  Interface* get() const { return pointer_; }
  /// Where a function of the library stores the reference that it hands out.
  Interface** Receive() {
    Reset();
    return &pointer_;
  }

 private:
  void Reset() {
    if (Interface* const old = std::exchange(pointer_, nullptr)) old->Release();
  }
  Interface* pointer_ = nullptr;
};

/// "VED_E_UNSUPPORTED (0x81000001): ..." for the result codes of the contract.
std::string ResultText(std::int32_t code);

/// @throws HostError with `ExitCode::kLibrary`, @p what and the code's text, if @p result is a
/// failure.
void Check(std::int32_t result, const std::string& what);

class Library {
 public:
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

SurfaceDescription Describe(IZorSurface& surface);

}  // namespace zorhost
