#include "platform/display/scrolled_page.h"

#include <QApplication>
#include <QEvent>
#include <QScrollBar>

namespace display {

ScrolledPage::ScrolledPage(QWidget* page) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setWidgetResizable(true);
  setWidget(page);
  page->setAutoFillBackground(false);
  viewport()->setAutoFillBackground(false);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
    if (now && isAncestorOf(now)) ensureWidgetVisible(now);
  });
}

bool ScrolledPage::Places(const QWidget* widget) {
  const QWidget* const parent = widget->parentWidget();
  const auto* const area = parent ? dynamic_cast<const ScrolledPage*>(parent->parentWidget()) : nullptr;
  return area && area->widget() == widget;
}

/** The controls are created after the page. */
void ScrolledPage::showEvent(QShowEvent* event) {
  QScrollArea::showEvent(event);
  for (QWidget* const control : widget()->findChildren<QWidget*>()) {
    control->removeEventFilter(this);
    control->installEventFilter(this);
  }
}

bool ScrolledPage::IsScrollable() const {
  return verticalScrollBar()->maximum() > 0 || horizontalScrollBar()->maximum() > 0;
}

bool ScrolledPage::eventFilter(QObject* watched, QEvent* event) {
  const bool isPassing = event->type() == QEvent::Wheel && !static_cast<QWidget*>(watched)->hasFocus();
  if (!isPassing || !IsScrollable()) return QScrollArea::eventFilter(watched, event);
  event->ignore(); // for this area, its ancestor
  return true;
}

} // namespace display
