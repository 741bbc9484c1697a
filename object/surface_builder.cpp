// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "object/surface_builder.h"

#include <zorsurface/identifiers.h>
#include <zorsurface/result_codes.h>

#include <cstring>
#include <new>

#include "object/new_surface.h"
#include "object/system_sources.h"
#include "platform/memory.h"
#include "platform/rect.h"
#include "surface/picture_layout.h"
#include "surface/row_copy.h"

namespace zor {
namespace {

constexpr std::uint8_t kBlackLuma = 16;
constexpr std::uint8_t kNeutralChroma = 128;

/// As unsigned words, so that a negative size isn't a small one.
bool IsTooSmall(const SurfaceDescription& description) {
  return static_cast<std::uint32_t>(description.width) < kMinSurfaceSize ||
         static_cast<std::uint32_t>(description.height) < kMinSurfaceSize;
}

void Paint(std::uint8_t* start, std::uint8_t value, std::int64_t bytes) {
  std::memset(start, value, static_cast<std::size_t>(bytes));
}

/// Paints a new planar block black. The planes are those of a stride equal to the width.
void PaintPlanarBlack(std::uint8_t* pixels, std::int64_t width, std::int64_t height) {
  const std::int64_t luma = width * height;
  const std::int64_t chroma = (width / 2) * height >> 1;
  Paint(pixels, kBlackLuma, luma);
  Paint(pixels + luma, kNeutralChroma, chroma);
  Paint(pixels + (luma * 5 >> 2), kNeutralChroma, chroma);
}

/// @return the block size of a blank surface.
std::int64_t CountBlankBytes(const SurfaceDescription& description) {
  return description.format == FORMAT_YUV420
             ? CountPlanarBytes(description.width, description.height)
             : CountBytes(description.stride, description.height);
}

/// Gives a new blank surface its look; the block is all zeros before.
void PaintBlank(std::uint8_t* pixels, const SurfaceDescription& description, std::int64_t bytes) {
  if (description.format == FORMAT_YUV420) {
    PaintPlanarBlack(pixels, description.width, description.height);
  } else if (description.format == FORMAT_YUY2) {
    // Only the first quarter of the bytes, and with one value: a blank YUY2 surface isn't black.
    Paint(pixels, kNeutralChroma, bytes >> 2);
  }
}

/// How `CreateFromMemory` lays a host's picture into a block.
struct MemoryLayout {
  SurfaceDescription description;  ///< of the new surface
  std::int64_t stride;             ///< of the new surface, before it is cut to a word
  bool trimmed;                    ///< rows lose their last pixels
};

MemoryLayout LayOut(const SurfaceDescription& caller) {
  MemoryLayout layout = {caller, caller.stride, false};
  SurfaceDescription& local = layout.description;
  local.StorageKind = kStorageInBlock;
  if (caller.format == FORMAT_YVU420) local.format = FORMAT_YUV420;
  if (IsRgb(caller.format)) {
    layout.trimmed = caller.width % 4 != 0;
    if (layout.trimmed) {
      local.width = caller.width & ~3;
      layout.stride = std::int64_t{caller.bitsPerPixel / 8} * local.width;
      local.stride = CutToWord(layout.stride);
    }
    local.height = caller.height & ~1;
  }
  local.DirtyRect = {0, 0, local.width, local.height};
  if (local.format == FORMAT_YUV420) local.Orientation = 1;
  return layout;
}

/// @return the bytes of the new block; 0 or less where there is nothing to hold.
std::int64_t CountMemoryBytes(const MemoryLayout& layout) {
  const SurfaceDescription& local = layout.description;
  if (local.format != FORMAT_YUV420) return CountBytes(layout.stride, local.height);
  // Packed by the width, whatever the stride word says. The words count as unsigned here.
  return CountPlanarBytes(static_cast<std::uint32_t>(local.width),
                          static_cast<std::uint32_t>(local.height));
}

void CopyFromMemory(std::uint8_t* pixels, const std::uint8_t* source, const MemoryLayout& layout,
                    const SurfaceDescription& caller, std::int64_t bytes) {
  const SurfaceDescription& local = layout.description;
  if (layout.trimmed) {
    CopyRows(pixels, local.stride, source, caller.stride, local.stride, local.height);
  } else if (caller.format == FORMAT_YVU420) {
    const std::int64_t luma = std::int64_t{local.width} * local.height;
    const std::int64_t chroma = luma / 4;
    CopyRows(pixels, luma, source, luma, luma, 1);
    CopyRows(pixels + luma, chroma, source + luma + chroma, chroma, chroma, 1);
    CopyRows(pixels + luma + chroma, chroma, source + luma, chroma, chroma, 1);
  } else {
    CopyRows(pixels, bytes, source, bytes, bytes, 1);
  }
}

}  // namespace

CSurfaceBuilder* CSurfaceBuilder::Create() noexcept {
  void* memory = AllocateBytes(sizeof(CSurfaceBuilder));
  return memory == nullptr ? nullptr : new (memory) CSurfaceBuilder;
}

void* CSurfaceBuilder::ScalarDeletingDestructor(std::uint32_t flags) {
  this->~CSurfaceBuilder();
  if ((flags & 1) != 0) FreeBytes(this);
  return this;
}

std::int32_t CSurfaceBuilder::QueryInterface(const GUID* id, void** out) {
  return VideoEdit::AnswerInterface(this, IID_ISurfaceBuilder, id, out);
}

std::int32_t CSurfaceBuilder::CreateFromSource(void* handle, std::int32_t kind, std::int32_t format,
                                               std::uint32_t flags, IZorSurface** out) {
  using Route = std::int32_t (*)(void*, std::int32_t, std::uint32_t, IZorSurface**);
  static constexpr Route kRoutes[] = {CreateFromKelp, CreateFromDirectDraw, CreateFromGlobalDib};
  static_assert(SOURCE_KELP == 0 && SOURCE_DIRECT_DRAW == 1 && SOURCE_GLOBAL_DIB == 2);

  if (kind < SOURCE_KELP || kind > SOURCE_GLOBAL_DIB) return VED_E_UNSUPPORTED;
  if (handle == nullptr || out == nullptr) return VED_E_INVALIDARG;
  return kRoutes[kind](handle, format, flags, out);
}

std::int32_t CSurfaceBuilder::CreateBlank(const SurfaceDescription* description,
                                          std::int32_t* blockBytes, IZorSurface** out) {
  if (description == nullptr || blockBytes == nullptr || out == nullptr) return VED_E_INVALIDARG;
  SurfaceDescription local = *description;
  local.StorageKind = kStorageInBlock;
  if (IsTooSmall(local)) return VED_E_INVALIDARG;
  if (zor::IsRectEmpty(&local.DirtyRect)) local.DirtyRect = {0, 0, local.width, local.height};

  NewSurface surface(local);
  if (!surface) return VED_E_OUTOFMEMORY;
  if (local.format < FORMAT_RGB24 || local.format > FORMAT_YUY2) return VED_E_UNSUPPORTED;
  const std::int64_t bytes = CountBlankBytes(local);
  *blockBytes = FitsWord(bytes) ? static_cast<std::int32_t>(bytes) : 0;
  if (*blockBytes < 1) return VED_E_INVALIDARG;
  std::uint8_t* pixels = surface.AllocatePixels(bytes);
  if (pixels == nullptr) return VED_E_OUTOFMEMORY;
  PaintBlank(pixels, local, bytes);
  return surface.HandOver(1, out);
}

std::int32_t CSurfaceBuilder::CreateFromMemory(const SurfaceDescription* description,
                                               IZorMemorySource* source, IZorSurface** out) {
  if (description == nullptr || source == nullptr || out == nullptr) return VED_E_INVALIDARG;
  if (IsTooSmall(*description)) return VED_E_INVALIDARG;
  const SurfaceDescription caller = *description;
  const MemoryLayout layout = LayOut(caller);

  NewSurface surface(layout.description);
  if (!surface) return VED_E_OUTOFMEMORY;
  const auto* data = static_cast<const std::uint8_t*>(source->GetData());
  if (data == nullptr) {
    surface.Abandon();
    return VED_E_INVALIDARG;
  }
  if (!IsRgb(caller.format) && (caller.format < FORMAT_YUV420 || caller.format > FORMAT_YVU420)) {
    return VED_E_UNSUPPORTED;
  }
  const std::int64_t bytes = CountMemoryBytes(layout);
  if (bytes < 1 || !FitsWord(bytes)) return VED_E_INVALIDARG;
  // The block is zeroed where the copy below leaves bytes out: exchanged planes are copied as whole
  // quarters of luma, and a negative height has a block, but no rows.
  const bool whole = caller.format == FORMAT_YVU420 ? bytes % 6 == 0 : caller.height > 0;
  std::uint8_t* pixels =
      surface.AllocatePixels(bytes, whole ? BlockContents::kUnset : BlockContents::kZero);
  if (pixels == nullptr) return VED_E_OUTOFMEMORY;
  CopyFromMemory(pixels, data, layout, caller, bytes);
  return surface.HandOver(1, out);
}

}  // namespace zor
