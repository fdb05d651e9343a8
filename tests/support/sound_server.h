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
  /** Adds another output, by its name, as plugging in a device does. */
  void Plug(const std::string& sink);
  void Unplug();
  /** Where the sound of this process goes: a line for each stream, the second word is the number of its sink. */
  static std::string Streams();
  /** SIGSTOP: keeps its connections but no longer answers. */
  void Freeze() const { fProcess.Stop(); }

private:
  const ScratchFolder fFolder;
  ChildProcess fProcess;
  std::string fPlugged; // number of its module
};
