#pragma once

#include "player/peaks/av_file.h"

extern "C" {
#include <libswresample/swresample.h>
}

#include <span>
#include <vector>

/** Converts decoded frames of any format to mono samples, which do not overflow when they exceed full scale. */
class TMonoConverter {
public:
  /** At this sample rate, or (0) at that of each frame. */
  explicit TMonoConverter(int rate) : fWantedRate(rate) {}

  /** The samples that are complete after this frame; valid until the next call. None for an invalid format. */
  std::span<const float> Convert(const AVFrame* frame);
  /** The rest, at the end. */
  std::span<const float> Flush();
  /** Of the samples; 0 before the first frame. */
  int Rate() const { return fRate; }

private:
  using TResampler = std::unique_ptr<SwrContext, TEndBy<swr_free>>;
  bool Begin(const AVFrame* frame);
  std::span<const float> Take(const uint8_t** data, int count);

  const int fWantedRate;
  TResampler fResampler;
  std::vector<float> fSamples;
  int fFormat = -1;
  int fChannels = 0;
  int fSourceRate = 0;
  int fRate = 0;
};
