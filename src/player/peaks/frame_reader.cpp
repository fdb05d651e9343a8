#include "player/peaks/frame_reader.h"

TFrameReader::TFrameReader(AVFormatContext* input)
    : fInput(input), fStream(av_find_best_stream(input, AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0)),
      fDecoder(fStream >= 0 ? open_decoder(input->streams[fStream]) : nullptr) {}

/** Passes the next packet, or the end, to the decoder. False if the end had been passed already. */
bool TFrameReader::Feed() {
  if (fIsDraining) return false;
  fIsDraining = av_read_frame(fInput, fPacket.get()) < 0;
  if (fIsDraining) {
    avcodec_send_packet(fDecoder.get(), nullptr);
  } else if (fPacket->stream_index == fStream) {
    avcodec_send_packet(fDecoder.get(), fPacket.get());
  }
  av_packet_unref(fPacket.get());
  return true;
}

const AVFrame* TFrameReader::Next() {
  if (!fDecoder || !fPacket || !fFrame) return nullptr;
  while (avcodec_receive_frame(fDecoder.get(), fFrame.get()) < 0) {
    if (!Feed()) return nullptr;
  }
  return fFrame.get();
}

bool TFrameReader::SeekBefore(double seconds) {
  if (!fDecoder) return false;
  const auto timestamp = static_cast<int64_t>(seconds / av_q2d(fInput->streams[fStream]->time_base));
  if (av_seek_frame(fInput, fStream, timestamp, AVSEEK_FLAG_BACKWARD) < 0) return false;
  avcodec_flush_buffers(fDecoder.get());
  fIsDraining = false;
  return true;
}

std::optional<double> TFrameReader::TimeOf(const AVFrame* frame) const {
  const int64_t timestamp = frame->best_effort_timestamp;
  if (timestamp == AV_NOPTS_VALUE) return std::nullopt;
  return static_cast<double>(timestamp) * av_q2d(fInput->streams[fStream]->time_base);
}
