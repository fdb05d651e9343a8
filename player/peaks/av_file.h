#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include <memory>
#include <string>

/** The decoding library's objects, each ended by the function that belongs to it. */
template <auto End>
struct TEndBy {
  template <typename Object>
  void operator()(Object* object) const {
    End(&object);
  }
};
using TPacket = std::unique_ptr<AVPacket, TEndBy<av_packet_free>>;
using TFrame = std::unique_ptr<AVFrame, TEndBy<av_frame_free>>;
using TDecoder = std::unique_ptr<AVCodecContext, TEndBy<avcodec_free_context>>;
using TEncoder = TDecoder;
using TInput = std::unique_ptr<AVFormatContext, TEndBy<avformat_close_input>>;

/** Null when the file is none that the library knows. */
inline TInput open_input(const std::string& path) {
  AVFormatContext* opened = nullptr;
  // With the protocol named, nothing in the name is taken for another.
  if (avformat_open_input(&opened, ("file:" + path).c_str(), nullptr, nullptr) < 0) return nullptr;
  TInput input(opened);
  return avformat_find_stream_info(opened, nullptr) < 0 ? nullptr : std::move(input);
}

inline TDecoder open_decoder(const AVStream* stream) {
  const AVCodec* const codec = avcodec_find_decoder(stream->codecpar->codec_id);
  TDecoder decoder(codec ? avcodec_alloc_context3(codec) : nullptr);
  if (!decoder || avcodec_parameters_to_context(decoder.get(), stream->codecpar) < 0) return nullptr;
  decoder->thread_count = 1;
  return avcodec_open2(decoder.get(), codec, nullptr) < 0 ? nullptr : std::move(decoder);
}
