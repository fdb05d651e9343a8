#pragma once

#include <pulse/pulseaudio.h>

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

/** Current time of the monotonic clock, in µs. */
int64_t clock_us();

/** Records the output of a PulseAudio sink (its monitor) and knows when each sample was output.
    Filled on the library's thread; fMutex guards fSamples and fStarts. */
class TSinkRecorder {
public:
  /** Records from now on. Throws std::runtime_error without a sound server. */
  explicit TSinkRecorder(const std::string& monitorName);
  ~TSinkRecorder();
  TSinkRecorder(const TSinkRecorder&) = delete;
  TSinkRecorder& operator=(const TSinkRecorder&) = delete;

  static constexpr int kRate = 48000;

  std::vector<float> Samples() const;
  /** Waits until the output up to `untilUs` has been recorded, at most 5 s. */
  void WaitFor(int64_t untilUs) const;
  /** Whether the server has reported its timing; until then no sample has a time. */
  bool HasTiming() const;
  /** When sample 0 was output (monotonic, µs): the median of all timing reports so far. */
  int64_t StartUs() const;
  /** When sample `index` was output (monotonic, µs). */
  int64_t WhenUs(size_t index) const;
  /** Range of the middle 90 % of the timing reports, µs: the uncertainty of the clock. */
  int64_t StartSpreadUs() const;

private:
  static void StateChanged(pa_context* context, void* self);
  static void StreamReadable(pa_stream* stream, size_t byteCount, void* self);
  static void LatencyUpdated(pa_stream* stream, void* self);
  void Connect();
  void OpenStream(const std::string& monitorName);
  void TakeFragment();
  void NoteLatency();
  std::vector<int64_t> SortedStarts() const;

  pa_threaded_mainloop* fLoop = nullptr;
  pa_context* fContext = nullptr;
  pa_stream* fStream = nullptr;
  mutable std::mutex fMutex;
  std::vector<float> fSamples;
  std::vector<int64_t> fStarts;
};
