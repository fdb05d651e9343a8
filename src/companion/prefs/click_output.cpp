#include "companion/prefs/click_output.h"

#include "common/app_info.h"
#include "platform/kernel/threads.h"
#include "platform/support/log.h"

#include <dlfcn.h>
#include <pulse/pulseaudio.h>

#include <algorithm>

namespace {

/** Small, so that the server's latency estimate is precise. */
constexpr uint32 kBufferedMs = 60;
/** Time-out: a stopped or overloaded server stays connected but never answers. */
constexpr bigtime_t kLongestAnswerUs = 3000000;
/** Longest time until a cancel takes effect. */
constexpr int kPollUs = 20000;

/** Lazily loaded at the first test, since most users never run one. */
struct TSoundLibrary {
  decltype(&pa_mainloop_new) newLoop;
  decltype(&pa_mainloop_free) freeLoop;
  decltype(&pa_mainloop_get_api) loopApi;
  decltype(&pa_mainloop_prepare) prepare;
  decltype(&pa_mainloop_poll) poll;
  decltype(&pa_mainloop_dispatch) dispatch;
  decltype(&pa_context_new) newContext;
  decltype(&pa_context_connect) connectContext;
  decltype(&pa_context_get_state) contextState;
  decltype(&pa_context_disconnect) disconnectContext;
  decltype(&pa_context_unref) unrefContext;
  decltype(&pa_stream_new) newStream;
  decltype(&pa_stream_connect_playback) connectStream;
  decltype(&pa_stream_get_state) streamState;
  decltype(&pa_stream_writable_size) writableSize;
  decltype(&pa_stream_write) write;
  decltype(&pa_stream_get_latency) latency;
  decltype(&pa_stream_disconnect) disconnectStream;
  decltype(&pa_stream_unref) unrefStream;
};

template <typename Function>
bool find(void* image, const char* name, Function* function) {
  *function = reinterpret_cast<Function>(dlsym(image, name));
  return *function != nullptr;
}

bool find_connection(void* image, TSoundLibrary* found) {
  return find(image, "pa_mainloop_new", &found->newLoop) && find(image, "pa_mainloop_free", &found->freeLoop) &&
         find(image, "pa_mainloop_get_api", &found->loopApi) && find(image, "pa_mainloop_prepare", &found->prepare) &&
         find(image, "pa_mainloop_poll", &found->poll) && find(image, "pa_mainloop_dispatch", &found->dispatch) &&
         find(image, "pa_context_new", &found->newContext) &&
         find(image, "pa_context_connect", &found->connectContext) &&
         find(image, "pa_context_get_state", &found->contextState) &&
         find(image, "pa_context_disconnect", &found->disconnectContext) &&
         find(image, "pa_context_unref", &found->unrefContext);
}

bool find_stream(void* image, TSoundLibrary* found) {
  return find(image, "pa_stream_new", &found->newStream) &&
         find(image, "pa_stream_connect_playback", &found->connectStream) &&
         find(image, "pa_stream_get_state", &found->streamState) &&
         find(image, "pa_stream_writable_size", &found->writableSize) &&
         find(image, "pa_stream_write", &found->write) && find(image, "pa_stream_get_latency", &found->latency) &&
         find(image, "pa_stream_disconnect", &found->disconnectStream) &&
         find(image, "pa_stream_unref", &found->unrefStream);
}

const TSoundLibrary* sound_library() {
  static const TSoundLibrary* const library = []() -> const TSoundLibrary* {
    void* const image = dlopen("libpulse.so.0", RTLD_NOW | RTLD_LOCAL);
    static TSoundLibrary found{};
    const bool complete = image && find_connection(image, &found) && find_stream(image, &found);
    if (!complete) log_error("sound", dlerror());
    return complete ? &found : nullptr;
  }();
  return library;
}

/** A stream with its own connection. Its event loop runs on the caller's thread and only during waits, so every wait
    has a time-out and can be cancelled, and closing does not block. */
class TServerOutput : public TClickOutput {
public:
  TServerOutput(const TSoundLibrary& library, TIsCancelled isCancelled)
      : fLibrary(library), fIsCancelled(std::move(isCancelled)), fLoop(library.newLoop()),
        fContext(library.newContext(library.loopApi(fLoop), gAppName)) {}

