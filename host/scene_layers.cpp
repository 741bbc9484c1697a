// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "scene_layers.h"

#include <algorithm>
#include <optional>

#include "executor.h"
#include "exit_code.h"
#include "frame_source.h"
#include "key_colour.h"
#include "scale_options.h"
#include "still.h"

namespace zorhost {
namespace {

constexpr const char* kAlpha = "alpha";

/// RGB32 always gets a mask from its fourth byte as it is converted, so a child that is to be drawn
/// without a mask, or with another one, goes in as RGB24.
Picture WithoutAlpha(const Picture& picture) {
  Picture out(Layout::kRgb24, picture.width(), picture.height());
  for (int y = 0; y < picture.height(); ++y) {
    const std::uint8_t* from = picture.row(0, y);
    std::uint8_t* to = out.row(0, y);
    for (int x = 0; x < picture.width(); ++x, from += 4, to += 3) std::copy_n(from, 3, to);
  }
  return out;
}

/// What shows the child, a byte for each pixel: its alpha.
Picture AlphaOf(const Picture& picture) {
  Picture out(Layout::kGray8, picture.width(), picture.height());
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) out.row(0, y)[x] = picture.row(0, y)[4 * x + 3];
  }
  return out;
}

/// A picture's brightness; gray as it stands.
Picture BrightnessOf(const Picture& picture) {
  if (picture.layout() == Layout::kGray8) return picture.Cropped(picture.width(), picture.height());
  const int step = Traits(picture.layout()).bitsPerPixel / 8;
  Picture out(Layout::kGray8, picture.width(), picture.height());
  for (int y = 0; y < picture.height(); ++y) {
    const std::uint8_t* from = picture.row(0, y);
    for (int x = 0; x < picture.width(); ++x, from += step) {
      out.row(0, y)[x] =
          static_cast<std::uint8_t>((29 * from[0] + 150 * from[1] + 77 * from[2]) >> 8);
    }
  }
  return out;
}

/// Turned clockwise by a multiple of 90 degrees.
Picture Turned(const Picture& gray, int degrees) {
  const bool upright = degrees % 180 == 0;
  const int width = upright ? gray.width() : gray.height();
  const int height = upright ? gray.height() : gray.width();
  Picture out(Layout::kGray8, width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const int column = degrees == 0     ? x
                         : degrees == 90  ? y
                         : degrees == 180 ? width - 1 - x
                                          : height - 1 - y;
      const int row = degrees == 0     ? y
                      : degrees == 90  ? width - 1 - x
                      : degrees == 180 ? height - 1 - y
                                       : x;
      out.row(0, y)[x] = gray.row(0, row)[column];
    }
  }
  return out;
}

std::uint8_t Faded(int shown, int visibility) {
  return static_cast<std::uint8_t>(shown * visibility / kCovers);
}

/// One child: its source, and the surface of the frame that it shows now.
class Layer {
 public:
  Layer(const ChildSpec& spec, int baseWidth, int baseHeight, std::int64_t baseFrames,
        std::vector<std::string>& notes)
      : spec_(spec), source_(OpenSource(spec.file)), info_(source_->info()) {
    const bool hasAlpha = info_.layout == Layout::kRgb32 && info_.hasAlpha;
    if (spec_.mask == kAlpha && !hasAlpha) {
      throw InputError(spec_.file + ": has no alpha to make a mask of");
    }
    still_ = !info_.frameRate.set();
    Cut(notes);
    alphaByLibrary_ = spec_.mask == kAlpha && spec_.rotate == 0;
    if (info_.layout == Layout::kRgb32 && !alphaByLibrary_) info_.layout = Layout::kRgb24;
    plan_.emplace(info_, Layout::kYuv420, notes);
    plan_->Convert(Layout::kYuv420);
    plan_->Rotate(spec_.rotate);
    if (!spec_.scale.empty()) plan_->Resize(spec_.w, spec_.h, false, ModeFromName(spec_.scale));
    Place(baseWidth, baseHeight);
    FindLast(baseFrames);
    if (spec_.masked() && spec_.mask != kAlpha) ReadMask();
  }

  /// Gives @p parent this child as it stands in a frame; nothing where it doesn't show.
  void AddTo(const Library& library, IZorSurface& parent, std::int64_t frame) {
    const int visibility = Visibility(spec_, frame, last_);
    if (visibility == 0 || !MoveTo(still_ ? 0 : frame - spec_.from)) return;
    Make(library, visibility);
    Check(surface_->SetOpacity(static_cast<std::uint32_t>(kCovers - visibility)), "SetOpacity");
    Check(parent.AddChild(surface_.get()), "AddChild");
  }

 private:
  /// A mask is stepped through with the child's row step, and its own rows are whole fours.
  void Cut(std::vector<std::string>& notes) {
    if (!spec_.masked() || (info_.width % 4 == 0 && info_.height % 4 == 0)) return;
    notes.push_back(spec_.file + ": cut to whole fours in width and height, as it has a mask");
    info_.width &= ~3;
    info_.height &= ~3;
  }

  void Place(int baseWidth, int baseHeight) {
    if (!spec_.w) spec_.w = plan_->result().width;
    if (!spec_.h) spec_.h = plan_->result().height;
    if (spec_.w < 4 || spec_.h < 4) throw UsageError(spec_.Name() + ": w and h are at least 4");
    if (spec_.x + spec_.w > baseWidth || spec_.y + spec_.h > baseHeight) {
      throw UsageError(spec_.Name() + ": " + std::to_string(spec_.w) + "x" +
                       std::to_string(spec_.h) + " at " + std::to_string(spec_.x) + "," +
                       std::to_string(spec_.y) + " leaves the base of " +
                       std::to_string(baseWidth) + "x" + std::to_string(baseHeight));
    }
  }

