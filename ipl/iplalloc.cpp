// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "ipl/iplalloc.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "platform/memory.h"

namespace zor {
namespace {

constexpr std::int32_t kHeaderSize = 112;
static_assert(sizeof(void*) != 4 || sizeof(IplImage) == kHeaderSize, "28 words of 32 bits");
constexpr std::size_t kAlignment = 32;
constexpr std::size_t kSlack = kAlignment - 1 + sizeof(void*);

/// What the making and the checking of a header test alike.
struct HeaderFields {
  std::int32_t nChannels;
  std::int32_t alphaChannel;
  std::uint32_t depth;
  const void* colorModel;
  const void* channelSeq;
  std::int32_t dataOrder;
  std::int32_t origin;
  std::int32_t align;
  std::int32_t width;
  std::int32_t height;
  const IplImage* maskROI;
};

bool IsDepth(std::uint32_t depth) {
  const std::uint32_t bits = depth & ~kIplDepthSign;
  return bits == 8 || bits == 16 || bits == 32 || depth == 1;
}

/// @return the status of the first test that fails.
std::int32_t CheckFields(const HeaderFields& f) {
  if (f.height < 1 || f.width < 1) return kIplBadImageSize;
  if (f.nChannels < 1) return kIplBadNumChannels;
  if (f.depth == 1 && f.nChannels != 1) return kIplBadNumChannel1U;
  if (f.colorModel == nullptr || f.channelSeq == nullptr) return kIplBadModelOrChSeq;
  if (!IsDepth(f.depth)) return kIplBadDepth;
  if (f.alphaChannel != 0 && f.alphaChannel != f.nChannels) return kIplBadAlphaChannel;
  if (f.dataOrder != 0 && f.dataOrder != 1) return kIplBadOrder;
  if (f.origin != 0 && f.origin != 1) return kIplBadOrigin;
  if (f.align != 4 && f.align != 8 && f.align != 16 && f.align != 32) return kIplBadAlign;
  if (f.maskROI != nullptr) {
    if (f.maskROI->depth != 1) return kIplMaskBadDepth;
    if (f.maskROI->tileInfo != nullptr) return kIplMaskIsTiled;
    const std::int32_t status = iplCheckHeader(f.maskROI);
    if (status < 0) return status + kIplMaskOffset;
  }
  return kIplOk;
}

std::int32_t CheckTile(const IplTileInfo& tile) {
  if (tile.callBack == nullptr) return kIplBadCallBack;
  if (tile.width < 1) return kIplBadTileSize;
  if (tile.height < 1 || tile.width % 8 != 0 || tile.height % 8 != 0) return kIplBadTileSize;
  return kIplOk;
}

std::int32_t CheckRoi(const IplROI& roi, std::int32_t nChannels) {
  if (roi.coi < 0 || roi.coi > nChannels) return kIplBadCOI;
  if (roi.height < 1 || roi.width < 1) return kIplBadROISize;
  if (roi.xOffset < 0 || roi.yOffset < 0) return kIplBadOffset;
  return kIplOk;
}

std::int32_t CheckImage(const IplImage& image) {
  if ((image.imageData != nullptr) == (image.tileInfo != nullptr)) return kIplBadDataPtr;
  if (image.tileInfo == nullptr) {
    if (image.imageSize < 1) return kIplBadImageSize;
    if (image.widthStep < 1) return kIplBadStep;
  }
  std::int32_t status = CheckFields(
      {image.nChannels, image.alphaChannel, image.depth, &image.colorModel, &image.channelSeq,
       image.dataOrder, image.origin, image.align, image.width, image.height, image.maskROI});
  if (status == kIplOk && image.tileInfo != nullptr) status = CheckTile(*image.tileInfo);
  if (status == kIplOk && image.roi != nullptr) status = CheckRoi(*image.roi, image.nChannels);
  return status;
}

/// The first four bytes of a text, its terminator among them; nothing behind it is read.
void CopyFour(char (&out)[4], const char* text) {
  for (int i = 0; i < 4; ++i) {
    out[i] = text[i];
    if (text[i] == 0) break;
  }
}

}  // namespace

void* iplAllocAligned(std::int32_t bytes) noexcept {
  if (bytes < 1) return nullptr;
  void* base = AllocateBytes(static_cast<std::size_t>(bytes) + 1 + kSlack);
  if (base == nullptr) return nullptr;
  const auto address = (reinterpret_cast<std::uintptr_t>(base) + kSlack) & ~(kAlignment - 1);
  auto* block = reinterpret_cast<unsigned char*>(address);
  std::memcpy(block - sizeof base, &base, sizeof base);
  return block;
}

std::int32_t* iplAllocAlignedInts(std::int32_t count) noexcept {
  const std::int64_t bytes = std::int64_t{count} * 4;
  if (bytes > INT32_MAX) return nullptr;
  return static_cast<std::int32_t*>(iplAllocAligned(static_cast<std::int32_t>(bytes)));
}

void iplFreeAligned(void* block) noexcept {
  if (block == nullptr) return;
  void* base = nullptr;
  std::memcpy(&base, static_cast<unsigned char*>(block) - sizeof base, sizeof base);
  FreeBytes(base);
}

IplImage* iplCreateImageHeader(std::int32_t nChannels, std::int32_t alphaChannel,
                               std::uint32_t depth, const char* colorModel, const char* channelSeq,
                               std::int32_t dataOrder, std::int32_t origin, std::int32_t align,
                               std::int32_t width, std::int32_t height, IplROI* roi,
                               IplImage* maskROI, void* imageId, IplTileInfo* tileInfo) noexcept {
  const std::int32_t status = CheckFields({nChannels, alphaChannel, depth, colorModel, channelSeq,
                                           dataOrder, origin, align, width, height, maskROI});
  if (status < 0) {
    iplReportError(status, "iplCreateImageHeader", "Incorrect data-ins", "iplalloc", 158);
    return nullptr;
  }
  auto* image = static_cast<IplImage*>(
      iplAllocAligned(std::max(kHeaderSize, static_cast<std::int32_t>(sizeof(IplImage)))));
  if (image == nullptr) return nullptr;
  *image = {};
  image->nSize = kHeaderSize;
  image->nChannels = nChannels;
  image->alphaChannel = alphaChannel;
  image->depth = depth;
  CopyFour(image->colorModel, colorModel);
  CopyFour(image->channelSeq, channelSeq);
  image->dataOrder = dataOrder;
  image->origin = origin;
  image->align = align;
  image->width = width;
  image->height = height;
  image->roi = roi;
  image->maskROI = maskROI;
  image->imageId = imageId;
  image->tileInfo = tileInfo;
  // Rows of whole bytes, rounded up to the alignment; words of 32 bits as they come out.
  const std::int64_t bits = std::int64_t{width} * (depth & ~kIplDepthSign);
  const std::int64_t a = std::int64_t{align} * 8;
  const std::int64_t row = dataOrder == 0 ? bits * nChannels : bits;
  const std::int64_t step = ((row + a - 1) & -a) >> 3;
  const std::int64_t planes = dataOrder == 0 ? 1 : nChannels;
  image->widthStep = static_cast<std::int32_t>(static_cast<std::uint32_t>(step));
  image->imageSize = static_cast<std::int32_t>(static_cast<std::uint32_t>(step) *
                                               static_cast<std::uint32_t>(height) *
                                               static_cast<std::uint32_t>(planes));
  iplSetBorders(image, 0, 15, 0);
  return image;
}

IplImage* CreateImageHeader(std::int32_t width, std::int32_t height,
                            std::int32_t bitsPerPixel) noexcept {
  struct Layout {
    std::int32_t bits, channels;
    std::uint32_t depth;
    const char* model;
    const char* sequence;
  };
  static constexpr Layout kLayouts[] = {{1, 1, 1, "GRAY", "GRAY"},
                                        {8, 1, 8, "GRAY", "GRAY"},
                                        {24, 3, 8, "RGB", "BGR"},
                                        {32, 4, 8, "RGBA", "BGRA"}};
  for (const Layout& layout : kLayouts) {
    if (layout.bits != bitsPerPixel) continue;
    return iplCreateImageHeader(layout.channels, 0, layout.depth, layout.model, layout.sequence, 0,
                                0, 4, width, height, nullptr, nullptr, nullptr, nullptr);
  }
  return nullptr;
}

std::int32_t iplCheckHeader(const IplImage* image) noexcept {
  const std::int32_t status = image == nullptr ? kIplHeaderIsNull : CheckImage(*image);
  if (status < 0) iplSetStatus(status);
  return status;
}

void iplReleaseParts(IplImage* image, std::int32_t flags) noexcept {
  if (image == nullptr) return;
  if ((flags & kIplReleaseRoi) != 0) {
    iplFreeAligned(image->roi);
    image->roi = nullptr;
  }
  if ((flags & kIplReleaseMask) != 0) {
    iplReleaseParts(image->maskROI, 15);
    image->maskROI = nullptr;
  }
  if ((flags & kIplReleaseTile) != 0) {
    iplFreeAligned(image->tileInfo);
    image->tileInfo = nullptr;
  }
  if ((flags & kIplReleaseData) != 0) {
    std::free(image->imageDataOrigin);
    image->imageDataOrigin = nullptr;
    image->imageData = nullptr;
  }
  if ((flags & kIplReleaseHeader) != 0) iplFreeAligned(image);
}

void iplReleaseHeader(IplImage* image) noexcept {
  iplReleaseParts(image, kIplReleaseHeader);
}

void iplSetBorders(IplImage* image, std::int32_t mode, std::int32_t sides,
                   std::int32_t value) noexcept {
  std::int32_t low = INT32_MIN;
  std::int32_t high = INT32_MAX;
  switch (image->depth) {
    case 1:
      low = 0, high = 1;
      break;
    case 8:
      low = 0, high = 255;
      break;
    case 8 | kIplDepthSign:
      low = -128, high = 127;
      break;
    case 16:
      low = 0, high = 65535;
      break;
    case 16 | kIplDepthSign:
      low = -32768, high = 32767;
      break;
    default:
      break;
  }
  const std::int32_t held = value < low ? low : value > high ? high : value;
  for (int side = 0; side < 4; ++side) {
    if ((sides >> side & 1) == 0) continue;
    image->BorderMode[side] = mode;
    image->BorderConst[side] = held;
  }
}

}  // namespace zor
