#pragma once

#include <QObject>

namespace display {

/** Sees every event of the program first and reports which modifier keys are down. */
class InputWatch : public QObject {
public:
  InputWatch();
  bool eventFilter(QObject* receiver, QEvent* event) override;
};

} // namespace display
