// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The image header of the transform library, its making, checking and release, and the library's
/// status store.

#include <cstddef>
#include <cstdint>

namespace zor {

/// A region of interest.
struct IplROI {
  std::int32_t coi;  ///< channel of interest, 1 to the number of channels; 0 for all
  std::int32_t xOffset;
  std::int32_t yOffset;
  std::int32_t width;
  std::int32_t height;
};

/// What the checks read of a tiled image.
struct IplTileInfo {
  void* callBack;
  void* id;
  void* tileData;
  std::int32_t width;
  std::int32_t height;
};

/// One picture. Pixels are borrowed: whoever sets `imageData` clears it before the release.
struct IplImage {
  std::int32_t nSize;         ///< 112 on every target
  std::int32_t ID;            ///< 0
  std::int32_t nChannels;     ///< channels per pixel, at least 1
  std::int32_t alphaChannel;  ///< 0 or `nChannels`
  std::uint32_t depth;        ///< bits per sample, with `kIplDepthSign` for signed samples
  char colorModel[4];
  char channelSeq[4];
  std::int32_t dataOrder;  ///< 0 channels interleaved, 1 in planes
  std::int32_t origin;     ///< 0 or 1
  std::int32_t align;      ///< row alignment in bytes: 4, 8, 16 or 32
  std::int32_t width;
  std::int32_t height;
  IplROI* roi;        ///< null: the whole image
  IplImage* maskROI;  ///< null, or a one-bit image
  void* imageId;      ///< carried along
  IplTileInfo* tileInfo;
  std::int32_t imageSize;  ///< bytes of image data
  std::uint8_t* imageData;
  std::int32_t widthStep;  ///< bytes from row to row
  std::int32_t BorderMode[4];
  std::int32_t BorderConst[4];
  std::uint8_t* imageDataOrigin;  ///< the block to free; may equal `imageData`
};

inline constexpr std::uint32_t kIplDepthSign = 0x80000000u;

/// Statuses. A negative one is an error.
inline constexpr std::int32_t kIplOk = 0;
inline constexpr std::int32_t kIplBackTrace = -1;
inline constexpr std::int32_t kIplBadArg = -5;
inline constexpr std::int32_t kIplAutoTrace = -8;
inline constexpr std::int32_t kIplHeaderIsNull = -9;
inline constexpr std::int32_t kIplBadImageSize = -10;
inline constexpr std::int32_t kIplBadOffset = -11;
inline constexpr std::int32_t kIplBadDataPtr = -12;
inline constexpr std::int32_t kIplBadStep = -13;
inline constexpr std::int32_t kIplBadModelOrChSeq = -14;
inline constexpr std::int32_t kIplBadNumChannels = -15;
inline constexpr std::int32_t kIplBadNumChannel1U = -16;
inline constexpr std::int32_t kIplBadDepth = -17;
inline constexpr std::int32_t kIplBadAlphaChannel = -18;
inline constexpr std::int32_t kIplBadOrder = -19;
inline constexpr std::int32_t kIplBadOrigin = -20;
inline constexpr std::int32_t kIplBadAlign = -21;
inline constexpr std::int32_t kIplBadCallBack = -22;
inline constexpr std::int32_t kIplBadTileSize = -23;
inline constexpr std::int32_t kIplBadCOI = -24;
inline constexpr std::int32_t kIplBadROISize = -25;
inline constexpr std::int32_t kIplMaskIsTiled = -26;
inline constexpr std::int32_t kIplMaskOffset = -100;  ///< added to the status of a bad mask
inline constexpr std::int32_t kIplMaskBadDepth = -117;

/// Makes a header without pixels, every border 0.
/// @return the header, or null after a report if an argument is out of its range, or null without
///         a report if there is no memory.
IplImage* iplCreateImageHeader(std::int32_t nChannels, std::int32_t alphaChannel,
                               std::uint32_t depth, const char* colorModel, const char* channelSeq,
                               std::int32_t dataOrder, std::int32_t origin, std::int32_t align,
                               std::int32_t width, std::int32_t height, IplROI* roi,
                               IplImage* maskROI, void* imageId, IplTileInfo* tileInfo) noexcept;

/// Makes a header of a packed picture of 1, 8, 24 or 32 bits per pixel; null for other depths.
IplImage* CreateImageHeader(std::int32_t width, std::int32_t height,
                            std::int32_t bitsPerPixel) noexcept;

/// @return 0, or the negative status of the first test that fails, which is stored. Nothing is
///         reported.
std::int32_t iplCheckHeader(const IplImage* image) noexcept;

/// The parts of an image that `iplReleaseParts` frees.
inline constexpr std::int32_t kIplReleaseHeader = 1;
inline constexpr std::int32_t kIplReleaseData = 2;  ///< `imageDataOrigin`, from `std::malloc`
inline constexpr std::int32_t kIplReleaseRoi = 4;
inline constexpr std::int32_t kIplReleaseTile = 8;
inline constexpr std::int32_t kIplReleaseMask = 16;
void iplReleaseParts(IplImage* image, std::int32_t flags) noexcept;
void iplReleaseHeader(IplImage* image) noexcept;

/// @return a block aligned to 32 bytes, or null without memory or for fewer than 1 byte.
void* iplAllocAligned(std::int32_t bytes) noexcept;
std::int32_t* iplAllocAlignedInts(std::int32_t count) noexcept;
void iplFreeAligned(void* block) noexcept;

/// Sets mode and value of the sides in a mask of four bits; the value is held to the depth's range.
void iplSetBorders(IplImage* image, std::int32_t mode, std::int32_t sides,
                   std::int32_t value) noexcept;

/// Handles a report. @return what the report returns.
using IplErrorHandler = std::int32_t (*)(std::int32_t status, const char* functionName,
                                         const char* message, const char* fileName,
                                         std::int32_t line);

/// The status store: one for the whole process, without a lock.
std::int32_t iplGetStatus() noexcept;
void iplSetStatus(std::int32_t status) noexcept;
std::int32_t iplGetErrorMode() noexcept;

/// Stores a status other than a backtrace or an autotrace, and calls the handler unless it is 0.
std::int32_t iplReportError(std::int32_t status, const char* functionName, const char* message,
                            const char* fileName, std::int32_t line);

/// Ends the process while the error mode is 0, as it always is; so callers rule out beforehand what
/// would be reported.
std::int32_t iplDefaultErrorHandler(std::int32_t status, const char* functionName,
                                    const char* message, const char* fileName, std::int32_t line);

/// Test hook: puts another handler in the place of the default one (null: the default again).
void iplRedirectError(IplErrorHandler handler) noexcept;

/// @return the text of a status.
const char* iplStatusText(std::int32_t status) noexcept;

}  // namespace zor
