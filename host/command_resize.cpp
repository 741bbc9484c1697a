// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include <zorsurface/scale_mode.h>

#include <CLI/CLI.hpp>
#include <cmath>

#include "command.h"
#include "run_flags.h"
#include "scale_options.h"
#include "text.h"

namespace zorhost {
namespace {

struct ResizeOptions {
  RunOptions run;
  std::string size;
  std::string scale;
  std::string fit = "stretch";
  std::string mode = "bilinear";
  std::string to;
};

ExitCode Resize(const ResizeOptions& options) {
  if (options.size.empty() == options.scale.empty()) {
    throw UsageError("resize: give either --size WxH or --scale N/M");
  }
  const Fit fit = FitFromName(options.fit);
  const std::uint32_t mode = ModeFromName(options.mode);
  const Size fixed = options.size.empty() ? Size{} : ParseSize(options.size, "--size");
  const Rational ratio = options.scale.empty() ? Rational{} : ParseScale(options.scale);
  return RunFrames(options.run, [&](const StreamInfo& info, std::vector<std::string>& notes) {
    const Layout target = ResultLayout(options.to, options.run.output, info.layout);
    Plan plan(info, target, notes);
    const Size size = options.size.empty() ? ScaledSize(plan.input().width, plan.input().height,
                                                        ratio, Traits(plan.input().layout).planar)
                                           : fixed;
    // Scaling first is the shorter way; only an odd size has to be scaled as RGB.
    if (Traits(plan.input().layout).planar && (size.width % 2 || size.height % 2) &&
        Traits(target).rgb) {
      notes.push_back("odd size: converted first, then scaled as " +
                      std::string(Traits(target).name));
      plan.Convert(target);
    }
    if (fit == Fit::kCover) {
      plan.Cover(size.width, size.height, mode);
    } else {
      plan.Resize(size.width, size.height, fit == Fit::kContain, mode);
    }
    plan.Convert(target);
    return plan;
  });
}

}  // namespace

void AddResizeCommand(CLI::App& app, Action& action) {
  auto options = std::make_shared<ResizeOptions>();
  options->run.verb = "resize";
  CLI::App* command = app.add_subcommand("resize", "Change the size of every frame");
  AddRunFlags(*command, options->run);
  command->add_option("--size", options->size, "Size of the result")->type_name("WxH");
  command->add_option("--scale", options->scale, "Ratio of the result to the source")
      ->type_name("N/M");
  command
      ->add_option("--fit", options->fit,
                   "stretch (fill the size), contain (keep the aspect between black bands), "
                   "cover (keep the aspect, cut what sticks out)")
      ->type_name("KIND");
  command->add_option("--mode", options->mode, KnownModes())->type_name("MODE");
  command->add_option("--to", options->to, "Format of the result: " + KnownLayouts())
      ->type_name("FORMAT");
  command->callback([options, &action] { action = [options] { return Resize(*options); }; });
}

}  // namespace zorhost
