#include "player/peaks/mono_converter.h"

extern "C" {
#include <libavutil/channel_layout.h>
}

#include <algorithm>

bool TMonoConverter::Begin(const AVFrame* frame) {
  AVChannelLayout mono = AV_CHANNEL_LAYOUT_MONO;
  AVChannelLayout layout{};
  av_channel_layout_copy(&layout, &frame->ch_layout);
  if (layout.order == AV_CHANNEL_ORDER_UNSPEC) av_channel_layout_default(&layout, layout.nb_channels);
  fRate = fWantedRate > 0 ? fWantedRate : frame->sample_rate;
  SwrContext* resampler = nullptr;
  const int result = swr_alloc_set_opts2(&resampler, &mono, AV_SAMPLE_FMT_FLT, fRate, &layout,
                                         static_cast<AVSampleFormat>(frame->format), frame->sample_rate, 0, nullptr);
  fResampler.reset(resampler);
  fFormat = frame->format;
  fChannels = frame->ch_layout.nb_channels;
  fSourceRate = frame->sample_rate;
  av_channel_layout_uninit(&layout);
  const bool isReady = result >= 0 && swr_init(resampler) >= 0;
  if (!isReady) fResampler.reset();
  return isReady;
}

std::span<const float> TMonoConverter::Take(const uint8_t** data, int count) {
  if (!fResampler) return {};
  fSamples.resize(static_cast<size_t>(std::max(swr_get_out_samples(fResampler.get(), count), 0)));
  auto* out = reinterpret_cast<uint8_t*>(fSamples.data());
  const int made = swr_convert(fResampler.get(), &out, static_cast<int>(fSamples.size()), data, count);
  return {fSamples.data(), static_cast<size_t>(std::max(made, 0))};
}

std::span<const float> TMonoConverter::Convert(const AVFrame* frame) {
  const bool isNew =
      frame->format != fFormat || frame->ch_layout.nb_channels != fChannels || frame->sample_rate != fSourceRate;
  if (isNew && !Begin(frame)) return {};
  return Take(const_cast<const uint8_t**>(frame->extended_data), frame->nb_samples);
}

std::span<const float> TMonoConverter::Flush() {
  return Take(nullptr, 0);
}
