#include "player/peaks/cover.h"

extern "C" {
#include <libswscale/swscale.h>
}

#include <algorithm>

namespace {

constexpr int kLargestSource = 8192;
constexpr int kLargestJpeg = 512;
constexpr int kJpegQuality = 3 * FF_QP2LAMBDA; // 2 is the best
constexpr int kLineAlignment = 64;             // the scaler writes whole vectors

struct TEndScaler {
  void operator()(SwsContext* scaler) const { sws_freeContext(scaler); }
};
using TScaler = std::unique_ptr<SwsContext, TEndScaler>;

/** Scaled down to at most `largest` pixels a side, in that pixel format; null on failure. */
TFrame scaled(const AVFrame* frame, int largest, AVPixelFormat format) {
  if (frame->width <= 0 || frame->height <= 0 || std::max(frame->width, frame->height) > kLargestSource) return nullptr;
  const double shrink = std::min(1.0, static_cast<double>(largest) / std::max(frame->width, frame->height));
  TFrame small(av_frame_alloc());
  if (!small) return nullptr;
  small->format = format;
  small->width = std::max(1, static_cast<int>(frame->width * shrink));
  small->height = std::max(1, static_cast<int>(frame->height * shrink));
  if (av_frame_get_buffer(small.get(), kLineAlignment) < 0) return nullptr;
  const TScaler scaler(sws_getContext(frame->width, frame->height, static_cast<AVPixelFormat>(frame->format),
                                      small->width, small->height, format, SWS_AREA, nullptr, nullptr, nullptr));
  if (!scaler) return nullptr;
  const int lines =
      sws_scale(scaler.get(), frame->data, frame->linesize, 0, frame->height, small->data, small->linesize);
  return lines == small->height ? std::move(small) : nullptr;
}

/** Null if it is no image. */
TFrame decode(const AVStream* stream, const AVPacket* packet) {
  const TDecoder decoder = open_decoder(stream);
  TFrame frame(av_frame_alloc());
  if (!decoder || !frame || avcodec_send_packet(decoder.get(), packet) < 0) return nullptr;
  avcodec_send_packet(decoder.get(), nullptr);
  return avcodec_receive_frame(decoder.get(), frame.get()) >= 0 ? std::move(frame) : nullptr;
}

TFrame cover_in(AVFormatContext* input) {
  for (unsigned i = 0; i < input->nb_streams; ++i) {
    const AVStream* const stream = input->streams[i];
    const bool isPicture = (stream->disposition & AV_DISPOSITION_ATTACHED_PIC) != 0 && stream->attached_pic.size > 0;
    if (!isPicture) continue;
    if (TFrame cover = decode(stream, &stream->attached_pic)) return cover;
  }
  return nullptr;
}

TFrame first_picture_in(AVFormatContext* input) {
  const int number = av_find_best_stream(input, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
  const TPacket packet(av_packet_alloc());
  if (number < 0 || !packet || av_read_frame(input, packet.get()) < 0) return nullptr;
  return decode(input->streams[number], packet.get());
}

TFrame cover_beside(const std::vector<UniqueFd>& files) {
  for (const UniqueFd& file : files) {
    const TInput input = open_input(file.Get(), {});
    if (!input) continue;
    if (TFrame cover = first_picture_in(input.get())) return cover;
  }
  return nullptr;
}

} // namespace

TFrame read_cover(AVFormatContext* input, const std::vector<UniqueFd>& files) {
  TFrame cover = cover_in(input);
  return cover ? std::move(cover) : cover_beside(files);
}

void draw_cover(const AVFrame* cover, TSongPicture* picture) {
  const TFrame small = scaled(cover, kLargestCover, AV_PIX_FMT_RGB24);
  if (!small) return;
  picture->coverWidth = small->width;
  picture->coverHeight = small->height;
  for (int y = 0; y < small->height; ++y) {
    const uint8_t* const line = small->data[0] + ptrdiff_t{y} * small->linesize[0];
    picture->cover.append(reinterpret_cast<const char*>(line), static_cast<size_t>(small->width) * 3);
  }
}

std::string cover_jpeg(const AVFrame* cover) {
  const TFrame small = scaled(cover, kLargestJpeg, AV_PIX_FMT_YUVJ420P);
  const AVCodec* const codec = avcodec_find_encoder(AV_CODEC_ID_MJPEG);
  const TEncoder encoder(codec ? avcodec_alloc_context3(codec) : nullptr);
  const TPacket packet(av_packet_alloc());
  if (!small || !encoder || !packet) return {};
  encoder->width = small->width;
  encoder->height = small->height;
  encoder->pix_fmt = AV_PIX_FMT_YUVJ420P;
  encoder->time_base = {1, 1};
  encoder->thread_count = 1;
  encoder->flags |= AV_CODEC_FLAG_QSCALE;
  encoder->global_quality = small->quality = kJpegQuality;
  if (avcodec_open2(encoder.get(), codec, nullptr) < 0 || avcodec_send_frame(encoder.get(), small.get()) < 0) return {};
  avcodec_send_frame(encoder.get(), nullptr);
  if (avcodec_receive_packet(encoder.get(), packet.get()) < 0) return {};
  return {reinterpret_cast<const char*>(packet->data), static_cast<size_t>(packet->size)};
}
