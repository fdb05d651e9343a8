#pragma once

#include "player/peaks/av_file.h"

#include <optional>

/** Decodes the audio stream of a song, frame by frame. What is broken in it is skipped. The input is not owned. */
class TFrameReader {
public:
  explicit TFrameReader(AVFormatContext* input);

  /** Valid until the next call; null at the end, or if there is no audio. */
  const AVFrame* Next();
  /** The next frame starts at or before this time, in seconds as those of TimeOf. False, with nothing changed, if the
      file cannot be searched. */
  [[nodiscard]] bool SeekBefore(double seconds);
  /** Timestamp of a frame of this stream, in seconds; nothing if the file has none. */
  std::optional<double> TimeOf(const AVFrame* frame) const;

private:
  bool Feed();

  AVFormatContext* const fInput;
  const int fStream;
  const TDecoder fDecoder; // null if there is no audio
  const TPacket fPacket{av_packet_alloc()};
  const TFrame fFrame{av_frame_alloc()};
  bool fIsDraining = false;
};
