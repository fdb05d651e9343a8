#include "player/peaks/loudness.h"

extern "C" {
#include <libavutil/channel_layout.h>
#include <libswresample/swresample.h>
}

#include <algorithm>
#include <cmath>

namespace {

constexpr int kStretchesPerSecond = 50;
constexpr size_t kMostStretches = size_t{24} * 3600 * kStretchesPerSecond; // a day
constexpr size_t kParts = 1000;

using TResampler = std::unique_ptr<SwrContext, TEndBy<swr_free>>;

/** Measures the RMS loudness of consecutive stretches, independent of frame boundaries. */
class TMeter {
public:
  bool Begin(const AVFrame* frame) {
    AVChannelLayout mono = AV_CHANNEL_LAYOUT_MONO;
    AVChannelLayout layout{};
    av_channel_layout_copy(&layout, &frame->ch_layout);
    if (layout.order == AV_CHANNEL_ORDER_UNSPEC) av_channel_layout_default(&layout, layout.nb_channels);
    SwrContext* resampler = nullptr;
    const int result = swr_alloc_set_opts2(&resampler, &mono, AV_SAMPLE_FMT_FLT, frame->sample_rate, &layout,
                                           static_cast<AVSampleFormat>(frame->format), frame->sample_rate, 0, nullptr);
    fResampler.reset(resampler);
    fStretch = std::max(frame->sample_rate / kStretchesPerSecond, 1);
    fFormat = frame->format;
    fChannels = frame->ch_layout.nb_channels;
    fRate = frame->sample_rate;
    av_channel_layout_uninit(&layout);
    return result >= 0 && swr_init(resampler) >= 0;
  }

  /** False when the limit is reached. */
  bool Add(const AVFrame* frame) {
    const bool isNew =
        frame->format != fFormat || frame->ch_layout.nb_channels != fChannels || frame->sample_rate != fRate;
    if (isNew && !Begin(frame)) return true;
    fSamples.resize(static_cast<size_t>(std::max(swr_get_out_samples(fResampler.get(), frame->nb_samples), 0)));
    auto* out = reinterpret_cast<uint8_t*>(fSamples.data());
    const int count = swr_convert(fResampler.get(), &out, static_cast<int>(fSamples.size()),
                                  const_cast<const uint8_t**>(frame->extended_data), frame->nb_samples);
    for (int i = 0; i < count; ++i) Take(fSamples[static_cast<size_t>(i)]);
    return fStretches.size() < kMostStretches;
  }

  const std::vector<float>& Stretches() const { return fStretches; }

private:
  void Take(float sample) {
    if (std::isfinite(sample)) fEnergy += static_cast<double>(sample) * sample;
    if (++fTaken < fStretch) return;
    fStretches.push_back(static_cast<float>(std::sqrt(fEnergy / fTaken)));
    fEnergy = 0;
    fTaken = 0;
  }

  TResampler fResampler;
  std::vector<float> fSamples;
  std::vector<float> fStretches;
  int fFormat = -1;
  int fChannels = 0;
  int fRate = 0;
  int fStretch = 1;
  int fTaken = 0;
  double fEnergy = 0;
};

bool measure_frames(AVCodecContext* decoder, AVFrame* frame, TMeter* meter) {
  while (avcodec_receive_frame(decoder, frame) >= 0) {
    if (!meter->Add(frame)) return false;
  }
  return true;
}

} // namespace

std::vector<unsigned char> read_loudness(AVFormatContext* input) {
  const int number = av_find_best_stream(input, AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
  if (number < 0) return {};
  const TDecoder decoder = open_decoder(input->streams[number]);
  const TPacket packet(av_packet_alloc());
  const TFrame frame(av_frame_alloc());
  if (!decoder || !packet || !frame) return {};
  TMeter meter;
  bool goesOn = true;
  while (goesOn && av_read_frame(input, packet.get()) >= 0) {
    if (packet->stream_index == number) {
      avcodec_send_packet(decoder.get(), packet.get());
      goesOn = measure_frames(decoder.get(), frame.get(), &meter);
    }
    av_packet_unref(packet.get());
  }
  avcodec_send_packet(decoder.get(), nullptr);
  if (goesOn) measure_frames(decoder.get(), frame.get(), &meter);
  std::vector<float> stretches = meter.Stretches();
  // A truncated file is padded with silence, or the waveform would be stretched over the nominal duration.
  const auto nominal =
      static_cast<size_t>(std::max<int64_t>(input->duration, 0) / (AV_TIME_BASE / kStretchesPerSecond));
  if (!stretches.empty()) stretches.resize(std::max(stretches.size(), std::min(nominal, kMostStretches)));
  return scaled_loudness(stretches, kParts);
}

std::vector<unsigned char> scaled_loudness(const std::vector<float>& stretches, size_t mostParts) {
  if (stretches.empty()) return {};
  const float loudest = std::max(*std::max_element(stretches.begin(), stretches.end()), 1e-6F);
  const size_t count = std::min(mostParts, stretches.size());
  std::vector<unsigned char> parts;
  for (size_t i = 0; i < count; ++i) {
    const auto first = stretches.begin() + static_cast<long>(i * stretches.size() / count);
    const auto last = stretches.begin() + static_cast<long>((i + 1) * stretches.size() / count);
    parts.push_back(static_cast<unsigned char>(std::lround(*std::max_element(first, last) / loudest * 255)));
  }
  return parts;
}
