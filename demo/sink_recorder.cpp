#include "demo/sink_recorder.h"

#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <stdexcept>

int64_t clock_us() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return int64_t{now.tv_sec} * 1'000'000 + now.tv_nsec / 1000;
}

TSinkRecorder::TSinkRecorder(const std::string& monitorName) {
  fLoop = pa_threaded_mainloop_new();
  fContext = pa_context_new(pa_threaded_mainloop_get_api(fLoop), "sound recorder");
  pa_threaded_mainloop_lock(fLoop);
  pa_threaded_mainloop_start(fLoop);
  Connect();
  OpenStream(monitorName);
  pa_threaded_mainloop_unlock(fLoop);
}

TSinkRecorder::~TSinkRecorder() {
  pa_threaded_mainloop_lock(fLoop);
  if (fStream) {
    pa_stream_disconnect(fStream);
    pa_stream_unref(fStream);
  }
  pa_context_disconnect(fContext);
  pa_context_unref(fContext);
  pa_threaded_mainloop_unlock(fLoop);
  pa_threaded_mainloop_stop(fLoop);
  pa_threaded_mainloop_free(fLoop);
}

void TSinkRecorder::StateChanged(pa_context*, void* self) {
  pa_threaded_mainloop_signal(static_cast<TSinkRecorder*>(self)->fLoop, 0);
}

void TSinkRecorder::Connect() {
  pa_context_set_state_callback(fContext, StateChanged, this);
  if (pa_context_connect(fContext, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0)
    throw std::runtime_error("no sound server");
  while (pa_context_get_state(fContext) != PA_CONTEXT_READY) {
    if (!PA_CONTEXT_IS_GOOD(pa_context_get_state(fContext))) throw std::runtime_error("no sound server");
    pa_threaded_mainloop_wait(fLoop);
  }
}

void TSinkRecorder::OpenStream(const std::string& monitorName) {
  const pa_sample_spec spec{PA_SAMPLE_FLOAT32LE, kRate, 1};
  // The sink renders in blocks of the shortest delay any client asks for; what it has rendered it also plays,
  // so that a pause takes hold within one block.
  const pa_buffer_attr attr{static_cast<uint32_t>(-1), static_cast<uint32_t>(-1), static_cast<uint32_t>(-1),
                            static_cast<uint32_t>(-1), kRate / 200 * sizeof(float)};
  fStream = pa_stream_new(fContext, "what is heard", &spec, nullptr);
  pa_stream_set_read_callback(fStream, StreamReadable, this);
  pa_stream_set_latency_update_callback(fStream, LatencyUpdated, this);
  const auto flags = static_cast<pa_stream_flags_t>(PA_STREAM_AUTO_TIMING_UPDATE | PA_STREAM_ADJUST_LATENCY);
  if (pa_stream_connect_record(fStream, monitorName.c_str(), &attr, flags) < 0)
    throw std::runtime_error("cannot record " + monitorName);
}

void TSinkRecorder::StreamReadable(pa_stream*, size_t, void* self) {
  static_cast<TSinkRecorder*>(self)->TakeFragment();
}

void TSinkRecorder::LatencyUpdated(pa_stream*, void* self) {
  static_cast<TSinkRecorder*>(self)->NoteLatency();
}

void TSinkRecorder::TakeFragment() {
  const void* data = nullptr;
  size_t byteCount = 0;
  while (pa_stream_readable_size(fStream) > 0 && pa_stream_peek(fStream, &data, &byteCount) == 0 && byteCount > 0) {
    const std::lock_guard lock(fMutex);
    const auto* floats = static_cast<const float*>(data);
    if (data)
      fSamples.insert(fSamples.end(), floats, floats + byteCount / sizeof(float));
    else
      fSamples.resize(fSamples.size() + byteCount / sizeof(float)); // a gap is silence
    pa_stream_drop(fStream);
  }
}

/** The sample the server captures at this moment is put out `sink_usec` later and left the sink's queue
    `source_usec` ago; the write index counts all bytes captured so far. */
void TSinkRecorder::NoteLatency() {
  const pa_timing_info* info = pa_stream_get_timing_info(fStream);
  if (!info || info->write_index_corrupt || info->write_index <= 0) return;
  timeval wall{};
  pa_gettimeofday(&wall);
  const auto agoUs = static_cast<int64_t>(pa_timeval_diff(&wall, &info->timestamp));
  const int64_t capturedUs = info->write_index * 1'000'000 / static_cast<int64_t>(kRate * sizeof(float));
  const int64_t atUs =
      clock_us() - agoUs - static_cast<int64_t>(info->source_usec) + static_cast<int64_t>(info->sink_usec);
  const std::lock_guard lock(fMutex);
  fStarts.push_back(atUs - capturedUs);
}

std::vector<float> TSinkRecorder::Samples() const {
  const std::lock_guard lock(fMutex);
  return fSamples;
}

std::vector<int64_t> TSinkRecorder::SortedStarts() const {
  const std::lock_guard lock(fMutex);
  auto starts = fStarts;
  std::sort(starts.begin(), starts.end());
  return starts;
}

bool TSinkRecorder::HasTiming() const {
  const std::lock_guard lock(fMutex);
  return !fStarts.empty();
}

int64_t TSinkRecorder::StartUs() const {
  const auto starts = SortedStarts();
  if (starts.empty()) throw std::runtime_error("the sound server reported no timing");
  return starts[starts.size() / 2];
}

int64_t TSinkRecorder::WhenUs(size_t index) const {
  return StartUs() + static_cast<int64_t>(index) * 1'000'000 / kRate;
}

int64_t TSinkRecorder::StartSpreadUs() const {
  const auto starts = SortedStarts();
  return starts.empty() ? 0 : starts[starts.size() * 95 / 100] - starts[starts.size() * 5 / 100];
}

void TSinkRecorder::WaitFor(int64_t untilUs) const {
  for (const int64_t deadline = clock_us() + 5'000'000; clock_us() < deadline; usleep(20'000)) {
    const std::lock_guard lock(fMutex);
    const auto lastUs = static_cast<int64_t>(fSamples.size()) * 1'000'000 / kRate;
    if (!fStarts.empty() && fStarts.back() + lastUs > untilUs) return;
  }
}
