#include "bench/library_source.h"

#include <mpv/client.h>

#include <chrono>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <stdexcept>
#include <thread>

TLibrarySource::TLibrarySource(std::string stretcher) : fStretcher(std::move(stretcher)) {
  std::setlocale(LC_NUMERIC, "C");
  fMpv = mpv_create();
  const char* options[][2] = {
      {"config", "no"},         {"vid", "no"}, {"audio-display", "no"}, {"terminal", "no"}, {"load-scripts", "no"},
      {"ytdl", "no"},           {"osc", "no"}, {"idle", "yes"},         {"ao", "pulse"},    {"hr-seek", "yes"},
      {"gapless-audio", "weak"}};
  for (const auto& option : options) mpv_set_option_string(fMpv, option[0], option[1]);
  if (mpv_initialize(fMpv) < 0) throw std::runtime_error("the audio library does not start");
}

TLibrarySource::~TLibrarySource() {
  mpv_terminate_destroy(fMpv);
}

void TLibrarySource::Play(const std::string& path) {
  const char* command[] = {"loadfile", path.c_str(), nullptr};
  mpv_command(fMpv, command);
  for (int i = 0; i < 500; ++i) {
    if (PositionSec() > 0.2) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  throw std::runtime_error("cannot play " + path);
}

void TLibrarySource::Seek(double seconds) {
  const std::string target = std::to_string(seconds);
  const char* command[] = {"seek", target.c_str(), "absolute+exact", nullptr};
  mpv_command(fMpv, command);
}

void TLibrarySource::SetPaused(bool paused) {
  int flag = paused;
  mpv_set_property(fMpv, "pause", MPV_FORMAT_FLAG, &flag);
}

void TLibrarySource::SetSpeed(double speed) {
  if (mpv_set_property_string(fMpv, "af", speed == 1 ? "" : fStretcher.c_str()) < 0)
    throw std::runtime_error("the audio library has no filter " + fStretcher);
  mpv_set_property(fMpv, "speed", MPV_FORMAT_DOUBLE, &speed);
}

double TLibrarySource::PositionSec() {
  double seconds = std::nan("");
  return mpv_get_property(fMpv, "audio-pts", MPV_FORMAT_DOUBLE, &seconds) < 0 ? std::nan("") : seconds;
}
