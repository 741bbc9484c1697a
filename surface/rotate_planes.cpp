// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "surface/rotate_planes.h"

#include <cmath>

#include "ipl/iplalloc.h"
#include "ipl/iplwarp.h"

namespace zor {
namespace {

/// A header around borrowed memory; null where the engine would refuse the picture.
class WrappedImage {
 public:
  WrappedImage(std::uint8_t* pixels, std::int32_t width, std::int32_t height, std::int32_t stride,
               std::int32_t bits) noexcept
      : image_(Serves(width, height, stride, bits) ? CreateImageHeader(width, height, bits)
                                                   : nullptr) {
    if (image_ == nullptr) return;
    image_->widthStep = stride;
    image_->imageData = image_->imageDataOrigin = pixels;
    // The header counts bytes by its own stride and may wrap where the picture doesn't lie there;
    // a count below 1 would be refused.
    if (image_->imageSize < 1) image_->imageSize = 1;
  }
  ~WrappedImage() {
    if (image_ == nullptr) return;
    image_->imageData = image_->imageDataOrigin = nullptr;
    iplReleaseHeader(image_);
  }
  WrappedImage(const WrappedImage&) = delete;
  WrappedImage& operator=(const WrappedImage&) = delete;

  IplImage* get() const noexcept { return image_; }
  bool Stands() const noexcept { return image_ != nullptr; }
  /// @return whether the warp takes the picture as a source: it wants a cell of 2 x 2 pixels.
  bool HasCell() const noexcept { return image_->width > 1 && image_->height > 1; }

 private:
  static bool Serves(std::int32_t width, std::int32_t height, std::int32_t stride,
                     std::int32_t bits) {
    return width >= 1 && height >= 1 && stride >= 1 && (bits == 8 || bits == 24 || bits == 32);
  }

  IplImage* image_;
};

struct Shift {
  double x;
  double y;
};

double Radians(std::int32_t degrees) {
  return degrees * kRotationPi / 180;
}

/// Where a packed picture has to move so that it stands in its new frame.
Shift PackedShift(std::int32_t degrees, double width, double height) {
  const double theta = Radians(degrees);
  const double phi = Radians(degrees - 90);
  if (degrees >= 1 && degrees <= 90) return {0, std::sin(theta) * width};
  if (degrees >= 91 && degrees <= 180) {
    return {std::sin(phi) * width, std::sin(theta) * width - std::cos(theta) * height};
  }
  if (degrees >= 181 && degrees <= 270) {
    return {std::sin(phi) * width - std::cos(phi) * height, std::cos(theta) * -height};
  }
  if (degrees >= 271 && degrees <= 359) return {std::sin(theta) * -height, 0};
  return {0, 0};
}

/// The same for a plane of a planar picture, which is turned the other way round.
Shift PlaneShift(std::int32_t degrees, double width, double height) {
  const double theta = Radians(degrees);
  const double phi = Radians(degrees - 90);
  if (degrees >= 1 && degrees <= 89) return {height * std::sin(theta), 0};
  if (degrees >= 91 && degrees <= 179) {
    return {height * std::cos(phi) + width * std::sin(phi), -height * std::cos(theta)};
  }
  if (degrees >= 181 && degrees <= 269) {
    return {width * std::sin(phi), -width * std::sin(theta) - height * std::cos(theta)};
  }
  if (degrees >= 271 && degrees <= 359) return {0, -width * std::sin(theta)};
  return {0, 0};
}

bool IsRightAngle(std::int32_t degrees) {
  return degrees == 90 || degrees == 180 || degrees == 270;
}

/// The shift that turns a plane about its own centre by a right angle. The centre lies between
/// pixels at @p divisor-ths of the picture's size, truncated, so that shifts are whole.
Shift CentreShift(std::int32_t degrees, std::int32_t width, std::int32_t height,
                  std::int32_t divisor) {
  const double across = (degrees == 90 ? height : width) / divisor - 0.5;
  const double down = (degrees == 270 ? width : height) / divisor - 0.5;
  Shift shift{0, 0};
  iplRotateCenterShift(across, down, -degrees, &shift.x, &shift.y);
  return shift;
}

/// The three planes of one picture.
class WrappedPlanes {
 public:
  WrappedPlanes(std::uint8_t* pixels, std::int32_t width, std::int32_t height,
                std::int32_t stride) noexcept
      : luma_(pixels, width, height, stride, 8),
        first_(pixels + Plane(stride, height), width / 2, height / 2, stride / 2, 8),
        second_(pixels + Plane(stride, height) + Plane(stride, height) / 4, width / 2, height / 2,
                stride / 2, 8) {}

  bool Stand() const { return luma_.Stands() && first_.Stands() && second_.Stands(); }
  bool HaveCells() const { return first_.HasCell(); }
  const WrappedImage& operator[](int plane) const {
    return plane == 0 ? luma_ : plane == 1 ? first_ : second_;
  }

 private:
  static std::int64_t Plane(std::int32_t stride, std::int32_t height) {
    return std::int64_t{stride} * height;
  }

  WrappedImage luma_;
  WrappedImage first_;
  WrappedImage second_;
};

}  // namespace

std::uint32_t RotatePlaneRgb(std::uint8_t* target, std::int32_t targetWidth,
                             std::int32_t targetHeight, std::int32_t targetStride,
                             std::int32_t targetBits, std::uint8_t* source, std::int32_t width,
                             std::int32_t height, std::int32_t stride, std::int32_t bits,
                             std::int32_t degrees) noexcept {
  if (target == nullptr || source == nullptr) return 0;
  const WrappedImage to(target, targetWidth, targetHeight, targetStride, targetBits);
  const WrappedImage from(source, width, height, stride, bits);
  if (!to.Stands() || !from.Stands() || !from.HasCell()) return 1;
  iplSetStatus(kIplOk);
  const Shift shift = PackedShift(degrees, width, height);
  iplRotate(from.get(), to.get(), degrees, shift.x, shift.y, IPL_INTER_NN);
  return 1;
}

std::uint32_t RotatePlanesYuv420(std::uint8_t* target, std::int32_t targetWidth,
                                 std::int32_t targetHeight, std::int32_t targetStride,
                                 std::uint8_t* source, std::int32_t width, std::int32_t height,
                                 std::int32_t stride, std::int32_t degrees) noexcept {
  if (target == nullptr || source == nullptr) return 0;
  const WrappedPlanes to(target, targetWidth, targetHeight, targetStride);
  const WrappedPlanes from(source, width, height, stride);
  const bool exact = IsRightAngle(degrees);
  if (!to.Stand() || !from.Stand() || (!exact && !from.HaveCells())) return 1;
  iplSetStatus(kIplOk);
  for (int plane = 0; plane < 3; ++plane) {
    const Shift shift = exact        ? CentreShift(degrees, width, height, plane == 0 ? 2 : 4)
                        : plane == 0 ? PlaneShift(degrees, width, height)
                                     : PlaneShift(degrees, width / 2, height / 2);
    iplRotate(from[plane].get(), to[plane].get(), -degrees, shift.x, shift.y,
              exact ? IPL_INTER_NN | WARP_EDGE_BLEND : IPL_INTER_NN);
  }
  return 1;
}

}  // namespace zor
