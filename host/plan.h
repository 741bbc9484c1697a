// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// What a run asks of the library for every frame, worked out once before the first one.

#include <zorsurface/ref.hpp>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "picture.h"
#include "stream_info.h"

namespace zorhost {

class Library;

/// What draws on a surface in the middle of a plan.
class Drawing {
 public:
  virtual ~Drawing() = default;
  /// @param frame the source's frame number.
  /// @param inPlace whether to draw on the surface itself or on a clone that takes its place.
  virtual void Draw(const Library& library, zor::Ref<IZorSurface>& surface, std::int64_t frame,
                    bool inPlace) = 0;
};

/// One request. A cover draws the middle of the picture into a fresh surface at once, and a
/// rotation and a drawing are done at once too; the other two are queued.
struct Operation {
  enum class Kind { kResize, kConvert, kCover, kRotate, kDraw };
  Kind kind;
  int width = 0;
  int height = 0;
  bool fit = false;
  std::uint32_t mode = 0;
  std::int32_t format = 0;
  int degrees = 0;
  std::shared_ptr<Drawing> drawing = nullptr;
  std::optional<std::uint32_t> background = {};  ///< 0xRRGGBB; nothing: what a turn leaves there
};

/// A surface's shape between two operations, as the surface tells it.
struct PictureShape {
  Layout layout = Layout::kYvu420;
  int width = 0;
  int height = 0;
  bool bottomUp = false;
  /// Whether the rows lie the other way round than `bottomUp` tells. A conversion from YUY2 to RGB
  /// writes them top-down and calls them bottom-up; whatever follows keeps them in that order.
  bool turnedOver = false;
};

/// A chain of operations with the shape that each one leaves.
class Plan {
 public:
  /// Works out the form in which frames of a source are handed in: planar and packed sizes are cut
  /// to even ones, RGB goes in bottom-up and is trimmed by the builder to a width of whole fours
  /// and an even height, and mono gets neutral chroma if @p target isn't gray. What is left out or
  /// added is told in @p notes.
  /// @throws InputError for pictures smaller than 4 x 4.
  Plan(const StreamInfo& source, Layout target, std::vector<std::string>& notes);

  /// RGB24 reaches YUY2 by way of RGB32: the direct conversion steps through RGB24 as if its pixels
  /// had four bytes.
  /// @throws UsageError where the library has no such picture (odd sizes in 4:2:0).
  void Convert(Layout target);
  void Resize(int width, int height, bool fit, std::uint32_t mode);
  void Cover(int width, int height, std::uint32_t mode);
  /// @param degrees clockwise, any whole number. A packed 4:2:2 picture is turned as planar.
  /// @param background 0xRRGGBB, painted where the turned picture isn't.
  void Rotate(int degrees, std::optional<std::uint32_t> background = {});
  /// Lets @p drawing draw on the picture as it stands here.
  void Draw(std::shared_ptr<Drawing> drawing);
  /// Turns the picture upside down before anything else, as in a mirror that lies below it.
  void FlipFirst() { flipped_ = true; }

  /// The row order and pitch (0: natural) in which the result is read.
  void ReadAs(bool bottomUp, int pitch);

  /// Brings a frame into the form that is handed in.
  /// @return @p frame itself where it has that form already, else @p scratch.
  const Picture& Prepare(const Picture& frame, Picture& scratch) const;

  /// The shape that is handed in, as the surface reports it.
  const PictureShape& input() const { return shapes_.front(); }
  const PictureShape& result() const { return shapes_.back(); }
  /// The shape in front of operation @p index.
  const PictureShape& before(std::size_t index) const { return shapes_[index]; }
  const std::vector<Operation>& operations() const { return operations_; }
  int pitch() const { return pitch_; }
  bool bottomUp() const { return bottomUp_; }
  /// The row order to ask the surface for, so that rows come out as `bottomUp` says.
  bool askBottomUp() const { return bottomUp_ != result().turnedOver; }
  /// Whether YUV meets RGB on the way.
  bool crossesColour() const;
  /// Columns at the right edge that a conversion from planar to RGB24 gives other colours
  /// by definition: behind the last whole sixteen the row's first chroma sample is used, red and
  /// blue exchanged. 0 where the plan has none.
  int doubtfulColumns() const;
  /// Columns at the right edge that a conversion from RGB to YUY2 leaves at 0 by definition: what
  /// is behind the last whole eight. 0 where the plan has none.
  int unwrittenColumns() const;
  /// Whether a fourth byte of the source is still alpha in the result.
  bool keepsAlpha() const;
  /// "1920x1080 yvu420 -> 1280x720 -> rgb32"
  std::string Text() const;

  /// Direct output of the queue's last operation isn't right for every pair: a packed picture comes
  /// unresized, and some conversions and the bands of a fit keep the surface's own row order. Then
  /// a conversion to the format already reached is queued behind it, which copies rows out.
  bool NeedsCopyAtEnd() const;
  /// Whether the last operation was done at once, so that a read-out finds an empty queue.
  bool EndsAtOnce() const;

 private:
  void Push(const Operation& operation, const PictureShape& shape);

  Layout sourceLayout_;
  int sourceWidth_;
  int sourceHeight_;
  bool sourceAlpha_;
  std::vector<Operation> operations_;
  std::vector<PictureShape> shapes_;
  bool bottomUp_ = false;
  bool flipped_ = false;
  int pitch_ = 0;
};

}  // namespace zorhost
