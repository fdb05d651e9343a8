#pragma once

/** Makes SIGINT, SIGTERM and SIGHUP request a stop, so that no partial work is left, and SIGPIPE a write error. */
void catch_signals();

/** The signal that requested the stop; 0 if none has. Thread-safe. */
int stop_signal();
