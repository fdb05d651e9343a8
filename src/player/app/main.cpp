#include "platform/app/message.h"
#include "platform/display/display.h"
#include "player/app/command_line.h"
#include "player/app/end_signals.h"
#include "player/app/single_instance.h"
#include "player/app/sonivo_app.h"
#include "player/model/player_messages.h"

#include <QCoreApplication>

#include <clocale>
#include <cstdio>
#include <malloc.h>

int main(int argc, char** argv) {
  const TCommandLine commandLine = parse_command_line(argc, argv);
  if (!commandLine.text.empty()) {
    std::fputs(commandLine.text.c_str(), commandLine.error ? stderr : stdout);
    return commandLine.error ? 2 : 0;
  }
  if (!commandLine.isAnother && hand_over(commandLine)) return 0;
  // Most threads are idle; limit malloc to two arenas so that freed memory is shared.
  mallopt(M_ARENA_MAX, 2);
  auto* const app = new TSonivoApp(commandLine);
  app->PostMessage(kMsgPrepare); // while the display starts
  const thread_id thread = app->Run();
  const int exitCode = display::run(argc, argv, [app] {
    // Qt has set the desktop's locale; the audio library needs the C locale for numbers.
    std::setlocale(LC_NUMERIC, "C");
    app->PostMessage(kMsgStart);
    new TEndSignals(BMessenger(app), QCoreApplication::instance());
  });
  // Without a display nothing was started: the application's looper is still to be ended.
  if (exitCode != 0) app->PostMessage(B_QUIT_REQUESTED);
  wait_for_thread(thread, nullptr);
  return exitCode;
}
