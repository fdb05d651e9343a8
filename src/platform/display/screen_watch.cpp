#include "platform/display/screen_watch.h"

#include "platform/display/convert.h"
#include "platform/display/known_value.h"
#include "platform/interface/screen.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <vector>

namespace display {

namespace {

struct KnownScreen {
  QRect whole;
  QRect usable;
};

/** The primary screen first. */
KnownValue<std::vector<KnownScreen>>& known_screens() {
  static auto* const screens = new KnownValue<std::vector<KnownScreen>>; // never destroyed: threads may outlive main
  return *screens;
}

void learn_screens() {
  std::vector<KnownScreen> screens;
  for (const QScreen* screen : QGuiApplication::screens())
    screens.push_back({screen->geometry(), screen->availableGeometry()});
  known_screens().Learn(screens);
}

} // namespace

struct ScreenWatch::Impl : QObject {
  void Watch(const QScreen* screen) {
    connect(screen, &QScreen::geometryChanged, this, learn_screens);
    connect(screen, &QScreen::availableGeometryChanged, this, learn_screens);
  }
};

ScreenWatch::ScreenWatch() : fImpl(std::make_unique<Impl>()) {
  learn_screens();
  for (const QScreen* screen : QGuiApplication::screens()) fImpl->Watch(screen);
  QObject::connect(qGuiApp, &QGuiApplication::screenAdded, fImpl.get(), [this](const QScreen* screen) {
    fImpl->Watch(screen);
    learn_screens();
  });
  QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, fImpl.get(), learn_screens);
  QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, fImpl.get(), learn_screens);
}

ScreenWatch::~ScreenWatch() = default;

} // namespace display

BRect screen_frame(BPoint where) {
  using namespace display;
  const std::vector<KnownScreen> screens = known_screens().Get();
  const QPoint point(qRound(where.x), qRound(where.y));
  const auto holds = [point](const KnownScreen& screen) { return screen.whole.contains(point); };
  const auto found = std::ranges::find_if(screens, holds);
  if (found != screens.end()) return to_brect(found->usable);
  return screens.empty() ? BRect{} : to_brect(screens.front().usable);
}
