// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <zorsurface/result_codes.h>

#include <algorithm>
#include <iterator>

#include "surface/surface.h"

namespace zor {
namespace {

template <class List>
bool HasIndex(const List& list, std::int32_t index) {
  return index >= 0 && static_cast<std::size_t>(index) < list.size();
}

}  // namespace

std::int32_t CZorSurface::GetChildCount() {
  return static_cast<std::int32_t>(childList_.size());
}

std::int32_t CZorSurface::AddChild(IZorSurface* child) {
  if (child == nullptr) return VED_E_INVALIDARG;
  if (!childList_.Append(child)) return VED_E_OUTOFMEMORY;
  child->AddRef();
  return VED_OK;
}

std::int32_t CZorSurface::RemoveChild(std::int32_t index) {
  if (!HasIndex(childList_, index)) return VED_E_INVALIDARG;
  const auto place = std::next(childList_.begin(), index);
  (*place)->Release();
  childList_.erase(place);
  return VED_OK;
}

std::int32_t CZorSurface::MoveChild(IZorSurface* child, std::int32_t index) {
  if (child == nullptr || index < 0) return VED_E_INVALIDARG;
  const auto place = std::find(childList_.begin(), childList_.end(), child);
  if (place == childList_.end()) return E_FAIL;
  if (std::distance(childList_.begin(), place) == index) return VED_OK;

  // The index counts in the list without the child. Moving the node itself takes no memory.
  decltype(childList_)::Base aside;
  aside.splice(aside.begin(), childList_, place);
  const auto steps = std::min<std::size_t>(static_cast<std::size_t>(index), childList_.size());
  childList_.splice(std::next(childList_.begin(), static_cast<std::ptrdiff_t>(steps)), aside);
  return VED_OK;
}

std::int32_t CZorSurface::FindChild(IZorSurface* child) {
  const auto place = std::find(childList_.begin(), childList_.end(), child);
  if (child == nullptr || place == childList_.end()) return -1;
  return static_cast<std::int32_t>(std::distance(childList_.begin(), place));
}

IZorSurface* CZorSurface::GetChild(std::int32_t index) {
  if (!HasIndex(childList_, index)) return nullptr;
  IZorSurface* child = *std::next(childList_.begin(), index);
  child->AddRef();
  return child;
}

}  // namespace zor
