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

/** Carries out the moves of a window that the program asks for, one at a time; of those that come meanwhile the last
    one counts. Under X11 a move is complete when the window manager has answered it: only then is it known how far the
    window got, and Qt would drop a move back to the place that the window manager last reported. Display thread. */
class WindowMover : public QObject, private QAbstractNativeEventFilter {
public:
  /** `done` is called when no move is left. */
  WindowMover(QWidget* widget, std::function<void()> done);

  /** The place of the window without its frame. */
  void MoveTo(const QPoint& place);
  /** Where the window is; while no move is under way. */
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
  uint32_t fSequence = 0; // of the last X request before the move
  QTimer fPatience;
};

} // namespace display
