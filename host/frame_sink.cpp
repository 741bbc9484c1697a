// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "frame_sink.h"

#include "exit_code.h"
#include "picture_sink.h"
#include "raw.h"
#include "text.h"
#include "y4m.h"
#ifdef ZORHOST_FFMPEG
#include "ffmpeg_sink.h"
#endif

namespace zorhost {
namespace {

struct Ending {
  const char* extension;
  SinkKind kind;
};
constexpr Ending kEndings[] = {
    {".y4m", SinkKind::kY4m},   {".png", SinkKind::kPng},   {".bmp", SinkKind::kBmp},
    {".ppm", SinkKind::kPpm},   {".pgm", SinkKind::kPpm},   {".raw", SinkKind::kRaw},
#ifdef ZORHOST_FFMPEG
    {".mp4", SinkKind::kVideo}, {".mkv", SinkKind::kVideo}, {".webm", SinkKind::kVideo},
#endif
};

/// Takes every frame and keeps none, for runs that only hash or compare.
class NoSink final : public FrameSink {
 public:
  void Write(const Frame&, const StreamInfo&) override {}
  void Finish() override {}
};

}  // namespace

SinkKind SinkKindOf(const std::string& path) {
  if (path.empty()) return SinkKind::kNone;
  if (path == "-") return SinkKind::kY4m;
  const std::string extension = Extension(path);
  for (const Ending& ending : kEndings) {
    if (extension == ending.extension) return ending.kind;
  }
  throw UsageError(path +
                   ": the ending decides the kind of output; known: .y4m, .png, .bmp, "
                   ".ppm, .pgm, .raw, "
#ifdef ZORHOST_FFMPEG
                   ".mp4, .mkv, .webm, "
#endif
                   "and - for Y4M on standard output");
}

bool SinkTakes(SinkKind kind, Layout layout) {
  switch (kind) {
    case SinkKind::kVideo:
      return Traits(layout).planar;
    case SinkKind::kY4m:
      return Traits(layout).planar || layout == Layout::kGray8;
    case SinkKind::kPng:
    case SinkKind::kBmp:
    case SinkKind::kPpm:
      return Traits(layout).rgb || layout == Layout::kGray8;
    default:
      return true;
  }
}

std::string SinkLayouts(SinkKind kind) {
  if (kind == SinkKind::kVideo) return "yuv420 or yvu420";
  return kind == SinkKind::kY4m ? "yuv420, yvu420 or gray" : "rgb24, rgb32 or gray";
}

std::unique_ptr<FrameSink> MakeSink(const std::string& path) {
  switch (SinkKindOf(path)) {
    case SinkKind::kY4m:
      return MakeY4mSink(path);
    case SinkKind::kRaw:
      return MakeRawSink(path);
#ifdef ZORHOST_FFMPEG
    case SinkKind::kVideo:
      return MakeFfmpegSink(path);
#endif
    case SinkKind::kNone:
      return std::make_unique<NoSink>();
    default:
      return MakePictureSink(path);
  }
}

}  // namespace zorhost
