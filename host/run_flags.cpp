// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "run_flags.h"

#include <CLI/CLI.hpp>

#include "frame_sink.h"
#include "text.h"

namespace zorhost {

void AddRunFlags(CLI::App& command, RunOptions& options) {
  command
      .add_option("input", options.input,
                  "Y4M, PNG, JPEG, BMP, PPM, img%04d.png, raw frames, - for Y4M on standard "
                  "input"
#ifdef ZORHOST_FFMPEG
                  ", and whatever FFmpeg opens"
#endif
                  )
      ->required()
      ->type_name("IN");
  AddResultFlags(command, options);
}

void AddResultFlags(CLI::App& command, RunOptions& options) {
  command
      .add_option("-o,--output", options.output,
                  "Result; the ending decides: .y4m .png .bmp .ppm .pgm .raw out%04d.png, - for "
                  "Y4M on standard output"
#ifdef ZORHOST_FFMPEG
                  ", .mp4 .mkv .webm compressed"
#endif
                  )
      ->type_name("OUT");
  command.add_option("--raw", options.raw, "Shape of raw input, such as 640x480:yvu420")
      ->type_name("WxH:FORMAT");
  command.add_option("--frames", options.frames, "Frames to take, counted from 0")
      ->type_name("A-B");
  command.add_option("--every", options.every, "Take each n-th frame only")->type_name("N");
  command
      .add_option("--write-every", options.writeEvery, "Process every frame, write each n-th only")
      ->type_name("N");
  command.add_flag("--bottom-up", options.bottomUp, "Read the result with its bottom row first");
  command.add_option("--pitch", options.pitch, "Bytes from row to row in the result's memory")
      ->type_name("N");
  command.add_flag("--hash{-}", options.hash,
                   "Print a hash of every frame, or write them to a file: --hash=FILE");
  command.add_flag("--eager", options.eager,
                   "Flush each operation at once instead of queueing all and reading directly");
  command.add_flag("--dib", options.dib,
                   "Take the result out as a bitmap in global memory instead of reading it");
  command.add_flag("--verify", options.verify,
                   "Run every frame both ways, eager and deferred, and compare");
  command.add_option("--progress", options.progress, "auto, bar, json or none")->type_name("KIND");
  command.add_flag("--json", options.json, "Print the summary as one JSON object");
  command.add_flag("-q,--quiet", options.quiet, "No notes and no summary");
}

std::vector<Layout> LayoutsFromNames(const std::string& names) {
  std::vector<Layout> layouts;
  for (const std::string& name : SplitWords(names, ',')) layouts.push_back(LayoutFromName(name));
  return layouts;
}

Layout ResultLayout(const std::string& named, const std::string& output, Layout source) {
  if (!named.empty()) return LayoutFromName(named);
  const SinkKind kind = SinkKindOf(output);
  // What a decoder calls Y, U, V is a plain yuv420 surface once it is handed in.
  const Layout stored = source == Layout::kYvu420 ? Layout::kYuv420 : source;
  if (SinkTakes(kind, stored)) return stored;
  const bool video = kind == SinkKind::kY4m || kind == SinkKind::kVideo;
  return video ? Layout::kYuv420 : Layout::kRgb24;
}

}  // namespace zorhost
