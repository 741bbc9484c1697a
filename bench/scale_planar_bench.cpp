// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

/// The scalers of gray, planar and packed pictures beside their rivals and a copy of as many bytes.
/// Compare rows of one run only, best with
///     --benchmark_enable_random_interleaving=true --benchmark_repetitions=9

#include "bench/contest.h"
#include "convert/feature_word.h"
#include "scale/stretch.h"

#ifdef ZOR_BENCH_LIBYUV
#include <libyuv.h>
#endif
#ifdef ZOR_BENCH_ZIMG
#include <zimg.h>
#endif
#ifdef ZOR_BENCH_LIBSWSCALE
extern "C" {
#include <libswscale/swscale.h>
}
#endif

namespace {

using zor::bench::Pixels;
using zor::bench::Work;

enum class Method { kNearest, kBilinear, kArea };
enum class Layout { kGray, kPlanar, kPacked };

struct Case {
  Method method;
  Layout layout;
  int sw, sh, dw, dh;

  std::string Name() const {
    static constexpr const char* kMethods[] = {"nearest", "bilinear", "area"};
    static constexpr const char* kLayouts[] = {"gray", "i420", "yuy2"};
    return std::string(kMethods[static_cast<int>(method)]) + " " +
           kLayouts[static_cast<int>(layout)] + " " + std::to_string(sw) + "x" +
           std::to_string(sh) + ">" + std::to_string(dw) + "x" + std::to_string(dh);
  }
  std::size_t Bytes(int w, int h) const {
    const auto pixels = static_cast<std::size_t>(w) * static_cast<std::size_t>(h);
    return layout == Layout::kGray     ? pixels
           : layout == Layout::kPlanar ? pixels * 3 / 2
                                       : pixels * 2;
  }
};

/// The planes of a picture without padding.
struct Planes {
  Planes(const Case& c, std::uint8_t* pixels, int w, int h)
      : count(c.layout == Layout::kPlanar ? 3 : 1) {
    const auto luma = static_cast<std::size_t>(w) * static_cast<std::size_t>(h);
    data[0] = pixels;
    data[1] = pixels + luma;
    data[2] = data[1] + luma / 4;
    data[3] = nullptr;
    stride[0] = c.layout == Layout::kPacked ? 2 * w : w;
    stride[1] = stride[2] = w / 2;
    stride[3] = 0;
  }
  int count;
  std::uint8_t* data[4];
  int stride[4];
};

Work Ours(const Case& c) {
  static constexpr ScaleMode kModes[] = {SCALE_NEAREST, SCALE_BILINEAR, SCALE_AREA};
  const ScaleMode mode = kModes[static_cast<int>(c.method)];
  return [=](std::uint8_t* target, std::uint8_t* source) {
    if (c.layout == Layout::kGray) {
      zor::StretchRgb(target, c.dw, c.dh, nullptr, c.dw, 8, 1, source, c.sw, c.sh, nullptr, c.sw, 8,
                      1, 0, mode);
    } else if (c.layout == Layout::kPlanar) {
      zor::StretchYuv420(source, c.sw, c.sh, c.sw, nullptr, target, c.dw, c.dh, c.dw, nullptr, 0,
                         mode, 0);
    } else {
      zor::StretchYuy2(source, c.sw, c.sh, 2 * c.sw, nullptr, target, c.dw, c.dh, 2 * c.dw, nullptr,
                       0, mode, 0);
    }
  };
}

#ifdef ZOR_BENCH_LIBYUV
Work LibYuv(const Case& c) {
  if (c.layout == Layout::kPacked) return nullptr;
  static constexpr libyuv::FilterMode kFilters[] = {libyuv::kFilterNone, libyuv::kFilterBilinear,
                                                    libyuv::kFilterBox};
  const libyuv::FilterMode filter = kFilters[static_cast<int>(c.method)];
  return [=](std::uint8_t* target, std::uint8_t* source) {
    const Planes in(c, source, c.sw, c.sh);
    const Planes out(c, target, c.dw, c.dh);
    if (c.layout == Layout::kGray) {
      libyuv::ScalePlane(source, c.sw, c.sw, c.sh, target, c.dw, c.dw, c.dh, filter);
    } else {
      libyuv::I420Scale(in.data[0], in.stride[0], in.data[1], in.stride[1], in.data[2],
                        in.stride[2], c.sw, c.sh, out.data[0], out.stride[0], out.data[1],
                        out.stride[1], out.data[2], out.stride[2], c.dw, c.dh, filter);
    }
  };
}
#else
Work LibYuv(const Case&) {
  return nullptr;
}
#endif

#ifdef ZOR_BENCH_ZIMG
Work Zimg(const Case& c) {
  if (c.layout == Layout::kPacked || c.method == Method::kArea) return nullptr;
  static constexpr zimg_resample_filter_e kFilters[] = {ZIMG_RESIZE_POINT, ZIMG_RESIZE_BILINEAR,
                                                        ZIMG_RESIZE_BILINEAR};
  const auto format = [&](int w, int h) {
    zimg_image_format f;
    zimg_image_format_default(&f, ZIMG_API_VERSION);
    f.width = static_cast<unsigned>(w);
    f.height = static_cast<unsigned>(h);
    f.pixel_type = ZIMG_PIXEL_BYTE;
    f.color_family = c.layout == Layout::kGray ? ZIMG_COLOR_GREY : ZIMG_COLOR_YUV;
    if (c.layout == Layout::kPlanar) f.subsample_w = f.subsample_h = 1;
    f.matrix_coefficients = ZIMG_MATRIX_BT470_BG;
    return f;
  };
  const zimg_image_format from = format(c.sw, c.sh);
  const zimg_image_format to = format(c.dw, c.dh);
  zimg_graph_builder_params params;
  zimg_graph_builder_params_default(&params, ZIMG_API_VERSION);
  params.resample_filter = params.resample_filter_uv = kFilters[static_cast<int>(c.method)];
  params.cpu_type = ZIMG_CPU_AUTO_64B;
  const std::shared_ptr<zimg_filter_graph> graph(zimg_filter_graph_build(&from, &to, &params),
                                                 zimg_filter_graph_free);
  std::size_t bytes = 0;
  if (graph == nullptr || zimg_filter_graph_get_tmp_size(graph.get(), &bytes) != 0) return nullptr;
  const auto scratch = std::make_shared<Pixels>(bytes + 64);
  return [=](std::uint8_t* target, std::uint8_t* source) {
    const Planes in(c, source, c.sw, c.sh);
    const Planes out(c, target, c.dw, c.dh);
    zimg_image_buffer_const a{};
    zimg_image_buffer b{};
    a.version = b.version = ZIMG_API_VERSION;
    for (int p = 0; p < in.count; ++p) {
      a.plane[p].data = in.data[p];
      a.plane[p].stride = in.stride[p];
      a.plane[p].mask = b.plane[p].mask = ZIMG_BUFFER_MAX;
      b.plane[p].data = out.data[p];
      b.plane[p].stride = out.stride[p];
    }
    zimg_filter_graph_process(graph.get(), &a, &b, scratch->data(), nullptr, nullptr, nullptr,
                              nullptr);
  };
}
#else
Work Zimg(const Case&) {
  return nullptr;
}
#endif

#ifdef ZOR_BENCH_LIBSWSCALE
Work SwScale(const Case& c) {
  static constexpr int kFlags[] = {SWS_POINT, SWS_FAST_BILINEAR, SWS_AREA};
  static constexpr AVPixelFormat kFormats[] = {AV_PIX_FMT_GRAY8, AV_PIX_FMT_YUV420P,
                                               AV_PIX_FMT_YUYV422};
  const AVPixelFormat format = kFormats[static_cast<int>(c.layout)];
  const std::shared_ptr<SwsContext> context(
      sws_getContext(c.sw, c.sh, format, c.dw, c.dh, format, kFlags[static_cast<int>(c.method)],
                     nullptr, nullptr, nullptr),
      sws_freeContext);
  if (context == nullptr) return nullptr;
  return [=](std::uint8_t* target, std::uint8_t* source) {
    const Planes in(c, source, c.sw, c.sh);
    const Planes out(c, target, c.dw, c.dh);
    sws_scale(context.get(), in.data, in.stride, 0, c.sh, out.data, out.stride);
  };
}
#else
Work SwScale(const Case&) {
  return nullptr;
}
#endif

void RegisterCase(const Case& c, std::size_t spread,
                  const std::vector<zor::bench::Contestant>& contestants) {
  zor::bench::RegisterContest(c.Name(), c.Bytes(c.sw, c.sh), c.Bytes(c.dw, c.dh), spread,
                              contestants);
}

/// @return our work on a case, held to one of the narrower forms.
Work Pinned(const Case& c, zor::VectorLevel level) {
  return [ours = Ours(c), level](std::uint8_t* target, std::uint8_t* source) {
    zor::LimitInnerVectorLevel(level);
    ours(target, source);
    zor::LimitInnerVectorLevel(zor::VectorLevel::kAvx512);
  };
}

void RegisterAll() {
  static constexpr int kSizes[][4] = {{1920, 1080, 1280, 720},
                                      {1920, 1080, 854, 480},
                                      {1280, 720, 1920, 1080},
                                      {1920, 1080, 3840, 2160},
                                      {3840, 2160, 1280, 720}};
  std::vector<Case> cases;
  for (const auto& s : kSizes) {
    for (const Layout layout : {Layout::kGray, Layout::kPlanar, Layout::kPacked}) {
      for (const Method method : {Method::kNearest, Method::kBilinear, Method::kArea}) {
        if (method == Method::kArea && s[0] < s[2]) continue;
        if (layout == Layout::kPacked && method != Method::kBilinear) continue;
        cases.push_back({method, layout, s[0], s[1], s[2], s[3]});
      }
    }
  }
  for (const Case& c : cases) {
    const std::size_t half = (c.Bytes(c.sw, c.sh) + c.Bytes(c.dw, c.dh)) / 2;
    for (const std::size_t spread : {zor::bench::kHot, zor::bench::kCold}) {
      RegisterCase(c, spread,
                   {{"zor", Ours(c)},
                    {"copy", zor::bench::CopyOf(half)},
                    {"libyuv", LibYuv(c)},
                    {"zimg", Zimg(c)},
                    {"swscale", SwScale(c)}});
    }
  }
  // The narrower forms of the engine, to see what each brings.
  for (const Case& c : {cases[0], cases[1], cases[2]}) {
    RegisterCase(c, zor::bench::kHot,
                 {{"zor sse2", Pinned(c, zor::VectorLevel::kSse2)},
                  {"zor avx2", Pinned(c, zor::VectorLevel::kAvx2)}});
  }
}

}  // namespace

int main(int argc, char** argv) {
  RegisterAll();
  return zor::bench::Run(argc, argv);
}
