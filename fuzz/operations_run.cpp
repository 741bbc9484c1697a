// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include <algorithm>
#include <cstdlib>

#include "stage.h"

namespace zor::fuzz {
namespace {

constexpr int kMostSteps = 40;
constexpr std::int32_t kMostSize = 90;

constexpr std::int32_t kModes[] = {SCALE_NEAREST,
                                   SCALE_BILINEAR,
                                   SCALE_BILINEAR_FADE,
                                   SCALE_BOX,
                                   SCALE_BOX_FADE,
                                   SCALE_ROW_PAIRS,
                                   SCALE_AREA,
                                   SCALE_PLANAR_NEAREST,
                                   SCALE_PLANAR_SHARPEN,
                                   SCALE_PLANAR_AREA,
                                   7,
                                   -1};

/// One queued wish at most, then a read-out into memory of exactly the bytes that it may write.
void ReadExactly(Stage* stage, ByteReader* bytes, IZorSurface* surface) {
  stage->Note(surface->Flush());
  const SurfaceDescription d = DescriptionOf(surface);
  const std::int32_t stride = bytes->OneIn(3) ? bytes->Range(1, 400) : d.stride;
  std::size_t room = PictureBytes(d.format, stride, d.height);
  std::int32_t width = d.width;
  std::int32_t result = d.format;
  switch (bytes->Range(0, 2)) {
    case 0:
      break;
    case 1: {
      result = bytes->Range(0, 7);
      stage->Note(surface->QueueConvert(result));
      room = PictureBytes(result, stride, d.height);
      break;
    }
    default: {
      const std::int32_t height = bytes->Range(4, kMostSize);
      width = bytes->Range(4, kMostSize);
      stage->Note(surface->QueueResize(width, height, bytes->Byte() & 1, bytes->Of(kModes)));
      // A packed picture comes out at the size that it had, by way of its planar form.
      room = PictureBytes(FORMAT_YUV420, stride,
                          d.format == FORMAT_YUY2 ? std::max(height, d.height) : height);
      break;
    }
  }
  const bool apart = stride >= MakeDescription(result, width, d.height).stride;
  stage->Read(surface, room, stride, bytes->Byte() & 1, apart);
}

/// A read-out of whatever stands in the queue.
void ReadAll(Stage* stage, ByteReader* bytes, IZorSurface* surface) {
  constexpr std::int32_t kRows = 2 * kMostSize;
  if (DescriptionOf(surface).height > kRows) return;
  const std::int32_t stride = bytes->Range(1, 400);
  stage->Read(surface, PictureBytes(FORMAT_YUV420, stride, kRows), stride, bytes->Byte() & 1,
              false);
}

void StretchOut(Stage* stage, ByteReader* bytes, IZorSurface* surface) {
  stage->Note(surface->Flush());
  const SurfaceDescription d = DescriptionOf(surface);
  const std::int32_t width = bytes->Range(1, kMostSize), height = bytes->Range(1, kMostSize);
  const std::int32_t natural = MakeDescription(d.format, width, height).stride;
  const std::int32_t stride = bytes->OneIn(3) ? bytes->Range(0, 400) : natural;
  RECT source = stage->AnyRect(d.width, d.height);
  RECT target = stage->AnyRect(width, height);
  test::GuardedMemory memory(PictureBytes(d.format, stride < 1 ? natural : stride, height),
                             test::GuardedMemory::Edge::kEnd);
  stage->Note(surface->StretchToMemory(
      bytes->OneIn(4) ? nullptr : &source, bytes->OneIn(4) ? nullptr : &target, memory.data(),
      width, height, stride, static_cast<std::uint32_t>(bytes->Of(kModes))));
  Demand(memory.GuardsIntact(), "a stretch stays in its memory");
  if (stride < 1 || stride >= natural) stage->Note(memory.data(), memory.size());
}

void StretchIn(Stage* stage, ByteReader* bytes, IZorSurface* surface) {
  IZorSurface* const from = stage->Any();
  const SurfaceDescription d = DescriptionOf(surface), f = DescriptionOf(from);
  RECT target = stage->AnyRect(d.width, d.height);
  RECT source = stage->AnyRect(f.width, f.height);
  stage->Note(surface->StretchFromSurface(bytes->OneIn(4) ? nullptr : &target, from,
                                          bytes->OneIn(4) ? nullptr : &source,
                                          static_cast<std::uint32_t>(bytes->Of(kModes))));
}

void ExportDib(Stage* stage, IZorSurface* surface) {
  void* image = nullptr;
  std::uint32_t flag = 0;
  if (stage->Note(surface->ExportImage(2, &image, &flag)) != VED_OK) return;
  Demand(image != nullptr && flag == 1, "an export hands over its image");
#ifdef _WIN32
  GlobalFree(image);
#else
  std::free(image);
#endif
}

/// Keeps pictures small: sizes multiply where a rotation or a resize is repeated.
bool IsSmall(IZorSurface* surface) {
  const SurfaceDescription d = DescriptionOf(surface);
  return d.width <= 400 && d.height <= 400;
}

void Step(Stage* stage, ByteReader* bytes) {
  IZorSurface* const surface = stage->Any();
  auto size = [&] { return bytes->Range(0, kMostSize); };
  auto mode = [&] { return bytes->Of(kModes); };
  switch (bytes->Range(0, 19)) {
    case 0:
      return stage->Make();
    case 1:
    case 2:
      stage->Note(surface->QueueResize(size(), size(), bytes->Byte() & 1, mode()));
      return;
    case 3:
    case 4:
      stage->Note(surface->QueueConvert(bytes->Range(0, 7)));
      return;
    case 5:
      stage->Note(surface->Flush());
      return;
    case 6:
    case 7:
      return ReadExactly(stage, bytes, surface);
    case 8:
      return ReadAll(stage, bytes, surface);
    case 9:
      return StretchOut(stage, bytes, surface);
    case 10:
      return StretchIn(stage, bytes, surface);
    case 11: {
      RECT rect = stage->AnyRect(DescriptionOf(surface).width, DescriptionOf(surface).height);
      stage->Note(surface->Fill(bytes->OneIn(4) ? nullptr : &rect, bytes->Word()));
      return;
    }
    case 12: {
      const std::int32_t degrees =
          bytes->OneIn(2) ? 90 * bytes->Range(-5, 5) : bytes->Range(-400, 400);
      if (IsSmall(surface)) stage->Note(surface->Rotate(degrees));
      return;
    }
    case 13: {
      IZorSurface* clone = nullptr;
      if (stage->Note(surface->Clone(&clone)) == VED_OK) stage->Take(clone);
      return;
    }
    case 14:
      stage->Note(surface->SetMask(stage->Any()));
      return;
    case 15:
      return ExportDib(stage, surface);
    case 16:
      stage->Note(surface->ResizeNow(size(), size(), bytes->Byte() & 1,
                                     static_cast<std::uint32_t>(mode())));
      return;
    case 17:
      stage->Note(surface->ConvertNow(bytes->Range(0, 7)));
      return;
    case 18:
      stage->Note(surface->SetAspectRatio(bytes->Range(-1, 40), bytes->Range(-1, 40)));
      return;
    default:
      stage->Note(surface->WarpRegion(bytes->Range(0, 3), bytes->Word(), 1, 0, 0, 1, 0));
      return;
  }
}

}  // namespace

Trace RunOperations(const std::uint8_t* data, std::size_t size) {
  ByteReader bytes(data, size);
  Stage stage(&bytes);
  for (int step = 0; step < kMostSteps && !bytes.AtEnd(); ++step) Step(&stage, &bytes);
  return stage.End();
}

}  // namespace zor::fuzz
