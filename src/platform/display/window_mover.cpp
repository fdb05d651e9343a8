#include "platform/display/window_mover.h"

#include "platform/display/display_thread.h"

#include <QGuiApplication>
#include <QWidget>
#include <QWindow>

#include <chrono>
#include <utility>
#include <xcb/xcb.h>

namespace display {

namespace {

/** For window managers that do not answer a move. */
constexpr std::chrono::seconds kTimeOut{1};

xcb_connection_t* x11_connection() {
#if QT_CONFIG(xcb)
  // The offscreen platform has this interface, but no connection.
  if (const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()) return x11->connection();
#endif
  return nullptr;
}

} // namespace

WindowMover::WindowMover(QWidget* widget, std::function<void()> done) : fWidget(widget), fDone(std::move(done)) {
  assert_on_display_thread();
  fTimeOut.setSingleShot(true);
  fTimeOut.setInterval(kTimeOut);
  fTimeOut.callOnTimeout(this, [this] { Complete(); });
  if (x11_connection()) QCoreApplication::instance()->installNativeEventFilter(this);
}

void WindowMover::MoveTo(const QPoint& place) {
  if (fState == State::idle)
    Send(place);
  else
    fNext = place;
}

QPoint WindowMover::Place() const {
  // Qt does not update the widget if the window manager puts the window where it was before.
  const QWindow* window = fWidget->windowHandle();
  return window && fWidget->isVisible() ? window->geometry().topLeft() : fWidget->geometry().topLeft();
}

bool WindowMover::NeedsAnswer(const QPoint& place) const {
  // If the window or the widget is there already, Qt sends no request.
  return x11_connection() && fWidget->isVisible() && Place() != place && fWidget->geometry().topLeft() != place;
}

void WindowMover::Send(const QPoint& place) {
  const bool needsAnswer = NeedsAnswer(place);
  fState = State::asked; // the move event arrives before move() returns
  if (needsAnswer) fSequence = xcb_no_operation(x11_connection()).sequence;
  // move() positions the frame, MoveTo the client area.
  const QPoint border = fWidget->geometry().topLeft() - fWidget->pos();
  fWidget->move(place - border);
  if (needsAnswer)
    fTimeOut.start();
  else
    Complete();
}

bool WindowMover::nativeEventFilter(const QByteArray&, void* event, qintptr*) {
  if (fState != State::asked) return false;
  const auto* configured = static_cast<const xcb_configure_notify_event_t*>(event);
  if ((configured->response_type & 0x7f) != XCB_CONFIGURE_NOTIFY || configured->window != fWidget->internalWinId())
    return false;
  // An event has the number of the last request that the server has processed; the numbers wrap around.
  if (static_cast<int16_t>(configured->sequence - fSequence) <= 0) return false;
  fState = State::answered;
  // Deferred until Qt has handled the event.
  QMetaObject::invokeMethod(
      this, [this] { Complete(); }, Qt::QueuedConnection);
  return false;
}

void WindowMover::Complete() {
  if (fState == State::idle) return; // timed out between the answer and this call
  fState = State::idle;
  fTimeOut.stop();
  if (fNext)
    Send(*std::exchange(fNext, std::nullopt));
  else
    fDone();
}

} // namespace display
