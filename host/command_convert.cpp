// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include <CLI/CLI.hpp>

#include "command.h"
#include "run_flags.h"

namespace zorhost {
namespace {

struct ConvertOptions {
  RunOptions run;
  std::string to;
  std::string via;
};

ExitCode Convert(const ConvertOptions& options) {
  const Layout target = LayoutFromName(options.to);
  std::vector<Layout> chain = LayoutsFromNames(options.via);
  chain.push_back(target);
  return RunFrames(options.run, [&](const StreamInfo& info, std::vector<std::string>& notes) {
    Plan plan(info, chain.front(), notes);
    for (const Layout layout : chain) plan.Convert(layout);
    return plan;
  });
}

}  // namespace

void AddConvertCommand(CLI::App& app, Action& action) {
  auto options = std::make_shared<ConvertOptions>();
  options->run.verb = "convert";
  CLI::App* command = app.add_subcommand("convert", "Change the pixel format of every frame");
  AddRunFlags(*command, options->run);
  command->add_option("--to", options->to, "Format of the result: " + KnownLayouts())
      ->required()
      ->type_name("FORMAT");
  command->add_option("--via", options->via, "Formats to go through first, in order")
      ->type_name("FORMAT,...");
  command->callback([options, &action] { action = [options] { return Convert(*options); }; });
}

}  // namespace zorhost
