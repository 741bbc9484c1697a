// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "surface/surface_buffer.h"

#include <zorsurface/result_codes.h>

#include <new>

#include "platform/memory.h"

namespace zor {

CZorSurfaceBuffer* CZorSurfaceBuffer::Create(const SurfaceDescription& description) noexcept {
  void* memory = AllocateBytes(sizeof(CZorSurfaceBuffer));
  return memory == nullptr ? nullptr : new (memory) CZorSurfaceBuffer(description);
}

void* CZorSurfaceBuffer::ScalarDeletingDestructor(std::uint32_t flags) {
  this->~CZorSurfaceBuffer();
  if ((flags & 1) != 0) FreeBytes(this);
  return this;
}

CZorSurfaceBuffer::~CZorSurfaceBuffer() {
  FreePixels();
}

std::int32_t CZorSurfaceBuffer::GetPixels(std::uint8_t** out) {
  if (out == nullptr) return VED_E_INVALIDARG;
  const std::int32_t result = FlushQueue(0);
  if (result >= 0 && pixels_ != nullptr) *out = pixels_;
  return result;
}

bool CZorSurfaceBuffer::AllocatePixels(std::int32_t bytes, BlockContents contents) noexcept {
  if (bytes < 1) return false;
  const std::int64_t covered = CoveredBytes(description_, bytes);
  pixels_ = AllocatePixelBlock(covered, description_.width, description_.height,
                               covered == bytes ? contents : BlockContents::kZero);
  return pixels_ != nullptr;
}

void CZorSurfaceBuffer::FreePixels() noexcept {
  if (pixels_ == nullptr || (storageFlags_ & kStorageOwned) == 0) return;
  FreePixelBlock(pixels_);
  pixels_ = nullptr;
}

void CZorSurfaceBuffer::ReplacePixels(std::uint8_t* pixels) noexcept {
  FreePixels();
  storageFlags_ = 1;
  pixels_ = pixels;
}

}  // namespace zor