  void FindLast(std::int64_t baseFrames) {
    const auto sooner = [this](std::int64_t frame) {
      last_ = last_ < 0 ? frame : std::min(last_, frame);
    };
    last_ = spec_.to;
    if (baseFrames > 0) sooner(baseFrames - 1);
    if (!still_ && info_.frameCount > 0) sooner(spec_.from + info_.frameCount - 1);
    if (spec_.fadeOut && last_ < 0) {
      throw UsageError(spec_.Name() + ": fade-out needs to=, the base's length isn't known");
    }
  }

  void ReadMask() {
    const Still still = ReadStill(spec_.mask);
    const StreamInfo& whole = source_->info();
    if (still.info.width != whole.width || still.info.height != whole.height) {
      throw InputError(spec_.mask + ": " + std::to_string(still.info.width) + "x" +
                       std::to_string(still.info.height) + ", but a mask has the size of its " +
                       "child, " + std::to_string(whole.width) + "x" +
                       std::to_string(whole.height));
    }
    shown_ = BrightnessOf(still.picture);
  }

  /// @return whether the source has the frame; a clip that ended shows nothing.
  bool MoveTo(std::int64_t number) {
    while (!ended_ && read_ <= number) {
      ended_ = !source_->Read(frame_);
      if (ended_) break;
      ++read_;
      madeFor_ = -1;
    }
    return !ended_;
  }

  void Make(const Library& library, int visibility) {
    // Without a mask the visibility goes in as the surface's opacity.
    const int baked = spec_.masked() ? visibility : kCovers;
    if (madeFor_ == baked) return;
    const bool rgb32 = frame_.picture.layout() == Layout::kRgb32;
    if (spec_.mask == kAlpha) shown_ = AlphaOf(frame_.picture);
    Picture changed;
    if (alphaByLibrary_) {
      changed = frame_.picture;
      FadeAlpha(changed, baked);
    } else if (rgb32) {
      changed = WithoutAlpha(frame_.picture);
    }
    Executor executor(library, *plan_);
    surface_ = executor.Make(changed.size() ? changed : frame_.picture, Way::kEager);
    if (spec_.masked() && !alphaByLibrary_) {
      const Ref<IZorSurface> mask = MakeMask(library, baked);
      Check(surface_->SetMask(mask.get()), "SetMask");
    }
    const PictureShape& shape = plan_->result();
    Check(surface_->SetSourceRect(0, 0, shape.width, shape.height), "SetSourceRect");
    Check(surface_->SetDestRect(spec_.x, spec_.y, spec_.x + spec_.w, spec_.y + spec_.h),
          "SetDestRect");
    if (spec_.key) Check(surface_->SetBackColor(BackColour(library)), "SetBackColor");
    madeFor_ = baked;
  }

  static void FadeAlpha(Picture& picture, int visibility) {
    for (int y = 0; y < picture.height(); ++y) {
      std::uint8_t* row = picture.row(0, y);
      for (int x = 0; x < picture.width(); ++x) row[4 * x + 3] = Faded(row[4 * x + 3], visibility);
    }
  }

  /// The library's masks weigh what lies below: the more of the child shows, the less.
  Ref<IZorSurface> MakeMask(const Library& library, int visibility) const {
    Picture weights = Turned(shown_.Cropped(info_.width, info_.height), spec_.rotate);
    for (std::size_t i = 0; i < weights.size(); ++i) {
      weights.data()[i] = static_cast<std::uint8_t>(255 - Faded(weights.data()[i], visibility));
    }
    return library.HandIn(weights);
  }

  std::uint32_t BackColour(const Library& library) const {
    const auto colour = BackColourFor(SampleOf(library, *spec_.key));
    if (colour) return *colour;
    throw UsageError(spec_.Name() +
                     ": no back colour of the library meets what this key becomes in 4:2:0; "
                     "take a less saturated one, or a mask");
  }

  ChildSpec spec_;
  std::unique_ptr<FrameSource> source_;
  StreamInfo info_;  ///< as handed in
  std::optional<Plan> plan_;
  bool still_ = false;
  bool alphaByLibrary_ = false;
  std::int64_t last_ = -1;
  Frame frame_;
  std::int64_t read_ = 0;
  bool ended_ = false;
  Picture shown_;  ///< the mask as the user sees it
  Ref<IZorSurface> surface_;
  int madeFor_ = -1;  ///< the visibility that the surface was made for; -1: for another frame
};

class Layers final : public Drawing {
 public:
  Layers(const Scene& scene, int width, int height, std::int64_t baseFrames,
         std::vector<std::string>& notes) {
    for (const ChildSpec& child : scene.children) {
      layers_.push_back(std::make_unique<Layer>(child, width, height, baseFrames, notes));
    }
  }

  void Draw(const Library& library, Ref<IZorSurface>& surface, std::int64_t frame,
            bool inPlace) override {
    for (const auto& layer : layers_) layer->AddTo(library, *surface.get(), frame);
    Check(surface->SetComposeInPlace(inPlace ? 1 : 0), "SetComposeInPlace");
    Ref<IZorSurface> drawn;
    Check(surface->Compose(drawn.put()), "Compose");
    surface = std::move(drawn);
  }

 private:
  std::vector<std::unique_ptr<Layer>> layers_;
};

}  // namespace

std::shared_ptr<Drawing> MakeLayers(const Scene& scene, int width, int height,
                                    std::int64_t baseFrames, std::vector<std::string>& notes) {
  return std::make_shared<Layers>(scene, width, height, baseFrames, notes);
}

}  // namespace zorhost
