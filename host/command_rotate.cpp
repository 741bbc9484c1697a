// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include <CLI/CLI.hpp>

#include "command.h"
#include "run_flags.h"
#include "text.h"

namespace zorhost {
namespace {

struct RotateOptions {
  RunOptions run;
  int by = 0;
  bool upright = false;
  std::string flip;
  std::string background;
  std::string via;
  std::string to;
};

/// Mirrors by turning upside down, which costs nothing on the way in: left to right is that and
/// half a turn.
enum class Flip { kNone, kHorizontal, kVertical };

Flip FlipFromName(const std::string& name) {
  if (name.empty()) return Flip::kNone;
  if (name == "h") return Flip::kHorizontal;
  if (name == "v") return Flip::kVertical;
  throw UsageError("--flip " + name + ": h (left to right) or v (upside down)");
}

ExitCode Rotate(const RotateOptions& options, bool byGiven) {
  if (!options.upright && !byGiven && options.flip.empty()) {
    throw UsageError("rotate: give --by DEGREES, --auto or --flip");
  }
  if (options.upright && (byGiven || !options.flip.empty())) {
    throw UsageError("rotate: --auto takes the turn from the source; leave --by and --flip out");
  }
  const Flip asked = FlipFromName(options.flip);
  std::optional<std::uint32_t> background;
  if (!options.background.empty()) background = ParseColour(options.background, "--background");
  RunOptions run = options.run;
  run.obeysOrientation = options.upright;
  return RunFrames(run, [&](const StreamInfo& info, std::vector<std::string>& notes) {
    const Layout target = ResultLayout(options.to, run.output, info.layout);
    const std::vector<Layout> chain = LayoutsFromNames(options.via);
    Plan plan(info, chain.empty() ? target : chain.front(), notes);
    for (const Layout layout : chain) plan.Convert(layout);
    const Flip flip = options.upright ? (info.mirrored ? Flip::kHorizontal : Flip::kNone) : asked;
    int degrees = options.upright ? info.rotation : options.by;
    if (flip != Flip::kNone) plan.FlipFirst();
    if (flip == Flip::kHorizontal) degrees += 180;
    plan.Rotate(degrees, background);
    const bool rightAngle = degrees % 90 == 0 && degrees % 360 != 0;
    if (rightAngle && !background && !Traits(plan.result().layout).planar) {
      notes.push_back(
          "packed pictures are turned with 3.14159 for pi: at right angles the outermost row or "
          "column stays unpainted; --via yuv420 turns without one, --background paints it");
    }
    plan.Convert(target);
    return plan;
  });
}

}  // namespace

void AddRotateCommand(CLI::App& app, Action& action) {
  auto options = std::make_shared<RotateOptions>();
  options->run.verb = "rotate";
  CLI::App* command = app.add_subcommand("rotate", "Turn every frame");
  AddRunFlags(*command, options->run);
  CLI::Option* by =
      command->add_option("--by", options->by, "Whole degrees clockwise")->type_name("DEGREES");
  command->add_flag("--auto", options->upright,
                    "Turn and mirror as the source asks viewers to (EXIF, container)");
  command->add_option("--flip", options->flip, "Mirror first: h left to right, v upside down")
      ->type_name("h|v");
  command
      ->add_option("--background", options->background,
                   "Colour of what the turned picture doesn't cover; black if not given")
      ->type_name("RRGGBB");
  command->add_option("--via", options->via, "Formats to go through before the turn, in order")
      ->type_name("FORMAT,...");
  command->add_option("--to", options->to, "Format of the result: " + KnownLayouts())
      ->type_name("FORMAT");
  command->callback([options, by, &action] {
    action = [options, byGiven = by->count() > 0] { return Rotate(*options, byGiven); };
  });
}

}  // namespace zorhost
