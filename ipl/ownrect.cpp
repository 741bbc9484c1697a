// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "ipl/ownrect.h"

#include <cmath>

namespace zor {
namespace {

/// A span that stops short of a whole column by less than this still takes it in.
constexpr double kHair = 1.03e-14;

struct Box {
  double minX, maxX, minY, maxY;
};

Box BoxOf(const IplVertex* polygon, std::int32_t count) {
  Box box{polygon[0].x, polygon[0].x, polygon[0].y, polygon[0].y};
  for (std::int32_t i = 1; i < count; ++i) {
    if (polygon[i].x < box.minX) box.minX = polygon[i].x;
    if (polygon[i].x > box.maxX) box.maxX = polygon[i].x;
    if (polygon[i].y < box.minY) box.minY = polygon[i].y;
    if (polygon[i].y > box.maxY) box.maxY = polygon[i].y;
  }
  return box;
}

/// One side of the clip: keeps what lies on the inner side of a limit of one coordinate.
struct Side {
  double IplVertex::*clipped;
  double IplVertex::*other;
  double limit;
  bool keepsAbove;

  bool Inside(const IplVertex& v) const {
    return keepsAbove ? v.*clipped >= limit : v.*clipped <= limit;
  }
  IplVertex Crossing(const IplVertex& a, const IplVertex& b) const {
    IplVertex out;
    out.*clipped = limit;
    out.*other =
        (b.*other - a.*other) / (b.*clipped - a.*clipped) * (limit - a.*clipped) + a.*other;
    return out;
  }
  std::int32_t Clip(const IplVertex* in, std::int32_t count, IplVertex* out) const {
    std::int32_t kept = 0;
    for (std::int32_t i = 0; i < count; ++i) {
      const IplVertex& here = in[i];
      const IplVertex& next = in[i + 1 < count ? i + 1 : 0];
      if (Inside(here) && kept < kMaxVertices) out[kept++] = here;
      if (Inside(here) != Inside(next) && kept < kMaxVertices) out[kept++] = Crossing(here, next);
    }
    return kept;
  }
};

/// Merges neighbours of equal coordinates; the last vertex and the first aren't compared.
std::int32_t MergeNeighbours(IplVertex* polygon, std::int32_t count) {
  std::int32_t i = 0;
  while (count >= 2 && i + 1 < count) {
    if (polygon[i].x == polygon[i + 1].x && polygon[i].y == polygon[i + 1].y) {
      for (std::int32_t k = i + 1; k + 1 < count; ++k) polygon[k] = polygon[k + 1];
      --count;
    } else {
      ++i;
    }
  }
  return count;
}

/// Goes down one side of a convex polygon.
class EdgeWalker {
 public:
  EdgeWalker(const IplVertex* polygon, std::int32_t count, std::int32_t top, std::int32_t direction)
      : polygon_(polygon), count_(count), direction_(direction), at_(top) {}

  std::int32_t At() const { return at_; }
  double Y() const { return polygon_[at_].y; }
  double XAt(double y) const { return start_.x + slope_ * (y - start_.y); }

  /// Moves on to the next vertex of another height. @return false on reaching @p other.
  bool MoveOn(std::int32_t other) {
    for (;;) {
      const IplVertex& from = polygon_[at_];
      at_ = (at_ + direction_ + count_) % count_;
      const IplVertex& to = polygon_[at_];
      if (to.y != from.y) {
        start_ = from;
        slope_ = (to.x - from.x) / (to.y - from.y);
        return true;
      }
      if (at_ == other) return false;
    }
  }

