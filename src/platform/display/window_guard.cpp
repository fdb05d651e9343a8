#include "platform/display/window_guard.h"

#include "platform/app/message.h"
#include "platform/display/convert.h"
#include "platform/display/display_thread.h"
#include "platform/display/widget_guard.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

namespace display {

WindowGuard::WindowGuard(QWidget* widget, const BMessenger& window, std::shared_ptr<WindowPlace> place)
    : QObject(widget), fWidget(widget), fWindow(window), fPlace(std::move(place)),
      fMover(widget, [this] { MovesDone(); }) {
  assert_on_display_thread();
  widget->installEventFilter(this);
}

bool WindowGuard::eventFilter(QObject*, QEvent* event) {
  switch (event->type()) {
  case QEvent::Close:
    event->ignore();
    fWindow.SendCoalesced(B_QUIT_REQUESTED);
    return true;
  case QEvent::Move:
    ReportMove(fWidget->geometry().topLeft());
    break;
  case QEvent::Resize:
    place_children(fWidget);
    ReportResize();
    break;
  case QEvent::WindowActivate:
    ReportActive(true);
    break;
  case QEvent::WindowDeactivate:
    ReportActive(false);
    break;
  case QEvent::DragEnter: {
    auto* drag = static_cast<QDragEnterEvent*>(event);
    if (drag->mimeData()->hasUrls()) drag->acceptProposedAction();
    return true;
  }
  case QEvent::DragMove:
    event->accept();
    return true;
  case QEvent::Drop:
    return Drop(*static_cast<QDropEvent*>(event));
  default:
    break;
  }
  return false;
}

void WindowGuard::MoveTo(BPoint leftTop) {
  ++fMovesTaken;
  fMover.MoveTo({qRound(leftTop.x), qRound(leftTop.y)});
}

void WindowGuard::MovesDone() {
  const QPoint end = fMover.Place();
  {
    const std::scoped_lock hold(fPlace->lock);
    fPlace->movesDone = fMovesTaken;
    fPlace->moveEnd = to_bpoint(end);
  }
  ReportMove(end);
}

void WindowGuard::ReportMove(const QPoint& place) {
  BMessage moved(B_WINDOW_MOVED);
  moved.AddPoint("where", to_bpoint(place));
  {
    const std::scoped_lock hold(fPlace->lock);
    fPlace->frame.OffsetTo(to_bpoint(place));
  }
  fWindow.SendCoalesced(moved);
}

void WindowGuard::ReportResize() {
  const BPoint size = size_of(fWidget->size());
  BMessage resized(B_WINDOW_RESIZED);
  resized.AddFloat("width", size.x);
  resized.AddFloat("height", size.y);
  {
    const std::scoped_lock hold(fPlace->lock);
    fPlace->frame = to_brect(fWidget->geometry());
  }
  fWindow.SendCoalesced(resized);
}

void WindowGuard::ReportActive(bool active) const {
  BMessage activated(DISPLAY_WINDOW_ACTIVATED);
  activated.AddBool("active", active);
  fWindow.SendMessage(&activated, BMessenger(), 0);
}

BMessenger WindowGuard::TargetAt(const QPoint& where) const {
  for (const QWidget* widget = fWidget->childAt(where); widget && widget != fWidget; widget = widget->parentWidget())
    if (const WidgetGuard* guard = WidgetGuard::Of(widget)) return guard->View();
  return fWindow;
}

bool WindowGuard::Drop(const QDropEvent& event) const {
  BMessage drop(B_SIMPLE_DATA);
  for (const QUrl& url : event.mimeData()->urls()) {
    entry_ref ref;
    if (url.isLocalFile() && get_ref_for_path(url.toLocalFile().toUtf8().constData(), &ref) == B_OK)
      drop.AddRef("refs", &ref);
  }
  if (!drop.HasField("refs")) return false;
  drop.SetDropped(event.source() == nullptr);
  TargetAt(event.position().toPoint()).SendMessage(&drop, BMessenger(), 0);
  return true;
}

} // namespace display
