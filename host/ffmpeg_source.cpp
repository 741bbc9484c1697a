// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "ffmpeg_source.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/display.h>
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <cmath>
#include <cstring>

#include "exit_code.h"

namespace zorhost {
namespace {

/// How the pixels of a decoder become a layout of the host. Only a reordering of samples is done
/// here; nothing is converted or scaled.
enum class Packing { kCopy, kPlanes, kSemiPlanar, kSwapRedBlue };

struct PixelForm {
  AVPixelFormat from;
  Layout layout;
  Packing packing;
  bool alpha;
};

constexpr PixelForm kForms[] = {
    {AV_PIX_FMT_YUV420P, Layout::kYvu420, Packing::kPlanes, false},
    {AV_PIX_FMT_YUVJ420P, Layout::kYvu420, Packing::kPlanes, false},
    {AV_PIX_FMT_NV12, Layout::kYvu420, Packing::kSemiPlanar, false},
    {AV_PIX_FMT_GRAY8, Layout::kGray8, Packing::kCopy, false},
    {AV_PIX_FMT_YUYV422, Layout::kYuy2, Packing::kCopy, false},
    {AV_PIX_FMT_BGR24, Layout::kRgb24, Packing::kCopy, false},
    {AV_PIX_FMT_RGB24, Layout::kRgb24, Packing::kSwapRedBlue, false},
    {AV_PIX_FMT_BGR0, Layout::kRgb32, Packing::kCopy, false},
    {AV_PIX_FMT_BGRA, Layout::kRgb32, Packing::kCopy, true},
    {AV_PIX_FMT_RGBA, Layout::kRgb32, Packing::kSwapRedBlue, true},
};

const PixelForm& FormOf(AVPixelFormat format, const std::string& path) {
  for (const PixelForm& form : kForms) {
    if (form.from == format) return form;
  }
  const char* name = av_get_pix_fmt_name(format);
  throw InputError(
      path + ": pixel format " + (name ? name : "unknown") +
      " has no counterpart in the library (8-bit 4:2:0, gray, packed 4:2:2 and RGB do)");
}

[[noreturn]] void Fail(const std::string& path, int error) {
  char text[AV_ERROR_MAX_STRING_SIZE] = {};
  av_strerror(error, text, sizeof text);
  throw InputError(path + ": " + text);
}

void CopyRows(const AVFrame& from, int plane, Picture& to, int target) {
  for (int y = 0; y < to.plane(target).rows; ++y) {
    std::memcpy(to.row(target, y), from.data[plane] + std::ptrdiff_t{from.linesize[plane]} * y,
                static_cast<std::size_t>(to.plane(target).rowBytes));
  }
}

void SplitChroma(const AVFrame& from, Picture& to) {
  for (int y = 0; y < to.plane(1).rows; ++y) {
    const std::uint8_t* pairs = from.data[1] + std::ptrdiff_t{from.linesize[1]} * y;
    for (int x = 0; x < to.plane(1).rowBytes; ++x) {
      to.row(1, y)[x] = pairs[2 * x];
      to.row(2, y)[x] = pairs[2 * x + 1];
    }
  }
}

void SwapRedBlue(Picture& picture) {
  const int step = picture.layout() == Layout::kRgb32 ? 4 : 3;
  for (int y = 0; y < picture.height(); ++y) {
    std::uint8_t* row = picture.row(0, y);
    for (int x = 0; x < picture.width(); ++x) std::swap(row[step * x], row[step * x + 2]);
  }
}

class FfmpegSource final : public FrameSource {
 public:
  explicit FfmpegSource(const std::string& path) : path_(path) {
    try {
      Open();
    } catch (...) {
      Close();
      throw;
    }
  }
  ~FfmpegSource() override { Close(); }

  const StreamInfo& info() const override { return info_; }

  bool Read(Frame& frame) override {
    int error;
    while ((error = avcodec_receive_frame(codec_, frame_)) == AVERROR(EAGAIN)) SendPacket();
    if (error == AVERROR_EOF) return false;
    if (error < 0) Fail(path_, error);
    Take(frame);
    av_frame_unref(frame_);
    return true;
  }

 private:
  void Open() {
    av_log_set_level(AV_LOG_ERROR);
    if (int error = avformat_open_input(&format_, path_.c_str(), nullptr, nullptr)) {
      Fail(path_, error);
    }
    if (int error = avformat_find_stream_info(format_, nullptr); error < 0) Fail(path_, error);
    const AVCodec* decoder = nullptr;
    const int best = av_find_best_stream(format_, AVMEDIA_TYPE_VIDEO, -1, -1, &decoder, 0);
    if (best < 0) throw InputError(path_ + ": holds no video stream that can be decoded");
    stream_ = format_->streams[best];
    codec_ = avcodec_alloc_context3(decoder);
    packet_ = av_packet_alloc();
    frame_ = av_frame_alloc();
    if (!codec_ || !packet_ || !frame_) throw InputError(path_ + ": no memory for a decoder");
    avcodec_parameters_to_context(codec_, stream_->codecpar);
    codec_->pkt_timebase = stream_->time_base;
    codec_->thread_count = 0;
    if (int error = avcodec_open2(codec_, decoder, nullptr); error < 0) Fail(path_, error);
    Describe();
  }

