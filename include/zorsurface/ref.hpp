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
  Ref(const Ref& other) : object_(other.object_) {
    if (object_ != nullptr) object_->AddRef();
  }
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Ref& operator=(Ref other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Ref() { reset(); }

  Interface* get() const { return object_; }
  Interface* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }
  /// Lets go of the object. @return where a function may put a new one.
  Interface** put() {
    reset();
    return &object_;
  }
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
  explicit LentPixels(void* pixels) : pixels_(pixels) {}
  std::uint32_t AddRef() override { return 1; }
  std::uint32_t Release() override { return 1; }
  std::int32_t QueryInterface(const GUID*, void**) override { return VED_E_UNSUPPORTED; }
  void* GetData() override { return pixels_; }

 private:
  void* pixels_;
};

}  // namespace zor
