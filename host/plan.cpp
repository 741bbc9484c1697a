// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "plan.h"

#include <zorsurface/scale_mode.h>
#include <zorsurface/surface_description.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "exit_code.h"
#include "text.h"

namespace zorhost {
namespace {

constexpr int kSmallestSide = 4;

std::string SizeText(int width, int height) {
  return std::to_string(width) + "x" + std::to_string(height);
}

bool Subsampled(Layout layout) {
  return Traits(layout).planar || layout == Layout::kYuy2;
}

/// The size that the library gives a turned picture: the rectangle around it, whole and even.
Size TurnedSize(int width, int height, int degrees) {
  if (degrees == 180) return {width, height};
  if (degrees == 90 || degrees == 270) return {height, width};
  const int acute = degrees > 180 ? degrees - 180 : degrees;
  const double angle = (acute <= 90 ? acute : 180 - acute) * 3.14159 / 180;
  const double s = std::sin(angle);
  const double c = std::cos(angle);
  const int across = static_cast<int>(height * s + width * c);
  const int down = static_cast<int>(height * c + width * s);
  return {across + across % 2, down + down % 2};
}

void RefuseOdd(Layout layout, int width, int height) {
  if (Traits(layout).planar && (width % 2 || height % 2)) {
    throw UsageError(SizeText(width, height) + ": a " + Traits(layout).name +
                     " picture has an even width and height");
  }
  if (layout == Layout::kYuy2 && width % 2) {
    throw UsageError(SizeText(width, height) + ": a yuy2 picture has an even width");
  }
}

}  // namespace

Plan::Plan(const StreamInfo& source, Layout target, std::vector<std::string>& notes)
    : sourceLayout_(source.layout),
      sourceWidth_(source.width),
      sourceHeight_(source.height),
      sourceAlpha_(source.hasAlpha) {
  PictureShape shape{source.layout, source.width, source.height, false};
  const std::string size = SizeText(source.width, source.height);
  if (source.width < kSmallestSide || source.height < kSmallestSide) {
    throw InputError(source.path + ": " + size + " is too small; the library's pictures are at " +
                     "least 4x4");
  }
  if (shape.layout == Layout::kGray8 && target != Layout::kGray8) {
    shape.layout = Layout::kYvu420;
    notes.push_back("mono: handed in as yuv420 with neutral chroma");
  }
  if (Subsampled(shape.layout)) {
    shape.width &= ~1;
    if (Traits(shape.layout).planar) shape.height &= ~1;
  } else if (Traits(shape.layout).rgb) {
    shape.width &= ~3;
    shape.height &= ~1;
    shape.bottomUp = true;
  }
  if (shape.width != source.width || shape.height != source.height) {
    notes.push_back("odd size: of " + size + " the left upper " +
                    SizeText(shape.width, shape.height) + " is used (a " +
                    Traits(shape.layout).name + " surface has no more)");
  }
  // The builder exchanges the planes of Y, U, V on the way in.
  if (shape.layout == Layout::kYvu420) shape.layout = Layout::kYuv420;
  shapes_.push_back(shape);
}

void Plan::Push(const Operation& operation, const PictureShape& shape) {
  operations_.push_back(operation);
  shapes_.push_back(shape);
}

void Plan::Convert(Layout target) {
  if (target == result().layout) return;
  const auto push = [this](Layout layout, std::int32_t format) {
    Operation operation{Operation::Kind::kConvert};
    operation.format = format;
    PictureShape shape = result();
    // The exchange of planes leaves the rows; every other conversion sets their order by kind.
    if (format != FORMAT_YVU420) shape.bottomUp = Traits(layout).rgb;
    if (shape.layout == Layout::kYuy2 && Traits(layout).rgb) shape.turnedOver = !shape.turnedOver;
    shape.layout = layout;
    Push(operation, shape);
  };
  RefuseOdd(target, result().width, result().height);
  // Only a planar surface can exchange its planes.
  if (target == Layout::kYvu420) Convert(Layout::kYuv420);
  if (target == Layout::kYuy2 && result().layout == Layout::kRgb24) Convert(Layout::kRgb32);
  // Exchanged planes are exchanged back before anything reads their colours.
  if (result().layout == Layout::kYvu420) push(Layout::kYuv420, FORMAT_YVU420);
  if (target != result().layout) push(target, Traits(target).format);
}

void Plan::Resize(int width, int height, bool fit, std::uint32_t mode) {
  if (width < kSmallestSide || height < kSmallestSide) {
    throw UsageError(SizeText(width, height) + ": a picture is at least 4x4");
  }
  RefuseOdd(result().layout, width, height);
  const bool planarMode = mode >= SCALE_PLANAR_NEAREST;
  if (planarMode && !Subsampled(result().layout)) {
    throw UsageError(std::string("the planar scaling modes are for planar pictures, not ") +
                     Traits(result().layout).name);
  }
  Operation operation{Operation::Kind::kResize};
  operation.width = width;
  operation.height = height;
  operation.fit = fit;
  operation.mode = mode;
  PictureShape shape = result();
  shape.width = width;
  shape.height = height;
  // A packed picture is scaled as planar and comes back top-down.
  if (shape.layout == Layout::kYuy2) shape.bottomUp = false;
  Push(operation, shape);
}

void Plan::Cover(int width, int height, std::uint32_t mode) {
  // Packed surfaces can't be drawn into by rectangles.
  if (result().layout == Layout::kYuy2) Convert(Layout::kYuv420);
  Resize(width, height, false, mode);
  operations_.back().kind = Operation::Kind::kCover;
}

void Plan::Rotate(int degrees, std::optional<std::uint32_t> background) {
  degrees = (degrees % 360 + 360) % 360;
  if (degrees == 0) return;
  if (result().layout == Layout::kYuy2) Convert(Layout::kYuv420);
  PictureShape shape = result();
  Operation operation{Operation::Kind::kRotate};
  // The library turns top-down packed pictures the other way.
  const bool clockwise = Traits(shape.layout).planar || shape.bottomUp;
  operation.degrees = clockwise != shape.turnedOver ? degrees : 360 - degrees;
  operation.background = background;
  const Size size = TurnedSize(shape.width, shape.height, operation.degrees);
  shape.width = operation.width = size.width;
  shape.height = operation.height = size.height;
  Push(operation, shape);
}

void Plan::Draw(std::shared_ptr<Drawing> drawing) {
  Operation operation{Operation::Kind::kDraw};
  operation.drawing = std::move(drawing);
  Push(operation, result());
}

bool Plan::EndsAtOnce() const {
  if (operations_.empty()) return false;
  const Operation::Kind last = operations_.back().kind;
  return last != Operation::Kind::kResize && last != Operation::Kind::kConvert;
}

void Plan::ReadAs(bool bottomUp, int pitch) {
  const int row = RowBytes(result().layout, result().width);
  if (pitch != 0 && pitch < row) {
    throw UsageError("--pitch " + std::to_string(pitch) + ": a row has " + std::to_string(row) +
                     " bytes");
  }
  if (pitch % 2 && Traits(result().layout).planar) {
    throw UsageError("--pitch " + std::to_string(pitch) +
                     ": planar rows need an even pitch, chroma has half of it");
  }
  if (bottomUp && result().layout == Layout::kGray8) {
    throw UsageError("--bottom-up: gray pictures are read as they lie, top-down");
  }
  bottomUp_ = bottomUp;
  pitch_ = pitch ? pitch : NaturalStride(result().layout, result().width);
}

bool Plan::NeedsCopyAtEnd() const {
  if (operations_.empty() || EndsAtOnce()) return false;
  const PictureShape& from = shapes_[shapes_.size() - 2];
  const Operation& last = operations_.back();
  if (last.kind == Operation::Kind::kResize) {
    // Rows that are walked upward spill their last pixel's fourth byte into a row that is finished,
    // and what an area mode leaves unwritten shows what the memory was cleared with.
    const bool unwritten = last.mode == SCALE_AREA && Traits(from.layout).rgb;
    return from.layout == Layout::kYuy2 || from.bottomUp != askBottomUp() || unwritten;
  }
  if (last.format == FORMAT_YVU420) return askBottomUp() || pitch_ != result().width;
  const bool bothRgb = Traits(from.layout).rgb && Traits(result().layout).rgb;
  const bool bothYuv = Subsampled(from.layout) && Subsampled(result().layout);
  if (Traits(from.layout).rgb && !bothRgb) return true;  // rows come the other way round
  return (bothRgb || bothYuv) && from.bottomUp != askBottomUp();
}

const Picture& Plan::Prepare(const Picture& frame, Picture& scratch) const {
  const PictureShape& in = input();
  if (frame.layout() == Layout::kGray8 && in.layout != Layout::kGray8) {
    scratch = Picture(Layout::kYvu420, in.width, in.height);
    for (int y = 0; y < in.height; ++y) {
      std::memcpy(scratch.row(0, y), frame.row(0, y), static_cast<std::size_t>(in.width));
    }
    std::fill(scratch.data() + scratch.plane(1).offset, scratch.data() + scratch.size(), 128);
    return scratch;
  }
  // The builder trims RGB from the end of memory, where a bottom-up picture has its top: the height
  // is cut here, the width is left to the builder.
  const int width = in.bottomUp ? frame.width() : in.width;
  if (!flipped_ && frame.bottomUp == in.bottomUp && frame.width() == width &&
      frame.height() == in.height) {
    return frame;
  }
  scratch = frame.Cropped(width, in.height, in.bottomUp != flipped_);
  scratch.bottomUp = in.bottomUp;
  return scratch;
}

bool Plan::crossesColour() const {
  bool rgb = false;
  bool yuv = false;
  for (const PictureShape& shape : shapes_) {
    rgb |= Traits(shape.layout).rgb;
    yuv |= Subsampled(shape.layout);
  }
  return rgb && yuv;
}

int Plan::doubtfulColumns() const {
  for (std::size_t i = 0; i < operations_.size(); ++i) {
    if (operations_[i].format == FORMAT_RGB24 && Traits(shapes_[i].layout).planar) {
      return shapes_[i].width % 16;
    }
  }
  return 0;
}

int Plan::unwrittenColumns() const {
  for (std::size_t i = 0; i < operations_.size(); ++i) {
    if (operations_[i].format == FORMAT_YUY2 && Traits(shapes_[i].layout).rgb) {
      return shapes_[i].width % 8;
    }
  }
  return 0;
}

bool Plan::keepsAlpha() const {
  return sourceAlpha_ && std::all_of(shapes_.begin(), shapes_.end(), [](const PictureShape& s) {
           return s.layout == Layout::kRgb32;
         });
}

std::string Plan::Text() const {
  std::string text = SizeText(sourceWidth_, sourceHeight_) + " " + Traits(sourceLayout_).name;
  for (std::size_t i = 0; i < operations_.size(); ++i) {
    const Operation& operation = operations_[i];
    text += " -> ";
    if (operation.kind == Operation::Kind::kConvert) {
      text += Traits(shapes_[i + 1].layout).name;
    } else if (operation.kind == Operation::Kind::kDraw) {
      text += "composed";
    } else {
      if (operation.kind == Operation::Kind::kRotate) text += "turned to ";
      text += SizeText(operation.width, operation.height);
    }
  }
  return text;
}

}  // namespace zorhost