  void Describe() {
    info_.path = path_;
    info_.container = format_->iformat->name;
    info_.codec = avcodec_get_name(codec_->codec_id);
    const char* name = av_get_pix_fmt_name(codec_->pix_fmt);
    info_.pixelFormat = name ? name : "unknown";
    const PixelForm& form = FormOf(codec_->pix_fmt, path_);
    info_.layout = form.layout;
    info_.hasAlpha = form.alpha;
    info_.width = codec_->width;
    info_.height = codec_->height;
    info_.frameRate = {stream_->avg_frame_rate.num, stream_->avg_frame_rate.den};
    if (!info_.frameRate.set()) {
      info_.frameRate = {stream_->r_frame_rate.num, stream_->r_frame_rate.den};
    }
    info_.variableRate = IndexHasUnevenGaps();
    info_.sampleAspect = {codec_->sample_aspect_ratio.num, codec_->sample_aspect_ratio.den};
    if (stream_->nb_frames > 0) info_.frameCount = stream_->nb_frames;
    DescribeColour();
    if (const std::uint8_t* matrix =
            av_stream_get_side_data(stream_, AV_PKT_DATA_DISPLAYMATRIX, nullptr)) {
      const double turn = -av_display_rotation_get(reinterpret_cast<const std::int32_t*>(matrix));
      info_.rotation = (static_cast<int>(std::lround(turn)) % 360 + 360) % 360;
    }
  }

  /// An index of all frames tells the rate without one being read; where a container has none the
  /// rate counts as constant until frames are read. A gap is even within one tick, which rounding
  /// to the time base may move it by.
  bool IndexHasUnevenGaps() const {
    const int entries = avformat_index_get_entries_count(stream_);
    std::int64_t shortest = INT64_MAX;
    std::int64_t longest = 0;
    for (int i = 1; i < entries; ++i) {
      const std::int64_t gap = avformat_index_get_entry(stream_, i)->timestamp -
                               avformat_index_get_entry(stream_, i - 1)->timestamp;
      shortest = std::min(shortest, gap);
      longest = std::max(longest, gap);
    }
    return entries > 2 && entries == stream_->nb_frames && longest > shortest + 1;
  }

  void DescribeColour() {
    const bool full =
        codec_->color_range == AVCOL_RANGE_JPEG || codec_->pix_fmt == AV_PIX_FMT_YUVJ420P;
    info_.range = full                                      ? Range::kFull
                  : codec_->color_range == AVCOL_RANGE_MPEG ? Range::kLimited
                                                            : Range::kUnknown;
    switch (codec_->colorspace) {
      case AVCOL_SPC_BT470BG:
      case AVCOL_SPC_SMPTE170M:
        info_.matrix = Matrix::kBt601;
        break;
      case AVCOL_SPC_BT709:
        info_.matrix = Matrix::kBt709;
        break;
      case AVCOL_SPC_UNSPECIFIED:
        info_.matrix = Matrix::kUnknown;
        break;
      default:
        info_.matrix = Matrix::kOther;
        info_.matrixName = av_color_space_name(codec_->colorspace);
    }
    switch (codec_->chroma_sample_location) {
      case AVCHROMA_LOC_LEFT:
        info_.chromaSiting = "left";
        break;
      case AVCHROMA_LOC_TOPLEFT:
        info_.chromaSiting = "top left";
        break;
      case AVCHROMA_LOC_CENTER:
        info_.chromaSiting = "centre";
        break;
      default:
        break;
    }
  }

  void SendPacket() {
    for (;;) {
      const int error = av_read_frame(format_, packet_);
      if (error == AVERROR_EOF) {
        avcodec_send_packet(codec_, nullptr);
        return;
      }
      if (error < 0) Fail(path_, error);
      const bool ours = packet_->stream_index == stream_->index;
      const int sent = ours ? avcodec_send_packet(codec_, packet_) : 0;
      av_packet_unref(packet_);
      if (sent < 0 && sent != AVERROR(EAGAIN)) Fail(path_, sent);
      if (ours) return;
    }
  }

  void Take(Frame& frame) {
    const PixelForm& form = FormOf(static_cast<AVPixelFormat>(frame_->format), path_);
    if (frame_->width != info_.width || frame_->height != info_.height ||
        form.layout != info_.layout) {
      throw InputError(path_ + ": the picture changes its size or kind in mid-stream");
    }
    frame.time =
        frame_->best_effort_timestamp == AV_NOPTS_VALUE ? -1 : frame_->best_effort_timestamp;
    frame.timeBase = {stream_->time_base.num, stream_->time_base.den};
    frame.keyFrame = frame_->key_frame != 0;
    if (frame.picture.layout() != form.layout || frame.picture.width() != info_.width ||
        frame.picture.height() != info_.height) {
      frame.picture = Picture(form.layout, info_.width, info_.height);
      frame.picture.hasAlpha = form.alpha;
    }
    CopyRows(*frame_, 0, frame.picture, 0);
    switch (form.packing) {
      case Packing::kPlanes:
        CopyRows(*frame_, 1, frame.picture, 1);
        CopyRows(*frame_, 2, frame.picture, 2);
        break;
      case Packing::kSemiPlanar:
        SplitChroma(*frame_, frame.picture);
        break;
      case Packing::kSwapRedBlue:
        SwapRedBlue(frame.picture);
        break;
      case Packing::kCopy:
        break;
    }
  }

  void Close() {
    av_frame_free(&frame_);
    av_packet_free(&packet_);
    avcodec_free_context(&codec_);
    avformat_close_input(&format_);
  }

  std::string path_;
  StreamInfo info_;
  AVFormatContext* format_ = nullptr;
  AVCodecContext* codec_ = nullptr;
  AVStream* stream_ = nullptr;
  AVPacket* packet_ = nullptr;
  AVFrame* frame_ = nullptr;
};

}  // namespace

std::unique_ptr<FrameSource> OpenWithFfmpeg(const std::string& path) {
  return std::make_unique<FfmpegSource>(path);
}

}  // namespace zorhost
