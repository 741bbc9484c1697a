// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

/// The compositor's blends beside their nearest rivals, a copy of as many bytes, and a loop that
/// only reads the child and reads and writes the target. libyuv weighs chroma by the mean of four
/// mask samples and rounds; pixman blends bytes as x8r8g8b8 under a mask of four components.
/// Compare rows of one run only, best with
///     --benchmark_enable_random_interleaving=true --benchmark_repetitions=9

#include <cstdio>
#include <cstring>

#include "bench/contest.h"
#include "compositor/blend.h"
#include "convert/feature_word.h"

#ifdef ZOR_BENCH_LIBYUV
#include <libyuv.h>
#endif
#ifdef ZOR_BENCH_PIXMAN_1
#include <pixman.h>
#endif

namespace {

using zor::bench::Work;

constexpr std::uint32_t kOpacity = 96;

enum class Kind { kMaskPlanar, kMaskPacked, kOpacityPlanar, kKeyPlanar };

/// A child of this size, blended into a picture of 1080p where it is smaller, or into one of its
/// own size. The source holds the child and, behind it, the mask.
struct Case {
  Kind kind;
  int width, height;

  std::string Name() const {
    static constexpr const char* kKinds[] = {"mask i420", "mask yuy2", "opacity i420", "key i420"};
    char name[64];
    std::snprintf(name, sizeof name, "%s %dx%d", kKinds[static_cast<int>(kind)], width, height);
    return name;
  }
  bool Packed() const { return kind == Kind::kMaskPacked; }
  bool Masked() const { return kind == Kind::kMaskPlanar || Packed(); }
  /// A key that hardly a pixel of the noise has, so that the test costs and nothing is saved.
  std::uint32_t Key() const { return kind == Kind::kKeyPlanar ? 0x808080 : zor::kNoKeyColour; }
  int Stride() const { return (width * (Packed() ? 2 : 1) + 63) / 64 * 64; }
  int TargetStride() const { return std::max(Stride(), Packed() ? 3840 : 1920); }
  int TargetHeight() const { return std::max(height, 1080); }
  std::size_t TargetLuma() const {
    return static_cast<std::size_t>(TargetStride()) * static_cast<std::size_t>(TargetHeight());
  }
  std::size_t TargetBytes() const { return Packed() ? TargetLuma() : TargetLuma() * 3 / 2; }
  int Left() const { return width < 1920 ? 202 : 0; }
  int Top() const { return width < 1920 ? 100 : 0; }
  std::size_t Luma() const {
    return static_cast<std::size_t>(Stride()) * static_cast<std::size_t>(height);
  }
  std::size_t PictureBytes() const { return Packed() ? Luma() : Luma() * 3 / 2; }
  /// A planar blend's mask has the child's stride, a packed one's its width.
  std::size_t MaskBytes() const {
    return !Masked()  ? 0
           : Packed() ? static_cast<std::size_t>(width) * static_cast<std::size_t>(height)
                      : Luma();
  }
  std::size_t SourceBytes() const { return PictureBytes() + MaskBytes(); }
};

RECT RectAt(int left, int top, const Case& c) {
  return {left, top, left + c.width, top + c.height};
}

zor::BlockBytes Block(std::uint8_t* data, std::size_t bytes) {
  return {data, static_cast<std::int64_t>(bytes)};
}

Work Ours(const Case& c) {
  const auto stride = static_cast<std::uint32_t>(c.Stride());
  const auto targetStride = static_cast<std::uint32_t>(c.TargetStride());
  const auto targetHeight = static_cast<std::uint32_t>(c.TargetHeight());
  const auto width = static_cast<std::uint32_t>(c.width);
  const auto height = static_cast<std::uint32_t>(c.height);
  return [=](std::uint8_t* target, std::uint8_t* source) {
    const RECT dest = RectAt(c.Left(), c.Top(), c);
    const RECT rect = RectAt(0, 0, c);
    const zor::BlockBytes to = Block(target, c.TargetBytes());
    const zor::BlockBytes from = Block(source, c.PictureBytes());
    const zor::BlockBytes mask = Block(source + c.PictureBytes(), c.MaskBytes());
    switch (c.kind) {
      case Kind::kMaskPlanar:
        zor::BlendYuv420Masked(to, from, mask, targetStride, targetHeight, stride, height, &dest,
                               &rect, true);
        break;
      case Kind::kMaskPacked:
        zor::BlendYuy2Masked(to, from, mask, width, targetHeight, width, height, targetStride,
                             stride, &dest, &rect, true);
        break;
      case Kind::kOpacityPlanar:
      case Kind::kKeyPlanar:
        zor::BlendYuv420Keyed({to, targetStride, targetHeight}, {from, stride, height}, dest, rect,
                              kOpacity, zor::KeyColourOf(c.Key()), true);
        break;
    }
  };
}

/// Half of all bytes read and written: child, mask, and the target twice.
Work Copy(const Case& c) {
  const std::size_t bytes = (3 * c.PictureBytes() + c.MaskBytes()) / 2;
  const std::size_t room = c.SourceBytes();
  return [=](std::uint8_t* target, std::uint8_t* source) {
    for (std::size_t done = 0; done < bytes; done += room) {
      std::memcpy(target, source, std::min(room, bytes - done));
    }
  };
}

/// Reads child and mask, reads and writes the target.
__attribute__((target("avx2"), optimize("O3"))) void TouchBytes(std::uint8_t* target,
                                                                const std::uint8_t* source,
                                                                const std::uint8_t* mask,
                                                                std::size_t bytes,
                                                                std::size_t maskBytes) {
  for (std::size_t i = 0; i < maskBytes; ++i) {
    target[i] = static_cast<std::uint8_t>(target[i] ^ source[i] ^ mask[i]);
  }
  for (std::size_t i = maskBytes; i < bytes; ++i) {
    target[i] = static_cast<std::uint8_t>(target[i] ^ source[i]);
  }
}

Work Shape(const Case& c) {
  return [=](std::uint8_t* target, std::uint8_t* source) {
    TouchBytes(target, source, source + c.PictureBytes(), c.PictureBytes(), c.MaskBytes());
  };
}

/// Where a planar or packed target's samples under the child start.
struct Places {
  std::size_t y, u, v;
};

Places PlacesOf(const Case& c) {
  const auto at = [](int row, int stride, int column) {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(stride) +
           static_cast<std::size_t>(column);
  };
  const std::size_t chroma = c.TargetLuma() + at(c.Top() / 2, c.TargetStride() / 2, c.Left() / 2);
  return {at(c.Top(), c.TargetStride(), c.Packed() ? 2 * c.Left() : c.Left()), chroma,
          chroma + c.TargetLuma() / 4};
}

#ifdef ZOR_BENCH_LIBYUV
Work LibYuv(const Case& c) {
  const int ss = c.Stride(), ts = c.TargetStride();
  const std::size_t u = c.Luma(), v = u + u / 4;
  const Places to = PlacesOf(c);
  switch (c.kind) {
    case Kind::kMaskPlanar:
      return [=](std::uint8_t* t, std::uint8_t* s) {
        libyuv::I420Blend(s, ss, s + u, ss / 2, s + v, ss / 2, t + to.y, ts, t + to.u, ts / 2,
                          t + to.v, ts / 2, s + c.PictureBytes(), ss, t + to.y, ts, t + to.u,
                          ts / 2, t + to.v, ts / 2, c.width, c.height);
      };
    case Kind::kMaskPacked: {
      // The mask is doubled row by row, then the bytes are blended as one plane.
      const auto doubled = std::make_shared<zor::bench::Pixels>(static_cast<std::size_t>(ss));
      return [=](std::uint8_t* t, std::uint8_t* s) {
        const std::uint8_t* mask = s + c.PictureBytes();
        t += to.y;
        for (int y = 0; y < c.height; ++y) {
          libyuv::MergeUVPlane(mask, 0, mask, 0, doubled->data(), 0, c.width, 1);
          libyuv::BlendPlane(s, ss, t, ts, doubled->data(), 0, t, ts, 2 * c.width, 1);
          mask += c.width;
          s += ss;
          t += ts;
        }
      };
    }
    case Kind::kOpacityPlanar:
      return [=](std::uint8_t* t, std::uint8_t* s) {
        libyuv::I420Interpolate(s, ss, s + u, ss / 2, s + v, ss / 2, t + to.y, ts, t + to.u, ts / 2,
                                t + to.v, ts / 2, t + to.y, ts, t + to.u, ts / 2, t + to.v, ts / 2,
                                c.width, c.height, static_cast<int>(kOpacity));
      };
    case Kind::kKeyPlanar:
      break;
  }
  return nullptr;  // nothing races a key
}
#else
Work LibYuv(const Case&) {
  return nullptr;
}
#endif

#ifdef ZOR_BENCH_PIXMAN_1
/// Blends bytes as pixels of four, of which three are blended.
void PixmanPlane(std::uint8_t* target, int targetStride, std::uint8_t* source, std::uint8_t* mask,
                 int stride, int width, int height) {
  auto bits = [&](pixman_format_code_t format, std::uint8_t* data) {
    return pixman_image_create_bits_no_clear(format, width / 4, height,
                                             reinterpret_cast<std::uint32_t*>(data),
                                             data == target ? targetStride : stride);
  };
  const pixman_color_t weight = {0, 0, 0, (256 - kOpacity) << 8};
  pixman_image_t* const in = bits(PIXMAN_x8r8g8b8, source);
  pixman_image_t* const out = bits(PIXMAN_x8r8g8b8, target);
  pixman_image_t* const by =
      mask == nullptr ? pixman_image_create_solid_fill(&weight) : bits(PIXMAN_a8r8g8b8, mask);
  pixman_image_set_component_alpha(by, mask != nullptr);
  pixman_image_composite32(PIXMAN_OP_OVER, in, by, out, 0, 0, 0, 0, 0, 0, width / 4, height);
  for (pixman_image_t* image : {in, out, by}) pixman_image_unref(image);
}

Work Pixman(const Case& c) {
  // No mask for pixels of two bytes, and no key.
  if (c.Packed() || c.kind == Kind::kKeyPlanar) return nullptr;
  return [=](std::uint8_t* t, std::uint8_t* s) {
    std::uint8_t* const mask = c.Masked() ? s + c.PictureBytes() : nullptr;
    const std::size_t u = c.Luma(), v = u + u / 4;
    const Places to = PlacesOf(c);
    // Its pixels stand at whole words.
    auto word = [](std::size_t at) { return at & ~std::size_t{3}; };
    PixmanPlane(t + word(to.y), c.TargetStride(), s, mask, c.Stride(), c.width, c.height);
    for (const auto& [at, from] : {std::pair{to.u, u}, std::pair{to.v, v}}) {
      PixmanPlane(t + word(at), c.TargetStride() / 2, s + from, mask, c.Stride() / 2, c.width / 2,
                  c.height / 2);
    }
  };
}
#else
Work Pixman(const Case&) {
  return nullptr;
}
#endif

void RegisterCase(const Case& c, std::size_t spread) {
  zor::bench::RegisterContest(c.Name(), c.SourceBytes(), c.TargetBytes(), spread,
                              {{"zor", Ours(c)},
                               {"copy", Copy(c)},
                               {"shape", Shape(c)},
                               {"libyuv", LibYuv(c)},
                               {"pixman", Pixman(c)}});
}

void RegisterAll() {
  struct Size {
    int width, height;
  };
  static constexpr Size kSizes[] = {{1920, 1080}, {3840, 2160}, {512, 512}, {511, 510}, {98, 62}};
  for (const Kind kind :
       {Kind::kMaskPlanar, Kind::kMaskPacked, Kind::kOpacityPlanar, Kind::kKeyPlanar}) {
    for (const Size& size : kSizes) {
      const Case c{kind, size.width, size.height};
      RegisterCase(c, zor::bench::kHot);
      if (size.width == 1920) RegisterCase(c, zor::bench::kCold);
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  RegisterAll();
  return zor::bench::Run(argc, argv);
}
