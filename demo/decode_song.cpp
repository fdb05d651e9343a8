#include "demo/decode_song.h"

#include "demo/sink_recorder.h"

#include <mpv/client.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <stdexcept>

namespace {

struct TMpvEnd {
  void operator()(mpv_handle* mpv) const { mpv_terminate_destroy(mpv); }
};

std::string scratch_file() {
  std::string name = "/tmp/decoded-song-XXXXXX";
  const int file = mkstemp(name.data());
  if (file < 0) throw std::runtime_error("no room for a temporary file in /tmp");
  close(file);
  return name;
}

/** Decodes the song to a file of raw samples. */
void play_into(const std::string& songPath, const std::string& samplesPath) {
  std::setlocale(LC_NUMERIC, "C");
  const std::unique_ptr<mpv_handle, TMpvEnd> mpv(mpv_create());
  const std::string rate = std::to_string(TSinkRecorder::kRate);
  const char* options[][2] = {{"config", "no"},
                              {"vid", "no"},
                              {"ao", "pcm"},
                              {"ao-pcm-waveheader", "no"},
                              {"ao-pcm-file", samplesPath.c_str()},
                              {"audio-format", "float"},
                              {"audio-channels", "mono"},
                              {"audio-samplerate", rate.c_str()}};
  for (const auto& option : options) mpv_set_option_string(mpv.get(), option[0], option[1]);
  if (mpv_initialize(mpv.get()) < 0) throw std::runtime_error("the audio library does not start");
  const char* command[] = {"loadfile", songPath.c_str(), nullptr};
  mpv_command(mpv.get(), command);
  for (;;) {
    const mpv_event* event = mpv_wait_event(mpv.get(), 60);
    if (event->event_id == MPV_EVENT_NONE) throw std::runtime_error("decoding does not end: " + songPath);
    if (event->event_id != MPV_EVENT_END_FILE) continue;
    if (static_cast<const mpv_event_end_file*>(event->data)->reason == MPV_END_FILE_REASON_EOF) return;
    throw std::runtime_error("cannot play " + songPath);
  }
}

} // namespace

std::vector<float> decode_song(const std::string& path) {
  const std::string scratch = scratch_file();
  play_into(path, scratch);
  std::ifstream file(scratch, std::ios::binary | std::ios::ate);
  std::vector<float> samples(static_cast<size_t>(file.tellg()) / sizeof(float));
  file.seekg(0);
  file.read(reinterpret_cast<char*>(samples.data()), static_cast<std::streamsize>(samples.size() * sizeof(float)));
  unlink(scratch.c_str());
  return samples;
}
