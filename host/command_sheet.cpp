// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include <CLI/CLI.hpp>
#include <cstdio>

#include "command.h"
#include "frame_sink.h"
#include "picture_sink.h"
#include "still.h"

namespace zorhost {
namespace {

constexpr int kGap = 4;
// A middle gray, so that black bands around a picture show.
constexpr std::uint8_t kPaper = 0x80;

struct SheetOptions {
  std::vector<std::string> pictures;
  std::string output;
  std::string cell = "240x240";
  int columns = 4;
};

/// Whole-number box average, so that the sheet shows what was written and nothing of a scaler.
void Shrink(const Picture& from, int factor, Picture& page, int left, int top) {
  const int step = Traits(from.layout()).bitsPerPixel / 8;
  for (int y = 0; y < from.height() / factor; ++y) {
    std::uint8_t* to = page.row(0, top + y) + 3 * left;
    for (int x = 0; x < from.width() / factor; ++x, to += 3) {
      for (int c = 0; c < 3; ++c) {
        unsigned sum = 0;
        for (int j = 0; j < factor; ++j) {
          const std::uint8_t* row = from.row(0, y * factor + j) + x * factor * step;
          for (int i = 0; i < factor; ++i) sum += row[i * step + (step == 1 ? 0 : c)];
        }
        const unsigned count = static_cast<unsigned>(factor * factor);
        to[c] = static_cast<std::uint8_t>((sum + count / 2) / count);
      }
    }
  }
}

ExitCode Sheet(const SheetOptions& options) {
  if (options.columns < 1 || options.columns > 64) throw UsageError("--columns: 1 to 64");
  const Size cell = ParseSize(options.cell, "--cell");
  const SinkKind kind = SinkKindOf(options.output);
  if (!SinkTakes(kind, Layout::kRgb24) || kind == SinkKind::kRaw) {
    throw UsageError(options.output + ": a sheet is written as .png, .bmp or .ppm");
  }
  const int count = static_cast<int>(options.pictures.size());
  const int columns = std::min(options.columns, count);
  const int rows = (count + columns - 1) / columns;
  Picture page(Layout::kRgb24, columns * (cell.width + kGap) + kGap,
               rows * (cell.height + kGap) + kGap);
  std::fill(page.data(), page.data() + page.size(), kPaper);
  for (int i = 0; i < count; ++i) {
    const Picture picture = ReadStill(options.pictures[static_cast<std::size_t>(i)]).picture;
    int factor = 1;
    while (picture.width() / factor > cell.width || picture.height() / factor > cell.height) {
      ++factor;
    }
    const int left =
        kGap + i % columns * (cell.width + kGap) + (cell.width - picture.width() / factor) / 2;
    const int top =
        kGap + i / columns * (cell.height + kGap) + (cell.height - picture.height() / factor) / 2;
    Shrink(picture, factor, page, left, top);
  }
  WritePicture(page, options.output);
  std::fprintf(stderr, "zorhost: %d pictures on %s\n", count, options.output.c_str());
  return ExitCode::kOk;
}

}  // namespace

void AddSheetCommand(CLI::App& app, Action& action) {
  auto options = std::make_shared<SheetOptions>();
  CLI::App* command = app.add_subcommand("sheet", "Put pictures side by side on one page");
  command->add_option("pictures", options->pictures, "Pictures, in rows from the left")
      ->required()
      ->type_name("PICTURE...");
  command->add_option("-o,--output", options->output, "The page: .png, .bmp or .ppm")
      ->required()
      ->type_name("OUT");
  command->add_option("--cell", options->cell, "Room for one picture; it is shrunk into it")
      ->type_name("WxH");
  command->add_option("--columns", options->columns, "Pictures in a row")->type_name("N");
  command->callback([options, &action] { action = [options] { return Sheet(*options); }; });
}

}  // namespace zorhost
