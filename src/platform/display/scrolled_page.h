#pragma once

#include <QScrollArea>

namespace display {

/** Scrolls a page of controls that is larger than its place: to the control that gets the focus, and by the wheel,
   which then changes no menu or slider that it happens to pass. Display thread. */
class ScrolledPage : public QScrollArea {
public:
  explicit ScrolledPage(QWidget* page);
  /** The size below which the page is scrolled. */
  void SetNeeded(const QSize& size) { widget()->setMinimumSize(size); }
  /** True for a widget that a scrolled page places and sizes itself. */
  static bool Places(const QWidget* widget);
  bool eventFilter(QObject* watched, QEvent* event) override;

protected:
  void showEvent(QShowEvent* event) override;

private:
  bool IsScrollable() const;
};

} // namespace display
