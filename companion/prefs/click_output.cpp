#include "companion/prefs/click_output.h"

#include "common/app_info.h"
#include "platform/support/log.h"

#include <dlfcn.h>
#include <pulse/simple.h>

namespace {

/** Little, so that the server's guess of the moment of hearing is a short one. */
constexpr uint32 kBufferedMs = 60;

/** Loaded at the first test: most users never make one. */
struct TSoundLibrary {
  decltype(&pa_simple_new) open;
  decltype(&pa_simple_free) close;
  decltype(&pa_simple_write) write;
  decltype(&pa_simple_get_latency) latency;
};

template <typename Function>
bool find(void* image, const char* name, Function* function) {
  *function = reinterpret_cast<Function>(dlsym(image, name));
  return *function != nullptr;
}

const TSoundLibrary* sound_library() {
  static const TSoundLibrary* const library = []() -> const TSoundLibrary* {
    void* const image = dlopen("libpulse-simple.so.0", RTLD_NOW | RTLD_LOCAL);
    static TSoundLibrary found{};
    const bool complete = image && find(image, "pa_simple_new", &found.open) &&
                          find(image, "pa_simple_free", &found.close) && find(image, "pa_simple_write", &found.write) &&
                          find(image, "pa_simple_get_latency", &found.latency);
    if (!complete) log_error("sound", dlerror());
    return complete ? &found : nullptr;
  }();
  return library;
}

class TServerOutput : public TClickOutput {
public:
  TServerOutput(const TSoundLibrary& library, pa_simple* stream) : fLibrary(library), fStream(stream) {}
  ~TServerOutput() override { fLibrary.close(fStream); }

  bool Write(std::span<const int16> samples) override {
    return fLibrary.write(fStream, samples.data(), samples.size_bytes(), nullptr) >= 0;
  }
  bigtime_t LatencyUs() override { return static_cast<bigtime_t>(fLibrary.latency(fStream, nullptr)); }

private:
  const TSoundLibrary& fLibrary;
  pa_simple* const fStream;
};

} // namespace

std::unique_ptr<TClickOutput> open_click_output() {
  const TSoundLibrary* const library = sound_library();
  if (library == nullptr) return nullptr;
  const pa_sample_spec form{PA_SAMPLE_S16NE, TClickOutput::kRate, 1};
  pa_buffer_attr buffer{};
  buffer.maxlength = buffer.prebuf = buffer.minreq = buffer.fragsize = UINT32_MAX; // the server's choice
  buffer.tlength = TClickOutput::kRate * kBufferedMs / 1000 * static_cast<uint32>(sizeof(int16));
  pa_simple* const stream =
      library->open(nullptr, gAppName, PA_STREAM_PLAYBACK, nullptr, "Tap test", &form, nullptr, &buffer, nullptr);
  return stream ? std::make_unique<TServerOutput>(*library, stream) : nullptr;
}
