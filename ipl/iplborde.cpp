// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "ipl/iplborde.h"

#include <cmath>
#include <cstring>

#include "ipl/ownrect.h"

namespace zor {
namespace {

/// Samples of one depth; bytes and 16-bit words are rounded, floats aren't.
template <class Sample>
void BlendSamples(std::uint8_t* a, const std::uint8_t* b, std::int32_t first, std::int32_t last,
                  double weightA, double weightB) {
  for (std::int32_t i = first; i <= last; ++i) {
    Sample sampleA;
    Sample sampleB;
    std::memcpy(&sampleA, a + i * static_cast<std::int32_t>(sizeof(Sample)), sizeof(Sample));
    std::memcpy(&sampleB, b + i * static_cast<std::int32_t>(sizeof(Sample)), sizeof(Sample));
    const double value = sampleA * weightA + sampleB * weightB;
    if constexpr (static_cast<Sample>(0.5) == 0) {
      sampleA = static_cast<Sample>(static_cast<std::int64_t>(std::rint(value)));
    } else {
      sampleA = static_cast<Sample>(value);
    }
    std::memcpy(a + i * static_cast<std::int32_t>(sizeof(Sample)), &sampleA, sizeof(Sample));
  }
}

/// One slanted edge, walked over the whole positions of its longer axis.
struct SlantedEdge {
  bool flat;          ///< the longer axis is x
  bool innerIsAbove;  ///< the picture lies on the side of the larger coordinates of the other axis
  double start;       ///< of the first vertex, along the longer axis
  double base;        ///< and across it
  double end;         ///< of the second vertex, along the longer axis
  double slope;

  SlantedEdge(const IplVertex& from, const IplVertex& to, bool clockwise) {
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    flat = std::fabs(dx) >= std::fabs(dy);
    slope = flat ? dy / dx : dx / dy;
    start = flat ? from.x : from.y;
    base = flat ? from.y : from.x;
    end = flat ? to.x : to.y;
    const bool forward = clockwise == (flat ? dx > 0 : dy > 0);
    innerIsAbove = flat ? forward : !forward;
  }
};

/// Blends every pixel just outside of an edge with the one inside that the edge passes next.
void BlendEdge(IplImage* image, const SlantedEdge& edge, std::int32_t first, std::int32_t last) {
  const double low = edge.start < edge.end ? edge.start : edge.end;
  const double high = edge.start < edge.end ? edge.end : edge.start;
  for (double at = std::ceil(low); at <= std::floor(high); at += 1) {
    const double crossing = edge.slope * (at - edge.start) + edge.base;
    const double down = std::floor(crossing);
    const double up = std::ceil(crossing);
    if (down == up) continue;
    const double inner = edge.innerIsAbove ? up : down;
    const double outer = edge.innerIsAbove ? down : up;
    const auto a = static_cast<std::int32_t>(at);
    const auto o = static_cast<std::int32_t>(outer);
    const auto n = static_cast<std::int32_t>(inner);
    const double weightOuter = std::fabs(crossing - outer);
    const double weightInner = std::fabs(crossing - inner);
    if (edge.flat) {
      iplBlendEdgePixel(image, a, o, a, n, first, last, weightOuter, weightInner);
    } else {
      iplBlendEdgePixel(image, o, a, n, a, first, last, weightOuter, weightInner);
    }
  }
}

bool Holds(const IplImage& image, std::int32_t x, std::int32_t y) {
  return x >= 0 && x < image.width && y >= 0 && y < image.height;
}

}  // namespace

void iplBlendEdgePixel(IplImage* image, std::int32_t xa, std::int32_t ya, std::int32_t xb,
                       std::int32_t yb, std::int32_t firstChannel, std::int32_t lastChannel,
                       double weightA, double weightB) noexcept {
  if (!Holds(*image, xa, ya) || !Holds(*image, xb, yb)) return;
  const std::uint32_t bits = image->depth & ~kIplDepthSign;
  const std::int64_t pixel = std::int64_t{image->nChannels} * (bits / 8);
  std::uint8_t* a = image->imageData + std::int64_t{ya} * image->widthStep + xa * pixel;
  const std::uint8_t* b = image->imageData + std::int64_t{yb} * image->widthStep + xb * pixel;
  if (bits == 8) {
    BlendSamples<std::uint8_t>(a, b, firstChannel, lastChannel, weightA, weightB);
  } else if (bits == 16) {
    BlendSamples<std::uint16_t>(a, b, firstChannel, lastChannel, weightA, weightB);
  } else {
    BlendSamples<float>(a, b, firstChannel, lastChannel, weightA, weightB);
  }
}

void iplSmoothEdges(IplImage* image, const double* quad, std::int32_t x0, std::int32_t y0,
                    std::int32_t x1, std::int32_t y1, std::int32_t orientation) noexcept {
  if (image->depth == 1) return;
  IplVertex polygon[kMaxVertices];
  IplVertex other[kMaxVertices];
  for (int i = 0; i < 4; ++i) polygon[i] = {quad[2 * i], quad[2 * i + 1]};
  std::int32_t count = 4;
  iplClipPolygon(polygon, other, &count, x0, y0, x1, y1);
  if (count < 3) return;
  const std::int32_t coi = image->roi != nullptr ? image->roi->coi : 0;
  const std::int32_t first = coi > 0 ? coi - 1 : 0;
  const std::int32_t last =
      coi > 0 ? coi - 1 : image->nChannels - 1 - (image->alphaChannel != 0 ? 1 : 0);

  for (std::int32_t i = 0; i < count; ++i) {
    const IplVertex& from = polygon[i];
    const IplVertex& to = polygon[i + 1 < count ? i + 1 : 0];
    if (from.x == to.x || from.y == to.y) continue;
    BlendEdge(image, SlantedEdge(from, to, orientation != 0), first, last);
  }
}

}  // namespace zor
