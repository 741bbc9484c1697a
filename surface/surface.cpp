// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "surface/surface.h"

#include <zorsurface/identifiers.h>
#include <zorsurface/result_codes.h>

namespace zor {
namespace {

constexpr std::uint32_t kMaxOpacity = 256;

bool StartsOutside(std::int32_t left, std::int32_t top) {
  return left < 0 || top < 0;
}

/// Stores a value through a host's pointer.
template <class T>
std::int32_t Give(T* out, const T& value) {
  if (out == nullptr) return VED_E_INVALIDARG;
  *out = value;
  return VED_OK;
}

}  // namespace

CZorSurface::CZorSurface(const SurfaceDescription& description) noexcept
    : description_(description) {
  description_.size = sizeof(SurfaceDescription);
  OsaInitCriticalSection(&queueLock_);
}

CZorSurface::~CZorSurface() {
  OsaEnterCriticalSection(&queueLock_);
  storageFlags_ = 0;
  direct_ = {};
  operationQueue_.clear();
  for (IZorSurface* child : childList_) child->Release();
  childList_.clear();
  if (mask_ != nullptr) mask_->Release();
  mask_ = nullptr;
  OsaLeaveCriticalSection(&queueLock_);
  OsaDeleteCriticalSection(&queueLock_);
}

std::int32_t CZorSurface::QueryInterface(const GUID* id, void** out) {
  return VideoEdit::AnswerInterface(this, IID_IZorSurface, id, out);
}

std::int32_t CZorSurface::GetDescription(SurfaceDescription* out) {
  return Give(out, description_);
}

std::int32_t CZorSurface::GetAspectRatio(std::int32_t* width, std::int32_t* height) {
  if (width == nullptr || height == nullptr) return VED_E_INVALIDARG;
  *width = aspectWidth_;
  *height = aspectHeight_;
  return VED_OK;
}

std::int32_t CZorSurface::SetAspectRatio(std::int32_t width, std::int32_t height) {
  if (width < 0 || height < 0) return VED_E_INVALIDARG;
  aspectWidth_ = width;
  aspectHeight_ = height;
  return VED_OK;
}

std::int32_t CZorSurface::SetComposeInPlace(std::uint32_t flag) {
  description_.ComposeInPlace = flag;
  return VED_OK;
}

std::int32_t CZorSurface::GetComposeInPlace(std::uint32_t* flag) {
  return Give(flag, description_.ComposeInPlace);
}

std::int32_t CZorSurface::SetBackColor(std::uint32_t colour) {
  backColour_ = colour;
  return VED_OK;
}

std::int32_t CZorSurface::GetBackColor(std::uint32_t* colour) {
  return Give(colour, backColour_);
}

std::int32_t CZorSurface::SetOpacity(std::uint32_t opacity) {
  if (opacity > kMaxOpacity) return VED_E_INVALIDARG;
  opacity_ = opacity;
  return VED_OK;
}

std::int32_t CZorSurface::GetOpacity(std::uint32_t* opacity) {
  return Give(opacity, opacity_);
}

std::int32_t CZorSurface::SetSourceRect(std::int32_t left, std::int32_t top, std::int32_t right,
                                        std::int32_t bottom) {
  if (StartsOutside(left, top) ||
      static_cast<std::uint32_t>(bottom) > static_cast<std::uint32_t>(description_.height) ||
      static_cast<std::uint32_t>(right) > static_cast<std::uint32_t>(description_.width)) {
    return VED_E_INVALIDARG;
  }
  sourceRect_ = {left, top, right, bottom};
  return VED_OK;
}

std::int32_t CZorSurface::GetSourceRect(RECT* out) {
  return Give(out, sourceRect_);
}

std::int32_t CZorSurface::SetDestRect(std::int32_t left, std::int32_t top, std::int32_t right,
                                      std::int32_t bottom) {
  if (StartsOutside(left, top)) return VED_E_INVALIDARG;
  destRect_ = {left, top, right, bottom};
  return VED_OK;
}

std::int32_t CZorSurface::GetDestRect(RECT* out) {
  return Give(out, destRect_);
}

std::int32_t CZorSurface::SetMask(IZorSurface* mask) {
  if (mask == nullptr) return VED_E_INVALIDARG;
  // The mask held already may have no other owner: it must not pass through a count of 0.
  if (mask == mask_) return VED_OK;
  if (mask_ != nullptr) mask_->Release();
  mask->AddRef();
  mask_ = mask;
  return VED_OK;
}

std::int32_t CZorSurface::GetMask(IZorSurface** mask) {
  if (mask == nullptr) return VED_E_INVALIDARG;
  *mask = mask_;
  if (mask_ == nullptr) return E_FAIL;
  mask_->AddRef();
  return VED_OK;
}

std::int32_t CZorSurface::SetStorageFlags(std::uint32_t flags) {
  storageFlags_ = flags;
  return 1;
}

}  // namespace zor
