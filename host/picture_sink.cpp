// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include <stb/stb_image_write.h>

#include <optional>

#include "bmp.h"
#include "byte_stream.h"
#include "exit_code.h"
#include "picture_sink.h"
#include "text.h"

namespace zorhost {
namespace {

/// Rows from the top in the file's channel order: R, G, B with alpha where it means something.
std::vector<std::uint8_t> PackedRgb(const Picture& picture, int channels) {
  const int step = Traits(picture.layout()).bitsPerPixel / 8;
  std::vector<std::uint8_t> out(static_cast<std::size_t>(picture.width()) * picture.height() *
                                channels);
  std::uint8_t* to = out.data();
  for (int y = 0; y < picture.height(); ++y) {
    const std::uint8_t* from = picture.row(0, y);
    for (int x = 0; x < picture.width(); ++x, from += step, to += channels) {
      if (channels == 1) {
        to[0] = from[0];
        continue;
      }
      to[0] = from[2];
      to[1] = from[1];
      to[2] = from[0];
      if (channels == 4) to[3] = from[3];
    }
  }
  return out;
}

std::vector<std::uint8_t> EncodePng(const Picture& picture) {
  const int channels = picture.layout() == Layout::kGray8 ? 1 : picture.hasAlpha ? 4 : 3;
  const std::vector<std::uint8_t> pixels = PackedRgb(picture, channels);
  std::vector<std::uint8_t> file;
  const auto append = [](void* context, void* data, int size) {
    auto& out = *static_cast<std::vector<std::uint8_t>*>(context);
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    out.insert(out.end(), bytes, bytes + size);
  };
  if (!stbi_write_png_to_func(append, &file, picture.width(), picture.height(), channels,
                              pixels.data(), picture.width() * channels)) {
    throw OutputError("no memory to write a PNG");
  }
  return file;
}

std::vector<std::uint8_t> EncodePpm(const Picture& picture) {
  const int channels = picture.layout() == Layout::kGray8 ? 1 : 3;
  const std::string header = std::string(channels == 1 ? "P5\n" : "P6\n") +
                             std::to_string(picture.width()) + " " +
                             std::to_string(picture.height()) + "\n255\n";
  std::vector<std::uint8_t> file(header.begin(), header.end());
  const std::vector<std::uint8_t> pixels = PackedRgb(picture, channels);
  file.insert(file.end(), pixels.begin(), pixels.end());
  return file;
}

class PictureSink final : public FrameSink {
 public:
  explicit PictureSink(const std::string& path) : path_(path), name_(NumberedName::Parse(path)) {}

  void Write(const Frame& frame, const StreamInfo&) override {
    if (!name_ && count_ > 0) {
      throw OutputError(path_ + ": holds one picture; write a run of them as out%04d" +
                        Extension(path_));
    }
    WritePicture(frame.picture, name_ ? name_->At(count_) : path_);
    ++count_;
  }
  void Finish() override {}

 private:
  std::string path_;
  std::optional<NumberedName> name_;
  std::int64_t count_ = 0;
};

}  // namespace

std::vector<std::uint8_t> EncodePicture(const Picture& picture, SinkKind kind) {
  switch (kind) {
    case SinkKind::kBmp:
      return EncodeBmp(picture);
    case SinkKind::kPng:
      return EncodePng(picture);
    default:
      return EncodePpm(picture);
  }
}

void WritePicture(const Picture& picture, const std::string& path) {
  const std::vector<std::uint8_t> file = EncodePicture(picture, SinkKindOf(path));
  ByteWriter out(path);
  out.Write(file.data(), file.size());
  out.Finish();
}

std::unique_ptr<FrameSink> MakePictureSink(const std::string& path) {
  return std::make_unique<PictureSink>(path);
}

}  // namespace zorhost
