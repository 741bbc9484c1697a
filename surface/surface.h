// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The surface without its pixels: description, attributes, children and the deferred queue.

#include <zorsurface/surface.h>

#include "object/ved_unknown.h"
#include "platform/osa_layer.h"
#include "surface/bounded_list.h"

namespace zor {

/// @return the description of a surface, which may be a host's.
inline SurfaceDescription DescriptionOf(IZorSurface* surface) {
  SurfaceDescription description{};
  description.size = sizeof description;
  surface->GetDescription(&description);
  return description;
}

/// One deferred operation.
struct SurfaceOperation {
  std::int32_t type;  ///< `kResize` or `kConvert`; others run as nothing
  std::int32_t width;
  std::int32_t height;
  std::int32_t fit;
  std::uint32_t quality;
  std::int32_t format;

  static constexpr std::int32_t kResize = 1;
  static constexpr std::int32_t kConvert = 2;
};

/// The smallest width and height that the builder makes and the queue resizes to.
inline constexpr std::int32_t kMinSurfaceSize = 4;

/// The word `StorageKind` of every finished surface: its pixels lie in a block of its own.
inline constexpr std::uint32_t kStorageInBlock = 4;

/// The bits of the storage word of which any makes the block the surface's to free.
inline constexpr std::uint32_t kStorageOwned = 5;

/// The host's memory as the target of a flush's last operation.
struct DirectOutput {
  std::uint32_t active = 0;
  std::uint8_t* memory = nullptr;
  std::int32_t stride = -1;
  std::uint32_t orientation = 0;
};

/// The slots of a surface but those of its pixels, which `CZorSurfaceBuffer` adds.
class CZorSurface : public IZorSurface, public VideoEdit::CVedUnknown {
 public:
  explicit CZorSurface(const SurfaceDescription& description) noexcept;

  // Root slots: small forwarders into CVedUnknown, and the class's own identifiers.
  std::uint32_t AddRef() override { return CVedUnknown::AddRef(); }
  std::uint32_t Release() override { return CVedUnknown::Release(); }
  std::int32_t QueryInterface(const GUID* id, void** out) override;

  // Description, attributes, rectangles, mask and children: surface.cpp, children.cpp.
  std::int32_t GetDescription(SurfaceDescription* out) override;
  std::int32_t GetAspectRatio(std::int32_t* width, std::int32_t* height) override;
  std::int32_t SetAspectRatio(std::int32_t width, std::int32_t height) override;
  std::int32_t SetComposeInPlace(std::uint32_t flag) override;
  std::int32_t GetComposeInPlace(std::uint32_t* flag) override;
  std::int32_t SetBackColor(std::uint32_t colour) override;
  std::int32_t GetBackColor(std::uint32_t* colour) override;
  std::int32_t SetOpacity(std::uint32_t opacity) override;
  std::int32_t GetOpacity(std::uint32_t* opacity) override;
  std::int32_t SetMask(IZorSurface* mask) override;
  std::int32_t GetMask(IZorSurface** mask) override;
  std::int32_t SetSourceRect(std::int32_t left, std::int32_t top, std::int32_t right,
                             std::int32_t bottom) override;
  std::int32_t GetSourceRect(RECT* out) override;
  std::int32_t SetDestRect(std::int32_t left, std::int32_t top, std::int32_t right,
                           std::int32_t bottom) override;
  std::int32_t GetDestRect(RECT* out) override;
  std::int32_t GetChildCount() override;
  std::int32_t AddChild(IZorSurface* child) override;
  std::int32_t RemoveChild(std::int32_t index) override;
  std::int32_t MoveChild(IZorSurface* child, std::int32_t index) override;
  std::int32_t FindChild(IZorSurface* child) override;
  IZorSurface* GetChild(std::int32_t index) override;
  std::int32_t SetStorageFlags(std::uint32_t flags) override;
  std::int32_t ComputeFitRect(std::int32_t width, std::int32_t height, RECT* out) override;
  std::int32_t Clone(IZorSurface** out) override;  // clone.cpp

  // The deferred queue: operation_queue.cpp.
  std::int32_t QueueResize(std::int32_t width, std::int32_t height, std::int32_t fit,
                           std::int32_t quality) override;
  std::int32_t QueueConvert(std::int32_t format) override;
  std::int32_t Flush() override;
  std::int32_t Rotate(std::int32_t degrees) override;
  std::int32_t WarpRegion(std::int32_t handle, std::uint32_t value, double a, double b, double c,
                          double d, std::int32_t value2) override;
  std::int32_t StretchToMemory(RECT* source, RECT* target, std::uint8_t* memory, std::int32_t width,
                               std::int32_t height, std::int32_t stride,
                               std::uint32_t quality) override;
  std::int32_t StretchFromSurface(RECT* target, IZorSurface* source, RECT* sourceRect,
                                  std::uint32_t quality) override;
  std::int32_t Fill(RECT* rectangle, std::uint32_t colour) override;

 protected:
  ~CZorSurface();

  /// Performs and erases all queued records; the last one into `direct_` if @p directOutput isn't
  /// 0. @return the result of the last record performed.
  std::int32_t FlushQueue(std::int32_t directOutput);
  /// Performs and erases the first @p count records; the caller holds `queueLock_`.
  std::int32_t RunQueuedOperations(std::int32_t count);
  /// Performs and erases the first record of a queue that isn't empty. @return as `RunOperation`.
  std::int32_t RunFirst(std::int32_t previous);
  /// Performs one record by the surface's present format. @return its result, or @p previous for
  /// a record of unknown type.
  std::int32_t RunOperation(const SurfaceOperation& operation, std::int32_t previous);

  /// Flushes this surface and copies its pixels, at most @p blockBytes, to a clone's block.
  std::int32_t ClonePixels(IZorSurface* clone, std::int32_t blockBytes);
  /// Gives the clone a clone of the mask. @return the result of the mask's `Clone`.
  std::int32_t CloneMask(IZorSurface* clone);

  SurfaceDescription description_;
  std::uint32_t storageFlags_ = 0;
  std::int32_t aspectWidth_ = 0;
  std::int32_t aspectHeight_ = 0;
  std::uint32_t backColour_ = 0xFF000000u;
  std::uint32_t opacity_ = 0;
  RECT destRect_{};
  RECT sourceRect_{};
  IZorSurface* mask_ = nullptr;  ///< one reference
  BoundedList<IZorSurface*, 0x3FFFFFFF> childList_;
  BoundedList<SurfaceOperation, 0x0AAAAAAA> operationQueue_;
  DirectOutput direct_;
  OsaCriticalSection queueLock_;
  bool inClone_ = false;  ///< the mask is being cloned
};

}  // namespace zor