  ~TServerOutput() override {
    if (fStream) {
      fLibrary.disconnectStream(fStream);
      fLibrary.unrefStream(fStream);
    }
    fLibrary.disconnectContext(fContext);
    fLibrary.unrefContext(fContext);
    fLibrary.freeLoop(fLoop);
  }

  bool Open() {
    // No autospawn: starting a server would block on a process.
    if (fLibrary.connectContext(fContext, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) return false;
    if (!Await([this] { return fLibrary.contextState(fContext) == PA_CONTEXT_READY; })) return false;
    return OpenStream() && Await([this] { return fLibrary.streamState(fStream) == PA_STREAM_READY; });
  }

  bool Write(std::span<const int16> samples) override {
    while (!samples.empty()) {
      size_t room = 0; // in samples
      const auto hasRoom = [&] { return (room = fLibrary.writableSize(fStream) / sizeof(int16)) > 0; };
      if (!Await(hasRoom)) return false;
      const auto piece = samples.first(std::min(room, samples.size()));
      if (fLibrary.write(fStream, piece.data(), piece.size_bytes(), nullptr, 0, PA_SEEK_RELATIVE) < 0) return false;
      samples = samples.subspan(piece.size());
    }
    return true;
  }

  bigtime_t LatencyUs() override {
    pa_usec_t us = 0;
    int isNegative = 0;
    const auto isKnown = [&] { return fLibrary.latency(fStream, &us, &isNegative) != -PA_ERR_NODATA; };
    return Await(isKnown) && !isNegative ? static_cast<bigtime_t>(us) : 0;
  }

private:
  bool OpenStream() {
    const pa_sample_spec form{PA_SAMPLE_S16NE, kRate, 1};
    pa_buffer_attr buffer{};
    buffer.maxlength = buffer.prebuf = buffer.minreq = buffer.fragsize = UINT32_MAX; // the server's choice
    buffer.tlength = uint32{kRate} * kBufferedMs / 1000 * static_cast<uint32>(sizeof(int16));
    fStream = fLibrary.newStream(fContext, "Tap test", &form, nullptr);
    constexpr auto kFlags = static_cast<pa_stream_flags_t>(PA_STREAM_INTERPOLATE_TIMING | PA_STREAM_ADJUST_LATENCY |
                                                           PA_STREAM_AUTO_TIMING_UPDATE);
    return fStream && fLibrary.connectStream(fStream, nullptr, &buffer, kFlags, nullptr, nullptr) >= 0;
  }

  bool IsAlive() const {
    return PA_CONTEXT_IS_GOOD(fLibrary.contextState(fContext)) &&
           (!fStream || PA_STREAM_IS_GOOD(fLibrary.streamState(fStream)));
  }

  /** Runs the event loop until `isReady`. False on an error, time-out or cancel. */
  template <typename Ready>
  bool Await(Ready isReady) {
    const bigtime_t untilUs = system_time() + kLongestAnswerUs;
    while (IsAlive()) {
      if (isReady()) return true;
      if (fIsCancelled() || system_time() > untilUs) return false;
      if (fLibrary.prepare(fLoop, kPollUs) < 0 || fLibrary.poll(fLoop) < 0 || fLibrary.dispatch(fLoop) < 0)
        return false;
    }
    return false;
  }

  const TSoundLibrary& fLibrary;
  const TIsCancelled fIsCancelled;
  pa_mainloop* const fLoop;
  pa_context* const fContext;
  pa_stream* fStream = nullptr;
};

} // namespace

std::unique_ptr<TClickOutput> open_click_output(const TIsCancelled& isCancelled) {
  const TSoundLibrary* const library = sound_library();
  if (library == nullptr) return nullptr;
  auto output = std::make_unique<TServerOutput>(*library, isCancelled);
  return output->Open() ? std::move(output) : nullptr;
}
