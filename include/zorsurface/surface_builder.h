// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The factory of surfaces.

#include <zorsurface/memory_source.h>
#include <zorsurface/surface.h>

/// `ISurfaceBuilder::CreateFromSource`: a video-DIB handle of `uKelpTool`, which is looked for at
/// run time (uKelpTool.dll; libuKelpTool.so).
inline constexpr std::int32_t SOURCE_KELP = 0;
/// `ISurfaceBuilder::CreateFromSource`: a DirectDraw surface (`IDirectDrawSurface7`); see
/// zorsurface/direct_draw.h for what that is where there is no DirectDraw.
inline constexpr std::int32_t SOURCE_DIRECT_DRAW = 1;
/// `ISurfaceBuilder::CreateFromSource`: a device-independent bitmap in global memory; where there
/// is none, in a block of `malloc`, whose address is the handle.
inline constexpr std::int32_t SOURCE_GLOBAL_DIB = 2;
/// The flag that every `CreateFromSource` must carry: copy the pixels.
inline constexpr std::uint32_t STORAGE_COPY = 4;

/// Makes surfaces. Pixels are always copied: no surface refers to a host's memory afterwards. The
/// builder has no state, so that any number of threads may use one. Each slot hands out one
/// reference in @p out and leaves it alone on failure. Null pointers and pictures under the minimum
/// give `VED_E_INVALIDARG`, formats and depths that a slot doesn't serve `VED_E_UNSUPPORTED`, and a
/// block that can't be had `VED_E_OUTOFMEMORY`.
struct ISurfaceBuilder : VideoEdit::IVedUnknown {
  /// Copies a system image.
  /// @param handle the image; @param kind one of the `SOURCE_` numbers.
  /// @param format 1 or 2 for RGB (the source's bit count decides which), 4 for planar; 5 for
  ///        global bitmaps only.
  /// @param flags the storage word; must contain `STORAGE_COPY`.
  /// @param out receives the surface. The image stays the caller's.
  /// @return `VED_E_UNSUPPORTED` for another kind; `E_FAIL` if a video-DIB can't be described or
  ///         locked; what `GetSurfaceDesc` or `Lock` of a DirectDraw surface gave, if not success.
  virtual std::int32_t CreateFromSource(void* handle, std::int32_t kind, std::int32_t format,
                                        std::uint32_t flags, IZorSurface** out) = 0;
  /// Makes a blank surface of at least 4 x 4.
  /// @param description width, height, format, bits per pixel and stride count; a planar one needs
  ///        stride = width.
  /// @param blockBytes receives the size of the pixel block, also where it is found too small; 0
  ///        for a size beyond 32 bits, which is `VED_E_INVALIDARG` too.
  /// @param out receives the surface: planar ones black, RGB and gray ones 0, YUY2 ones
  ///        0x80 in the first quarter of their bytes and 0 in the others.
  virtual std::int32_t CreateBlank(const SurfaceDescription* description, std::int32_t* blockBytes,
                                   IZorSurface** out) = 0;
  /// Copies a picture of formats 1, 2, 4, 5 or 6 from the host's memory. RGB sizes are trimmed to
  /// a width of whole fours and an even height.
  /// @param description of the picture in memory: width, height, format, bits per pixel, stride and
  ///        `Orientation` count.
  /// @param source lends the memory; it is asked for its address once, during the call.
  /// @param out receives the surface.
  virtual std::int32_t CreateFromMemory(const SurfaceDescription* description,
                                        IZorMemorySource* source, IZorSurface** out) = 0;

 protected:
  ~ISurfaceBuilder() = default;
};
