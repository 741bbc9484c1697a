// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <cstdlib>

#include "ipl/iplalloc.h"

namespace zor {
namespace {

struct StatusStore {
  std::int32_t status = kIplOk;
  std::int32_t errorMode = 0;  // 0: a report ends the process; nothing changes it
  IplErrorHandler handler = iplDefaultErrorHandler;
};

StatusStore store;

constexpr const char* kUnknown = "Unknown error or status code";

// Index is the status negated.
constexpr const char* kTexts[] = {
    "No Error",
    "Backtrace",
    nullptr,
    "Internal error (bad state)",
    "Insufficient memory",
    "Bad argument",
    "Unsupported function",
    "Iteration convergence failed",
    "Autotrace call",
    "Null pointer to an image header",
    "Incorrect image size",
    "Incorrect offset of ROI of the image",
    "Image must be tiled or must have nonzero data pointer",
    "Incorrect widthStep of the image",
    "Incorrect Color model or channel sequence of the image",
    "Incorrect number of channels in the image",
    "Number of channels for 1U depth image must be one",
    "Incorrect depth value in the image header",
    "Incorrect alpha channel number in the image header",
    "Incorrect data order value in the image header",
    "Incorrect data origin value in the image header",
    "Incorrect data alignment value in the image header",
    "Null pointer to callback function",
    "Incorrect size of the tile",
    "Incorrect COI of the image",
    "Incorrect size of ROI in the image header",
    "Mask image is taled",
    "Null pointer",
    "Incorrect vector length",
    "Incorrect filter structure content",
    "Incorrect transform kernel content",
    "Incorrect filter ofset value",
};

// Index is -110 less the status; the statuses whose mask may fail on its own.
constexpr const char* kMaskTexts[] = {
    "Mask. Incorrect image size",
    "Mask. Incorrect offset of ROI of the image",
    "Mask. Image must be tiled or must have nonzero data pointer",
    "Mask. Incorrect widthStep of the image",
    "Mask. Incorrect Color model or channel sequence of the image",
    "Mask. Incorrect number of channels in the image",
    nullptr,
    "Mask. Incorrect depth value in the image header",
    "Mask. Incorrect alpha channel number in the image header",
    "Mask. Incorrect data order value in the image header",
    "Mask. Incorrect data origin value in the image header",
    "Mask. Incorrect data alignment value in the image header",
    nullptr,
    nullptr,
    "Mask. Incorrect COI of the image",
    "Mask. Incorrect size of ROI in the image header",
};

template <std::int32_t N>
const char* TextAt(const char* const (&texts)[N], std::int32_t index) {
  return index >= 0 && index < N && texts[index] != nullptr ? texts[index] : nullptr;
}

}  // namespace

std::int32_t iplGetStatus() noexcept {
  return store.status;
}

void iplSetStatus(std::int32_t status) noexcept {
  store.status = status;
}

std::int32_t iplGetErrorMode() noexcept {
  return store.errorMode;
}

std::int32_t iplReportError(std::int32_t status, const char* functionName, const char* message,
                            const char* fileName, std::int32_t line) {
  if (status != kIplBackTrace && status != kIplAutoTrace) {
    store.status = status;
    if (status == kIplOk) return kIplOk;
  }
  return store.handler(status, functionName, message, fileName, line);
}

std::int32_t iplDefaultErrorHandler(std::int32_t status, const char* /*functionName*/,
                                    const char* /*message*/, const char* /*fileName*/,
                                    std::int32_t /*line*/) {
  if (store.errorMode == 0) std::exit(1);
  return status;
}

void iplRedirectError(IplErrorHandler handler) noexcept {
  store.handler = handler != nullptr ? handler : iplDefaultErrorHandler;
}

const char* iplStatusText(std::int32_t status) noexcept {
  // A status near the smallest number has no negation; it has no text either.
  if (status > 0 || status < -125) return kUnknown;
  const char* text = TextAt(kTexts, -status);
  if (text == nullptr) text = TextAt(kMaskTexts, -110 - status);
  return text != nullptr ? text : kUnknown;
}

}  // namespace zor
