#include "platform/display/screen.h"

#include "platform/display/convert.h"
#include "platform/display/display_thread.h"

#include <QGuiApplication>
#include <QScreen>

namespace display {

BRect usable_screen(BPoint where) {
  return call([where] {
    const QScreen* screen = QGuiApplication::screenAt(QPoint(qRound(where.x), qRound(where.y)));
    if (!screen) screen = QGuiApplication::primaryScreen();
    return screen ? to_brect(screen->availableGeometry()) : BRect{};
  });
}

} // namespace display
