// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include <zorsurface/scale_mode.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "byte_stream.h"
#include "command.h"
#include "conversion_matrix.h"
#include "frame_source.h"
#include "gallery.h"
#include "interrupt.h"
#include "progress.h"
#include "scale_options.h"
#include "still.h"

namespace zorhost {
namespace {

struct GalleryOptions {
  std::string input;
  std::string output;
  int longest = 408;
  std::string progress = "auto";
};

// Whole factors, both ways, and ratios at which no two rows of boxes are alike.
constexpr Rational kRatios[] = {{3, 1}, {1, 2}, {1, 5}, {1, 17}, {7, 5}, {5, 7}, {10, 23}};
constexpr int kSmallestSide = 4;
constexpr int kAngles[] = {1, 30, 45, 90, 135, 180, 200, 270, 300};
constexpr Layout kConverted[] = {Layout::kRgb24, Layout::kRgb32, Layout::kYuv420, Layout::kYuy2,
                                 Layout::kYvu420};
constexpr Layout kTurned[] = {Layout::kRgb32, Layout::kYuv420, Layout::kGray8};

StreamInfo InfoOf(const Picture& picture) {
  StreamInfo info;
  info.layout = picture.layout();
  info.width = picture.width();
  info.height = picture.height();
  info.hasAlpha = picture.hasAlpha;
  return info;
}

/// The plan that takes a picture to a layout and does nothing else.
Plan PlanFor(const Picture& picture, Layout layout) {
  std::vector<std::string> notes;
  Plan plan(InfoOf(picture), layout, notes);
  plan.Convert(layout);
  return plan;
}

Picture RunOnce(const Library& library, Plan plan, const Picture& picture) {
  plan.ReadAs(false, 0);
  Picture out;
  Executor(library, plan).Run(picture, Way::kDeferred, out);
  return out;
}

/// Luma alone; the library has no conversion to gray.
Picture GrayOf(const Library& library, const Picture& picture) {
  const Picture planar = RunOnce(library, PlanFor(picture, Layout::kYuv420), picture);
  Picture gray(Layout::kGray8, planar.width(), planar.height());
  for (int y = 0; y < gray.height(); ++y) {
    std::memcpy(gray.row(0, y), planar.row(0, y), static_cast<std::size_t>(gray.width()));
  }
  return gray;
}

/// The first frame as RGB24, no larger than the page's pictures are to be.
Picture TakeIn(const Library& library, const std::string& path, int longest) {
  const auto source = OpenSource(path);
  Frame frame;
  if (!source->Read(frame)) throw InputError(path + ": holds no frame");
  Plan plan = PlanFor(frame.picture, Layout::kRgb24);
  const int side = std::max(plan.input().width, plan.input().height);
  if (side > longest) {
    // Whole blocks of sixteen, so that a decoded frame's last columns keep their colours.
    const auto scaled = [&](int size) {
      return std::max(16, static_cast<int>(std::int64_t{size} * longest / side) & ~15);
    };
    const Size size{scaled(plan.input().width), scaled(plan.input().height)};
    plan = PlanFor(frame.picture, plan.input().layout);
    plan.Resize(size.width, size.height, false,
                Traits(plan.input().layout).planar ? SCALE_PLANAR_AREA : SCALE_BOX);
    plan.Convert(Layout::kRgb24);
  }
  return RunOnce(library, plan, frame.picture);
}

class Gallery {
 public:
  Gallery(const Library& library, const Exhibitor& exhibitor, std::string name, Picture picture)
      : exhibitor_(exhibitor),
        name_(std::move(name)),
        picture_(std::move(picture)),
        gray_(GrayOf(library, picture_)) {}

  std::vector<ExhibitRow> Rows() const {
    std::vector<ExhibitRow> rows = {{name_, "", {Shown(picture_, Plan0(), "source", "source")}}};
    for (const std::string& mode : SplitModes()) {
      rows.push_back(Resized(mode));
      if (Interrupted()) return rows;
    }
    for (const Layout layout : kTurned) {
      rows.push_back(Turned(layout));
      if (Interrupted()) return rows;
    }
    rows.push_back(Converted());
    return rows;
  }

 private:
  static std::vector<std::string> SplitModes() {
    std::vector<std::string> modes;
    for (std::string& word : SplitWords(KnownModes(), ',')) {
      modes.push_back(word.substr(word.find_first_not_of(' ')));
    }
    return modes;
  }

  Plan Plan0() const { return PlanFor(picture_, Layout::kRgb24); }

  Exhibit Shown(const Picture& picture, const Plan& plan, const std::string& file,
                const std::string& title) const {
    return exhibitor_.Show(picture, plan, name_ + "-" + file, title);
  }

