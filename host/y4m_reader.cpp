// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include <cinttypes>
#include <cstdio>

#include "byte_stream.h"
#include "exit_code.h"
#include "interrupt.h"
#include "text.h"
#include "y4m.h"

namespace zorhost {
namespace {

constexpr std::size_t kLongestLine = 4096;
// Larger sizes pass what the library addresses (a block of 2^31 - 1 bytes).
constexpr std::int64_t kLargestSide = 65535;

/// Reads up to a line feed. @return false at the end before the first byte.
bool ReadLine(ByteReader& in, std::string& line) {
  line.clear();
  for (int c = in.Next(); c != -1; c = in.Next()) {
    if (c == '\n') return true;
    if (line.size() == kLongestLine) throw InputError(in.name() + ": a Y4M line without an end");
    line.push_back(static_cast<char>(c));
  }
  return !line.empty();
}

Rational ParseRatio(const std::string& text) {
  Rational r;
  if (std::sscanf(text.c_str(), "%" SCNd64 ":%" SCNd64, &r.num, &r.den) != 2) return {};
  return r;
}

void ApplyChroma(const std::string& word, StreamInfo& info) {
  info.pixelFormat = word;
  if (word == "mono") {
    info.layout = Layout::kGray8;
  } else if (word == "420" || word == "420jpeg" || word == "420mpeg2" || word == "420paldv") {
    info.chromaSiting = word == "420mpeg2" ? "left" : word == "420paldv" ? "top left" : "centre";
  } else {
    throw InputError(info.path + ": Y4M chroma form C" + word +
                     " is not one the host reads; known: C420, C420jpeg, C420mpeg2, C420paldv, "
                     "Cmono");
  }
}

class Y4mReader final : public FrameSource {
 public:
  explicit Y4mReader(const std::string& path) : in_(path) {
    std::string line;
    if (!ReadLine(in_, line)) throw InputError(in_.name() + ": is empty, no Y4M header");
    info_ = ParseY4mHeader(line, in_.name());
  }

  const StreamInfo& info() const override { return info_; }

  bool Read(Frame& frame) override {
    std::string line;
    if (!ReadLine(in_, line)) return false;
    if (line.compare(0, 5, "FRAME") != 0) {
      throw InputError(in_.name() + ": frame " + std::to_string(index_) +
                       " doesn't begin with FRAME; the stream is damaged");
    }
    frame.time = -1;
    for (const std::string& word : SplitWords(line.substr(5))) {
      if (word.compare(0, 5, "XPTS=") == 0) {
        std::sscanf(word.c_str() + 5, "%" SCNd64 "/%" SCNd64, &frame.time, &frame.timeBase.den);
        frame.timeBase.num = 1;
        info_.variableRate = true;
      }
    }
    if (frame.picture.layout() != info_.layout || frame.picture.width() != info_.width ||
        frame.picture.height() != info_.height) {
      frame.picture = Picture(info_.layout, info_.width, info_.height);
    }
    const std::size_t got = in_.Read(frame.picture.data(), frame.picture.size());
    if (got != frame.picture.size()) {
      if (Interrupted()) return false;
      throw InputError(in_.name() + ": truncated in frame " + std::to_string(index_) + " (" +
                       std::to_string(got) + " of " + std::to_string(frame.picture.size()) +
                       " bytes)");
    }
    ++index_;
    return true;
  }

 private:
  ByteReader in_;
  StreamInfo info_;
  std::int64_t index_ = 0;
};

}  // namespace

StreamInfo ParseY4mHeader(const std::string& line, const std::string& name) {
  StreamInfo info;
  info.path = name;
  info.container = "y4m";
  const std::vector<std::string> words = SplitWords(line);
  if (words.empty() || words[0] != "YUV4MPEG2") throw InputError(name + ": is not a Y4M stream");
  ApplyChroma("420jpeg", info);
  std::int64_t width = 0;
  std::int64_t height = 0;
  for (std::size_t i = 1; i < words.size(); ++i) {
    const std::string value = words[i].substr(1);
    switch (words[i][0]) {
      case 'W':
        width = ParseWhole(value).value_or(0);
        break;
      case 'H':
        height = ParseWhole(value).value_or(0);
        break;
      case 'F':
        info.frameRate = ParseRatio(value);
        break;
      case 'A':
        info.sampleAspect = ParseRatio(value);
        break;
      case 'C':
        ApplyChroma(value, info);
        break;
      case 'X':
        if (value == "COLORRANGE=FULL") info.range = Range::kFull;
        if (value == "COLORRANGE=LIMITED") info.range = Range::kLimited;
        break;
      default:
        break;
    }
  }
  if (width < 1 || height < 1) throw InputError(name + ": the Y4M header states no size");
  if (width > kLargestSide || height > kLargestSide) {
    throw InputError(name + ": " + std::to_string(width) + "x" + std::to_string(height) +
                     " is larger than any picture the library holds");
  }
  info.width = static_cast<int>(width);
  info.height = static_cast<int>(height);
  return info;
}

std::unique_ptr<FrameSource> OpenY4m(const std::string& path) {
  return std::make_unique<Y4mReader>(path);
}

}  // namespace zorhost
