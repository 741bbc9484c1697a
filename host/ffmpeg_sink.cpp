// SPDX-License-Identifier: BSD-2-Clause
// Copyright (c) 2026, The ZorSurface authors
#include "ffmpeg_sink.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/opt.h>
}

#include <cstdio>
#include <cstring>
#include <filesystem>

#include "exit_code.h"

namespace zorhost {
namespace {

/// For encoders that hold a quality instead of a rate: about where losses can't be seen.
constexpr const char* kCrf = "18";
constexpr int kQuantiser = 3;

class FfmpegSink final : public FrameSink {
 public:
  explicit FfmpegSink(const std::string& path) : path_(path), partial_(path + ".part") {}
  ~FfmpegSink() override {
    const bool unfinished = format_ != nullptr;
    Close();
    std::error_code ignored;
    if (unfinished) std::filesystem::remove(partial_, ignored);
  }

  void Write(const Frame& frame, const StreamInfo& info) override {
    if (!format_) Open(frame, info);
    const Picture& picture = frame.picture;
    if (picture.width() != codec_->width || picture.height() != codec_->height) {
      throw OutputError(path_ + ": a clip has frames of one size only");
    }
    Check(av_frame_make_writable(frame_));
    // The encoder's order is Y, U, V.
    const bool vFirst = picture.layout() == Layout::kYuv420;
    CopyPlane(picture, 0, 0);
    CopyPlane(picture, vFirst ? 2 : 1, 1);
    CopyPlane(picture, vFirst ? 1 : 2, 2);
    frame_->pts = timed_ ? frame.time : count_;
    ++count_;
    Encode(frame_);
  }

  void Finish() override {
    if (!format_) return;
    Encode(nullptr);
    Check(av_write_trailer(format_));
    Check(avio_closep(&format_->pb));
    Close();
    std::error_code error;
    std::filesystem::rename(partial_, path_, error);
    if (error) throw OutputError(path_ + ": " + error.message());
  }

 private:
  void Check(int error) const {
    if (error >= 0) return;
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(error, text, sizeof text);
    throw OutputError(path_ + ": " + text);
  }

  void Open(const Frame& frame, const StreamInfo& info) {
    av_log_set_level(AV_LOG_ERROR);
    const AVOutputFormat* container = av_guess_format(nullptr, path_.c_str(), nullptr);
    if (!container) throw OutputError(path_ + ": this FFmpeg doesn't write such a container");
    const AVCodec* encoder = avcodec_find_encoder(container->video_codec);
    if (!encoder) encoder = avcodec_find_encoder(AV_CODEC_ID_MPEG4);
    if (!encoder) throw OutputError(path_ + ": this FFmpeg has no encoder for it");
    Check(avformat_alloc_output_context2(&format_, container, nullptr, path_.c_str()));
    stream_ = avformat_new_stream(format_, nullptr);
    codec_ = avcodec_alloc_context3(encoder);
    packet_ = av_packet_alloc();
    frame_ = av_frame_alloc();
    if (!stream_ || !codec_ || !packet_ || !frame_) throw std::bad_alloc();
    Describe(frame, info);
    Check(avcodec_open2(codec_, encoder, nullptr));
    Check(avcodec_parameters_from_context(stream_->codecpar, codec_));
    frame_->format = codec_->pix_fmt;
    frame_->width = codec_->width;
    frame_->height = codec_->height;
    Check(av_frame_get_buffer(frame_, 0));
    Check(avio_open(&format_->pb, partial_.c_str(), AVIO_FLAG_WRITE));
    Check(avformat_write_header(format_, nullptr));
  }

  void Describe(const Frame& frame, const StreamInfo& info) {
    codec_->width = frame.picture.width();
    codec_->height = frame.picture.height();
    codec_->pix_fmt = AV_PIX_FMT_YUV420P;
    codec_->color_range = info.range == Range::kFull ? AVCOL_RANGE_JPEG : AVCOL_RANGE_MPEG;
    // Pictures that the library converted have its matrix, all others the source's.
    const bool converted = Traits(info.layout).rgb;
    codec_->colorspace = converted || info.matrix == Matrix::kBt601 ? AVCOL_SPC_SMPTE170M
                         : info.matrix == Matrix::kBt709            ? AVCOL_SPC_BT709
                                                                    : AVCOL_SPC_UNSPECIFIED;
    timed_ = info.variableRate && frame.time >= 0 && frame.timeBase.set();
    const Rational rate = info.frameRate.set() ? info.frameRate : Rational{25, 1};
    const Rational unit = timed_ ? frame.timeBase : Rational{rate.den, rate.num};
    codec_->time_base = {static_cast<int>(unit.num), static_cast<int>(unit.den)};
    codec_->framerate = {static_cast<int>(rate.num), static_cast<int>(rate.den)};
    stream_->time_base = codec_->time_base;
    stream_->avg_frame_rate = codec_->framerate;
    if (codec_->codec_id == AV_CODEC_ID_MPEG4) {
      codec_->flags |= AV_CODEC_FLAG_QSCALE;
      codec_->global_quality = FF_QP2LAMBDA * kQuantiser;
    }
    if (format_->oformat->flags & AVFMT_GLOBALHEADER) codec_->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    // Encoders without this option keep their own default.
    av_opt_set(codec_->priv_data, "crf", kCrf, 0);
  }

  void CopyPlane(const Picture& from, int plane, int target) const {
    for (int y = 0; y < from.plane(plane).rows; ++y) {
      std::memcpy(frame_->data[target] + std::ptrdiff_t{frame_->linesize[target]} * y,
                  from.row(plane, y), static_cast<std::size_t>(from.plane(plane).rowBytes));
    }
  }

  void Encode(const AVFrame* frame) {
    Check(avcodec_send_frame(codec_, frame));
    for (;;) {
      const int error = avcodec_receive_packet(codec_, packet_);
      if (error == AVERROR(EAGAIN) || error == AVERROR_EOF) return;
      Check(error);
      av_packet_rescale_ts(packet_, codec_->time_base, stream_->time_base);
      packet_->stream_index = stream_->index;
      Check(av_interleaved_write_frame(format_, packet_));
    }
  }

  void Close() {
    if (format_) avio_closep(&format_->pb);
    avformat_free_context(format_);
    format_ = nullptr;
    avcodec_free_context(&codec_);
    av_packet_free(&packet_);
    av_frame_free(&frame_);
  }

  std::string path_;
  std::string partial_;
  AVFormatContext* format_ = nullptr;
  AVStream* stream_ = nullptr;
  AVCodecContext* codec_ = nullptr;
  AVPacket* packet_ = nullptr;
  AVFrame* frame_ = nullptr;
  bool timed_ = false;
  std::int64_t count_ = 0;
};

}  // namespace

std::unique_ptr<FrameSink> MakeFfmpegSink(const std::string& path) {
  return std::make_unique<FfmpegSink>(path);
}

}  // namespace zorhost
