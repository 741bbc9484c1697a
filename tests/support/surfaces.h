// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// Builders, descriptions and sources for tests of surfaces.

#include <zorsurface/zorsurface.h>

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace zor::test {

using Bytes = std::vector<std::uint8_t>;

/// @return @p count of the bytes from @p start on.
Bytes Part(const Bytes& bytes, std::integral auto start, std::integral auto count) {
  const auto first = bytes.begin() + static_cast<std::ptrdiff_t>(start);
  return {first, first + static_cast<std::ptrdiff_t>(count)};
}

/// Owns one reference of an interface.
template <class Interface>
class Held {
 public:
  Held() = default;
  explicit Held(Interface* object) : object_(object) {}
  ~Held() { Reset(); }
  Held(Held&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Held& operator=(Held&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  Interface* get() const { return object_; }
  Interface* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }
  /// Gives the reference back. @return where a creator stores the next one.
  Interface** Reset() {
    if (object_ != nullptr) object_->Release();
    object_ = nullptr;
    return &object_;
  }

 private:
  Interface* object_ = nullptr;
};

using HeldSurface = Held<IZorSurface>;
using HeldBuilder = Held<ISurfaceBuilder>;

/// @return a builder from `CreateObject`.
HeldBuilder MakeBuilder();

/// @return the description of a new picture in its natural stride, `Orientation` 1.
SurfaceDescription Describe(std::int32_t width, std::int32_t height, std::int32_t format);

/// @return the same with the row order given.
SurfaceDescription DescribeOriented(std::int32_t width, std::int32_t height, std::int32_t format,
                                    std::uint32_t orientation);

/// @return the bytes of a picture of this description; planes included.
std::size_t PictureBytes(const SurfaceDescription& description);

/// Lends a vector of bytes, or nothing. Counts the calls of its slots.
class VectorSource final : public IZorMemorySource {
 public:
  explicit VectorSource(Bytes bytes) : bytes_(std::move(bytes)) {}

  std::uint32_t AddRef() override { return ++otherCalls; }
  std::uint32_t Release() override { return ++otherCalls; }
  std::int32_t QueryInterface(const GUID*, void**) override {
    ++otherCalls;
    return VED_E_UNSUPPORTED;
  }
  void* GetData() override {
    ++dataCalls;
    return bytes_.empty() ? nullptr : bytes_.data();
  }

  std::uint32_t dataCalls = 0;
  std::uint32_t otherCalls = 0;

 private:
  Bytes bytes_;
};

/// @return a surface copied from @p bytes by `CreateFromMemory`.
HeldSurface MakeSurface(const SurfaceDescription& description, const Bytes& bytes);

/// @return a blank surface.
HeldSurface MakeBlank(const SurfaceDescription& description);

/// @return a surface of any size and format, with all bytes of its picture set to @p value.
HeldSurface MakeEven(const SurfaceDescription& description, std::uint8_t value);

/// @return a surface of any size and format, with noise for pixels.
HeldSurface MakeNoisy(const SurfaceDescription& description, std::uint64_t seed);

SurfaceDescription DescriptionOf(IZorSurface* surface);

/// @return the address of the surface's pixels.
std::uint8_t* PixelsOf(const HeldSurface& surface);

/// @return the first @p bytes bytes of the surface's block.
Bytes BlockOf(IZorSurface* surface, std::size_t bytes);

/// @return the reference count, unchanged.
std::uint32_t CountOf(VideoEdit::IVedUnknown* object);

}  // namespace zor::test
