// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

/// The conversions beside libyuv and a copy of as many bytes. "hot" works on the same buffers again
/// and again, "cold" on buffers that rotate over more than any cache holds. In "upward" our kernels
/// walk the packed picture from its last row on; the rival always goes downward. Conversions from
/// and to planes include the row filter here, which the rival leaves out. Compare rows of one run
/// only, best with
///     --benchmark_enable_random_interleaving=true --benchmark_repetitions=9

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>

#include "bench/contest.h"
#include "convert/feature_word.h"
#include "convert/wrappers.h"

#ifdef ZOR_BENCH_LIBYUV
#include <libyuv.h>
#endif

namespace {

constexpr std::uint32_t kAllForms = 0xFFFFFFFFu;

/// One size of picture; planes and rows are packed.
struct Frame {
  int w;
  int h;
  bool upward = false;  ///< ours walks the packed picture from its last row on
  /// The kernels' orientation arguments, of conversions from planes and of the others.
  std::uint32_t FromPlanes() const { return upward ? 1 : 0; }
  std::uint32_t FromPacked() const { return upward ? 0 : 1; }
  int chroma() const { return w / 2; }
  /// The plane behind luma, and the one behind that.
  template <class Byte>
  Byte* First(Byte* block) const {
    return block + w * h;
  }
  template <class Byte>
  Byte* Second(Byte* block) const {
    return block + w * h * 5 / 4;
  }
};

using Work = std::function<void(const Frame&, std::uint8_t* target, std::uint8_t* source)>;

struct Conversion {
  const char* name;
  int sourceBits;  ///< a pixel
  int targetBits;
  Work ours;
  Work rival;
};

#ifdef ZOR_BENCH_LIBYUV
#define RIVAL(...) [](const Frame& f, std::uint8_t* t, std::uint8_t* s) { __VA_ARGS__; }
#else
#define RIVAL(...) nullptr
#endif
#define OURS(...) [](const Frame& f, std::uint8_t* t, std::uint8_t* s) { __VA_ARGS__; }

/// A strip of RGB32, for what the rival has no single step for.
std::uint8_t* Strip() {
  alignas(64) static std::uint8_t strip[4 * 4096];
  return strip;
}

const Conversion kConversions[] = {
    {"i420>rgb32", 12, 32,
     OURS(zor::ConvertYuv420ToRgb(s, f.w, t, f.w * 4, f.w, f.h, kAllForms, 32, f.FromPlanes())),
     RIVAL(libyuv::I420ToARGB(s, f.w, f.Second(s), f.chroma(), f.First(s), f.chroma(), t, f.w * 4,
                              f.w, f.h))},
    {"i420>rgb24", 12, 24,
     OURS(zor::ConvertYuv420ToRgb(s, f.w, t, f.w * 3, f.w, f.h, kAllForms, 24, f.FromPlanes())),
     RIVAL(libyuv::I420ToRGB24(s, f.w, f.Second(s), f.chroma(), f.First(s), f.chroma(), t, f.w * 3,
                               f.w, f.h))},
    {"i420>yuy2", 12, 16, OURS(zor::ConvertYuv420ToYuy2(s, f.w, t, f.w * 2, f.w, f.h, kAllForms)),
     RIVAL(libyuv::I420ToYUY2(s, f.w, f.Second(s), f.chroma(), f.First(s), f.chroma(), t, f.w * 2,
                              f.w, f.h))},
    {"rgb32>i420", 32, 12,
     OURS(zor::ConvertRgbToYuv420(s, f.w * 4, t, f.w, f.w, f.h, kAllForms, 32, f.FromPacked())),
     RIVAL(libyuv::ARGBToI420(s, f.w * 4, t, f.w, f.Second(t), f.chroma(), f.First(t), f.chroma(),
                              f.w, f.h))},
    {"rgb24>i420", 24, 12,
     OURS(zor::ConvertRgbToYuv420(s, f.w * 3, t, f.w, f.w, f.h, kAllForms, 24, f.FromPacked())),
     RIVAL(libyuv::RGB24ToI420(s, f.w * 3, t, f.w, f.Second(t), f.chroma(), f.First(t), f.chroma(),
                               f.w, f.h))},
    {"yuy2>i420", 16, 12, OURS(zor::ConvertYuy2ToYuv420(s, f.w * 2, t, f.w, f.w, f.h, kAllForms)),
     RIVAL(libyuv::YUY2ToI420(s, f.w * 2, t, f.w, f.Second(t), f.chroma(), f.First(t), f.chroma(),
                              f.w, f.h))},
    {"yuy2>rgb32", 16, 32,
     OURS(zor::ConvertYuy2ToRgb(s, f.w * 2, t, f.w * 4, f.w, f.h, kAllForms, 32, f.FromPacked())),
     RIVAL(libyuv::YUY2ToARGB(s, f.w * 2, t, f.w * 4, f.w, f.h))},
    {"yuy2>rgb24", 16, 24,
     OURS(zor::ConvertYuy2ToRgb(s, f.w * 2, t, f.w * 3, f.w, f.h, kAllForms, 24, f.FromPacked())),
     RIVAL(for (int y = 0; y < f.h; ++y) {
       libyuv::YUY2ToARGB(s + y * f.w * 2, f.w * 2, Strip(), f.w * 4, f.w, 1);
       libyuv::ARGBToRGB24(Strip(), f.w * 4, t + y * f.w * 3, f.w * 3, f.w, 1);
     })},
    {"rgb32>yuy2", 32, 16,
     OURS(zor::ConvertRgbToYuy2(s, f.w * 4, t, f.w * 2, f.w, f.h, kAllForms, 32, f.FromPacked())),
     RIVAL(for (int y = 0; y < f.h; ++y) {
       libyuv::ARGBToYUY2(s + y * f.w * 4, f.w * 4, t + y * f.w * 2, f.w * 2, f.w, 1);
     })},
    {"rgb24>yuy2", 24, 16,
     OURS(zor::ConvertRgbToYuy2(s, f.w * 3, t, f.w * 2, f.w, f.h, kAllForms, 24, f.FromPacked())),
     RIVAL(for (int y = 0; y < f.h; ++y) {
       libyuv::RGB24ToARGB(s + y * f.w * 3, f.w * 3, Strip(), f.w * 4, f.w, 1);
       libyuv::ARGBToYUY2(Strip(), f.w * 4, t + y * f.w * 2, f.w * 2, f.w, 1);
     })},
    {"rgb24>rgb32", 24, 32,
     OURS(zor::PackRgb24ToRgb32(s, f.w * 3, t, f.w * 4, f.w, f.h, kAllForms, f.FromPacked())),
     RIVAL(libyuv::RGB24ToARGB(s, f.w * 3, t, f.w * 4, f.w, f.h))},
    {"rgb32>rgb24", 32, 24,
     OURS(zor::PackRgb32ToRgb24(s, f.w * 4, t, f.w * 3, f.w, f.h, kAllForms, f.FromPacked())),
     RIVAL(libyuv::ARGBToRGB24(s, f.w * 4, t, f.w * 3, f.w, f.h))},
};

struct Setting {
  const char* name;
  Frame frame;
  bool cold;
};

constexpr Setting kSettings[] = {{"1080p hot", {1920, 1080}, false},
                                 {"4K hot", {3840, 2160}, false},
                                 {"1080p cold", {1920, 1080}, true},
                                 {"1080p cold upward", {1920, 1080, true}, true}};

/// One arena that all settings share, with pages of its own touched once.
std::uint8_t* Arena() {
  constexpr std::size_t kBytes = std::size_t{400} << 20;
  static std::uint8_t* const arena = [] {
    auto* bytes = static_cast<std::uint8_t*>(std::aligned_alloc(4096, kBytes));
    zor::bench::Paint(bytes, kBytes);
    return bytes;
  }();
  return arena;
}

std::size_t Lines(std::size_t bytes) {
  return (bytes + 4095) / 4096 * 4096 + 8192;
}

void Run(benchmark::State& state, const Setting& setting, const Conversion& conversion,
         const Work& work, zor::VectorLevel level) {
  zor::LimitInnerVectorLevel(level);
  const auto pixels = static_cast<std::size_t>(setting.frame.w * setting.frame.h);
  const std::size_t source = Lines(pixels * static_cast<std::size_t>(conversion.sourceBits) / 8);
  const std::size_t target = Lines(pixels * static_cast<std::size_t>(conversion.targetBits) / 8);
  const std::size_t turns = setting.cold ? zor::bench::kCold / (source + target) : 1;
  std::size_t turn = 0;
  for (auto _ : state) {
    std::uint8_t* at = Arena() + 4096 + turn * (source + target);
    work(setting.frame, at + source, at);
    turn = (turn + 1) % turns;
    benchmark::ClobberMemory();
  }
  zor::LimitInnerVectorLevel(zor::VectorLevel::kAvx512);
}

/// Half of the bytes are read, half written.
Work CopyOf(const Conversion& conversion) {
  const int bits = conversion.sourceBits + conversion.targetBits;
  return [bits](const Frame& f, std::uint8_t* t, std::uint8_t* s) {
    const std::size_t bytes =
        static_cast<std::size_t>(f.w * f.h) * static_cast<std::size_t>(bits) / 16;
    // Source and target are neighbours, so that both halves lie in them.
    std::memcpy(s + bytes, s, bytes);
    benchmark::DoNotOptimize(t);
  };
}

}  // namespace

