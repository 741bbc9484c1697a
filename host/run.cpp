// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "run.h"

#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "byte_stream.h"
#include "executor.h"
#include "frame_hash.h"
#include "frame_sink.h"
#include "interrupt.h"
#include "raw.h"
#include "system_memory.h"
#include "text.h"

namespace zorhost {
namespace {

/// Lines of frame number, size, layout and hash.
class HashLog {
 public:
  /// Pictures on standard output push the lines to standard error.
  HashLog(const std::string& target, bool outputTaken) : wanted_(!target.empty()) {
    if (wanted_ && target != "-") file_.emplace(target);
    stream_ = outputTaken ? stderr : stdout;
  }
  void Add(std::int64_t index, const Picture& picture, std::uint64_t hash) {
    if (!wanted_) return;
    const std::string line = std::to_string(index) + " " + std::to_string(picture.width()) + "x" +
                             std::to_string(picture.height()) + " " +
                             Traits(picture.layout()).name + " " + HashText(hash) + "\n";
    if (file_) {
      file_->Write(line);
    } else {
      std::fputs(line.c_str(), stream_);
    }
  }
  void Finish() {
    if (file_) file_->Finish();
  }
  bool wanted() const { return wanted_; }

 private:
  bool wanted_;
  std::optional<ByteWriter> file_;
  std::FILE* stream_;
};

const char* WayName(Way way) {
  return way == Way::kDeferred ? "deferred" : way == Way::kEager ? "eager" : "export";
}

class Run {
 public:
  Run(const RunOptions& options, const Planner& planner)
      : options_(options),
        range_(ParseFrames(options.frames)),
        kind_(SinkKindOf(options.output)),
        progressMode_(ProgressModeFromName(options.progress)),
        way_(options.dib     ? Way::kExport
             : options.eager ? Way::kEager
                             : Way::kDeferred),
        otherWay_(way_ == Way::kEager ? Way::kDeferred : Way::kEager) {
    if (options_.dib && options_.eager)
      throw UsageError("--dib and --eager are two ways; take one");
    if (options_.every < 1) throw UsageError("--every: take each n-th frame with n at least 1");
    if (options_.writeEvery < 1) throw UsageError("--write-every: n is at least 1");
    if (kind_ == SinkKind::kNone && options_.hash.empty() && !options_.verify) {
      throw UsageError("nothing to do: give an output with -o, or --hash, or --verify");
    }
    source_ =
        OpenSource(options.input, options.raw.empty() ? RawShape{} : ParseRawShape(options.raw));
    std::vector<std::string> notes;
    plan_.emplace(planner(source_->info(), notes));
    plan_->ReadAs(options.bottomUp, options.pitch);
    if (options_.dib && plan_->result().layout == Layout::kGray8) {
      throw UsageError("--dib: gray pictures have no bitmap");
    }
    if (!SinkTakes(kind_, plan_->result().layout)) {
      throw UsageError(options.output + ": can't hold " + Traits(plan_->result().layout).name +
                       "; add --to " + SinkLayouts(kind_));
    }
    if (plan_->crossesColour()) {
      for (std::string& note : ColourNotes(source_->info())) notes.push_back(std::move(note));
    }
    if (const int columns = plan_->doubtfulColumns()) {
      notes.push_back("yuv420 to rgb24 at a width that isn't a multiple of 16: the right " +
                      std::to_string(columns) +
                      " columns come with other colours where the processor has SSE2; rgb32 "
                      "doesn't show that");
    }
    if (const int columns = plan_->unwrittenColumns()) {
      notes.push_back("rgb to yuy2 at a width that isn't a multiple of 8: the right " +
                      std::to_string(columns) +
                      " columns stay 0 where the processor has SSE2; by way of yuv420 they don't");
    }
    TellOrientation(notes);
    if (kind_ != SinkKind::kY4m && kind_ != SinkKind::kVideo && source_->info().variableRate) {
      notes.push_back("variable frame rate: every coded frame is kept, none is doubled or dropped");
    }
    if (!options_.quiet) {
      for (const std::string& note : notes) std::fprintf(stderr, "zorhost: %s\n", note.c_str());
    }
  }

  ExitCode Go() {
    HashLog hashes(options_.hash, options_.output == "-");
    const std::unique_ptr<FrameSink> sink = MakeSink(options_.output);
    std::optional<HostError> broken;
    double seconds = 0.0;
    {
      Progress progress(options_.verb, Total(), progressMode_);
      try {
        Loop(*sink, hashes, progress);
      } catch (const HostError& error) {
        if (error.code() != ExitCode::kInput || taken_ == 0) throw;
        broken = error;
      }
      seconds = progress.seconds();
    }
    const bool interrupted = Interrupted();
    if (taken_ > 0) {
      sink->Finish();
      hashes.Finish();
    } else if (!interrupted) {
      throw InputError(source_->info().path + ": holds no frame" +
                       (options_.frames.empty() ? "" : " in " + options_.frames));
    }
    if (broken) {
      throw HostError(broken->code(), std::string(broken->what()) + "; the " +
                                          std::to_string(taken_) + " whole frames before it " +
                                          (taken_ == 1 ? "was" : "were") + " kept");
    }
    Summarise(seconds, interrupted);
    return interrupted ? ExitCode::kInterrupted : ExitCode::kOk;
  }

