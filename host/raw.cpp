// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "raw.h"

#include "byte_stream.h"
#include "exit_code.h"
#include "interrupt.h"
#include "text.h"

namespace zorhost {
namespace {

class RawReader final : public FrameSource {
 public:
  RawReader(const std::string& path, const RawShape& shape) : in_(path) {
    info_.path = in_.name();
    info_.container = "raw";
    info_.layout = shape.layout;
    info_.pixelFormat = Traits(shape.layout).name;
    info_.width = shape.width;
    info_.height = shape.height;
    info_.frameRate = {25, 1};
    info_.hasAlpha = shape.layout == Layout::kRgb32;
  }
  const StreamInfo& info() const override { return info_; }
  bool Read(Frame& frame) override {
    frame.time = -1;
    frame.picture = Picture(info_.layout, info_.width, info_.height);
    frame.picture.hasAlpha = info_.hasAlpha;
    const std::size_t got = in_.Read(frame.picture.data(), frame.picture.size());
    if (got == frame.picture.size()) {
      ++index_;
      return true;
    }
    if (got == 0 || Interrupted()) return false;
    throw InputError(in_.name() + ": truncated in frame " + std::to_string(index_) + " (" +
                     std::to_string(got) + " of " + std::to_string(frame.picture.size()) +
                     " bytes)");
  }

 private:
  ByteReader in_;
  StreamInfo info_;
  std::int64_t index_ = 0;
};

class RawSink final : public FrameSink {
 public:
  explicit RawSink(const std::string& path) : out_(path) {}
  void Write(const Frame& frame, const StreamInfo&) override {
    const Picture& picture = frame.picture;
    const Plane& last = picture.plane(picture.planeCount() - 1);
    out_.Write(picture.data(), last.offset + static_cast<std::size_t>(last.stride) * last.rows);
  }
  void Finish() override { out_.Finish(); }

 private:
  ByteWriter out_;
};

}  // namespace

RawShape ParseRawShape(const std::string& text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string::npos) {
    throw UsageError("--raw: '" + text + "' is no shape; write WxH:FORMAT, such as 640x480:yvu420");
  }
  const Size size = ParseSize(text.substr(0, colon), "--raw");
  return {size.width, size.height, LayoutFromName(text.substr(colon + 1))};
}

std::unique_ptr<FrameSource> OpenRaw(const std::string& path, const RawShape& shape) {
  return std::make_unique<RawReader>(path, shape);
}

std::unique_ptr<FrameSink> MakeRawSink(const std::string& path) {
  return std::make_unique<RawSink>(path);
}

}  // namespace zorhost
