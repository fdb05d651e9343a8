#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include <memory>
#include <string>

/** RAII for the decoding library's objects. */
template <auto End>
struct TEndBy {
  template <typename Object>
  void operator()(Object* object) const {
    End(&object);
  }
};
/** Also frees the stream that the input reads from. */
struct TEndInput {
  void operator()(AVFormatContext* input) const;
};
using TPacket = std::unique_ptr<AVPacket, TEndBy<av_packet_free>>;
using TFrame = std::unique_ptr<AVFrame, TEndBy<av_frame_free>>;
using TDecoder = std::unique_ptr<AVCodecContext, TEndBy<avcodec_free_context>>;
using TEncoder = TDecoder;
using TInput = std::unique_ptr<AVFormatContext, TEndInput>;

/** Opens an input on the descriptor `file`; never opens anything else. `name` is a hint for detecting the format. Null
    for unknown formats. The caller owns the descriptor and keeps it open as long as the input. */
TInput open_input(int file, const std::string& name);
TDecoder open_decoder(const AVStream* stream);
