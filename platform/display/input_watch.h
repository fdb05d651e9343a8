#pragma once

#include <QObject>

namespace display {

/** Sees every event of the program first and reports which modifier keys and mouse buttons are down. */
class InputWatch : public QObject {
public:
  InputWatch();
  bool eventFilter(QObject* receiver, QEvent* event) override;
};

/** Asks the display itself, for moments that bring no event to this program (the window manager moves a window). */
void report_real_input_state();

} // namespace display
