// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#pragma once

/// @file
/// The arguments that every subcommand of the run kind shares.

#include "run.h"

namespace CLI {
class App;
}

namespace zorhost {

/// Adds IN, -o, --frames, --hash and their like to a subcommand. @p options must live as long.
void AddRunFlags(CLI::App& command, RunOptions& options);

/// The same without IN, for a subcommand that names its input in another way.
void AddResultFlags(CLI::App& command, RunOptions& options);

/// "rgb32,yuv420" as layouts in order; none for an empty text. @throws UsageError
std::vector<Layout> LayoutsFromNames(const std::string& names);

/// The layout of the result: the one named, or what suits the output and the source.
Layout ResultLayout(const std::string& named, const std::string& output, Layout source);

}  // namespace zorhost