 private:
  void TellOrientation(std::vector<std::string>& notes) const {
    const StreamInfo& info = source_->info();
    if (options_.obeysOrientation || (info.rotation == 0 && !info.mirrored)) return;
    notes.push_back("the source asks viewers to turn it by " + std::to_string(info.rotation) +
                    " degrees" + (info.mirrored ? " after mirroring" : "") +
                    "; the picture is taken as stored");
  }

  std::int64_t Total() const {
    std::int64_t count = source_->info().frameCount;
    if (count < 0 && range_.last < 0) return -1;
    const std::int64_t end = range_.last < 0 ? count
                             : count < 0     ? range_.last + 1
                                             : std::min(count, range_.last + 1);
    return std::max<std::int64_t>(0, (end - range_.first + options_.every - 1) / options_.every);
  }

  void Loop(FrameSink& sink, HashLog& hashes, Progress& progress) {
    const Library library;
    Executor executor(library, *plan_);
    Executor other(library, *plan_);
    Frame in;
    Frame out;
    Picture check;
    for (std::int64_t index = 0; !Interrupted() && source_->Read(in); ++index) {
      if (range_.last >= 0 && index > range_.last) break;
      if (index < range_.first || (index - range_.first) % options_.every != 0) continue;
      executor.Run(in.picture, way_, out.picture, index);
      timing_ = executor.timing();
      out.time = in.time;
      out.timeBase = in.timeBase;
      const bool hashed = hashes.wanted() || options_.verify;
      const std::uint64_t hash = hashed ? HashPicture(out.picture) : 0;
      if (options_.verify) {
        other.Run(in.picture, otherWay_, check, index);
        Compare(index, hash, HashPicture(check));
      }
      hashes.Add(index, out.picture, hash);
      if (taken_ % options_.writeEvery == 0) sink.Write(out, source_->info());
      progress.Step(++taken_);
    }
  }

  void Compare(std::int64_t index, std::uint64_t hash, std::uint64_t other) const {
    if (hash == other) return;
    throw HostError(ExitCode::kLibrary, "frame " + std::to_string(index) + ": " + WayName(way_) +
                                            " and " + WayName(otherWay_) +
                                            " give different pictures (" + HashText(hash) +
                                            " and " + HashText(other) + ")");
  }

  void Summarise(double seconds, bool interrupted) const {
    const double frames = static_cast<double>(std::max<std::int64_t>(taken_, 1));
    const double handIn = timing_.handIn * 1000.0 / frames;
    const double process = timing_.process * 1000.0 / frames;
    if (options_.json) {
      const nlohmann::ordered_json summary = {{"verb", options_.verb},
                                              {"input", source_->info().path},
                                              {"output", options_.output},
                                              {"operations", plan_->Text()},
                                              {"way", WayName(way_)},
                                              {"verified", options_.verify},
                                              {"interrupted", interrupted},
                                              {"frames", taken_},
                                              {"width", plan_->result().width},
                                              {"height", plan_->result().height},
                                              {"format", Traits(plan_->result().layout).name},
                                              {"pitch", plan_->pitch()},
                                              {"seconds", seconds},
                                              {"msHandInPerFrame", handIn},
                                              {"msProcessPerFrame", process},
                                              {"peakMemoryBytes", PeakMemoryBytes()}};
      std::fprintf(options_.output == "-" ? stderr : stdout, "%s\n",
                   summary.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace).c_str());
      return;
    }
    if (options_.quiet) return;
    const std::string agree = options_.verify ? std::string("; ") + WayName(way_) + " and " +
                                                    WayName(otherWay_) + " agree"
                                              : "";
    std::fprintf(stderr,
                 "zorhost: %lld %s, %s; library %.2f ms per frame (%.2f in, %.2f work and out), "
                 "%.1f fps with reading and writing, peak memory %.0f MB%s%s\n",
                 static_cast<long long>(taken_), taken_ == 1 ? "frame" : "frames",
                 plan_->Text().c_str(), handIn + process, handIn, process,
                 seconds > 0.0 ? static_cast<double>(taken_) / seconds : 0.0,
                 static_cast<double>(PeakMemoryBytes()) / 1048576.0, agree.c_str(),
                 interrupted ? "; ended by interrupt" : "");
  }

  const RunOptions& options_;
  FrameRange range_;
  SinkKind kind_;
  ProgressMode progressMode_;
  Way way_;
  Way otherWay_;
  std::unique_ptr<FrameSource> source_;
  std::optional<Plan> plan_;
  Timing timing_;
  std::int64_t taken_ = 0;
};

}  // namespace

ExitCode RunFrames(const RunOptions& options, const Planner& planner) {
  return Run(options, planner).Go();
}

}  // namespace zorhost
