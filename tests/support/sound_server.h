#pragma once

#include "tests/support/child_process.h"
#include "tests/support/scratch_folder.h"

/** A sound server for the test, to which this process connects while it exists. Its only output is a null sink that
    plays in real time. Needs the program `pulseaudio`. */
struct SoundServer {
  SoundServer();
  SoundServer(const SoundServer&) = delete;
  SoundServer& operator=(const SoundServer&) = delete;
  ~SoundServer();

  /** Returns once it accepts connections. */
  void Start();
  void Kill() { fProcess.Kill(); }
  /** SIGSTOP: keeps its connections but no longer answers. */
  void Freeze() const { fProcess.Stop(); }

private:
  const ScratchFolder fFolder;
  ChildProcess fProcess;
};
