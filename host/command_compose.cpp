// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include <CLI/CLI.hpp>

#include "command.h"
#include "run_flags.h"
#include "scene.h"
#include "scene_layers.h"

namespace zorhost {
namespace {

struct ComposeOptions {
  RunOptions run;
  std::vector<std::string> children;
  std::string project;
  std::string writeScene;
  std::string to;
};

/// A scene file, with what the command line adds to it.
Scene SceneOf(const ComposeOptions& options) {
  Scene scene;
  if (!options.project.empty()) scene = ReadScene(options.project);
  if (!options.run.input.empty()) scene.base = options.run.input;
  for (const std::string& child : options.children) scene.children.push_back(ParseChild(child));
  if (scene.base.empty()) {
    throw UsageError("compose: give --base IN, or a scene with a base by --project");
  }
  return scene;
}

ExitCode Compose(const ComposeOptions& options) {
  const Scene scene = SceneOf(options);
  const bool runs = !options.run.output.empty() || !options.run.hash.empty() || options.run.verify;
  if (!options.writeScene.empty()) {
    WriteScene(scene, options.writeScene);
    if (!runs) return ExitCode::kOk;
  }
  RunOptions run = options.run;
  run.input = scene.base;
  return RunFrames(run, [&](const StreamInfo& info, std::vector<std::string>& notes) {
    Plan plan(info, Layout::kYuv420, notes);
    plan.Convert(Layout::kYuv420);
    const PictureShape base = plan.result();
    plan.Draw(MakeLayers(scene, base.width, base.height, info.frameCount, notes));
    plan.Convert(ResultLayout(options.to, run.output, Layout::kYuv420));
    return plan;
  });
}

}  // namespace

void AddComposeCommand(CLI::App& app, Action& action) {
  auto options = std::make_shared<ComposeOptions>();
  options->run.verb = "compose";
  CLI::App* command = app.add_subcommand("compose", "Draw pictures and clips over every frame");
  command->add_option("--base", options->run.input, "What is drawn on: a clip or a picture")
      ->type_name("IN");
  command
      ->add_option("--child", options->children,
                   "One more on top: file=FILE with any of x y w h opacity=0..256 "
                   "mask=alpha|FILE key=RRGGBB rotate=90|180|270 scale=MODE from to fade-in "
                   "fade-out, with commas between")
      ->type_name("SPEC")
      ->take_all();
  command->add_option("--project", options->project, "A scene file; --child adds to it")
      ->type_name("SCENE.json");
  command->add_option("--write-scene", options->writeScene, "Keep base and children as a scene")
      ->type_name("SCENE.json");
  AddResultFlags(*command, options->run);
  command->add_option("--to", options->to, "Format of the result: " + KnownLayouts())
      ->type_name("FORMAT");
  command->callback([options, &action] { action = [options] { return Compose(*options); }; });
}

}  // namespace zorhost
