#pragma once

#include "tests/support/scratch_folder.h"

#include <sys/types.h>

/** A sound server for the test, to which this process connects while it exists. Its only output is a null sink that
    plays in real time. Needs the program `pulseaudio`. */
class SoundServer {
public:
  SoundServer();
  SoundServer(const SoundServer&) = delete;
  SoundServer& operator=(const SoundServer&) = delete;
  ~SoundServer();

  /** Returns once it accepts connections. */
  void Start();
  /** SIGKILL, without a clean shutdown. */
  void Kill();
  /** SIGSTOP: keeps its connections but no longer answers. */
  void Freeze() const;

private:
  const ScratchFolder fFolder;
  pid_t fProcess = 0;
};
