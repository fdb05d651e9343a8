#pragma once

#include "tests/support/scratch_folder.h"

#include <sys/types.h>

/** A sound server of the test's own, whose only output plays into nothing in real time; what this process connects to
    while it is there. Needs the program `pulseaudio`. */
class SoundServer {
public:
  SoundServer();
  SoundServer(const SoundServer&) = delete;
  SoundServer& operator=(const SoundServer&) = delete;
  ~SoundServer();

  /** Returns once it takes connections. */
  void Start();
  /** At once, with nothing tidied up. */
  void Kill();
  /** From then on it keeps its connections and answers nothing. */
  void Freeze() const;

private:
  const ScratchFolder fFolder;
  pid_t fProcess = 0;
};
