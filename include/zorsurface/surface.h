// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The surface: one picture in memory with all that belongs to it.

#include <zorsurface/surface_description.h>
#include <zorsurface/ved_unknown.h>

/// A picture that converts, resizes, rotates, fills, stretches, exports and composites itself.
///
/// Slots stand in the order of this declaration. Slots that return `std::int32_t` return a result
/// code unless they say otherwise. "Flushes" means that the queued operations run first, and that
/// a failure of them is returned at once. A surface is not thread-safe, except for `AddRef`,
/// `Release`, `QueueResize`, `QueueConvert` and `Flush`.
struct IZorSurface : VideoEdit::IVedUnknown {
  /// Copies the 13 words of the description. Queued operations don't show yet.
  virtual std::int32_t GetDescription(SurfaceDescription* out) = 0;
  /// Gives the aspect ratio; 0 in either word means none.
  virtual std::int32_t GetAspectRatio(std::int32_t* width, std::int32_t* height) = 0;
  /// Sets the aspect ratio that a resize with fit keeps; negative words are refused.
  virtual std::int32_t SetAspectRatio(std::int32_t width, std::int32_t height) = 0;
  /// Says whether `Compose` draws into this surface (nonzero) or into a clone (0).
  virtual std::int32_t SetComposeInPlace(std::uint32_t flag) = 0;
  virtual std::int32_t GetComposeInPlace(std::uint32_t* flag) = 0;
  /// Queues a resize. @param fit nonzero keeps the aspect ratio between bands.
  /// @param quality a `ScaleMode`. Sizes under 4 are refused.
  virtual std::int32_t QueueResize(std::int32_t width, std::int32_t height, std::int32_t fit,
                                   std::int32_t quality) = 0;
  /// Queues a conversion; the format is looked at when it runs.
  virtual std::int32_t QueueConvert(std::int32_t format) = 0;
  /// Flushes, then turns the picture by whole degrees.
  virtual std::int32_t Rotate(std::int32_t degrees) = 0;
  /// Flushes, then reports `VED_E_INVALIDARG` or `VED_E_UNSUPPORTED`; nothing is ever warped.
  virtual std::int32_t WarpRegion(std::int32_t handle, std::uint32_t value, double a, double b,
                                  double c, double d, std::int32_t value2) = 0;
  /// Flushes, then draws a rectangle of this surface into a rectangle of the host's memory, in
  /// this surface's format and row order. The memory is @p stride x @p height bytes (planar: one
  /// and a half times that) and holds a picture of @p width x @p height. A @p stride under 1 means
  /// the natural one. Null rectangles mean the whole picture.
  virtual std::int32_t StretchToMemory(RECT* source, RECT* target, std::uint8_t* memory,
                                       std::int32_t width, std::int32_t height,
                                       std::int32_t stride, std::uint32_t quality) = 0;
  /// Flushes, then draws a rectangle of @p source into a rectangle of this surface. Between RGB
  /// and YUV420 the source surface itself is converted, for good.
  virtual std::int32_t StretchFromSurface(RECT* target, IZorSurface* source, RECT* sourceRect,
                                          std::uint32_t quality) = 0;
  /// Flushes, then paints a rectangle (null: everything). In a bottom-up RGB surface the caller's
  /// rectangle is turned over in place. RGB surfaces take byte 0 of the colour as red and byte 2
  /// as blue; planar ones take byte 0 as blue and byte 2 as red.
  virtual std::int32_t Fill(RECT* rectangle, std::uint32_t colour) = 0;
  /// Runs the queue, its last operation straight into the host's memory, or copies the rows out
  /// if nothing was queued. The surface itself keeps the state from before the last operation.
  /// @param memory must hold the picture that results: @p stride x height bytes, planes included;
  ///        one and a half times that if the last operation is a resize.
  /// @param stride bytes from row to row in @p memory, at least 1.
  /// @param orientation row order wanted: 1 top-down, 0 bottom-up.
  virtual std::int32_t ReadPixels(std::uint8_t* memory, std::int32_t stride,
                                  std::uint32_t orientation) = 0;
  /// Flushes, then makes a system image that the host owns. @param kind 1: a DirectDraw surface
  /// (zorsurface/direct_draw.h); 2: a device-independent bitmap in global memory, freed with
  /// `GlobalFree`, or with `free` where there is none. @param flag receives 1.
  virtual std::int32_t ExportImage(std::uint32_t kind, void** image, std::uint32_t* flag) = 0;
  /// Flushes, then gives the address of the surface's own block, valid until the next operation
  /// that replaces it. @p out stays as it is when there are no pixels.
  virtual std::int32_t GetPixels(std::uint8_t** out) = 0;
  /// Runs the queued operations. @return the result of the last one.
  virtual std::int32_t Flush() = 0;
  /// Makes a surface with this one's description, pixels, aspect ratio, rectangles and a clone of
  /// its mask. Flush first for an exact clone.
  virtual std::int32_t Clone(IZorSurface** out) = 0;
  /// Sets the key colour of this surface as a child; 0xFF000000 means none.
  virtual std::int32_t SetBackColor(std::uint32_t colour) = 0;
  virtual std::int32_t GetBackColor(std::uint32_t* colour) = 0;
  /// Sets the weight of the target under this child: 0 shows the child fully, 256 not at all.
  virtual std::int32_t SetOpacity(std::uint32_t opacity) = 0;
  virtual std::int32_t GetOpacity(std::uint32_t* opacity) = 0;
  /// Takes a reference of an 8-bit mask; its samples weigh the target. There is no way to unset.
  virtual std::int32_t SetMask(IZorSurface* mask) = 0;
  /// Gives the mask with a new reference; without one stores null and returns `E_FAIL`.
  virtual std::int32_t GetMask(IZorSurface** mask) = 0;
  virtual std::int32_t SetSourceRect(std::int32_t left, std::int32_t top, std::int32_t right,
                                     std::int32_t bottom) = 0;
  virtual std::int32_t GetSourceRect(RECT* out) = 0;
  virtual std::int32_t SetDestRect(std::int32_t left, std::int32_t top, std::int32_t right,
                                   std::int32_t bottom) = 0;
  virtual std::int32_t GetDestRect(RECT* out) = 0;
  /// @return the number of children itself.
  virtual std::int32_t GetChildCount() = 0;
  /// Appends a child and takes a reference. @throws std::length_error "list<T> too long".
  virtual std::int32_t AddChild(IZorSurface* child) = 0;
  virtual std::int32_t RemoveChild(std::int32_t index) = 0;
  /// Moves a child's first occurrence to an index; beyond the end means last.
  virtual std::int32_t MoveChild(IZorSurface* child, std::int32_t index) = 0;
  /// @return the index of the child's first occurrence, or -1.
  virtual std::int32_t FindChild(IZorSurface* child) = 0;
  /// @return the child with a new reference, or null.
  virtual IZorSurface* GetChild(std::int32_t index) = 0;
  /// Flushes, draws the children and lets go of them. @param out receives the surface drawn on,
  /// with a reference for the caller.
  virtual std::int32_t Compose(IZorSurface** out) = 0;
  /// Stores the storage word. @return 1, not a result code.
  virtual std::int32_t SetStorageFlags(std::uint32_t flags) = 0;
  /// Resizes at once, without flushing; as `QueueResize`, with any positive size.
  virtual std::int32_t ResizeNow(std::int32_t width, std::int32_t height, std::int32_t fit,
                                 std::uint32_t quality) = 0;
  /// Rotates at once, without flushing.
  virtual std::int32_t RotateNow(std::int32_t degrees) = 0;
  /// Converts at once, without flushing.
  virtual std::int32_t ConvertNow(std::int32_t format) = 0;
  /// As `StretchFromSurface`, without flushing this surface.
  virtual std::int32_t StretchFromSurfaceNow(RECT* target, IZorSurface* source, RECT* sourceRect,
                                             std::uint32_t quality) = 0;
  /// As `StretchToMemory`, without flushing.
  virtual std::int32_t StretchToMemoryNow(RECT* source, RECT* target, std::uint8_t* memory,
                                          std::int32_t width, std::int32_t height,
                                          std::int32_t stride, std::uint32_t quality) = 0;
  /// As `WarpRegion`, without flushing.
  virtual std::int32_t WarpRegionNow(std::int32_t handle, std::uint32_t value, double a, double b,
                                     double c, double d, std::int32_t value2) = 0;
  /// As `Fill`, without flushing.
  virtual std::int32_t FillNow(RECT* rectangle, std::uint32_t colour) = 0;
  /// Computes where the picture stands in a target of the given size with its aspect ratio kept.
  /// Writes only three words of @p out; the caller zeroes it first.
  virtual std::int32_t ComputeFitRect(std::int32_t width, std::int32_t height, RECT* out) = 0;

 protected:
  ~IZorSurface() = default;
};
