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

/** Every window manager should answer; the moves go on without one that does not. */
constexpr std::chrono::seconds kPatience{1};

xcb_connection_t* x11_connection() {
#if QT_CONFIG(xcb)
  // The offscreen platform has the interface but no connection behind it.
  if (const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()) return x11->connection();
#endif
  return nullptr;
}

} // namespace

WindowMover::WindowMover(QWidget* widget, std::function<void()> done) : fWidget(widget), fDone(std::move(done)) {
  assert_on_display_thread();
  fPatience.setSingleShot(true);
  fPatience.setInterval(kPatience);
  fPatience.callOnTimeout(this, [this] { Complete(); });
  if (x11_connection()) QCoreApplication::instance()->installNativeEventFilter(this);
}

void WindowMover::MoveTo(const QPoint& place) {
  if (fState == State::idle)
    Send(place);
  else
    fNext = place;
}

QPoint WindowMover::Place() const {
  // A window manager that stops the window where it stopped it before is not reported by Qt to its widget.
  const QWindow* window = fWidget->windowHandle();
  return window && fWidget->isVisible() ? window->geometry().topLeft() : fWidget->geometry().topLeft();
}

bool WindowMover::NeedsAnswer(const QPoint& place) const {
  // Where either of the two is there already, Qt asks the display for nothing.
  return x11_connection() && fWidget->isVisible() && Place() != place && fWidget->geometry().topLeft() != place;
}

void WindowMover::Send(const QPoint& place) {
  const bool needsAnswer = NeedsAnswer(place);
  fState = State::asked; // the move event comes before move returns
  if (needsAnswer) fSequence = xcb_no_operation(x11_connection()).sequence;
  // The frame that the window manager puts around the window grows outwards.
  const QPoint border = fWidget->geometry().topLeft() - fWidget->pos();
  fWidget->move(place - border);
  if (needsAnswer)
    fPatience.start();
  else
    Complete();
}

bool WindowMover::nativeEventFilter(const QByteArray&, void* event, qintptr*) {
  if (fState != State::asked) return false;
  const auto* configured = static_cast<const xcb_configure_notify_event_t*>(event);
  if ((configured->response_type & 0x7f) != XCB_CONFIGURE_NOTIFY || configured->window != fWidget->internalWinId())
    return false;
  // The server numbers an event by the last request that it had seen; the numbers wrap around.
  if (static_cast<int16_t>(configured->sequence - fSequence) <= 0) return false;
  fState = State::answered;
  // Once Qt has handled the event.
  QMetaObject::invokeMethod(
      this, [this] { Complete(); }, Qt::QueuedConnection);
  return false;
}

void WindowMover::Complete() {
  if (fState == State::idle) return; // the time was up between the answer and this
  fState = State::idle;
  fPatience.stop();
  if (fNext)
    Send(*std::exchange(fNext, std::nullopt));
  else
    fDone();
}

} // namespace display
