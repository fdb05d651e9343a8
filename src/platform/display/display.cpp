#include "platform/display/display.h"

#include "platform/display/display_queue.h"
#include "platform/display/display_thread.h"
#include "platform/display/input_watch.h"
#include "platform/display/quick_style.h"
#include "platform/display/screen_watch.h"
#include "platform/interface/font_metrics.h"
#include "platform/interface/menu_peer.h"
#include "platform/interface/tool_button_peer.h"
#include "platform/support/log.h"

#include <QApplication>
#include <QWidget>
#include <fontconfig/fontconfig.h>

#include <clocale>
#include <exception>
#include <thread>

namespace display {

namespace {

bool is_set(const char* variable) {
  return !qEnvironmentVariableIsEmpty(variable);
}

/** Only X11 lets a program position its windows. */
void prefer_x11() {
  if (!is_set("QT_QPA_PLATFORM") && is_set("WAYLAND_DISPLAY") && is_set("DISPLAY"))
    qputenv("QT_QPA_PLATFORM", "xcb;wayland");
}

void warn_of_wayland() {
  if (QGuiApplication::platformName().startsWith("wayland"))
    log_error("display", "Wayland lets no program position its windows: they open where the compositor puts them, and "
                         "do not follow each other");
}

bool has_screen() {
  return is_set("QT_QPA_PLATFORM") || is_set("WAYLAND_DISPLAY") || is_set("DISPLAY");
}

/** Catches and logs what an event filter, slot, paint event or timer throws, so that the event loop continues. */
class Application : public QApplication {
public:
  using QApplication::QApplication;
  bool notify(QObject* receiver, QEvent* event) override {
    try {
      return QApplication::notify(receiver, event);
    } catch (const std::exception& error) {
      log_error("display", error.what());
    } catch (...) {
      log_error("display", "an event handler threw something other than an exception");
    }
    return false;
  }
};

void close_all() {
  while (!QApplication::topLevelWidgets().isEmpty()) delete QApplication::topLevelWidgets().constFirst();
}

/** Reading the font settings is a fifth of the start-up time: done in parallel with Qt's own start. */
std::thread read_font_settings() {
  return std::thread([] { FcInit(); });
}

} // namespace

int run(int argc, char** argv, const std::function<void()>& started) {
  if (!has_screen()) {
    log_error("display", "no screen: neither DISPLAY nor WAYLAND_DISPLAY is set");
    return 1;
  }
  prefer_x11();
  // The desktop's global menu bar is never used, and looking for one takes longer than opening a window.
  QCoreApplication::setAttribute(Qt::AA_DontUseNativeMenuBar);
  std::thread fonts = read_font_settings();
  const Application application(argc, argv);
  fonts.join();
  warn_of_wayland();
  QApplication::setStyle(new QuickStyle);
  // Files and the audio library use a decimal point, whatever the desktop's locale.
  std::setlocale(LC_NUMERIC, "C");
  QApplication::setQuitOnLastWindowClosed(false);
  const InputWatch input;
  const ScreenWatch screens;
  int exitCode = 0;
  {
    const Queue queue;
    started();
    // Measured while the program starts on its own threads.
    learn_plain_font_height();
    learn_menu_bar_height();
    learn_tool_metrics();
    exitCode = QApplication::exec();
  }
  close_all();
  return exitCode;
}

void quit(int exitCode) {
  post([exitCode] { QCoreApplication::exit(exitCode); });
}

} // namespace display
