// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

/// The scalers of 3- and 4-byte pixels beside their rivals and a copy of as many bytes. zimg has no
/// such pixels. Compare rows of one run only, best with
///     --benchmark_enable_random_interleaving=true --benchmark_repetitions=9

#include <cstdio>

#include "bench/contest.h"
#include "convert/feature_word.h"
#include "scale/stretch.h"

#ifdef ZOR_BENCH_LIBYUV
#include <libyuv.h>
#include <libyuv/scale_rgb.h>
#endif
#ifdef ZOR_BENCH_PIXMAN_1
#include <pixman.h>
#endif
#ifdef ZOR_BENCH_LIBSWSCALE
extern "C" {
#include <libswscale/swscale.h>
}
#endif

namespace {

using zor::bench::Work;

enum class Method { kNearest, kBilinear, kBox, kArea };

struct Case {
  Method method;
  int from, to;  // bytes a pixel
  int sw, sh, dw, dh;

  std::string Name() const {
    static constexpr const char* kMethods[] = {"nearest", "bilinear", "box", "area"};
    char name[80];
    std::snprintf(name, sizeof name, "%s rgb%d>%d %dx%d>%dx%d", kMethods[static_cast<int>(method)],
                  8 * from, 8 * to, sw, sh, dw, dh);
    return name;
  }
  std::size_t SourceBytes() const {
    return static_cast<std::size_t>(sw) * static_cast<std::size_t>(sh) *
           static_cast<std::size_t>(from);
  }
  std::size_t TargetBytes() const {
    return static_cast<std::size_t>(dw) * static_cast<std::size_t>(dh) *
           static_cast<std::size_t>(to);
  }
};

Work Ours(const Case& c) {
  static constexpr ScaleMode kModes[] = {SCALE_NEAREST, SCALE_BILINEAR, SCALE_BOX, SCALE_AREA};
  const ScaleMode mode = kModes[static_cast<int>(c.method)];
  return [=](std::uint8_t* target, std::uint8_t* source) {
    zor::StretchRgb(target, static_cast<std::uint32_t>(c.dw), c.dh, nullptr, c.to * c.dw, 8 * c.to,
                    1, source, static_cast<std::uint32_t>(c.sw), c.sh, nullptr, c.from * c.sw,
                    8 * c.from, 1, 0, mode);
  };
}

#ifdef ZOR_BENCH_LIBYUV
Work LibYuv(const Case& c) {
  static constexpr libyuv::FilterMode kFilters[] = {libyuv::kFilterNone, libyuv::kFilterBilinear,
                                                    libyuv::kFilterBox, libyuv::kFilterBox};
  if (c.from != c.to || c.method == Method::kArea) return nullptr;
  const libyuv::FilterMode filter = kFilters[static_cast<int>(c.method)];
  const auto scale = c.from == 4 ? libyuv::ARGBScale : libyuv::RGBScale;
  return [=](std::uint8_t* target, std::uint8_t* source) {
    scale(source, c.from * c.sw, c.sw, c.sh, target, c.to * c.dw, c.dw, c.dh, filter);
  };
}
#else
Work LibYuv(const Case&) {
  return nullptr;
}
#endif

#ifdef ZOR_BENCH_PIXMAN_1
Work Pixman(const Case& c) {
  if (c.from * c.sw % 4 != 0 || c.to * c.dw % 4 != 0) return nullptr;  // rows are whole words
  const double stepX = static_cast<double>(c.sw) / c.dw;
  const double stepY = static_cast<double>(c.sh) / c.dh;
  const bool boxes = c.method == Method::kBox || c.method == Method::kArea;
  int count = 0;
  const std::shared_ptr<pixman_fixed_t> filter(
      boxes ? pixman_filter_create_separable_convolution(
                  &count, pixman_double_to_fixed(stepX), pixman_double_to_fixed(stepY),
                  PIXMAN_KERNEL_IMPULSE, PIXMAN_KERNEL_IMPULSE, PIXMAN_KERNEL_BOX,
                  PIXMAN_KERNEL_BOX, 4, 4)
            : nullptr,
      std::free);
  const auto format = [](int bytes) { return bytes == 4 ? PIXMAN_x8r8g8b8 : PIXMAN_r8g8b8; };
  return [=](std::uint8_t* target, std::uint8_t* source) {
    pixman_image_t* in = pixman_image_create_bits_no_clear(
        format(c.from), c.sw, c.sh, reinterpret_cast<std::uint32_t*>(source), c.from * c.sw);
    pixman_image_t* out = pixman_image_create_bits_no_clear(
        format(c.to), c.dw, c.dh, reinterpret_cast<std::uint32_t*>(target), c.to * c.dw);
    pixman_transform_t transform;
    pixman_transform_init_scale(&transform, pixman_double_to_fixed(stepX),
                                pixman_double_to_fixed(stepY));
    pixman_image_set_transform(in, &transform);
    pixman_image_set_repeat(in, PIXMAN_REPEAT_PAD);
    if (boxes) {
      pixman_image_set_filter(in, PIXMAN_FILTER_SEPARABLE_CONVOLUTION, filter.get(), count);
    } else {
      pixman_image_set_filter(
          in, c.method == Method::kNearest ? PIXMAN_FILTER_NEAREST : PIXMAN_FILTER_BILINEAR,
          nullptr, 0);
    }
    pixman_image_composite32(PIXMAN_OP_SRC, in, nullptr, out, 0, 0, 0, 0, 0, 0, c.dw, c.dh);
    pixman_image_unref(in);
    pixman_image_unref(out);
  };
}
#else
Work Pixman(const Case&) {
  return nullptr;
}
#endif

#ifdef ZOR_BENCH_LIBSWSCALE
Work SwScale(const Case& c) {
  static constexpr int kFlags[] = {SWS_POINT, SWS_FAST_BILINEAR, SWS_AREA, SWS_AREA};
  const auto format = [](int bytes) { return bytes == 4 ? AV_PIX_FMT_BGRA : AV_PIX_FMT_BGR24; };
  const std::shared_ptr<SwsContext> context(
      sws_getContext(c.sw, c.sh, format(c.from), c.dw, c.dh, format(c.to),
                     kFlags[static_cast<int>(c.method)], nullptr, nullptr, nullptr),
      sws_freeContext);
  if (context == nullptr) return nullptr;
  return [=](std::uint8_t* target, std::uint8_t* source) {
    const std::uint8_t* in[4] = {source};
    std::uint8_t* out[4] = {target};
    const int inStride[4] = {c.from * c.sw};
    const int outStride[4] = {c.to * c.dw};
    sws_scale(context.get(), in, inStride, 0, c.sh, out, outStride);
  };
}
#else
Work SwScale(const Case&) {
  return nullptr;
}
#endif

void RegisterCase(const Case& c, std::size_t spread) {
  zor::bench::RegisterContest(
      c.Name(), c.SourceBytes(), c.TargetBytes(), spread,
      {{"zor", Ours(c)},
       {"copy", zor::bench::CopyOf((c.SourceBytes() + c.TargetBytes()) / 2)},
       {"libyuv", LibYuv(c)},
       {"pixman", Pixman(c)},
       {"swscale", SwScale(c)}});
}

void RegisterAll() {
  struct Size {
    int sw, sh, dw, dh;
  };
  static constexpr Size kRatios[] = {{1920, 1080, 1280, 720},
                                     {1920, 1080, 854, 480},
                                     {1280, 720, 1920, 1080},
                                     {1920, 1080, 3840, 2160},
                                     {3840, 2160, 2560, 1440}};
  static constexpr Size kHalves[] = {{1920, 1080, 960, 540},
                                     {1920, 1080, 480, 270},
                                     {1920, 1080, 768, 432},
                                     {3840, 2160, 192, 108}};
  std::vector<Case> cases;
  for (const int bytes : {4, 3}) {
    for (const Size& s : kRatios) {
      for (const Method method : {Method::kNearest, Method::kBilinear, Method::kArea}) {
        if (method == Method::kArea && s.sw < s.dw) continue;
        cases.push_back({method, bytes, bytes, s.sw, s.sh, s.dw, s.dh});
      }
    }
    for (const Size& s : kHalves) {
      cases.push_back({Method::kBox, bytes, bytes, s.sw, s.sh, s.dw, s.dh});
    }
    // Between the pixel sizes.
    cases.push_back({Method::kBilinear, bytes, 7 - bytes, 1920, 1080, 1280, 720});
  }
  for (const Case& c : cases) {
    for (const std::size_t spread : {zor::bench::kHot, zor::bench::kCold}) RegisterCase(c, spread);
  }
}

}  // namespace

int main(int argc, char** argv) {
  RegisterAll();
  return zor::bench::Run(argc, argv);
}
