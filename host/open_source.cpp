// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include <cstdio>
#include <cstring>

#include "byte_stream.h"
#include "exit_code.h"
#include "frame_source.h"
#include "raw.h"
#include "still.h"
#include "text.h"
#include "y4m.h"
#ifdef ZORHOST_FFMPEG
#include "ffmpeg_source.h"
#endif

namespace zorhost {
namespace {

/// Whether the file is there, and begins with the given bytes.
bool BeginsWith(const std::string& path, const char* magic) {
  ByteReader in(path);
  char start[16] = {};
  const std::size_t count = std::strlen(magic);
  return in.Read(start, count) == count && std::memcmp(start, magic, count) == 0;
}

}  // namespace

std::unique_ptr<FrameSource> OpenSource(const std::string& path, const RawShape& raw) {
  if (raw.set()) return OpenRaw(path, raw);
  if (path == "-") return OpenY4m(path);
  if (const auto name = NumberedName::Parse(path)) return OpenSequence(*name, path);
  if (Extension(path) == ".y4m" || BeginsWith(path, "YUV4MPEG2")) return OpenY4m(path);
  if (IsStillPath(path)) return OpenStill(path);
  if (Extension(path) == ".raw" || Extension(path) == ".yuv") {
    throw InputError(path + ": raw frames have no header; state their shape with --raw WxH:FORMAT");
  }
#ifdef ZORHOST_FFMPEG
  return OpenWithFfmpeg(path);
#else
  throw InputError(path +
                   ": not a kind this build reads (Y4M, PNG, JPEG, BMP, PPM, raw frames); "
                   "pipe other video in as Y4M, input '-'");
#endif
}

}  // namespace zorhost
