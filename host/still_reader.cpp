// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include <stb/stb_image.h>

#include <cstring>
#include <filesystem>
#include <utility>

#include "bmp.h"
#include "byte_stream.h"
#include "exif_orientation.h"
#include "exit_code.h"
#include "still.h"

namespace zorhost {
namespace {

struct StbPixels {
  stbi_uc* data;
  ~StbPixels() { stbi_image_free(data); }
};

/// EXIF 1 to 8 as a clockwise turn after an optional mirroring left to right.
void SetOrientation(int exif, StreamInfo& info) {
  static constexpr int kTurns[9] = {0, 0, 0, 180, 180, 270, 90, 90, 270};
  info.rotation = kTurns[exif];
  info.mirrored = exif == 2 || exif == 4 || exif == 5 || exif == 7;
}

Picture DecodeWithStb(const std::vector<std::uint8_t>& file, const std::string& path,
                      StreamInfo& info) {
  int width = 0;
  int height = 0;
  int channels = 0;
  const int size = static_cast<int>(file.size());
  if (!stbi_info_from_memory(file.data(), size, &width, &height, &channels)) {
    throw InputError(path + ": not a picture the host reads (" + stbi_failure_reason() + ")");
  }
  const bool alpha = channels == 2 || channels == 4;
  const int wanted = alpha ? 4 : channels == 1 ? 1 : 3;
  const StbPixels pixels{
      stbi_load_from_memory(file.data(), size, &width, &height, &channels, wanted)};
  if (!pixels.data) {
    throw InputError(path + ": damaged picture (" + stbi_failure_reason() + ")");
  }
  static constexpr const char* kNames[] = {"", "gray", "gray+alpha", "rgb", "rgba"};
  info.pixelFormat = kNames[channels];
  Picture picture(alpha         ? Layout::kRgb32
                  : wanted == 1 ? Layout::kGray8
                                : Layout::kRgb24,
                  width, height);
  picture.hasAlpha = alpha;
  const std::size_t count = static_cast<std::size_t>(width) * height;
  std::uint8_t* to = picture.data();
  const std::uint8_t* from = pixels.data;
  if (wanted == 1) {
    std::memcpy(to, from, count);
    return picture;
  }
  for (std::size_t i = 0; i < count; ++i, to += wanted, from += wanted) {  // R G B to B G R
    to[0] = from[2];
    to[1] = from[1];
    to[2] = from[0];
    if (alpha) to[3] = from[3];
  }
  return picture;
}

class StillSource final : public FrameSource {
 public:
  explicit StillSource(const std::string& path) : still_(ReadStill(path)) {}
  const StreamInfo& info() const override { return still_.info; }
  bool Read(Frame& frame) override {
    if (std::exchange(done_, true)) return false;
    frame = Frame{};
    frame.picture = std::move(still_.picture);
    return true;
  }

 private:
  Still still_;
  bool done_ = false;
};

class SequenceSource final : public FrameSource {
 public:
  SequenceSource(const NumberedName& name, const std::string& path) : name_(name) {
    while (next_ < 10 && !std::filesystem::exists(name_.At(next_))) ++next_;
    if (next_ == 10) {
      throw InputError(path + ": no file of the sequence from " + name_.At(0) + " to " +
                       name_.At(9));
    }
    info_ = ReadStill(name_.At(next_)).info;
    info_.path = path;
    info_.container += " sequence";
    info_.frameRate = {25, 1};
    std::int64_t end = next_;
    while (std::filesystem::exists(name_.At(end))) ++end;
    info_.frameCount = end - next_;
  }
  const StreamInfo& info() const override { return info_; }
  bool Read(Frame& frame) override {
    const std::string path = name_.At(next_);
    if (!std::filesystem::exists(path)) return false;
    Still still = ReadStill(path);
    if (still.info.width != info_.width || still.info.height != info_.height ||
        still.info.layout != info_.layout) {
      throw InputError(path + ": differs in size or kind from the sequence's first picture");
    }
    frame = Frame{};
    frame.picture = std::move(still.picture);
    ++next_;
    return true;
  }

 private:
  NumberedName name_;
  StreamInfo info_;
  std::int64_t next_ = 0;
};

}  // namespace

bool IsStillPath(const std::string& path) {
  const std::string extension = Extension(path);
  for (const char* known : {".png", ".jpg", ".jpeg", ".bmp", ".ppm", ".pgm"}) {
    if (extension == known) return true;
  }
  return false;
}

Still ReadStill(const std::string& path) {
  const std::vector<std::uint8_t> file = ReadWholeFile(path);
  Still still;
  still.info.path = path;
  still.info.frameCount = 1;
  if (file.size() >= 2 && file[0] == 'B' && file[1] == 'M') {
    still.info.container = "bmp";
    still.picture = DecodeBmp(file, path);
    still.info.pixelFormat = Traits(still.picture.layout()).name;
  } else {
    still.picture = DecodeWithStb(file, path, still.info);
    const bool jpeg = file.size() > 2 && file[0] == 0xFF && file[1] == 0xD8;
    still.info.container = jpeg ? "jpeg" : file[0] == 'P' ? "ppm" : "png";
    if (jpeg) SetOrientation(ExifOrientation(file), still.info);
  }
  still.info.layout = still.picture.layout();
  still.info.width = still.picture.width();
  still.info.height = still.picture.height();
  still.info.bottomUp = still.picture.bottomUp;
  still.info.hasAlpha = still.picture.hasAlpha;
  return still;
}

std::unique_ptr<FrameSource> OpenStill(const std::string& path) {
  return std::make_unique<StillSource>(path);
}

std::unique_ptr<FrameSource> OpenSequence(const NumberedName& name, const std::string& path) {
  return std::make_unique<SequenceSource>(name, path);
}

}  // namespace zorhost
