// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The factory that `CreateObject` hands out.

#include <zorsurface/surface_builder.h>

#include "object/ved_unknown.h"

namespace zor {

class CSurfaceBuilder final : public ISurfaceBuilder, public VideoEdit::CVedUnknown {
 public:
  CSurfaceBuilder() noexcept = default;
  ~CSurfaceBuilder() = default;

  /// Makes a builder of count 0; null without memory.
  static CSurfaceBuilder* Create() noexcept;

  void* ScalarDeletingDestructor(std::uint32_t flags) override;
  std::uint32_t AddRef() override { return CVedUnknown::AddRef(); }
  std::uint32_t Release() override { return CVedUnknown::Release(); }
  std::int32_t QueryInterface(const GUID* id, void** out) override;

  std::int32_t CreateFromSource(void* handle, std::int32_t kind, std::int32_t format,
                                std::uint32_t flags, IZorSurface** out) override;
  std::int32_t CreateBlank(const SurfaceDescription* description, std::int32_t* blockBytes,
                           IZorSurface** out) override;
  std::int32_t CreateFromMemory(const SurfaceDescription* description, IZorMemorySource* source,
                                IZorSurface** out) override;
};

}  // namespace zor