  ExhibitRow Resized(const std::string& name) const {
    const std::uint32_t mode = ModeFromName(name);
    const Layout layout = mode >= SCALE_PLANAR_NEAREST ? Layout::kYuv420 : Layout::kRgb24;
    ExhibitRow row{"Resize, " + name,
                   mode == SCALE_AREA ? "For reductions: what it enlarges comes out dark." : "",
                   {}};
    for (const Rational& ratio : kRatios) {
      const int smallest = std::min(picture_.width(), picture_.height());
      if (smallest * ratio.num < kSmallestSide * ratio.den) continue;
      Plan plan = PlanFor(picture_, layout);
      const Size size =
          ScaledSize(picture_.width(), picture_.height(), ratio, Traits(layout).planar);
      plan.Resize(size.width, size.height, false, mode);
      const std::string from = std::to_string(ratio.num);
      const std::string to = std::to_string(ratio.den);
      row.exhibits.push_back(Shown(picture_, plan, "resize-" + name + "-" + from + "-" + to,
                                   name + ", " + from + "/" + to));
    }
    return row;
  }

  ExhibitRow Turned(Layout layout) const {
    const Picture& picture = layout == Layout::kGray8 ? gray_ : picture_;
    ExhibitRow row{
        std::string("Turned clockwise, ") + Traits(layout).name,
        Traits(layout).planar ? "" : "At right angles an edge of a packed picture stays unpainted.",
        {}};
    for (const int degrees : kAngles) {
      Plan plan = PlanFor(picture, layout);
      plan.Rotate(degrees);
      const std::string angle = std::to_string(degrees);
      row.exhibits.push_back(Shown(picture, plan,
                                   std::string("turn-") + Traits(layout).name + "-" + angle,
                                   std::string(Traits(layout).name) + ", " + angle + " degrees"));
    }
    return row;
  }

  ExhibitRow Converted() const {
    ExhibitRow row{
        "Conversions",
        "Planar and packed results are shown as RGB32 that they were converted to. RGB24 reaches "
        "YUY2 by way of RGB32.",
        {}};
    for (const Layout from : kConverted) {
      for (const Layout to : kConverted) {
        if (from == to || !Converts(from, to)) continue;
        Plan plan = PlanFor(picture_, from);
        plan.Convert(to);
        const std::string names[] = {Traits(from).name, Traits(to).name};
        row.exhibits.push_back(Shown(picture_, plan, "convert-" + names[0] + "-" + names[1],
                                     names[0] + " to " + names[1]));
      }
    }
    return row;
  }

  const Exhibitor& exhibitor_;
  std::string name_;
  Picture picture_;
  Picture gray_;
};

std::vector<std::string> InputsOf(const std::string& path) {
  if (!std::filesystem::is_directory(path)) return {path};
  std::vector<std::string> inputs;
  for (const auto& entry : std::filesystem::directory_iterator(path)) {
    const std::string file = entry.path().string();
    if (entry.is_regular_file() && (IsStillPath(file) || Extension(file) == ".y4m")) {
      inputs.push_back(file);
    }
  }
  if (inputs.empty()) throw InputError(path + ": holds no picture and no .y4m");
  std::sort(inputs.begin(), inputs.end());
  return inputs;
}

ExitCode MakeGallery(const GalleryOptions& options) {
  if (Extension(options.output) != ".html") {
    throw UsageError(options.output + ": a gallery is written as .html");
  }
  if (options.longest < 64 || options.longest > 4096) throw UsageError("--longest: 64 to 4096");
  const std::vector<std::string> inputs = InputsOf(options.input);
  const ProgressMode mode = ProgressModeFromName(options.progress);
  const Library library;
  const Exhibitor exhibitor(library, options.output);
  std::vector<ExhibitRow> rows;
  {
    Progress progress("gallery", static_cast<std::int64_t>(inputs.size()), mode);
    for (std::size_t i = 0; i < inputs.size() && !Interrupted(); ++i) {
      Picture picture = TakeIn(library, inputs[i], options.longest);
      const std::string name = std::filesystem::path(inputs[i]).stem().string();
      const Gallery gallery(library, exhibitor, name, std::move(picture));
      for (ExhibitRow& row : gallery.Rows()) rows.push_back(std::move(row));
      progress.Step(static_cast<std::int64_t>(i + 1));
    }
  }
  ByteWriter page(options.output);
  page.Write(GalleryPage(options.input, rows));
  page.Finish();
  std::size_t count = 0;
  for (const ExhibitRow& row : rows) count += row.exhibits.size();
  std::fprintf(stderr, "zorhost: %zu pictures on %s\n", count, options.output.c_str());
  return Interrupted() ? ExitCode::kInterrupted : ExitCode::kOk;
}

}  // namespace

void AddGalleryCommand(CLI::App& app, Action& action) {
  auto options = std::make_shared<GalleryOptions>();
  CLI::App* command = app.add_subcommand(
      "gallery", "A page with every scaling mode, turns and conversions of pictures");
  command
      ->add_option("input", options->input,
                   "A picture, a clip whose first frame is taken, or a "
                   "folder of them")
      ->required()
      ->type_name("DIR|FILE");
  command
      ->add_option("-o,--output", options->output,
                   "The page; its pictures go into a folder beside it")
      ->required()
      ->type_name("OUT.html");
  command
      ->add_option("--longest", options->longest,
                   "Longest side at which a picture is taken; larger ones are shrunk first")
      ->type_name("N");
  command->add_option("--progress", options->progress, "auto, bar, json or none")
      ->type_name("KIND");
  command->callback([options, &action] { action = [options] { return MakeGallery(*options); }; });
}

}  // namespace zorhost
