#pragma once

#include <sys/types.h>

/** A message bus of this process's own, which its session bus address names while this lives. */
class PrivateBus {
public:
  PrivateBus();
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;
  ~PrivateBus();
  /** Ends the bus, as the end of a session does. */
  void End();

private:
  pid_t fProcess = -1;
};
