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
/// code unless they say otherwise: `VED_OK`, or a negative code that leaves the surface as it was
/// unless a slot says otherwise. A null pointer gives `VED_E_INVALIDARG`.
///
/// "Flushes" means that the queued operations run first, and that a failure of them is returned at
/// once. Sizes and positions are in pixels, strides in bytes. A rectangle reaches from its left and
/// top up to, and without, its right and bottom; a slot that draws takes a null one for the whole
/// picture and refuses one outside of the picture with `VED_E_INVALIDARG`, but takes one that is
/// less than 2 wide or high in silence: `VED_OK`, nothing drawn. In the rectangles of RGB surfaces
/// row 0 is the picture's top row, whatever the `Orientation`; where a slot counts in rows of
/// memory it says so.
///
/// A surface is not thread-safe, except for `AddRef`, `Release`, `QueueResize`, `QueueConvert` and
/// `Flush`.
struct IZorSurface : VideoEdit::IVedUnknown {
  /// Copies the 13 words of the description. Queued operations don't show yet.
  virtual std::int32_t GetDescription(SurfaceDescription* out) = 0;
  /// Gives the aspect ratio; 0 in either word means none, as at the beginning.
  virtual std::int32_t GetAspectRatio(std::int32_t* width, std::int32_t* height) = 0;
  /// Sets the aspect ratio that a resize with fit keeps. A resize uses it up: none is set
  /// afterwards.
  /// @return `VED_E_INVALIDARG` if a word is negative.
  virtual std::int32_t SetAspectRatio(std::int32_t width, std::int32_t height) = 0;
  /// Says whether `Compose` draws into this surface (nonzero) or into a clone (0). Surfaces start
  /// as their description says, those from system images with 1.
  virtual std::int32_t SetComposeInPlace(std::uint32_t flag) = 0;
  /// Gives the flag as it was set.
  virtual std::int32_t GetComposeInPlace(std::uint32_t* flag) = 0;
  /// Queues a resize. The size that `GetDescription` tells stays until it runs.
  /// @param width, height the new size, at least 4 each, or `VED_E_INVALIDARG`.
  /// @param fit nonzero keeps the aspect ratio, between black bands; 0 fills the whole size.
  /// @param quality a `ScaleMode`.
  /// @throws std::length_error "list<T> too long", beyond 0x0AAAAAAA operations.
  virtual std::int32_t QueueResize(std::int32_t width, std::int32_t height, std::int32_t fit,
                                   std::int32_t quality) = 0;
  /// Queues a conversion.
  /// @param format one of the `FORMAT_` numbers, looked at when it runs: see `ConvertNow`.
  /// @return `VED_OK`, whatever the format; `VED_E_OUTOFMEMORY` if nothing could be queued.
  /// @throws std::length_error as `QueueResize`.
  virtual std::int32_t QueueConvert(std::int32_t format) = 0;
  /// Flushes, then turns the picture: `RotateNow`.
  virtual std::int32_t Rotate(std::int32_t degrees) = 0;
  /// Flushes, then reports `VED_E_INVALIDARG` or `VED_E_UNSUPPORTED`; nothing is ever warped.
  virtual std::int32_t WarpRegion(std::int32_t handle, std::uint32_t value, double a, double b,
                                  double c, double d, std::int32_t value2) = 0;
  /// Flushes, then draws a rectangle of this surface into a rectangle of the host's memory, in
  /// this surface's format, bit depth and row order. Formats 1 to 4; others `VED_E_UNSUPPORTED`.
  /// @param source rectangle of this surface, @param target rectangle of the memory's picture;
  ///        both count in rows of memory, and neither is changed.
  /// @param memory the picture: @p stride x @p height bytes, planar one and a half times that.
  ///        Nothing around the rectangle is painted.
  /// @param width, height size of the memory's picture, at least 1 each.
  /// @param stride under 1 means the natural one: whole fours of bytes, planar the width.
  /// @param quality a `ScaleMode`.
  virtual std::int32_t StretchToMemory(RECT* source, RECT* target, std::uint8_t* memory,
                                       std::int32_t width, std::int32_t height, std::int32_t stride,
                                       std::uint32_t quality) = 0;
  /// Flushes, then draws a rectangle of @p source into a rectangle of this surface, whose
  /// `DirtyRect` grows by it. Formats 1 to 4; others `VED_E_UNSUPPORTED`.
  /// @param target rectangle of this surface, @param sourceRect of the source; neither is changed.
  /// @param source flushed too. Between RGB and YUV420 the source surface itself is converted, for
  ///        good. Otherwise formats are not matched beyond RGB24 with RGB32.
  /// @param quality a `ScaleMode`.
  virtual std::int32_t StretchFromSurface(RECT* target, IZorSurface* source, RECT* sourceRect,
                                          std::uint32_t quality) = 0;
  /// Flushes, then paints a rectangle. Formats 1, 2 and 4; others `VED_E_UNSUPPORTED`.
  /// @param rectangle null: everything. In a bottom-up RGB surface the caller's rectangle is turned
  ///        over in place, and afterwards counts in rows of memory.
  /// @param colour RGB surfaces take byte 0 as red and byte 2 as blue. Planar ones work out Y, U, V
  ///        with byte 0 as blue and byte 2 as red, and paint U where conversions read V: converted
  ///        to RGB, 0x0000FF is a dark red. Where bytes 0 and 2 are equal both give the same
  ///        colour. The top byte isn't used.
  virtual std::int32_t Fill(RECT* rectangle, std::uint32_t colour) = 0;
  /// Runs the queue, its last operation straight into the host's memory, or copies the rows out
  /// if nothing was queued (format 3: nothing is copied). The surface itself keeps the state from
  /// before the last operation, which is gone from the queue.
  /// @param memory must hold the picture that results: @p stride x height bytes, planes included;
  ///        one and a half times that if the last operation is a resize.
  /// @param stride bytes from row to row in @p memory, at least 1.
  /// @param orientation row order wanted: 1 top-down, 0 bottom-up. If the last operation converts
  ///        from RGB to YUV420 or YUY2, or from YUY2 to RGB, the rows come in the other order than
  ///        the one wanted; between RGB24 and RGB32, and among YUV420, YVU420 and YUY2, in the
  ///        surface's own.
  /// @return the result of the last operation. If the one before it failed, the code of that; the
  ///         last one is still queued then.
  virtual std::int32_t ReadPixels(std::uint8_t* memory, std::int32_t stride,
                                  std::uint32_t orientation) = 0;
  /// Flushes, then makes a system image that the host owns. The bitmap of a YUY2 surface sets the
  /// surface's own `Orientation` to 0; that of a gray one holds zeros.
  /// @param kind 1: a DirectDraw surface (zorsurface/direct_draw.h) of an RGB or YUV420 picture, to
  ///        be released; 2: a device-independent bitmap in global memory, to be freed with
  ///        `GlobalFree`, or with `free` where there is none; others `VED_E_UNSUPPORTED`.
  /// @param image receives it, @param flag receives 1; neither is touched on failure.
  /// @return `E_FAIL` if the system can't make or lock it, as for kind 1 of gray and YUY2 pictures.
  virtual std::int32_t ExportImage(std::uint32_t kind, void** image, std::uint32_t* flag) = 0;
  /// Flushes, then gives the address of the surface's own block, valid until the next operation
  /// that replaces it. @p out stays as it is when there are no pixels.
  virtual std::int32_t GetPixels(std::uint8_t** out) = 0;
  /// Runs the queued operations. @return the result of the last one.
  virtual std::int32_t Flush() = 0;
  /// Makes a surface with this one's description, pixels, aspect ratio, rectangles and a clone of
  /// its mask; colours, opacity, children and queue are not cloned. The copy of the pixels flushes
  /// this surface after the clone's size was taken: flush first for an exact clone.
  /// @param out receives the clone with a reference for the caller.
  /// @return `VED_E_OUTOFMEMORY`, or what the making of a blank surface, the flush or the mask's
  ///         clone gave.
  virtual std::int32_t Clone(IZorSurface** out) = 0;
  /// Sets the key colour of this surface as a child; 0xFF000000 means none.
  virtual std::int32_t SetBackColor(std::uint32_t colour) = 0;
  /// Gives the key colour.
  virtual std::int32_t GetBackColor(std::uint32_t* colour) = 0;
  /// Sets the weight of the target under this child: 0 shows the child fully, 256 not at all, and
  /// more is `VED_E_INVALIDARG`. 0 at the beginning.
  virtual std::int32_t SetOpacity(std::uint32_t opacity) = 0;
  /// Gives that weight.
  virtual std::int32_t GetOpacity(std::uint32_t* opacity) = 0;
  /// Takes a reference of an 8-bit mask; its samples weigh the target. There is no way to unset.
  virtual std::int32_t SetMask(IZorSurface* mask) = 0;
  /// Gives the mask with a new reference; without one stores null and returns `E_FAIL`.
  virtual std::int32_t GetMask(IZorSurface** mask) = 0;
  /// Sets the part of this surface that is drawn when it is a child. Left and top below 0, and
  /// right and bottom beyond the present size, are `VED_E_INVALIDARG`; later resizes don't adapt
  /// it.
  virtual std::int32_t SetSourceRect(std::int32_t left, std::int32_t top, std::int32_t right,
                                     std::int32_t bottom) = 0;
  /// Gives that rectangle; all zeros, which is nothing to draw, at the beginning.
  virtual std::int32_t GetSourceRect(RECT* out) = 0;
  /// Sets where in the target this surface is drawn when it is a child. Left and top below 0 are
  /// `VED_E_INVALIDARG`; right and bottom are free.
  virtual std::int32_t SetDestRect(std::int32_t left, std::int32_t top, std::int32_t right,
                                   std::int32_t bottom) = 0;
  /// Gives that rectangle; all zeros, which `Compose` refuses, at the beginning.
  virtual std::int32_t GetDestRect(RECT* out) = 0;
  /// @return the number of children itself.
  virtual std::int32_t GetChildCount() = 0;
  /// Appends a child and takes a reference. The first child is drawn first, so that the last one is
  /// on top. A surface may be added twice, and to itself.
  /// @throws std::length_error "list<T> too long", beyond 0x3FFFFFFF children.
  virtual std::int32_t AddChild(IZorSurface* child) = 0;
  /// Takes the child at an index out and gives its reference back.
  /// @return `VED_E_INVALIDARG` if there is no such index.
  virtual std::int32_t RemoveChild(std::int32_t index) = 0;
  /// Moves a child's first occurrence to an index; beyond the end means last.
  /// @return `VED_E_INVALIDARG` for a negative index, `E_FAIL` if it isn't a child.
  virtual std::int32_t MoveChild(IZorSurface* child, std::int32_t index) = 0;
  /// @return the index of the child's first occurrence, or -1.
  virtual std::int32_t FindChild(IZorSurface* child) = 0;
  /// @return the child at an index with a new reference for the caller, or null.
  virtual IZorSurface* GetChild(std::int32_t index) = 0;
  /// Flushes, draws the children in their order onto this surface or onto a clone of it (see
  /// `SetComposeInPlace`), and lets go of all of them.
  ///
  /// The surface drawn on becomes YUV420 unless it is YUV420 or YUY2, and each child is converted
  /// to its format, for good. A child's `SourceRect` is drawn into its `DestRect`, by the nearest
  /// sample where the two differ in size: through the mask if it has one, else by its opacity and
  /// without the pixels of its key colour. On YUY2 a child without a mask is skipped, and keeps a
  /// reference too many.
  /// @param out receives the surface drawn on, with a reference for the caller, whatever came of
  ///        the children; this surface itself if there are none. Untouched if the flush or the
  ///        clone failed.
  /// @return the code of a failed flush; `E_FAIL` if there could be no clone; otherwise that of the
  ///         last child that wasn't skipped: `VED_E_INVALIDARG` for an empty `DestRect`,
  ///         `VED_E_COMPOSE` if the surface drawn on couldn't be converted, `VED_E_OUTOFMEMORY`.
  virtual std::int32_t Compose(IZorSurface** out) = 0;
  /// Stores the storage word, whose bits 0 and 2 say that the block of pixels is the surface's own
  /// to free. The builder sets it; a host has no need to. @return 1, not a result code.
  virtual std::int32_t SetStorageFlags(std::uint32_t flags) = 0;
  /// Resizes at once, without flushing; as `QueueResize`, with any positive size, else
  /// `VED_E_INVALIDARG`. A mask follows. The same size without an aspect ratio is a no-op.
  /// @return `VED_E_OUTOFMEMORY`, of formats 1 to 3 `E_FAIL`, when there is no memory.
  virtual std::int32_t ResizeNow(std::int32_t width, std::int32_t height, std::int32_t fit,
                                 std::uint32_t quality) = 0;
  /// Turns the picture at once, without flushing; formats 1 to 4, others `VED_E_UNSUPPORTED`. 90
  /// and 270 exchange width and height; other angles give the size that holds the turned picture,
  /// made even, on black (gray pictures on 0). A mask follows.
  /// @param degrees 0 and 360 do nothing. From 1 to 359 planar pictures and bottom-up packed ones
  ///        turn clockwise as they are seen, top-down packed ones counterclockwise. Negative angles
  ///        leave an empty picture, and larger ones draw nothing that is of use.
  /// @return `VED_E_OUTOFMEMORY`, or `VED_E_INVALIDARG` if the new size would be negative.
  virtual std::int32_t RotateNow(std::int32_t degrees) = 0;
  /// Converts at once, without flushing. RGB surfaces are bottom-up after a conversion.
  /// @param format one of the `FORMAT_` numbers. The surface's own format is a no-op. RGB24, RGB32,
  ///        YUV420 and YUY2 convert into one another; YUV420 to `FORMAT_YVU420` exchanges the
  ///        chroma planes and stays YUV420; all else is `VED_E_UNSUPPORTED`. An RGB32 surface
  ///        without a mask keeps its alpha as its mask; an odd RGB size is trimmed for YUV420.
  /// @return `E_FAIL` without pixels, `VED_E_OUTOFMEMORY`, `VED_E_KERNEL` if the exchange failed.
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
