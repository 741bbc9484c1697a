// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include <CLI/CLI.hpp>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "command.h"
#include "conversion_matrix.h"
#include "exit_code.h"
#include "frame_hash.h"
#include "frame_source.h"
#include "interrupt.h"
#include "raw.h"
#include "text.h"

namespace zorhost {
namespace {

using Json = nlohmann::ordered_json;

struct InfoOptions {
  std::vector<std::string> files;
  std::string raw;
  bool json = false;
  bool frames = false;
  bool matrix = false;
};

Json RatioOrNull(const Rational& r) {
  if (!r.set()) return nullptr;
  return std::to_string(r.num) + "/" + std::to_string(r.den);
}

Json Describe(const StreamInfo& info) {
  Json out = {{"file", info.path}, {"container", info.container}};
  if (!info.codec.empty()) out["codec"] = info.codec;
  out["width"] = info.width;
  out["height"] = info.height;
  out["pixelFormat"] = info.pixelFormat;
  out["readAs"] = Traits(info.layout).name;
  out["memoryOrder"] = Traits(info.layout).memory;
  out["range"] = RangeName(info.range);
  out["matrix"] = MatrixName(info);
  if (!info.chromaSiting.empty()) out["chromaSiting"] = info.chromaSiting;
  out["frameRate"] = RatioOrNull(info.frameRate);
  out["variableRate"] = info.variableRate;
  out["sampleAspect"] = RatioOrNull(info.sampleAspect);
  out["frames"] = info.frameCount < 0 ? Json(nullptr) : Json(info.frameCount);
  out["rowOrder"] = info.bottomUp ? "bottom-up" : "top-down";
  out["rotation"] = info.rotation;
  out["mirrored"] = info.mirrored;
  out["alpha"] = info.hasAlpha;
  out["notes"] = ColourNotes(info);
  return out;
}

/// Reads every frame; the rate counts as variable if the gaps between frames differ.
void AddFrames(FrameSource& source, Json& out) {
  Json list = Json::array();
  Frame frame;
  std::int64_t lastTime = -1;
  std::int64_t gap = -1;
  bool variable = false;
  for (std::int64_t index = 0; !Interrupted() && source.Read(frame); ++index) {
    Json entry = {{"index", index}};
    if (frame.time >= 0) {
      entry["time"] = frame.time;
      entry["timeBase"] = RatioOrNull(frame.timeBase);
      if (index > 0 && lastTime >= 0) {
        if (gap >= 0 && frame.time - lastTime != gap) variable = true;
        gap = frame.time - lastTime;
      }
      lastTime = frame.time;
    }
    entry["key"] = frame.keyFrame;
    entry["hash"] = HashText(HashPicture(frame.picture));
    list.push_back(std::move(entry));
  }
  out["frames"] = list.size();
  out["variableRate"] = variable;
  out["frameList"] = std::move(list);
}

std::string Text(const Json& value) {
  if (value.is_null()) return "not stated";
  if (value.is_boolean()) return value.get<bool>() ? "yes" : "no";
  return value.is_string() ? value.get<std::string>() : value.dump();
}

void Print(const Json& out) {
  std::printf("%s\n", Text(out["file"]).c_str());
  for (const auto& [key, value] : out.items()) {
    if (key == "file" || key == "frameList" || key == "notes") continue;
    std::printf("  %-14s %s\n", key.c_str(), Text(value).c_str());
  }
  for (const Json& note : out["notes"]) std::printf("  note           %s\n", Text(note).c_str());
  if (!out.contains("frameList")) return;
  for (const Json& frame : out["frameList"]) {
    std::printf("  frame %5s  time %8s  %s%s\n", frame["index"].dump().c_str(),
                frame.contains("time") ? frame["time"].dump().c_str() : "-",
                Text(frame["hash"]).c_str(), frame["key"].get<bool>() ? "  key" : "");
  }
}

ExitCode Info(const InfoOptions& options) {
  if (options.matrix) {
    std::printf("%s%s", (options.json ? ConversionMatrixJson() : ConversionMatrixText()).c_str(),
                options.json ? "\n" : "");
    return ExitCode::kOk;
  }
  if (options.files.empty()) throw UsageError("info: name a file, or ask for --matrix");
  const RawShape raw = options.raw.empty() ? RawShape{} : ParseRawShape(options.raw);
  Json all = Json::array();
  ExitCode code = ExitCode::kOk;
  for (const std::string& file : options.files) {
    Json out;
    try {
      const auto source = OpenSource(file, raw);
      out = Describe(source->info());
      if (options.frames) AddFrames(*source, out);
    } catch (const HostError& error) {
      std::fprintf(stderr, "zorhost: %s\n", error.what());
      code = error.code();
    }
    if (out.is_null()) continue;
    if (options.json) {
      all.push_back(std::move(out));
    } else {
      Print(out);
    }
  }
  if (options.json) {
    std::printf("%s\n", all.dump(2, ' ', false, Json::error_handler_t::replace).c_str());
  }
  return Interrupted() ? ExitCode::kInterrupted : code;
}

}  // namespace

void AddInfoCommand(CLI::App& app, Action& action) {
  auto options = std::make_shared<InfoOptions>();
  CLI::App* command = app.add_subcommand("info", "Tell what files hold");
  command->add_option("files", options->files, "Files, or - for Y4M on standard input")
      ->type_name("FILE...");
  command->add_option("--raw", options->raw, "Shape of raw input")->type_name("WxH:FORMAT");
  command->add_flag("--json", options->json, "An array with one object per file");
  command->add_flag("--frames", options->frames,
                    "Read every frame: exact count, times and hashes of what was decoded");
  command->add_flag("--matrix", options->matrix,
                    "What the library converts to what, and by which arithmetic");
  command->callback([options, &action] { action = [options] { return Info(*options); }; });
}

}  // namespace zorhost
