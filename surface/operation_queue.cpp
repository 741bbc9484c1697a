// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <zorsurface/result_codes.h>

#include "surface/surface.h"

namespace zor {

std::int32_t CZorSurface::QueueResize(std::int32_t width, std::int32_t height, std::int32_t fit,
                                      std::int32_t quality) {
  const OsaGuard guard(&queueLock_);
  if (width < kMinSurfaceSize || height < kMinSurfaceSize) return VED_E_INVALIDARG;
  const SurfaceOperation resize = {SurfaceOperation::kResize,           width, height, fit,
                                   static_cast<std::uint32_t>(quality), 0};
  return operationQueue_.Append(resize) ? VED_OK : VED_E_OUTOFMEMORY;
}

std::int32_t CZorSurface::QueueConvert(std::int32_t format) {
  const OsaGuard guard(&queueLock_);
  const SurfaceOperation convert = {SurfaceOperation::kConvert, 0, 0, 0, 0, format};
  return operationQueue_.Append(convert) ? VED_OK : VED_E_OUTOFMEMORY;
}

std::int32_t CZorSurface::RunOperation(const SurfaceOperation& operation, std::int32_t previous) {
  const auto resize = [&] {
    return ResizeNow(operation.width, operation.height, operation.fit, operation.quality);
  };
  switch (operation.type) {
    case SurfaceOperation::kResize: {
      if (description_.format != FORMAT_YUY2) return resize();
      // A packed picture is scaled in its planar form. A failure leaves it in the form reached.
      std::int32_t result = ConvertNow(FORMAT_YUV420);
      if (result >= 0) result = resize();
      if (result >= 0) result = ConvertNow(FORMAT_YUY2);
      return result;
    }
    case SurfaceOperation::kConvert:
      return ConvertNow(operation.format);
    default:
      return previous;
  }
}

std::int32_t CZorSurface::RunFirst(std::int32_t previous) {
  // Out of the queue before it runs: a surface that is its own mask may flush from in here.
  const SurfaceOperation operation = operationQueue_.front();
  operationQueue_.pop_front();
  return RunOperation(operation, previous);
}

std::int32_t CZorSurface::RunQueuedOperations(std::int32_t count) {
  std::int32_t result = VED_OK;
  for (; count > 0 && !operationQueue_.empty(); --count) result = RunFirst(result);
  return result;
}

std::int32_t CZorSurface::FlushQueue(std::int32_t directOutput) {
  const OsaGuard guard(&queueLock_);
  // A read-out that failed may have left it set; that memory was lent for that call only.
  direct_.active = 0;
  const auto count = static_cast<std::int32_t>(operationQueue_.size());
  if (count == 0) return VED_OK;
  if (directOutput == 0) return RunQueuedOperations(count);

  std::int32_t result = VED_OK;
  if (count >= 2) {
    result = RunQueuedOperations(count - 1);
    // After a failure the last record stays queued. A surface that is its own mask may have run it.
    if (result < 0 || operationQueue_.empty()) return result;
  }
  direct_.active = 1;
  return RunFirst(result);
}

std::int32_t CZorSurface::Flush() {
  return FlushQueue(0);
}

std::int32_t CZorSurface::Rotate(std::int32_t degrees) {
  const std::int32_t result = FlushQueue(0);
  return result < 0 ? result : RotateNow(degrees);
}

std::int32_t CZorSurface::WarpRegion(std::int32_t handle, std::uint32_t value, double a, double b,
                                     double c, double d, std::int32_t value2) {
  const std::int32_t result = FlushQueue(0);
  return result < 0 ? result : WarpRegionNow(handle, value, a, b, c, d, value2);
}

std::int32_t CZorSurface::StretchToMemory(RECT* source, RECT* target, std::uint8_t* memory,
                                          std::int32_t width, std::int32_t height,
                                          std::int32_t stride, std::uint32_t quality) {
  const std::int32_t result = FlushQueue(0);
  return result < 0 ? result
                    : StretchToMemoryNow(source, target, memory, width, height, stride, quality);
}

std::int32_t CZorSurface::StretchFromSurface(RECT* target, IZorSurface* source, RECT* sourceRect,
                                             std::uint32_t quality) {
  const std::int32_t result = FlushQueue(0);
  return result < 0 ? result : StretchFromSurfaceNow(target, source, sourceRect, quality);
}

std::int32_t CZorSurface::Fill(RECT* rectangle, std::uint32_t colour) {
  const std::int32_t result = FlushQueue(0);
  return result < 0 ? result : FillNow(rectangle, colour);
}

}  // namespace zor
