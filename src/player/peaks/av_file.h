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
/** With the stream it reads from. */
struct TEndInput {
  void operator()(AVFormatContext* input) const;
};
using TPacket = std::unique_ptr<AVPacket, TEndBy<av_packet_free>>;
using TFrame = std::unique_ptr<AVFrame, TEndBy<av_frame_free>>;
using TDecoder = std::unique_ptr<AVCodecContext, TEndBy<avcodec_free_context>>;
using TEncoder = TDecoder;
using TInput = std::unique_ptr<AVFormatContext, TEndInput>;

/** Reads the open `file`, whose name may hint at its kind, and opens nothing else. Null when the library does not know
    the kind of file. The descriptor stays the caller's, and open for as long as the input. */
TInput open_input(int file, const std::string& name);
TDecoder open_decoder(const AVStream* stream);
