// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "ipl/iplwarp.h"

#include <cmath>
#include <initializer_list>

#include "ipl/iplborde.h"
#include "ipl/ownrect.h"
#include "ipl/warp_rows.h"

namespace zor {
namespace {

constexpr const char* kFile = "iplwarp";
constexpr double kDegree = 0.017453292519943295;
constexpr double kFarAway = 1e12;  // a shift that takes any picture off any other

void Report(std::int32_t status, const char* function, const char* message) {
  iplReportError(status, function, message, kFile, 0);
}

bool Failed() {
  return iplGetStatus() < 0;
}

double NormaliseAngle(double angle) {
  const double a = angle - std::rint(angle * (1.0 / 360.0)) * 360;
  return a < 0 ? a + 360 : a;
}

bool IsRightAngle(double a) {
  return a == 90 || a == 180 || a == 270;
}

/// What the warp and the move of pixels refuse alike. The tests of a pair don't stop one another.
void CheckPair(const IplImage* src, const IplImage* dst, const char* function) {
  for (const IplImage* image : {src, dst}) {
    const std::int32_t status = iplCheckHeader(image);
    if (status < 0) Report(status, function, "Incorrect Image");
  }
  if (src == nullptr || dst == nullptr) return;
  if (src->depth != dst->depth) {
    Report(kIplBadArg, function, "srcImage->depth != dstImage->depth");
  }
  if (src->origin != dst->origin) {
    Report(kIplBadArg, function, "srcImage->origin != dstImage->origin");
  }
  const bool oneChannel = src->nChannels == 1 && dst->nChannels == 1;
  if (src->depth != 1 && !oneChannel && src->dataOrder != dst->dataOrder) {
    Report(kIplBadArg, function, "srcImage->dataOrder != dstImage->dataOrder");
  }
  if ((src->depth & kIplDepthSign) != 0) {
    Report(kIplBadArg, function, "srcImage->depth & IPL_DEPTH_SIGN");
  }
  if (src == dst) Report(kIplBadArg, function, "This function is not in-place function");
}

/// Channel data of both pictures. @return false if a region is empty or, after a report, if the
/// channels to process differ in number.
bool ChannelsOfBoth(const IplImage* src, const IplImage* dst, const char* function,
                    IplChannels* from, IplChannels* to) {
  if (!iplGetChannelInfo(src, from) || !iplGetChannelInfo(dst, to)) return false;
  if (from->processed == to->processed) return true;
  Report(kIplBadArg, function,
         "Number of processed channels of srcImage != Number of processed channels of dstImage");
  return false;
}

/// Where a right angle takes a picture: the columns and rows of its image, inclusive, and the
/// source position (xx x + xy y + xc, yx x + yy y + yc) of a destination pixel (x, y).
struct RightTurn {
  std::int64_t left, right, top, bottom;
  std::int64_t xx, xy, xc;
  std::int64_t yx, yy, yc;
};

/// @param degrees 90, 180 or 270. @param s the source's rectangle. @param xs, ys the shifts.
RightTurn TurnRight(std::int32_t degrees, const IplRect& s, std::int64_t xs, std::int64_t ys) {
  switch (degrees) {
    case 90:
      return {s.y0 + xs, s.y1 + xs, ys - s.x1, ys - s.x0, 0, -1, ys, 1, 0, -xs};
    case 180:
      return {xs - s.x1, xs - s.x0, ys - s.y1, ys - s.y0, -1, 0, xs, 0, -1, ys};
    default:
      return {xs - s.y1, xs - s.y0, ys + s.x0, ys + s.x1, 0, 1, -ys, -1, 0, xs};
  }
}

/// Moves pixels by a right angle and whole shifts.
void MovePixels(IplImage* src, IplImage* dst, double a, double xShift, double yShift) {
  const char* const function = "iplRotate";
  CheckPair(src, dst, function);
  if (Failed()) return;
  IplRect s;
  IplRect d;
  IplChannels from;
  IplChannels to;
  if (!iplGetRoiRect(src, &s, true) || !iplGetRoiRect(dst, &d, true)) return;
  if (!ChannelsOfBoth(src, dst, function, &from, &to)) return;
  if (!(std::fabs(xShift) < kFarAway && std::fabs(yShift) < kFarAway)) return;
  const auto xs = static_cast<std::int64_t>(std::floor(xShift));
  const auto ys = static_cast<std::int64_t>(std::floor(yShift));
  const RightTurn turn = TurnRight(static_cast<std::int32_t>(a + 0.1), s, xs, ys);
  const std::int64_t x0 = turn.left > d.x0 ? turn.left : d.x0;
  const std::int64_t x1 = turn.right < d.x1 ? turn.right : d.x1;
  const std::int64_t y0 = turn.top > d.y0 ? turn.top : d.y0;
  const std::int64_t y1 = turn.bottom < d.y1 ? turn.bottom : d.y1;
  if (x0 > x1 || y0 > y1) return;
  if (src->depth != 8) return;
  const std::int64_t step = src->widthStep;
  auto place = [&](std::int64_t x, std::int64_t y) { return y * step + x * from.channels; };
  const LatticeMove move{src->imageData,
                         place(turn.xc, turn.yc),
                         place(turn.xx, turn.yx),
                         place(turn.xy, turn.yy),
                         dst->imageData,
                         dst->widthStep,
                         to.channels};
  if (from.processed < from.channels || from.channels != to.channels) {  // one channel of interest
    for (std::int64_t y = y0; y <= y1; ++y) {
      for (std::int64_t x = x0; x <= x1; ++x) {
        dst->imageData[y * dst->widthStep + x * to.channels + to.index] =
            src->imageData[move.origin + x * move.columnStep + y * move.rowStep + from.index];
      }
    }
    return;
  }
  MoveLattice(move, static_cast<std::int32_t>(x0), static_cast<std::int32_t>(y0),
              static_cast<std::int32_t>(x1), static_cast<std::int32_t>(y1));
}

/// The inverse of the map that takes a rectangle to a quadrilateral, from its first three corners.
struct InverseMap {
  double a[6];
  std::int32_t orientation;
};

InverseMap iplAffineFromQuad(const IplRect& rect, const double* quad) {
  const double width = rect.x1 - rect.x0;
  const double height = rect.y1 - rect.y0;
  const double ex = quad[2] - quad[0];
  const double ey = quad[3] - quad[1];
  const double fx = quad[4] - quad[2];
  const double fy = quad[5] - quad[3];
  const double inv = 1 / (fy * ex - ey * fx);
  InverseMap map;
  map.a[0] = fy * width * inv;
  map.a[1] = -fx * width * inv;
  map.a[2] = rect.x0 - map.a[0] * quad[0] - map.a[1] * quad[1];
  map.a[3] = -ey * height * inv;
  map.a[4] = ex * height * inv;
  map.a[5] = rect.y0 - map.a[3] * quad[0] - map.a[4] * quad[1];
  map.orientation = inv > 0 ? 1 : 0;
  return map;
}

using WarpKernel = void (*)(const WarpRows&) noexcept;

/// By depth (8, 16 bits, float), order (pixels, planes) and interpolation. Only pictures of 8 bits
/// in pixel order are ever turned, so that the others have no kernel.
constexpr WarpKernel kKernels[18] = {WarpNearest8, WarpLinear8, WarpCubic8};

WarpKernel KernelFor(const IplImage& src, const IplImage& dst, std::int32_t interpolation) {
  const std::uint32_t bits = src.depth & ~kIplDepthSign;
  const std::int32_t depth = bits == 8 ? 0 : bits == 16 ? 6 : 12;
  const bool planes = src.dataOrder != 0 && (src.nChannels > 1 || dst.nChannels > 1);
  return kKernels[depth + (planes ? 3 : 0) + interpolation];
}

}  // namespace

void iplGetAffineQuad(const IplImage* image, const double* coeffs, double* quad) noexcept {
  const char* const function = "iplGetAffineQuad";
  const std::int32_t status = iplCheckHeader(image);
  if (status < 0) {
    Report(status, function, "Incorrect Image");
    return;
  }
  IplRect r;
  if (!iplGetRoiRect(image, &r, true)) {
    Report(kIplBadArg, function, "Bad rect ROI");
    return;
  }
  const std::int32_t corners[4][2] = {{r.x0, r.y0}, {r.x1, r.y0}, {r.x1, r.y1}, {r.x0, r.y1}};
  for (int i = 0; i < 4; ++i) {
    const double x = corners[i][0];
    const double y = corners[i][1];
    quad[2 * i] = coeffs[0] * x + coeffs[1] * y + coeffs[2];
    quad[2 * i + 1] = coeffs[3] * x + coeffs[4] * y + coeffs[5];
  }
}

void iplWarpCore(IplImage* src, IplImage* dst, const double* quad, std::int32_t flags,
                 const char* functionName, std::int32_t kind, std::int32_t clipToImage) noexcept {
  const bool smooth = (flags & WARP_EDGE_BLEND) != 0;
  const std::int32_t interpolation = flags & ~WARP_EDGE_BLEND;
  std::int32_t height = 0;
  std::int32_t width = 0;
  if (kind != 0 || src->tileInfo != nullptr || dst->tileInfo != nullptr) return;
  if (!iplGetRoiSize(src, &height, &width, true)) return;
  if (width <= 1 || height <= 1) {
    Report(kIplBadArg, functionName, "srcImage Rectangle ROI is degenerate to length or point");
    return;
  }
  IplRect s;
  IplRect d;
  if (!iplGetRoiRect(src, &s, true) || !iplGetRoiRect(dst, &d, true)) return;
  const InverseMap map = iplAffineFromQuad(s, quad);
  IplChannels from;
  IplChannels to;
  if (!ChannelsOfBoth(src, dst, functionName, &from, &to)) return;
  std::int32_t* starts = nullptr;
  std::int32_t* ends = nullptr;
  std::int32_t firstRow = 0;
  std::int32_t lastRow = 0;
  if (iplClipQuadToSpans(quad, d.x0, d.y0, d.x1, d.y1, map.orientation, &starts, &ends, &firstRow,
                         &lastRow) == 0) {
    return;
  }
  if (const WarpKernel kernel = KernelFor(*src, *dst, interpolation); kernel != nullptr) {
    WarpRows rows{src->imageData + from.index,
                  dst->imageData + std::int64_t{firstRow} * dst->widthStep + to.index,
                  src->widthStep,
                  dst->widthStep,
                  from.channels,
                  to.channels,
                  from.processed,
                  firstRow,
                  lastRow,
                  starts,
                  ends,
                  {map.a[0], map.a[1], map.a[2], map.a[3], map.a[4], map.a[5]},
                  src->width - 1,
                  src->height - 1};
    kernel(rows);
  }
  iplFreeAligned(starts);
  iplFreeAligned(ends);
  if (smooth && clipToImage != 0 && !Failed()) {
    iplSmoothEdges(dst, quad, d.x0, d.y0, d.x1, d.y1, map.orientation);
  }
}

void iplWarpAffine(IplImage* src, IplImage* dst, const double* coeffs,
                   std::int32_t interpolate) noexcept {
  const char* const function = "iplWarpAffine";
  CheckPair(src, dst, function);
  if (Failed()) return;
  if (!(std::fabs(coeffs[4] * coeffs[0] - coeffs[3] * coeffs[1]) > 1e-07)) {
    Report(kIplBadArg, function, "Determinant of transform matrix == 0.0");
  }
  double quad[8];
  iplGetAffineQuad(src, coeffs, quad);
  if (Failed()) {
    Report(kIplBackTrace, function, "");
    return;
  }
  std::int32_t interpolation = interpolate & ~WARP_EDGE_BLEND;
  if (interpolation != IPL_INTER_NN && interpolation != IPL_INTER_LINEAR &&
      interpolation != IPL_INTER_CUBIC) {
    Report(kIplBadArg, function,
           "interpolate != IPL_INTER_NN && interpolate != IPL_INTER_LINEAR && interpolate != "
           "IPL_INTER_CUBIC");
    return;
  }
  if (src->depth == 1 || src->width == 1 || src->height == 1) interpolation = IPL_INTER_NN;
  if (interpolation == IPL_INTER_CUBIC && (src->width < 4 || src->height < 4)) {
    interpolation = IPL_INTER_LINEAR;
  }
  iplWarpCore(src, dst, quad, interpolation | (interpolate & WARP_EDGE_BLEND), function, 0, 1);
}

void iplRotate(IplImage* src, IplImage* dst, double angle, double xShift, double yShift,
               std::int32_t interpolate) noexcept {
  const double a = NormaliseAngle(angle);
  const double r = a * kDegree;
  double cosine = std::cos(r);
  double sine = std::sin(r);
  if (IsRightAngle(a)) {
    const bool tiled = (src != nullptr && src->tileInfo != nullptr) ||
                       (dst != nullptr && dst->tileInfo != nullptr);
    if (!tiled && std::floor(xShift) == xShift && std::floor(yShift) == yShift) {
      MovePixels(src, dst, a, xShift, yShift);
      return;
    }
    cosine = a == 180 ? -1 : 0;
    sine = a == 90 ? 1 : a == 270 ? -1 : 0;
  }
  const double coeffs[6] = {cosine, sine, xShift, -sine, cosine, yShift};
  iplWarpAffine(src, dst, coeffs, interpolate);
  if (Failed()) Report(kIplBackTrace, "iplRotate", "");
}

void iplRotateCenterShift(double x, double y, double angle, double* xShift,
                          double* yShift) noexcept {
  const double a = NormaliseAngle(angle);
  if (a == 0) return;
  if (a == 90) {
    *xShift += x - y;
    *yShift += x + y;
  } else if (a == 180) {
    *xShift += 2 * x;
    *yShift += 2 * y;
  } else if (a == 270) {
    *xShift += x + y;
    *yShift += y - x;
  } else {
    const double r = a * kDegree;
    *xShift += x - x * std::cos(r) - y * std::sin(r);
    *yShift += x * std::sin(r) + y - y * std::cos(r);
  }
}

}  // namespace zor
