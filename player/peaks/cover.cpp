#include "player/peaks/cover.h"

extern "C" {
#include <libswscale/swscale.h>
}

#include <algorithm>
#include <filesystem>

namespace {

constexpr const char* kNames[] = {"cover.jpg", "cover.png", "folder.jpg", "folder.png",
                                  "front.jpg", "front.png", "Cover.jpg",  "Folder.jpg"};
constexpr int kLargestSource = 8192;

struct TEndScaler {
  void operator()(SwsContext* scaler) const { sws_freeContext(scaler); }
};
using TScaler = std::unique_ptr<SwsContext, TEndScaler>;

bool scale(const AVFrame* frame, TSongPicture* picture) {
  if (frame->width <= 0 || frame->height <= 0 || std::max(frame->width, frame->height) > kLargestSource) return false;
  const double shrink = std::min(1.0, static_cast<double>(kLargestCover) / std::max(frame->width, frame->height));
  const int width = std::max(1, static_cast<int>(frame->width * shrink));
  const int height = std::max(1, static_cast<int>(frame->height * shrink));
  const TScaler scaler(sws_getContext(frame->width, frame->height, static_cast<AVPixelFormat>(frame->format), width,
                                      height, AV_PIX_FMT_RGB24, SWS_AREA, nullptr, nullptr, nullptr));
  if (!scaler) return false;
  // The scaler writes whole vectors: its lines are longer than ours.
  const int lineBytes = (width * 3 + 63) / 64 * 64;
  std::string lines(static_cast<size_t>(lineBytes) * static_cast<size_t>(height) + 64, '\0');
  uint8_t* const to[] = {reinterpret_cast<uint8_t*>(lines.data())};
  if (sws_scale(scaler.get(), frame->data, frame->linesize, 0, frame->height, to, &lineBytes) != height) return false;
  picture->coverWidth = width;
  picture->coverHeight = height;
  picture->cover.clear();
  for (int y = 0; y < height; ++y) {
    picture->cover.append(lines, static_cast<size_t>(y) * static_cast<size_t>(lineBytes),
                          static_cast<size_t>(width) * 3);
  }
  return true;
}

bool decode(const AVStream* stream, const AVPacket* packet, TSongPicture* picture) {
  const TDecoder decoder = open_decoder(stream);
  const TFrame frame(av_frame_alloc());
  if (!decoder || !frame || avcodec_send_packet(decoder.get(), packet) < 0) return false;
  avcodec_send_packet(decoder.get(), nullptr);
  return avcodec_receive_frame(decoder.get(), frame.get()) >= 0 && scale(frame.get(), picture);
}

bool decode_first_picture(AVFormatContext* input, TSongPicture* picture) {
  const int number = av_find_best_stream(input, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
  const TPacket packet(av_packet_alloc());
  return number >= 0 && packet && av_read_frame(input, packet.get()) >= 0 &&
         decode(input->streams[number], packet.get(), picture);
}

} // namespace

bool read_cover(AVFormatContext* input, TSongPicture* picture) {
  for (unsigned i = 0; i < input->nb_streams; ++i) {
    const AVStream* const stream = input->streams[i];
    const bool isPicture = (stream->disposition & AV_DISPOSITION_ATTACHED_PIC) != 0 && stream->attached_pic.size > 0;
    if (isPicture && decode(stream, &stream->attached_pic, picture)) return true;
  }
  return false;
}

bool read_cover_beside(const std::string& song, TSongPicture* picture) {
  for (const char* const name : kNames) {
    const std::filesystem::path path = std::filesystem::path(song).parent_path() / name;
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) continue;
    const TInput input = open_input(path.string());
    if (input && decode_first_picture(input.get(), picture)) return true;
  }
  return false;
}
