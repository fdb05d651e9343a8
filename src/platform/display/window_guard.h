#pragma once

#include "platform/app/messenger.h"
#include "platform/display/window_mover.h"
#include "platform/interface/window_peer.h"

#include <QObject>

#include <memory>

class QDropEvent;
class QMimeData;
class QWidget;

namespace display {

/** Event filter on the widget of each window: turns close button, moves, resizes, activation and drops into messages to
    the window. Owned by the widget (QObject child); display thread. */
class WindowGuard : public QObject {
public:
  WindowGuard(QWidget* widget, const BMessenger& window, std::shared_ptr<WindowPlace> place);
  bool eventFilter(QObject* receiver, QEvent* event) override;
  /** A move requested by the program. */
  void MoveTo(BPoint leftTop);

private:
  void MovesDone();
  void ReportMove(const QPoint& place);
  void ReportResize();
  void ReportActive(bool active) const;
  bool Drop(const QDropEvent& event) const;
  BMessenger TargetAt(const QPoint& where) const;

  QWidget* fWidget;
  BMessenger fWindow;
  std::shared_ptr<WindowPlace> fPlace;
  int64 fMovesTaken = 0;
  WindowMover fMover;
};

} // namespace display
