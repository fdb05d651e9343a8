#pragma once

#include <pulse/pulseaudio.h>

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

/** Now on the monotonic clock, microseconds. */
int64_t clock_us();

/** Records what a PulseAudio sink puts out (its monitor) and knows when each sample was put out.
    The library's thread fills the record; fMutex guards fSamples and fStarts. */
class TSinkRecorder {
public:
  /** Records from now on. Throws std::runtime_error without a sound server. */
  explicit TSinkRecorder(const std::string& monitorName);
  ~TSinkRecorder();
  TSinkRecorder(const TSinkRecorder&) = delete;
  TSinkRecorder& operator=(const TSinkRecorder&) = delete;

  static constexpr int kRate = 48000;

  std::vector<float> Samples() const;
  /** Waits until what was put out at `untilUs` has arrived here, at most 5 s. */
  void WaitFor(int64_t untilUs) const;
  /** Whether the server has said anything of its timing; until then no sample has a time. */
  bool HasTiming() const;
  /** When sample 0 was put out (monotonic, µs): the median of all the server's timing reports so far. */
  int64_t StartUs() const;
  /** When sample `index` was put out (monotonic, µs). */
  int64_t WhenUs(size_t index) const;
  /** How far the middle 90 % of those reports lie apart, µs: the clock's own uncertainty. */
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
