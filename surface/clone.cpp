// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <zorsurface/result_codes.h>

#include <algorithm>
#include <cstring>

#include "object/surface_builder.h"
#include "platform/pixel_block.h"
#include "surface/row_copy.h"
#include "surface/surface.h"

namespace zor {

std::int32_t CZorSurface::Clone(IZorSurface** out) {
  if (out == nullptr) return VED_E_INVALIDARG;
  if (description_.StorageKind != kStorageInBlock) return VED_E_UNSUPPORTED;
  CSurfaceBuilder* builder = CSurfaceBuilder::Create();
  if (builder == nullptr) return VED_E_OUTOFMEMORY;
  std::int32_t blockBytes = 0;
  IZorSurface* clone = nullptr;
  std::int32_t result = builder->CreateBlank(&description_, &blockBytes, &clone);
  builder->ScalarDeletingDestructor(1);
  if (result < 0 || clone == nullptr) return result;

  clone->SetAspectRatio(aspectWidth_, aspectHeight_);
  clone->SetDestRect(destRect_.left, destRect_.top, destRect_.right, destRect_.bottom);
  clone->SetSourceRect(sourceRect_.left, sourceRect_.top, sourceRect_.right, sourceRect_.bottom);
  result = ClonePixels(clone, blockBytes);
  if (result >= 0 && mask_ != nullptr) result = CloneMask(clone);
  if (result < 0) {
    clone->Release();
    clone = nullptr;
  }
  *out = clone;
  return result;
}

std::int32_t CZorSurface::ClonePixels(IZorSurface* clone, std::int32_t blockBytes) {
  std::uint8_t* target = nullptr;
  std::uint8_t* source = nullptr;
  clone->GetPixels(&target);
  const std::int32_t result = GetPixels(&source);
  if (result < 0 || source == nullptr) return result;
  // The flush may have given this surface a smaller block than the one the clone was made for.
  const std::int64_t bytes = std::min<std::int64_t>(blockBytes, PixelBlockBytes(source));
  CopyRows(target, bytes, source, bytes, bytes, 1);
  return result;
}

std::int32_t CZorSurface::CloneMask(IZorSurface* clone) {
  IZorSurface* mask = nullptr;
  // A chain of masks that leads back here has no clone.
  if (inClone_) return VED_E_INVALIDARG;
  inClone_ = true;
  const std::int32_t result = mask_->Clone(&mask);
  inClone_ = false;
  if (mask == nullptr) return result;
  clone->SetMask(mask);
  mask->Release();
  return result;
}

}  // namespace zor
