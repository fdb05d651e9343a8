#pragma once

#include <functional>

namespace display {

/** Runs the display on the calling thread, which must be the main thread: connects to the screen, calls `started` on
    this thread (it must not block) and returns after `quit`. Windows still open then are closed, and pending `call`s
    return their default. Returns the exit code, non-zero when there is no screen to connect to. On Wayland, X11 is
    preferred where available, unless QT_QPA_PLATFORM is set. */
int run(int argc, char** argv, const std::function<void()>& started);

/** Ends `run`. Any thread, even before `run` has started. */
void quit(int exitCode = 0);

} // namespace display
