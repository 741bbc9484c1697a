// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

/// Rotations beside their rivals and a copy of as many bytes: libyuv at right angles and, row by
/// row over the same spans, at any angle; pixman at any angle. Compare rows of one run only, best
/// with
///     --benchmark_enable_random_interleaving=true --benchmark_repetitions=9

#include <cmath>
#include <cstdio>

#include "bench/contest.h"
#include "ipl/iplwarp.h"
#include "ipl/ownrect.h"
#include "surface/rotate_planes.h"

#ifdef ZOR_BENCH_LIBYUV
#include <libyuv.h>
#endif
#ifdef ZOR_BENCH_PIXMAN_1
#include <pixman.h>
#endif

namespace {

using zor::bench::kCold;
using zor::bench::kHot;
using zor::bench::Work;

constexpr int kPlanar = 0;  // in the place of bytes a pixel

/// A picture and its turn. Right angles change the frame; others turn about the middle of it.
struct Case {
  int bytes;
  int width, height;
  int degrees;

  bool RightAngle() const { return degrees % 90 == 0; }
  int NewWidth() const { return degrees % 180 == 90 ? height : width; }
  int NewHeight() const { return degrees % 180 == 90 ? width : height; }
  std::size_t Bytes() const {
    const std::size_t pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    return bytes == kPlanar ? pixels * 3 / 2 : pixels * static_cast<std::size_t>(bytes);
  }
  std::string Name() const {
    char name[80];
    std::snprintf(name, sizeof name, "rotate %s %dx%d by %d",
                  bytes == kPlanar ? "i420"
                  : bytes == 1     ? "gray"
                  : bytes == 3     ? "rgb24"
                                   : "rgb32",
                  width, height, degrees);
    return name;
  }
};

/// x' = c x + s y + xShift, y' = -s x + c y + yShift, about the middle of the frame.
struct Turn {
  double c, s, xShift = 0, yShift = 0;

  explicit Turn(const Case& k) {
    const double r = k.degrees * 0.017453292519943295;
    c = std::cos(r);
    s = std::sin(r);
    zor::iplRotateCenterShift((k.width - 1) / 2.0, (k.height - 1) / 2.0, k.degrees, &xShift,
                              &yShift);
  }
};

/// A header around borrowed pixels.
class Header {
 public:
  Header(std::uint8_t* pixels, const Case& c)
      : image_(zor::CreateImageHeader(c.width, c.height, 8 * c.bytes)) {
    image_->widthStep = c.width * c.bytes;
    image_->imageData = pixels;
  }
  ~Header() {
    image_->imageData = nullptr;
    zor::iplReleaseHeader(image_);
  }
  Header(const Header&) = delete;
  Header& operator=(const Header&) = delete;
  zor::IplImage* get() const { return image_; }

 private:
  zor::IplImage* image_;
};

Work Ours(const Case& c) {
  if (!c.RightAngle()) {
    const Turn turn(c);
    return [=](std::uint8_t* target, std::uint8_t* source) {
      zor::iplRotate(Header(source, c).get(), Header(target, c).get(), c.degrees, turn.xShift,
                     turn.yShift, zor::IPL_INTER_NN);
    };
  }
  const int w = c.NewWidth();
  const int h = c.NewHeight();
  return [=](std::uint8_t* target, std::uint8_t* source) {
    if (c.bytes == kPlanar) {
      zor::RotatePlanesYuv420(target, w, h, w, source, c.width, c.height, c.width, c.degrees);
    } else {
      zor::RotatePlaneRgb(target, w, h, w * c.bytes, 8 * c.bytes, source, c.width, c.height,
                          c.width * c.bytes, 8 * c.bytes, c.degrees);
    }
  };
}

#ifdef ZOR_BENCH_LIBYUV
/// The turned rectangle as spans, from the engine itself, so that only rows are compared.
struct Spans {
  std::int32_t* starts = nullptr;
  std::int32_t* ends = nullptr;
  std::int32_t first = 0, last = -1;