int main(int argc, char** argv) {
  Arena();  // not in the first contestant's time
  struct Contestant {
    const char* name;
    zor::VectorLevel level;
  };
  constexpr Contestant kLevels[] = {{"ours", zor::VectorLevel::kAvx512},
                                    {"ours avx2", zor::VectorLevel::kAvx2},
                                    {"ours sse2", zor::VectorLevel::kSse2}};
  for (const Setting& setting : kSettings) {
    for (const Conversion& conversion : kConversions) {
      const auto add = [&](const char* who, const Work& work, zor::VectorLevel level) {
        const std::string name = std::string(conversion.name) + "/" + setting.name + "/" + who;
        benchmark::RegisterBenchmark(name.c_str(),
                                     [&setting, &conversion, work, level](benchmark::State& state) {
                                       Run(state, setting, conversion, work, level);
                                     })
            ->Unit(benchmark::kMicrosecond)
            ->MinTime(0.02);
      };
      for (const Contestant& contestant : kLevels) {
        add(contestant.name, conversion.ours, contestant.level);
      }
      if (conversion.rival) add("libyuv", conversion.rival, zor::VectorLevel::kSse2);
      add("copy", CopyOf(conversion), zor::VectorLevel::kSse2);
    }
  }
  return zor::bench::Run(argc, argv);
}
