#include "player/bus/actions.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

namespace {
const int kWake = QEvent::registerEventType();
}

void TActions::Do(std::function<void()> action) {
  {
    const std::lock_guard lock(fMutex);
    fActions.push_back(std::move(action));
  }
  QCoreApplication::postEvent(this, new QEvent(static_cast<QEvent::Type>(kWake)));
}

bool TActions::event(QEvent* event) {
  if (event->type() != kWake) return QObject::event(event);
  std::deque<std::function<void()>> actions;
  {
    const std::lock_guard lock(fMutex);
    actions.swap(fActions);
  }
  for (const auto& action : actions) action();
  return true;
}
