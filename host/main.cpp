// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors

/// @file
/// zorhost: a host program of the library, for clips and pictures on the command line.

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <new>

#include "command.h"
#include "interrupt.h"

namespace {

using AddCommand = void (*)(CLI::App&, zorhost::Action&);
constexpr AddCommand kCommands[] = {
    zorhost::AddInfoCommand,
    zorhost::AddConvertCommand,
    zorhost::AddResizeCommand,
    zorhost::AddRotateCommand,
    zorhost::AddComposeCommand,
    zorhost::AddGalleryCommand,
    zorhost::AddSheetCommand,
};

int Code(zorhost::ExitCode code) {
  return static_cast<int>(code);
}

int Main(int argc, char** argv) {
  CLI::App app("zorhost: clips and pictures through the ZorSurface library");
  app.footer("Exit codes: 0 ok, 2 usage, 3 input, 4 output, 5 library, 130 ended by Ctrl-C");
  app.require_subcommand(1);
  // Otherwise a path that begins with a slash counts as an option on Windows.
  app.allow_windows_style_options(false);
  app.set_version_flag("--version", ZORHOST_VERSION);
  zorhost::Action action;
  for (const AddCommand add : kCommands) add(app, action);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? Code(zorhost::ExitCode::kOk) : Code(zorhost::ExitCode::kUsage);
  }
  zorhost::CatchInterrupts();
  return Code(action());
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Main(argc, argv);
  } catch (const zorhost::HostError& error) {
    std::fprintf(stderr, "zorhost: %s\n", error.what());
    return Code(error.code());
  } catch (const std::bad_alloc&) {
    std::fprintf(stderr, "zorhost: no memory for a picture of this size\n");
    return Code(zorhost::ExitCode::kInput);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "zorhost: %s\n", error.what());
    return Code(zorhost::ExitCode::kInput);
  }
}
