// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "executor.h"

#include <algorithm>
#include <chrono>
#include <cstring>

#include "exported_bitmap.h"

namespace zorhost {
namespace {

using Clock = std::chrono::steady_clock;

double Since(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

std::string Name(const Plan& plan, std::size_t index) {
  const Operation& operation = plan.operations()[index];
  const PictureShape& from = plan.before(index);
  const PictureShape& to = plan.before(index + 1);
  if (operation.kind == Operation::Kind::kConvert) {
    return std::string(Traits(from.layout).name) + " to " + Traits(to.layout).name;
  }
  if (operation.kind == Operation::Kind::kRotate) {
    return std::string("turning ") + Traits(from.layout).name;
  }
  if (operation.kind == Operation::Kind::kDraw) return "composition";
  return std::string("scaling ") + Traits(from.layout).name + " to " +
         std::to_string(operation.width) + "x" + std::to_string(operation.height);
}

/// A read-out runs the queue, so its failure is mostly that of the last operation.
std::string ReadOutName(const Plan& plan) {
  const std::size_t count = plan.operations().size();
  return count ? "read-out after " + Name(plan, count - 1) : "read-out";
}

/// The middle of @p from with the aspect of @p width x @p height, on even edges.
RECT MiddleOf(const PictureShape& from, int width, int height) {
  int across = from.width;
  int down = from.height;
  if (std::int64_t{from.width} * height > std::int64_t{from.height} * width) {
    across = static_cast<int>(std::int64_t{from.height} * width / height) & ~1;
  } else {
    down = static_cast<int>(std::int64_t{from.width} * height / width) & ~1;
  }
  across = std::max(across, 2);
  down = std::max(down, 2);
  RECT rect;
  rect.left = (from.width - across) / 2 & ~1;
  rect.top = (from.height - down) / 2 & ~1;
  rect.right = rect.left + across;
  rect.bottom = rect.top + down;
  return rect;
}

/// Bytes behind the picture so that nothing the queue writes can leave the memory: a resize clears
/// one and a half times the pitch for every row, and since a queue reports the fate of its last
/// operation only, that one might meet the size from before a failed one.
std::size_t SpareBytes(const Plan& plan, int pitch) {
  int width = 0;
  int height = 0;
  for (std::size_t i = 0; i <= plan.operations().size(); ++i) {
    width = std::max(width, plan.before(i).width);
    height = std::max(height, plan.before(i).height);
  }
  const std::size_t largest =
      static_cast<std::size_t>(pitch) * height * 3 / 2 + static_cast<std::size_t>(width) * 4;
  const std::size_t picture = static_cast<std::size_t>(pitch) * plan.result().height;
  return largest > picture ? largest - picture : 0;
}

}  // namespace

Ref<IZorSurface> Executor::Make(const Picture& frame, Way way, std::int64_t number) {
  const Picture& ready = plan_.Prepare(frame, scratch_);
  Clock::time_point start = Clock::now();
  Ref<IZorSurface> surface = library_.HandIn(ready);
  timing_.handIn += Since(start);
  start = Clock::now();
  for (std::size_t i = 0; i < plan_.operations().size(); ++i) Perform(surface, i, way, number);
  timing_.process += Since(start);
  return surface;
}

void Executor::Run(const Picture& frame, Way way, Picture& out, std::int64_t number) {
  MakeRoom(out);
  const Ref<IZorSurface> surface = Make(frame, way, number);
  const Clock::time_point start = Clock::now();
  if (plan_.result().layout == Layout::kGray8) {
    ReadGray(*surface.get(), out);
  } else if (way == Way::kExport) {
    ReadExportedBitmap(*surface.get(), plan_.result().turnedOver, out);
  } else {
    ReadOut(*surface.get(), way, out);
  }
  timing_.process += Since(start);
}

void Executor::MakeRoom(Picture& out) const {
  const PictureShape& shape = plan_.result();
  if (out.layout() != shape.layout || out.width() != shape.width || out.height() != shape.height ||
      out.pitch() != plan_.pitch()) {
    out = Picture(shape.layout, shape.width, shape.height, plan_.pitch(),
                  SpareBytes(plan_, plan_.pitch()));
  }
  out.bottomUp = plan_.bottomUp();
  out.hasAlpha = plan_.keepsAlpha();
}

void Executor::Perform(Ref<IZorSurface>& surface, std::size_t index, Way way, std::int64_t number) {
  const Operation& operation = plan_.operations()[index];
  const std::string name = Name(plan_, index);
  switch (operation.kind) {
    case Operation::Kind::kResize:
      Check(surface->QueueResize(operation.width, operation.height, operation.fit,
                                 static_cast<std::int32_t>(operation.mode)),
            name);
      break;
    case Operation::Kind::kConvert:
      Check(surface->QueueConvert(operation.format), name);
      break;
    case Operation::Kind::kRotate:
      Check(surface->Rotate(operation.degrees), name);
      if (operation.background) PaintBackdrop(*surface.get(), index);
      break;
    case Operation::Kind::kDraw:
      // Eager runs draw on a clone, so that the two ways prove each other.
      operation.drawing->Draw(library_, surface, number, way != Way::kEager);
      break;
    case Operation::Kind::kCover: {
      const PictureShape& from = plan_.before(index);
      Ref<IZorSurface> target = library_.Blank(from.layout, operation.width, operation.height);
      RECT middle = MiddleOf(from, operation.width, operation.height);
      Check(target->StretchFromSurface(nullptr, surface.get(), &middle, operation.mode), name);
      surface = std::move(target);
      return;
    }
  }
  if (way == Way::kEager) {
    Check(surface->Flush(), name);
    ExpectShape(*surface.get(), plan_.before(index + 1));
  }
}

void Executor::PaintBackdrop(IZorSurface& surface, std::size_t index) {
  // An operation that failed before the turn would leave another shape.
  ExpectShape(surface, plan_.before(index + 1));
  auto found = backdrops_.find(index);
  if (found == backdrops_.end()) {
    const Operation& operation = plan_.operations()[index];
    const PictureShape& from = plan_.before(index);
    found = backdrops_
                .emplace(index, Backdrop(library_, from.layout, from.width, from.height,
                                         operation.degrees, *operation.background))
                .first;
  }
  found->second.Paint(surface);
}

void Executor::ExpectShape(IZorSurface& surface, const PictureShape& shape) const {
  const SurfaceDescription is = Describe(surface);
  const Layout stored = shape.layout == Layout::kYvu420 ? Layout::kYuv420 : shape.layout;
  if (is.width != shape.width || is.height != shape.height || is.format != Traits(stored).format) {
    throw HostError(ExitCode::kLibrary,
                    "library: an operation before the last one failed (the surface is " +
                        std::to_string(is.width) + "x" + std::to_string(is.height) + " of format " +
                        std::to_string(is.format) + ")");
  }
}

void Executor::ReadOut(IZorSurface& surface, Way way, Picture& out) const {
  const PictureShape& shape = plan_.result();
  const bool copyAtEnd = way == Way::kDeferred && plan_.NeedsCopyAtEnd();
  if (copyAtEnd) {
    const Layout stored = shape.layout == Layout::kYvu420 ? Layout::kYuv420 : shape.layout;
    Check(surface.QueueConvert(Traits(stored).format), "QueueConvert");
  }
  const std::size_t count = plan_.operations().size();
  Check(surface.ReadPixels(out.data(), out.pitch(), plan_.askBottomUp() ? 0 : 1),
        ReadOutName(plan_));
  // Direct output leaves the surface in front of the last operation.
  const bool direct = way == Way::kDeferred && !copyAtEnd && count > 0 && !plan_.EndsAtOnce() &&
                      plan_.operations().back().format != FORMAT_YVU420;
  ExpectShape(surface, plan_.before(direct ? count - 1 : count));
}

void Executor::ReadGray(IZorSurface& surface, Picture& out) const {
  // A read-out copies no rows of a gray surface, so they are taken from its own block.
  std::uint8_t* pixels = nullptr;
  Check(surface.GetPixels(&pixels), ReadOutName(plan_));
  const PictureShape& shape = plan_.result();
  ExpectShape(surface, shape);
  const int stride = Describe(surface).stride;
  for (int y = 0; y < shape.height; ++y) {
    std::memcpy(out.row(0, y), pixels + static_cast<std::size_t>(stride) * y,
                static_cast<std::size_t>(shape.width));
  }
}

}  // namespace zorhost
