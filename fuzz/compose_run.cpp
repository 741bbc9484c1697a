// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

#include "stage.h"

namespace zor::fuzz {
namespace {

constexpr int kMostSteps = 48;

/// Draws a surface's children and looks at what must hold.
void Compose(Stage* stage, IZorSurface* surface) {
  std::uint32_t inPlace = 0;
  surface->GetComposeInPlace(&inPlace);
  const std::int32_t children = surface->GetChildCount();
  IZorSurface* out = nullptr;
  stage->Note(surface->Compose(&out));
  if (out == nullptr) return;
  Demand(surface->GetChildCount() == 0, "children are consumed");
  Demand((out == surface) == (inPlace != 0 || children == 0), "the target is the one asked for");
  const std::int32_t format = DescriptionOf(out).format;
  if (children > 0) {
    Demand(format >= FORMAT_GRAY8 && format <= FORMAT_YUY2, "the target can be drawn on");
  }
  stage->Take(out);
  stage->TakeMasks();  // a blend that fails may have kept one that its child doesn't
}

/// Both rectangles of a child, of one size more often than not.
void SetRectangles(Stage* stage, ByteReader* bytes, IZorSurface* child) {
  const SurfaceDescription d = DescriptionOf(child);
  const RECT source = stage->AnyRect(d.width, d.height);
  const std::int32_t left = bytes->Range(0, 60), top = bytes->Range(0, 60);
  const std::int32_t right = source.right, bottom = source.bottom;
  stage->Note(child->SetSourceRect(source.left, source.top, right, bottom));
  if (bytes->OneIn(3)) {
    const RECT dest = stage->AnyRect();
    // A scratch surface has the size of the destination.
    if (std::int64_t{dest.right} - dest.left > 400 || std::int64_t{dest.bottom} - dest.top > 400) {
      return;
    }
    stage->Note(child->SetDestRect(dest.left, dest.top, dest.right, dest.bottom));
  } else {
    RECT kept{};
    child->GetSourceRect(&kept);
    stage->Note(child->SetDestRect(left, top, left + (kept.right - kept.left),
                                   top + (kept.bottom - kept.top)));
  }
}

void Step(Stage* stage, ByteReader* bytes) {
  static constexpr std::uint32_t kKeys[] = {0xFF000000u, 0, 0xFFFFFF, 0x80FF00};
  IZorSurface* const surface = stage->Any();
  switch (bytes->Range(0, 15)) {
    case 0:
      return stage->Make();
    case 1:
    case 2:
    case 3:
      return SetRectangles(stage, bytes, surface);
    case 4:
      stage->Note(surface->SetOpacity(static_cast<std::uint32_t>(bytes->Range(0, 258))));
      return;
    case 5:
      surface->SetBackColor(bytes->OneIn(4) ? bytes->Word() : bytes->Of(kKeys));
      return;
    case 6:
      stage->Note(surface->SetMask(stage->Any()));
      return;
    case 7:
    case 8:
    case 9:
      stage->Note(surface->AddChild(stage->Any()));
      return;
    case 10:
      stage->Note(surface->RemoveChild(bytes->Range(-1, 4)));
      return;
    case 11:
      surface->SetComposeInPlace(bytes->Byte() & 1);
      return;
    case 12:
      stage->Note(surface->QueueResize(bytes->Range(2, 60), bytes->Range(2, 60), bytes->Byte() & 1,
                                       bytes->Range(0, 6)));
      return;
    case 13:
      stage->Note(surface->QueueConvert(bytes->Range(0, 7)));
      return;
    default:
      return Compose(stage, surface);
  }
}

}  // namespace

Trace RunCompose(const std::uint8_t* data, std::size_t size) {
  ByteReader bytes(data, size);
  Stage stage(&bytes);
  for (int step = 0; step < kMostSteps && !bytes.AtEnd(); ++step) Step(&stage, &bytes);
  return stage.End();
}

}  // namespace zor::fuzz