  Spans(const Case& k, const Turn& t) {
    const double w = k.width - 1, h = k.height - 1;
    const double quad[] = {t.xShift,
                           t.yShift,
                           t.c * w + t.xShift,
                           -t.s * w + t.yShift,
                           t.c * w + t.s * h + t.xShift,
                           -t.s * w + t.c * h + t.yShift,
                           t.s * h + t.xShift,
                           t.c * h + t.yShift};
    zor::iplClipQuadToSpans(quad, 0, 0, k.width - 1, k.height - 1, 1, &starts, &ends, &first,
                            &last);
  }
  ~Spans() {
    zor::iplFreeAligned(starts);
    zor::iplFreeAligned(ends);
  }
};

Work LibYuv(const Case& c) {
  if (!c.RightAngle()) {
    if (c.bytes != 4) return nullptr;
    const Turn t(c);
    const auto spans = std::make_shared<Spans>(c, t);
    return [=](std::uint8_t* target, std::uint8_t* source) {
      for (int y = spans->first; y <= spans->last; ++y) {
        const int start = spans->starts[y - spans->first];
        const int count = spans->ends[y - spans->first] - start + 1;
        if (count < 1) continue;
        const double dx = start - t.xShift, dy = y - t.yShift;
        const float at[] = {static_cast<float>(t.c * dx - t.s * dy + 0.5),
                            static_cast<float>(t.s * dx + t.c * dy + 0.5), static_cast<float>(t.c),
                            static_cast<float>(t.s)};
        libyuv::ARGBAffineRow_SSE2(source, 4 * c.width, target + 4 * (y * c.width + start), at,
                                   count);
      }
    };
  }
  // Packed rows run bottom-up for the engine, so its turn is the other way round.
  const int clockwise = c.bytes == kPlanar ? c.degrees : 360 - c.degrees;
  const auto mode = static_cast<libyuv::RotationMode>(clockwise);
  const int w = c.NewWidth();
  if (c.bytes == 4) {
    return [=](std::uint8_t* target, std::uint8_t* source) {
      libyuv::ARGBRotate(source, 4 * c.width, target, 4 * w, c.width, c.height, mode);
    };
  }
  if (c.bytes == 1) {
    return [=](std::uint8_t* target, std::uint8_t* source) {
      libyuv::RotatePlane(source, c.width, target, w, c.width, c.height, mode);
    };
  }
  if (c.bytes != kPlanar) return nullptr;
  return [=](std::uint8_t* target, std::uint8_t* source) {
    const int luma = c.width * c.height;
    libyuv::I420Rotate(source, c.width, source + luma, c.width / 2, source + luma + luma / 4,
                       c.width / 2, target, w, target + luma, w / 2, target + luma + luma / 4,
                       w / 2, c.width, c.height, mode);
  };
}
#else
Work LibYuv(const Case&) {
  return nullptr;
}
#endif

#ifdef ZOR_BENCH_PIXMAN_1
Work Pixman(const Case& c) {
  const int w = c.NewWidth();
  const int h = c.NewHeight();
  if (c.bytes == kPlanar || c.bytes * c.width % 4 != 0 || c.bytes * w % 4 != 0) return nullptr;
  const auto format = c.bytes == 1 ? PIXMAN_a8 : c.bytes == 3 ? PIXMAN_r8g8b8 : PIXMAN_a8r8g8b8;
  // From target to source.
  pixman_transform_t transform;
  pixman_transform_init_identity(&transform);
  const double r = c.degrees * 0.017453292519943295;
  const double cosine = c.degrees % 180 == 90 ? 0 : std::cos(r);
  const double sine = c.degrees == 180 ? 0 : std::sin(r);
  transform.matrix[0][0] = transform.matrix[1][1] = pixman_double_to_fixed(cosine);
  transform.matrix[0][1] = pixman_double_to_fixed(-sine);
  transform.matrix[1][0] = pixman_double_to_fixed(sine);
  transform.matrix[0][2] =
      pixman_double_to_fixed(c.width / 2.0 - cosine * w / 2.0 + sine * h / 2.0);
  transform.matrix[1][2] =
      pixman_double_to_fixed(c.height / 2.0 - sine * w / 2.0 - cosine * h / 2.0);
  return [=](std::uint8_t* target, std::uint8_t* source) {
    pixman_image_t* in = pixman_image_create_bits_no_clear(
        format, c.width, c.height, reinterpret_cast<std::uint32_t*>(source), c.bytes * c.width);
    pixman_image_t* out = pixman_image_create_bits_no_clear(
        format, w, h, reinterpret_cast<std::uint32_t*>(target), c.bytes * w);
    pixman_image_set_transform(in, &transform);
    pixman_image_set_filter(in, PIXMAN_FILTER_NEAREST, nullptr, 0);
    pixman_image_composite32(PIXMAN_OP_SRC, in, nullptr, out, 0, 0, 0, 0, 0, 0, w, h);
    pixman_image_unref(in);
    pixman_image_unref(out);
  };
}
#else
Work Pixman(const Case&) {
  return nullptr;
}
#endif

void RegisterCase(const Case& c, std::size_t spread) {
  zor::bench::RegisterContest(c.Name(), c.Bytes(), c.Bytes(), spread,
                              {{"zor", Ours(c)},
                               {"copy", zor::bench::CopyOf(c.Bytes())},
                               {"libyuv", LibYuv(c)},
                               {"pixman", Pixman(c)}});
}

void RegisterAll() {
  for (const int bytes : {4, 3, 1, kPlanar}) {
    for (const int degrees : {90, 180, 270, 7, 30, 91}) {
      if (bytes == kPlanar && degrees % 90 != 0) continue;
      const Case c{bytes, 1920, 1080, degrees};
      RegisterCase(c, kHot);
      RegisterCase(c, kCold);
      RegisterCase({bytes, 3840, 2160, degrees}, kHot);
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  RegisterAll();
  return zor::bench::Run(argc, argv);
}
