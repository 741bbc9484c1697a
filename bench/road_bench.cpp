// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

/// Whole requests through surfaces, and the small engines beside them, each with a copy of as many
/// bytes in the same run. Compare rows of one run only, best with
///     --benchmark_enable_random_interleaving=true --benchmark_repetitions=9

#include <benchmark/benchmark.h>
#include <zorsurface/ref.hpp>

#include <cstring>
#include <vector>

#include "compositor/swap_planes.h"
#include "convert/fast_mem_copy.h"
#include "surface/fill.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

struct Size {
  std::int32_t width;
  std::int32_t height;
};
constexpr Size kFull{1920, 1080};

Bytes Frame(Size size) {
  Bytes bytes(static_cast<std::size_t>(size.width) * size.height * 3 / 2);
  std::uint32_t word = 1;
  for (std::uint8_t& byte : bytes)
    byte = static_cast<std::uint8_t>((word = word * 1664525 + 1013904223) >> 24);
  return bytes;
}

zor::Ref<IZorSurface> MakeSurface(Size size, Bytes* frame) {
  static const zor::Ref<ISurfaceBuilder> builder = zor::LoadBuilder();
  zor::LentPixels pixels(frame->data());
  const SurfaceDescription d = zor::MakeDescription(FORMAT_YUV420, size.width, size.height);
  zor::Ref<IZorSurface> surface;
  builder->CreateFromMemory(&d, &pixels, surface.put());
  return surface;
}

/// A frame in, another size and format out into the host's memory.
void Road(benchmark::State& state, Size to, std::int32_t format, std::int32_t fit) {
  Bytes frame = Frame(kFull);
  const std::int32_t stride = to.width * (format == FORMAT_RGB32 ? 4 : 3);
  Bytes out(static_cast<std::size_t>(stride) * to.height);
  for (auto _ : state) {
    const zor::Ref<IZorSurface> surface = MakeSurface(kFull, &frame);
    surface->QueueResize(to.width, to.height, fit, SCALE_BILINEAR);
    surface->QueueConvert(format);
    surface->ReadPixels(out.data(), stride, 1);
    benchmark::DoNotOptimize(out.data());
  }
  state.SetBytesProcessed(state.iterations() *
                          static_cast<std::int64_t>(frame.size() + out.size()));
}

/// Reads and writes half of the bytes each.
template <class Copy>
void CopyHalf(benchmark::State& state, std::size_t bytes, Copy copy) {
  Bytes from(bytes / 2, 1), to(bytes / 2);
  for (auto _ : state) {
    copy(to.data(), from.data(), to.size());
    benchmark::DoNotOptimize(to.data());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}

void Floor(benchmark::State& state, std::size_t bytes) {
  CopyHalf(state, bytes, std::memcpy);
}

void FastCopy(benchmark::State& state, std::size_t bytes) {
  CopyHalf(state, bytes, zor::FastMemCopy);
}

void Swap(benchmark::State& state) {
  Bytes planes = Frame(kFull);
  const std::int32_t n = kFull.width * kFull.height / 4;
  std::uint8_t* first = planes.data() + kFull.width * kFull.height;
  for (auto _ : state) {
    zor::SwapPlanes(first, first + n, n);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * 4 * std::int64_t{n});
}

template <class Fill>
void Paint(benchmark::State& state, std::size_t bytes, Fill fill) {
  Bytes picture(bytes);
  for (auto _ : state) {
    fill(picture.data());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}

/// Rows copied out of a surface with an empty queue.
void ReadOut(benchmark::State& state, std::uint32_t orientation) {
  Bytes frame = Frame(kFull);
  const zor::Ref<IZorSurface> surface = MakeSurface(kFull, &frame);
  Bytes out(frame.size());
  for (auto _ : state) {
    surface->ReadPixels(out.data(), kFull.width, orientation);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * 2 * static_cast<std::int64_t>(out.size()));
}

constexpr std::size_t kPlanar = 1920 * 1080 * 3 / 2;

BENCHMARK_CAPTURE(Road, i420_1080p_to_rgb32_720p, Size{1280, 720}, FORMAT_RGB32, 0);
BENCHMARK_CAPTURE(Road, i420_1080p_to_rgb24_720p, Size{1280, 720}, FORMAT_RGB24, 0);
BENCHMARK_CAPTURE(Road, i420_1080p_to_rgb32_640x640_fit, Size{640, 640}, FORMAT_RGB32, 1);
BENCHMARK_CAPTURE(Floor, as_the_road_to_rgb32_720p, kPlanar + 1280 * 720 * 4);
BENCHMARK_CAPTURE(FastCopy, i420_1080p, 2 * kPlanar);
BENCHMARK_CAPTURE(Floor, i420_1080p, 2 * kPlanar);
BENCHMARK(Swap);
BENCHMARK_CAPTURE(ReadOut, i420_same_order, 1);
BENCHMARK_CAPTURE(ReadOut, i420_turned_over, 0);
BENCHMARK_CAPTURE(Paint, rgb32, 1920 * 1080 * 4, [](std::uint8_t* p) {
  zor::FillRectRgb(p, 1920, 1080, 1920 * 4, nullptr, 32, 0x123456);
});
BENCHMARK_CAPTURE(Paint, rgb24, 1920 * 1080 * 3, [](std::uint8_t* p) {
  zor::FillRectRgb(p, 1920, 1080, 1920 * 3, nullptr, 24, 0x123456);
});
BENCHMARK_CAPTURE(Paint, i420, kPlanar, [](std::uint8_t* p) {
  zor::FillRectYuv420(p, 1920, 1080, 1920, nullptr, 0x123456);
});
BENCHMARK_CAPTURE(Paint, memset_of_rgb32, 1920 * 1080 * 4,
                  [](std::uint8_t* p) { std::memset(p, 1, 1920 * 1080 * 4); });

}  // namespace

BENCHMARK_MAIN();
