// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "byte_stream.h"
#include "exit_code.h"
#include "y4m.h"

namespace zorhost {
namespace {

class Y4mSink final : public FrameSink {
 public:
  explicit Y4mSink(const std::string& path) : path_(path), out_(path) {}

  void Write(const Frame& frame, const StreamInfo& info) override {
    const Picture& picture = frame.picture;
    if (width_ == 0) WriteHeader(picture, info);
    if (picture.width() != width_ || picture.height() != height_) {
      throw OutputError(path_ + ": a Y4M stream has frames of one size only");
    }
    std::string line = "FRAME";
    if (info.variableRate && frame.time >= 0 && frame.timeBase.num == 1) {
      line += " XPTS=" + std::to_string(frame.time) + "/" + std::to_string(frame.timeBase.den);
    }
    out_.Write(line + "\n");
    WritePlane(picture, 0);
    if (picture.layout() == Layout::kGray8) return;
    // The stream's order is Y, U, V.
    const bool vFirst = picture.layout() == Layout::kYuv420;
    WritePlane(picture, vFirst ? 2 : 1);
    WritePlane(picture, vFirst ? 1 : 2);
  }

  void Finish() override { out_.Finish(); }

 private:
  void WriteHeader(const Picture& picture, const StreamInfo& info) {
    width_ = picture.width();
    height_ = picture.height();
    const Rational rate = info.frameRate.set() ? info.frameRate : Rational{25, 1};
    std::string line = "YUV4MPEG2 W" + std::to_string(width_) + " H" + std::to_string(height_) +
                       " F" + std::to_string(rate.num) + ":" + std::to_string(rate.den) + " Ip";
    if (width_ == info.width && height_ == info.height && info.sampleAspect.set()) {
      line += " A" + std::to_string(info.sampleAspect.num) + ":" +
              std::to_string(info.sampleAspect.den);
    } else {
      line += " A1:1";
    }
    if (picture.layout() == Layout::kGray8) {
      line += " Cmono";
    } else {
      line += info.chromaSiting == "left"       ? " C420mpeg2"
              : info.chromaSiting == "top left" ? " C420paldv"
                                                : " C420jpeg";
    }
    const bool fromYuv = !Traits(info.layout).rgb;
    if (fromYuv && info.range == Range::kFull) line += " XCOLORRANGE=FULL";
    if (!fromYuv || info.range == Range::kLimited) line += " XCOLORRANGE=LIMITED";
    out_.Write(line + "\n");
  }

  void WritePlane(const Picture& picture, int plane) {
    for (int y = 0; y < picture.plane(plane).rows; ++y) {
      out_.Write(picture.row(plane, y), static_cast<std::size_t>(picture.plane(plane).rowBytes));
    }
  }

  std::string path_;
  ByteWriter out_;
  int width_ = 0;
  int height_ = 0;
};

}  // namespace

std::unique_ptr<FrameSink> MakeY4mSink(const std::string& path) {
  return std::make_unique<Y4mSink>(path);
}

}  // namespace zorhost
