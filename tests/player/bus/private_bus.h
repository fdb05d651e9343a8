#pragma once

#include "tests/support/scratch_folder.h"

#include <sys/types.h>

#include <string>

/** A message bus of this process's own, which its session bus address names while this lives. */
class PrivateBus {
public:
  PrivateBus();
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;
  ~PrivateBus();
  /** Ends the bus, as the end of a session does. */
  void End();
  /** Starts it again at the same address. */
  void Start();

private:
  const ScratchFolder fFolder;
  const std::string fAddress = "unix:path=" + fFolder.File("bus");
  pid_t fProcess = -1;
};