 private:
  const IplVertex* polygon_;
  std::int32_t count_;
  std::int32_t direction_;
  std::int32_t at_;
  IplVertex start_{};
  double slope_ = 0;
};

std::int32_t SpanStart(double x) {
  const double up = std::ceil(x);
  return static_cast<std::int32_t>(up) - (1 - (up - x) < kHair ? 1 : 0);
}

std::int32_t SpanEnd(double x) {
  const double down = std::floor(x);
  return static_cast<std::int32_t>(down) + (1 - (x - down) < kHair ? 1 : 0);
}

}  // namespace

bool iplGetRoiRect(const IplImage* image, IplRect* rect, bool clip) noexcept {
  if (image->roi == nullptr) {
    *rect = {0, 0, image->width - 1, image->height - 1};
    return image->width > 0 && image->height > 0;
  }
  const IplROI& roi = *image->roi;
  *rect = {roi.xOffset, roi.yOffset, roi.xOffset + roi.width - 1, roi.yOffset + roi.height - 1};
  if (clip) {
    if (rect->x0 < 0) rect->x0 = 0;
    if (rect->y0 < 0) rect->y0 = 0;
    if (rect->x1 > image->width - 1) rect->x1 = image->width - 1;
    if (rect->y1 > image->height - 1) rect->y1 = image->height - 1;
  }
  return rect->x0 <= rect->x1 && rect->y0 <= rect->y1;
}

bool iplGetRoiSize(const IplImage* image, std::int32_t* height, std::int32_t* width,
                   bool clip) noexcept {
  IplRect rect;
  if (!iplGetRoiRect(image, &rect, clip)) return false;
  *height = rect.y1 - rect.y0 + 1;
  *width = rect.x1 - rect.x0 + 1;
  return true;
}

bool iplGetChannelInfo(const IplImage* image, IplChannels* out) noexcept {
  IplRect rect;
  if (!iplGetRoiRect(image, &rect, true)) return false;
  const std::int32_t coi = image->roi != nullptr ? image->roi->coi : 0;
  const std::int64_t sample = (image->depth & ~kIplDepthSign) / 8;
  const std::int64_t pixel = image->dataOrder == 0 ? sample * image->nChannels : sample;
  out->step = image->widthStep;
  out->plane = image->dataOrder == 0 ? 0 : image->imageSize / image->nChannels;
  out->processed = coi > 0 ? 1 : image->nChannels;
  out->channels = image->nChannels;
  out->index = coi > 0 ? coi - 1 : 0;
  out->first = image->imageData + std::int64_t{rect.y0} * image->widthStep + rect.x0 * pixel;
  return true;
}

void iplClipPolygon(IplVertex* polygon, IplVertex* out, std::int32_t* count, double x0, double y0,
                    double x1, double y1) noexcept {
  const Box box = BoxOf(polygon, *count);
  if (y0 > box.maxY || y1 < box.minY || x0 > box.maxX || x1 < box.minX) {
    *count = 0;
    return;
  }
  const Side sides[] = {{&IplVertex::y, &IplVertex::x, y0, true},
                        {&IplVertex::y, &IplVertex::x, y1, false},
                        {&IplVertex::x, &IplVertex::y, x0, true},
                        {&IplVertex::x, &IplVertex::y, x1, false}};
  const bool cuts[] = {box.minY<y0, box.maxY> y1, box.minX<x0, box.maxX> x1};
  bool any = false;
  for (int i = 0; i < 4; ++i) {
    if (!cuts[i]) continue;
    any = true;
    *count = sides[i].Clip(polygon, *count, out);
    for (std::int32_t k = 0; k < *count; ++k) polygon[k] = out[k];
  }
  if (any) *count = MergeNeighbours(polygon, *count);
}

void iplScanPolygon(const IplVertex* polygon, std::int32_t count, std::int32_t orientation,
                    std::int32_t* spanStarts, std::int32_t* spanEnds) noexcept {
  std::int32_t top = 0;
  for (std::int32_t i = 1; i < count; ++i) {
    if (polygon[i].y < polygon[top].y) top = i;
  }
  if (count == 1) {
    spanStarts[0] = spanEnds[0] = static_cast<std::int32_t>(std::floor(polygon[0].x));
    return;
  }
  // A polygon without a slanted edge at its top row keeps this.
  const bool rising = polygon[0].x < polygon[1].x;
  spanStarts[0] = static_cast<std::int32_t>(std::ceil(polygon[rising ? 0 : 1].x));
  spanEnds[0] = static_cast<std::int32_t>(std::floor(polygon[rising ? 1 : 0].x));

  double y = std::ceil(polygon[top].y);
  const double firstRow = y;
  EdgeWalker back(polygon, count, top, -1);
  EdgeWalker forth(polygon, count, top, 1);
  do {
    const bool backMoves = back.Y() <= forth.Y();
    const bool forthMoves = forth.Y() <= back.Y();
    if (!backMoves && !forthMoves) return;  // not a number
    if (backMoves && !back.MoveOn(forth.At())) return;
    if (forthMoves && !forth.MoveOn(back.At())) return;
    const double limit = std::floor(back.Y() < forth.Y() ? back.Y() : forth.Y());
    for (; y <= limit; y += 1) {
      const double xb = back.XAt(y);
      const double xf = forth.XAt(y);
      const auto row = static_cast<std::int32_t>(y - firstRow);
      spanStarts[row] = SpanStart(orientation != 0 ? xb : xf);
      spanEnds[row] = SpanEnd(orientation != 0 ? xf : xb);
    }
  } while (back.At() != forth.At());
}

std::int32_t iplClipQuadToSpans(const double* quad, std::int32_t x0, std::int32_t y0,
                                std::int32_t x1, std::int32_t y1, std::int32_t orientation,
                                std::int32_t** spanStarts, std::int32_t** spanEnds,
                                std::int32_t* firstRow, std::int32_t* lastRow) noexcept {
  IplVertex polygon[kMaxVertices];
  IplVertex other[kMaxVertices];
  for (int i = 0; i < 4; ++i) polygon[i] = {quad[2 * i], quad[2 * i + 1]};
  std::int32_t count = 4;
  iplClipPolygon(polygon, other, &count, x0, y0, x1, y1);
  if (count < 1) return 0;
  const Box box = BoxOf(polygon, count);
  *firstRow = static_cast<std::int32_t>(std::ceil(box.minY));
  *lastRow = static_cast<std::int32_t>(std::floor(box.maxY));
  const std::int32_t rows = *lastRow - *firstRow + 1;
  if (rows < 1 || std::floor(box.maxX) < std::ceil(box.minX)) return 0;
  *spanStarts = iplAllocAlignedInts(rows);
  *spanEnds = iplAllocAlignedInts(rows);
  if (*spanStarts == nullptr || *spanEnds == nullptr || iplGetStatus() < 0) {
    iplFreeAligned(*spanStarts);
    iplFreeAligned(*spanEnds);
    *spanStarts = *spanEnds = nullptr;
    return 0;
  }
  for (std::int32_t i = 0; i < rows; ++i) {  // rows that no edge serves have no pixels
    (*spanStarts)[i] = 0;
    (*spanEnds)[i] = -1;
  }
  iplScanPolygon(polygon, count, orientation, *spanStarts, *spanEnds);
  return 1;
}

}  // namespace zor
