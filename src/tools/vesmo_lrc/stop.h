#pragma once

/** From now on SIGINT, SIGTERM and SIGHUP only ask to stop, so that nothing half-made is left; and a reader of our
    output that goes away is an error of writing. */
void catch_signals();

/** The signal that asked to stop; 0 while none did. Any thread. */
int stop_signal();
