#pragma once

#include "bench/audio_conditions.h"
#include "bench/audio_signal.h"
#include "demo/song_clock.h"
#include "demo/x_window.h"

#include <unistd.h>

#include <stdexcept>

/** The editor whose first line is selected, and the clock of the noise track that the player plays meanwhile into the
    sink "heard". Throws std::runtime_error unless both are there. */
struct TStampedEditor {
  TStampedEditor() : clock(timed_noise(kTrackSeconds), recorder), window("Vesmo Editor", 30) {
    window.Focus();
    constexpr int64_t kBegunBeforeUs = 4'000'000; // the track plays already
    if (!clock.WaitForStart(clock_us() - kBegunBeforeUs, 20)) throw std::runtime_error("the track is not heard");
    window.Press("Home");
  }
  void ToggleWordByWord() { window.Press("b", "Control_L"); }
  /** Returns when the file is written. */
  void Save() {
    usleep(500'000);
    window.Press("s", "Control_L");
    usleep(1'500'000);
  }

  const TSinkRecorder recorder{"heard.monitor"};
  TSongClock clock;
  TXWindow window;
};
