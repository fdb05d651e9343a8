#pragma once

#include <QObject>

namespace display {

/** Application-wide event filter that tracks which modifier keys are down. */
class InputWatch : public QObject {
public:
  InputWatch();
  bool eventFilter(QObject* receiver, QEvent* event) override;
};

} // namespace display
