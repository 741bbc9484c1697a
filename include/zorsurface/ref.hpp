// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Help for hosts in C++: an owning pointer and a few lines that every host writes. Header only;
/// nothing of it crosses the library's boundary.

#include <zorsurface/zorsurface.h>

#include <utility>

namespace zor {

/// Owns one reference of an object and gives it back at the end of its life.
template <class Interface>
class Ref {
 public:
  Ref() = default;
  /// Takes over a reference that the caller owns already.
  explicit Ref(Interface* owned) : object_(owned) {}
  /// Takes one more reference.
  Ref(const Ref& other) : object_(other.object_) {
    if (object_ != nullptr) object_->AddRef();
  }
  /// Takes over the other's reference, and leaves it empty.
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  /// Lets go of the object, and takes the other's.
  Ref& operator=(Ref other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Ref() { reset(); }

  /// @return the object, or null; the reference stays here.
  Interface* get() const { return object_; }
  /// @return the object, to call a slot of it.
  Interface* operator->() const { return object_; }
  /// @return whether there is an object.
  explicit operator bool() const { return object_ != nullptr; }
  /// Lets go of the object. @return where a function may put a new one.
  Interface** put() {
    reset();
    return &object_;
  }
  /// Lets go of the object.
  void reset() {
    if (Interface* old = std::exchange(object_, nullptr); old != nullptr) old->Release();
  }

 private:
  Interface* object_ = nullptr;
};

/// @return the library's surface builder, or nothing if it can't be made.
inline Ref<ISurfaceBuilder> LoadBuilder() {
  void* object = nullptr;
  const std::int32_t result = CreateObject(&CLSID_SurfaceBuilder, &IID_ISurfaceBuilder, &object);
  return Ref<ISurfaceBuilder>(result == VED_OK ? static_cast<ISurfaceBuilder*>(object) : nullptr);
}

/// @return a description with the bits per pixel and the natural stride of a format: rows of whole
///         4 bytes for RGB and gray, 2 x width for YUY2, the width for planes. Rows run top-down.
inline SurfaceDescription MakeDescription(std::int32_t format, std::int32_t width,
                                          std::int32_t height) {
  SurfaceDescription description{};
  description.size = sizeof description;
  description.width = width;
  description.height = height;
  description.format = format;
  description.Orientation = 1;
  switch (format) {
    case FORMAT_RGB24:
      description.bitsPerPixel = 24;
      break;
    case FORMAT_RGB32:
      description.bitsPerPixel = 32;
      break;
    case FORMAT_GRAY8:
      description.bitsPerPixel = 8;
      break;
    case FORMAT_YUY2:
      description.bitsPerPixel = 16;
      break;
    default:
      description.bitsPerPixel = 12;
      break;
  }
  const bool planar = format == FORMAT_YUV420 || format == FORMAT_YVU420;
  description.stride = planar                  ? width
                       : format == FORMAT_YUY2 ? width * 2
                                               : (description.bitsPerPixel * width + 31) / 32 * 4;
  return description;
}

/// Lends a host's own memory to `ISurfaceBuilder::CreateFromMemory`, for the length of the call.
class LentPixels final : public IZorMemorySource {
 public:
  /// @param pixels the picture's first byte; stays the host's, and is only read.
  explicit LentPixels(const void* pixels) : pixels_(const_cast<void*>(pixels)) {}
  std::uint32_t AddRef() override { return 1; }
  std::uint32_t Release() override { return 1; }
  std::int32_t QueryInterface(const GUID*, void**) override { return VED_E_UNSUPPORTED; }
  void* GetData() override { return pixels_; }

 private:
  void* pixels_;
};

}  // namespace zor
