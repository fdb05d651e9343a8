#pragma once

#include <functional>

namespace display {

/** Runs the display on the calling thread, which must be the process's first: makes the connection to the screen, calls
    `started` on this thread (it must not wait) and returns after `quit`. Windows still open then are closed; those who
    wait for an answer get the default one. Returns the exit code, non-zero when there is no screen to connect to.
    On Wayland, X11 is asked for where it can be had, unless QT_QPA_PLATFORM says otherwise. */
int run(int argc, char** argv, const std::function<void()>& started);

/** Ends `run`. Any thread; also before it has begun. */
void quit(int exitCode = 0);

} // namespace display
