#pragma once

#include "tests/support/child_process.h"
#include "tests/support/scratch_folder.h"

#include <string>

/** A message bus of this process's own, which its session bus address names while this lives. */
struct PrivateBus {
  PrivateBus();
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;
  ~PrivateBus();
  /** Ends the bus, as the end of a session does. */
  void End() { fProcess.Kill(); }
  /** Starts it again at the same address. */
  void Start();

private:
  const ScratchFolder fFolder;
  const std::string fAddress = "unix:path=" + fFolder.File("bus");
  ChildProcess fProcess;
};
