#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QPoint>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <optional>

class QWidget;

namespace display {

/** Carries out the program's moves of a window one at a time; of those requested meanwhile only the last is kept. Under
    X11 a move is complete when the window manager has answered: only then is the actual position known, and Qt would
    ignore a move back to the last reported position. Display thread. */
class WindowMover : public QObject, private QAbstractNativeEventFilter {
public:
  /** `done` is called when no move is pending. */
  WindowMover(QWidget* widget, std::function<void()> done);

  /** The position of the client area. */
  void MoveTo(const QPoint& place);
  /** The current position; while no move is in progress. */
  QPoint Place() const;

private:
  enum class State { idle, asked, answered };

  bool nativeEventFilter(const QByteArray& type, void* event, qintptr* result) override;
  bool NeedsAnswer(const QPoint& place) const;
  void Send(const QPoint& place);
  void Complete();

  QWidget* const fWidget;
  const std::function<void()> fDone;
  State fState = State::idle;
  std::optional<QPoint> fNext;
  uint32_t fSequence = 0; // number of the last X request before the move
  QTimer fTimeOut;
};

} // namespace display
