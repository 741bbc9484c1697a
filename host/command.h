// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The subcommands. Each stands in a file of its own, adds itself to the command line and leaves
/// behind what is to be run; a new one needs its file and a line in `kCommands` of main.cpp.

#include <functional>

#include "exit_code.h"

namespace CLI {
class App;
}

namespace zorhost {

/// What a chosen subcommand does. Set while the command line is parsed.
using Action = std::function<ExitCode()>;

void AddInfoCommand(CLI::App& app, Action& action);
void AddConvertCommand(CLI::App& app, Action& action);
void AddResizeCommand(CLI::App& app, Action& action);
void AddRotateCommand(CLI::App& app, Action& action);
void AddComposeCommand(CLI::App& app, Action& action);
void AddGalleryCommand(CLI::App& app, Action& action);
void AddSheetCommand(CLI::App& app, Action& action);

}  // namespace zorhost
